#pragma once

#include <string>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "automation/Utf.hpp"
#include "automation/Variant.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

// An object with a default member that gives a value.
class VbsDefaultObject : public automation::Object {
 public:
  explicit VbsDefaultObject(automation::Variant value) : m_value(std::move(value)) {}

  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration("Carrier", "_Carrier", "", "");
    return declaration;
  }
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override {
    if (member != automation::kDefaultMember || kind != automation::InvokeKind::Get || !arguments.empty())
      automation::Raise(automation::RuntimeError::MemberNotFound, "Carrier");
    return m_value;
  }

 private:
  automation::Variant m_value;
};

// An object without a default member.
class VbsPlainObject : public automation::Object {
 public:
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration("Plain", "_Plain", "", "");
    return declaration;
  }
};

inline std::string VbsSubtypeName(const automation::Variant& value) {
  using automation::VariantType;
  switch (value.Type()) {
    case VariantType::Empty: return "Empty";
    case VariantType::Null: return "Null";
    case VariantType::Integer: return "Integer";
    case VariantType::Long: return "Long";
    case VariantType::Single: return "Single";
    case VariantType::Double: return "Double";
    case VariantType::Currency: return "Currency";
    case VariantType::Date: return "Date";
    case VariantType::String: return "String";
    case VariantType::Object: return "Object";
    case VariantType::Error: return "Error";
    case VariantType::Boolean: return "Boolean";
    case VariantType::Byte: return "Byte";
    case VariantType::Array: return "Array";
    case VariantType::ByReference: return "ByReference";
  }
  return "?";
}

// "Integer 5", "String abc", "Null": subtype and value, a date as its number.
inline std::string VbsDescribe(const automation::Variant& value) {
  using automation::VariantType;
  const std::string name = VbsSubtypeName(value);
  switch (value.Type()) {
    case VariantType::Empty:
    case VariantType::Null:
    case VariantType::Object:
    case VariantType::Array:
    case VariantType::ByReference: return name;
    case VariantType::Date: return name + " " + automation::Utf16ToUtf8(FormatDouble(value.AsDouble()));
    default: return name + " " + automation::Utf16ToUtf8(ToText16(value));
  }
}

// What a call gives, or "E13" for the error that it raises.
template <class Call>
std::string VbsOutcome(Call call) {
  try {
    return VbsDescribe(call());
  } catch (const automation::Error& error) {
    return "E" + std::to_string(error.Number());
  }
}

}  // namespace hearthmake::vbscript
