#include "adapters/win32/DispatchCall.hpp"

#include <string>
#include <vector>

#include "adapters/win32/AutomationFailure.hpp"
#include "adapters/win32/WideText.hpp"

namespace hearthmake::win32 {

namespace {

using automation::InvokeKind;
using automation::Ref;
using automation::Variant;
using automation::VariantType;

// Names of members are English for whoever asks.
constexpr LCID kEnglish = 0x0409;

WORD FlagsOf(InvokeKind kind) {
  switch (kind) {
    case InvokeKind::Call:  // who calls by name can't tell a method from a property with arguments
    case InvokeKind::Get: return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    case InvokeKind::Let: return DISPATCH_PROPERTYPUT;
    case InvokeKind::Set: return DISPATCH_PROPERTYPUTREF;
  }
  return 0;
}

// The arguments of a call as IDispatch takes them: from the last to the first.
class Arguments {
 public:
  Arguments(std::span<Variant> arguments, ObjectBorder& border)
      : m_arguments(arguments), m_border(border), m_values(arguments.size()), m_passed(arguments.size()) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      static_cast<VARIANT&>(m_values[i]) = ToVariant(arguments[i], border);
      VARIANT& passed = m_passed[arguments.size() - 1 - i];
      passed = m_values[i];
      if (arguments[i].Type() != VariantType::ByReference) continue;
      passed = {};
      passed.vt = VT_BYREF | VT_VARIANT;
      passed.pvarVal = &m_values[i];
    }
  }

  DISPPARAMS Parameters(bool hasValue) {
    DISPPARAMS parameters = {m_passed.data(), nullptr, static_cast<UINT>(m_passed.size()), 0};
    if (hasValue) {
      parameters.rgdispidNamedArgs = &m_valueId;
      parameters.cNamedArgs = 1;
    }
    return parameters;
  }

  void WriteBack() {
    for (std::size_t i = 0; i < m_arguments.size(); ++i) {
      if (m_arguments[i].Type() != VariantType::ByReference) continue;
      m_arguments[i].Target() = FromVariant(m_values[i], m_border);
    }
  }

 private:
  std::span<Variant> m_arguments;
  ObjectBorder& m_border;
  std::vector<OwnedVariant> m_values;
  std::vector<VARIANT> m_passed;
  DISPID m_valueId = DISPID_PROPERTYPUT;
};

}  // namespace

std::optional<DISPID> FindMember(IDispatch& object, std::string_view name) {
  std::wstring wide = ToWide(name);
  LPOLESTR names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(object.GetIDsOfNames(IID_NULL, names, 1, kEnglish, &id))) return std::nullopt;
  return id;
}

void CallMember(IDispatch& object, DISPID member, InvokeKind kind, std::span<Variant> arguments,
                ObjectBorder& border, OwnedVariant& result) {
  const Ref<IDispatch> kept(&object);  // the call may give up the caller's reference
  Arguments converted(arguments, border);
  const bool hasValue = kind == InvokeKind::Let || kind == InvokeKind::Set;
  DISPPARAMS parameters = converted.Parameters(hasValue);
  EXCEPINFO failure = {};
  const auto call = [&](WORD flags) {
    UINT wrongArgument = 0;
    return object.Invoke(member, IID_NULL, kEnglish, flags, &parameters, hasValue ? nullptr : &result,
                         &failure, &wrongArgument);
  };
  HRESULT outcome = call(FlagsOf(kind));
  // An object is often assigned to a property that takes it as a value.
  if (kind == InvokeKind::Set && outcome == DISP_E_MEMBERNOTFOUND) outcome = call(DISPATCH_PROPERTYPUT);
  if (FAILED(outcome)) throw FailureOf(outcome, failure);
  converted.WriteBack();
}

}  // namespace hearthmake::win32
