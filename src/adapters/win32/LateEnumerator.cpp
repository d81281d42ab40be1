#include "adapters/win32/LateEnumerator.hpp"

#include "adapters/win32/AutomationFailure.hpp"
#include "adapters/win32/DispatchCall.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

using automation::Ref;
using automation::RuntimeError;

LateEnumerator::LateEnumerator(const LateObject& collection) {
  OwnedVariant walk;
  CallMember(collection.Dispatch(), DISPID_NEWENUM, automation::InvokeKind::Call, {}, NoObjects(), walk);
  void* found = nullptr;
  const bool isObject = walk.vt == VT_UNKNOWN || walk.vt == VT_DISPATCH;
  if (!isObject || walk.punkVal == nullptr ||
      FAILED(walk.punkVal->QueryInterface(IID_IEnumVARIANT, &found))) {
    automation::Raise(RuntimeError::MemberNotFound, "");
  }
  m_items = Ref<IEnumVARIANT>::Adopt(static_cast<IEnumVARIANT*>(found));
}

std::optional<LateObject> LateEnumerator::Next() {
  OwnedVariant item;
  const HRESULT outcome = m_items->Next(1, &item, nullptr);
  if (FAILED(outcome)) {
    EXCEPINFO none = {};
    throw FailureOf(outcome, none);
  }
  if (outcome != S_OK) return std::nullopt;
  return AsLateObject(item);
}

}  // namespace hearthmake::win32
