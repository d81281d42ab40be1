#include "com/HostObject.hpp"

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "adapters/win32/DispatchCall.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "com/Failure.hpp"
#include "com/ThreadState.hpp"
#include "com/VariantConversion.hpp"

namespace hearthmake::com {

namespace {

using automation::InvokeKind;
using automation::Ref;
using automation::RuntimeError;
using automation::Variant;

// Names of members are English for whoever asks.
constexpr LCID kEnglish = 0x0409;

// Walks a collection of the host's.
class HostEnumerator final : public automation::Enumerator {
 public:
  explicit HostEnumerator(Ref<IEnumVARIANT> items) : m_items(std::move(items)) {}
  bool Next(Variant& item) override {
    OwnedVariant next;
    ULONG fetched = 0;
    if (m_items->Next(1, &next, &fetched) != S_OK || fetched != 1) return false;
    item = FromVariant(next);
    return true;
  }

 private:
  Ref<IEnumVARIANT> m_items;
};

// Numbers for the names of members, from 1; without regard to case.
class NameTable {
 public:
  std::int32_t IdOf(std::string_view name) {
    const std::lock_guard lock(m_mutex);
    const auto [entry, isNew] =
        m_ids.emplace(automation::Lower(name), static_cast<std::int32_t>(m_names.size() + 1));
    if (isNew) m_names.emplace_back(name);
    return entry->second;
  }
  std::string NameOf(std::int32_t id) {
    const std::lock_guard lock(m_mutex);
    const auto index = static_cast<std::size_t>(id) - 1;
    return index < m_names.size() ? m_names[index] : "";
  }

 private:
  std::mutex m_mutex;
  std::unordered_map<std::string, std::int32_t> m_ids;
  std::deque<std::string> m_names;
};

// Of the process: a script's engine keeps ids longer than any object lives.
NameTable& Names() {
  static NameTable names;
  return names;
}

std::string NameOf(ITypeInfo* type) {
  if (type == nullptr) return {};
  const auto held = Ref<ITypeInfo>::Adopt(type);
  BSTR text = nullptr;
  if (FAILED(held->GetDocumentation(MEMBERID_NIL, &text, nullptr, nullptr, nullptr)) || text == nullptr)
    return {};
  const std::string name = win32::ToUtf8({text, SysStringLen(text)});
  SysFreeString(text);
  return name;
}

// What TypeName tells of an object: its class, else its interface.
std::string TypeNameOf(IUnknown& identity, IDispatch* dispatch) {
  ITypeInfo* type = nullptr;
  IProvideClassInfo* provider = nullptr;
  if (SUCCEEDED(identity.QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provider)))) {
    if (FAILED(Ref<IProvideClassInfo>::Adopt(provider)->GetClassInfo(&type))) type = nullptr;
  } else if (dispatch != nullptr && FAILED(dispatch->GetTypeInfo(0, kEnglish, &type))) {
    type = nullptr;
  }
  const std::string name = NameOf(type);
  return name.empty() ? "Object" : name;
}

// Without members: those of the object itself are asked for by name. One for each type of the process.
const automation::Interface& DeclarationNamed(const std::string& name) {
  static std::mutex mutex;
  static std::map<std::string, automation::Interface> declarations;
  const std::lock_guard lock(mutex);
  return declarations.try_emplace(name, name, "", "", "").first->second;
}

}  // namespace

HostObject::HostObject(Ref<IUnknown> identity) : m_identity(std::move(identity)) {
  IDispatch* dispatch = nullptr;
  if (SUCCEEDED(m_identity->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)))) {
    m_dispatch = Ref<IDispatch>::Adopt(dispatch);
  }
}

HostObject::~HostObject() {
  if (ThreadState* state = ThreadState::CurrentOrNull()) state->Forget(m_identity.Get(), *this);
}

const automation::Interface& HostObject::Declaration() const {
  if (m_declaration == nullptr) m_declaration = &DeclarationNamed(TypeNameOf(*m_identity, m_dispatch.Get()));
  return *m_declaration;
}

IUnknown* HostObject::Give() const {
  IUnknown* given = m_dispatch ? static_cast<IUnknown*>(m_dispatch.Get()) : m_identity.Get();
  given->AddRef();
  return given;
}

std::optional<std::int32_t> HostObject::FindMember(std::string_view name) const {
  const std::int32_t id = Names().IdOf(name);
  return OwnId(id) ? std::optional(id) : std::nullopt;
}

std::optional<DISPID> HostObject::OwnId(std::int32_t id) const {
  if (!m_dispatch) return std::nullopt;
  if (id <= 0) return id;  // automation's reserved ones
  const auto known = m_ids.find(id);
  if (known != m_ids.end()) return known->second;
  std::wstring name = win32::ToWide(Names().NameOf(id));
  LPOLESTR names[] = {name.data()};
  DISPID own = DISPID_UNKNOWN;
  if (FAILED(m_dispatch->GetIDsOfNames(IID_NULL, names, 1, kEnglish, &own))) return std::nullopt;
  m_ids[id] = own;
  return own;
}

Variant HostObject::Invoke(std::int32_t member, InvokeKind kind, std::span<Variant> arguments) {
  const auto id = OwnId(member);
  if (!id) automation::Raise(RuntimeError::MemberNotFound, "");
  const Ref<IDispatch> dispatch = m_dispatch;  // the call may end this object
  OwnedVariant result;
  win32::CallMember(*dispatch, *id, kind, arguments, ThreadBorder(), result);
  return FromVariant(result);
}

Ref<automation::Enumerator> HostObject::Enumerate() {
  if (!m_dispatch) return nullptr;
  DISPPARAMS none = {};
  OwnedVariant result;
  if (FAILED(m_dispatch->Invoke(DISPID_NEWENUM, IID_NULL, kEnglish, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                &none, &result, nullptr, nullptr))) {
    return nullptr;
  }
  if ((result.vt != VT_UNKNOWN && result.vt != VT_DISPATCH) || result.punkVal == nullptr) return nullptr;
  IEnumVARIANT* items = nullptr;
  if (FAILED(result.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&items)))) {
    return nullptr;
  }
  return automation::Make<HostEnumerator>(Ref<IEnumVARIANT>::Adopt(items));
}

}  // namespace hearthmake::com
