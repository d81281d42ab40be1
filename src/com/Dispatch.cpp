#include "com/Dispatch.hpp"

#include <algorithm>
#include <vector>

#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Text.hpp"
#include "com/Failure.hpp"
#include "com/VariantConversion.hpp"

namespace hearthmake::com {

namespace {

using automation::Interface;
using automation::InvokeKind;
using automation::Member;
using automation::RuntimeError;
using automation::Variant;

InvokeKind KindOf(WORD flags) {
  if ((flags & DISPATCH_PROPERTYPUTREF) != 0) return InvokeKind::Set;
  if ((flags & DISPATCH_PROPERTYPUT) != 0) return InvokeKind::Let;
  return (flags & DISPATCH_METHOD) != 0 ? InvokeKind::Call : InvokeKind::Get;
}

bool TakesValue(InvokeKind kind) { return kind == InvokeKind::Let || kind == InvokeKind::Set; }

// The arguments of one call in the order of the parameters.
class CallArguments {
 public:
  CallArguments(const DISPPARAMS& parameters, const Member* member, InvokeKind kind) : m_member(member) {
    const UINT named = parameters.cNamedArgs;
    if (named > parameters.cArgs || (parameters.cArgs != 0 && parameters.rgvarg == nullptr)) {
      automation::Raise(RuntimeError::WrongNumberOfArguments, "");
    }
    // COM lists them from the last to the first, the named ones before all.
    for (UINT i = parameters.cArgs; i-- > named;) m_sources.push_back(&parameters.rgvarg[i]);
    for (UINT i = 0; i < named; ++i) Place(parameters.rgdispidNamedArgs[i], parameters.rgvarg[i], kind);
    m_values.resize(m_sources.size());
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
      m_values[i] = m_sources[i] == nullptr ? Variant::Missing() : FromVariant(*m_sources[i]);
    }
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
      m_passed.push_back(IsReference(i) ? Variant::ByReference(&m_values[i]) : m_values[i]);
    }
  }

  std::span<Variant> All() { return m_passed; }

  void WriteBack() {
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
      if (IsReference(i)) ToPlace(m_sources[i]->vt & ~VT_BYREF, m_sources[i]->byref, m_values[i]);
    }
  }

 private:
  void Place(DISPID id, VARIANT& value, InvokeKind kind) {
    // The new value of a property is its last argument.
    const bool isNewValue = id == DISPID_PROPERTYPUT && TakesValue(kind);
    const std::size_t position = isNewValue ? m_sources.size() : static_cast<std::size_t>(id);
    if (!isNewValue && (m_member == nullptr || id < 0 || position >= m_member->parameters.size())) {
      automation::Raise(RuntimeError::NamedArgumentNotFound, "");
    }
    if (position >= m_sources.size()) m_sources.resize(position + 1, nullptr);
    m_sources[position] = &value;
  }

  // What a member does with an argument by value is no concern of the caller's variable.
  bool IsReference(std::size_t index) const {
    if (m_sources[index] == nullptr || (m_sources[index]->vt & VT_BYREF) == 0) return false;
    if (m_member == nullptr) return true;
    return index < m_member->parameters.size() && m_member->parameters[index].isInOut;
  }

  const Member* m_member;
  std::vector<VARIANT*> m_sources;  // null for one that was left out
  std::vector<Variant> m_values;
  std::vector<Variant> m_passed;
};

void Invoke(automation::Object& object, const Interface* further, DISPID id, InvokeKind kind,
            const DISPPARAMS& parameters, VARIANT* result) {
  const Interface& declared = further != nullptr ? *further : object.Declaration();
  CallArguments arguments(parameters, declared.Find(id, kind), kind);
  Variant value;
  if (id == DISPID_NEWENUM) {
    value = Variant::FromObject(object.Enumerate());
    if (value.AsObject() == nullptr) automation::Raise(RuntimeError::MemberNotFound, declared.Name());
  } else if (further != nullptr) {
    value = further->Invoke(object, id, kind, arguments.All());
  } else {
    value = object.Invoke(id, kind, arguments.All());
  }
  arguments.WriteBack();
  if (result != nullptr) *result = ToVariant(value);
}

// The position of a parameter by name, as its id.
DISPID ParameterId(const Interface& declared, DISPID member, const std::string& name) {
  for (const Member& entry : declared.Members()) {
    if (entry.id != member) continue;
    const auto& all = entry.parameters;
    const auto found = std::find_if(all.begin(), all.end(), [&](const automation::Parameter& parameter) {
      return automation::EqualsIgnoreCaseAscii(parameter.name, name);
    });
    if (found != all.end()) return static_cast<DISPID>(found - all.begin());
  }
  return DISPID_UNKNOWN;
}

}  // namespace

HRESULT InvokeMember(automation::Object& object, const Interface* further, DISPID member, WORD flags,
                     DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* failure) {
  if (result != nullptr) VariantInit(result);
  try {
    Invoke(object, further, member, KindOf(flags), parameters, result);
    return S_OK;
  } catch (...) {
    return Report(CaughtError(), failure);
  }
}

HRESULT FindNames(automation::Object& object, const Interface* further, LPOLESTR* names, UINT count,
                  DISPID* ids) {
  std::fill_n(ids, count, DISPID_UNKNOWN);
  if (count == 0) return E_INVALIDARG;
  const std::string member = win32::ToUtf8(names[0]);
  const auto id = further != nullptr ? further->Find(member) : object.FindMember(member);
  if (!id) return DISP_E_UNKNOWNNAME;
  ids[0] = *id;
  HRESULT result = S_OK;
  const Interface& declared = further != nullptr ? *further : object.Declaration();
  for (UINT i = 1; i < count; ++i) {
    ids[i] = ParameterId(declared, *id, win32::ToUtf8(names[i]));
    if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
  }
  return result;
}

}  // namespace hearthmake::com
