#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Dates.hpp"
#include "vbscript/values/Operand.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

using Arguments = std::span<Variant>;

Variant CBool(Context&, Arguments arguments) { return Variant::FromBoolean(ToBoolean1(arguments[0])); }
Variant CByte(Context&, Arguments arguments) { return Variant::FromByte(ToByte16(arguments[0])); }
Variant CCur(Context&, Arguments arguments) { return Variant::FromCurrency(ToCurrency64(arguments[0])); }
Variant CDate(Context&, Arguments arguments) { return Variant::FromDate(ToDate64(arguments[0])); }
Variant CDbl(Context&, Arguments arguments) { return Variant::FromDouble(ToDouble64(arguments[0])); }
Variant CInt(Context&, Arguments arguments) { return Variant::FromInteger(ToInteger16(arguments[0])); }
Variant CLng(Context&, Arguments arguments) { return Variant::FromLong(ToLong32(arguments[0])); }
Variant CSng(Context&, Arguments arguments) { return Variant::FromSingle(ToSingle32(arguments[0])); }
Variant CStr(Context&, Arguments arguments) { return ToTextVariant(arguments[0]); }

// The first unit of a text; error 5 for an empty one.
char16_t FirstUnit(const Variant& argument) {
  const Variant text = ToTextVariant(argument);
  if (text.AsUtf16().empty()) RaiseRuntime(number::kInvalidProcedureCall);
  return text.AsUtf16().front();
}

// The byte of the code page, "?" for what it lacks.
Variant Asc(Context&, Arguments arguments) {
  const char16_t unit = FirstUnit(arguments[0]);
  const std::string bytes = automation::Utf8ToWindows1252(automation::Utf16ToUtf8({&unit, 1}));
  return Variant::FromInteger(static_cast<unsigned char>(bytes.front()));
}

Variant AscB(Context&, Arguments arguments) {
  return Variant::FromByte(static_cast<std::uint8_t>(FirstUnit(arguments[0]) & 0xFF));
}

Variant AscW(Context&, Arguments arguments) {
  return Variant::FromInteger(static_cast<std::int16_t>(FirstUnit(arguments[0])));
}

std::int32_t CharacterNumber(const Variant& argument, std::int32_t lowest, std::int32_t highest) {
  const std::int32_t value = ToLong32(argument);
  if (value < lowest || value > highest) RaiseRuntime(number::kInvalidProcedureCall);
  return value;
}

Variant Chr(Context& context, Arguments arguments) {
  const auto byte = static_cast<unsigned char>(CharacterNumber(arguments[0], 0, 255));
  return context.texts.Unit(automation::Windows1252Character(byte));
}

// A text is made of whole units here, so that one byte takes a unit.
Variant ChrB(Context& context, Arguments arguments) {
  return context.texts.Unit(static_cast<char16_t>(CharacterNumber(arguments[0], 0, 255)));
}

// Negative numbers are those of AscW above 32767.
Variant ChrW(Context& context, Arguments arguments) {
  return context.texts.Unit(static_cast<char16_t>(CharacterNumber(arguments[0], -32768, 65535)));
}

// The digits of a whole number; negative ones as the bits of their subtype, sixteen of an Integer.
Variant Digits(const Variant& argument, int base) {
  const Operand value(argument);
  if (value->IsNull()) return Variant::Null();
  std::uint32_t bits = 0;
  if (value.Type() == VariantType::Integer || value.Type() == VariantType::Boolean) {
    bits = static_cast<std::uint16_t>(value->AsInteger());
  } else {
    bits = static_cast<std::uint32_t>(ToLong32(value.Value()));
  }
  char buffer[16];
  const char* end = std::to_chars(buffer, buffer + sizeof buffer, bits, base).ptr;
  std::u16string text;
  for (const char* digit = buffer; digit != end; ++digit)
    text += static_cast<char16_t>(*digit >= 'a' ? *digit - 'a' + 'A' : *digit);
  return Variant::FromUtf16(text);
}

Variant Hex(Context&, Arguments arguments) { return Digits(arguments[0], 16); }
Variant Oct(Context&, Arguments arguments) { return Digits(arguments[0], 8); }

template <VariantType kType>
Variant IsOfType(Context&, Arguments arguments) {
  return Variant::FromBoolean(arguments[0].Target().Type() == kType);
}

bool MeansNoDefaultMember(std::int32_t error) {
  return error == number::kMemberNotFound || error == number::kActionNotSupported ||
         error == number::kArgumentNotOptional || error == number::kWrongNumberOfArguments;
}

// The value of an argument; of an object its default member, or the object itself when it has none that can
// be read without arguments.
Variant ValueOrObject(const Variant& argument) {
  const Variant& value = argument.Target();
  if (!value.IsObject() || value.AsObject() == nullptr) return value;
  try {
    return Operand(value).Value();
  } catch (const automation::Error& error) {
    if (!MeansNoDefaultMember(error.Number())) throw;
    return value;
  }
}

bool IsNumber(const Variant& value) {
  switch (value.Type()) {
    case VariantType::Empty:
    case VariantType::Boolean:
    case VariantType::Byte:
    case VariantType::Integer:
    case VariantType::Long:
    case VariantType::Single:
    case VariantType::Double:
    case VariantType::Currency: return true;
    case VariantType::String: return ParseNumber16(value.AsUtf16()).has_value();
    default: return false;
  }
}

Variant IsNumeric(Context&, Arguments arguments) {
  return Variant::FromBoolean(IsNumber(ValueOrObject(arguments[0])));
}

Variant IsDate(Context&, Arguments arguments) {
  const Variant value = ValueOrObject(arguments[0]);
  const bool isDateText = value.Type() == VariantType::String && ParseDate(value.AsUtf16()).has_value();
  return Variant::FromBoolean(isDateText || value.Type() == VariantType::Date);
}

Variant VarType(Context&, Arguments arguments) {
  return Variant::FromInteger(static_cast<std::int16_t>(ValueOrObject(arguments[0]).Type()));
}

std::string_view SubtypeName(const Variant& value) {
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
    case VariantType::Error: return "Error";
    case VariantType::Boolean: return "Boolean";
    case VariantType::Byte: return "Byte";
    case VariantType::Array: return "Variant()";
    default: break;
  }
  return value.AsObject() == nullptr ? "Nothing" : std::string_view(value.AsObject()->Declaration().Name());
}

Variant TypeName(Context&, Arguments arguments) {
  return Variant::FromText(SubtypeName(arguments[0].Target()));
}

}  // namespace

std::span<const Intrinsic> ConversionIntrinsics() {
  static constexpr Intrinsic kIntrinsics[] = {
      {"Asc", 1, 1, Asc},
      {"AscB", 1, 1, AscB},
      {"AscW", 1, 1, AscW},
      {"CBool", 1, 1, CBool},
      {"CByte", 1, 1, CByte},
      {"CCur", 1, 1, CCur},
      {"CDate", 1, 1, CDate},
      {"CDbl", 1, 1, CDbl},
      {"Chr", 1, 1, Chr},
      {"ChrB", 1, 1, ChrB},
      {"ChrW", 1, 1, ChrW},
      {"CInt", 1, 1, CInt},
      {"CLng", 1, 1, CLng},
      {"CSng", 1, 1, CSng},
      {"CStr", 1, 1, CStr},
      {"Hex", 1, 1, Hex},
      {"IsArray", 1, 1, IsOfType<VariantType::Array>},
      {"IsDate", 1, 1, IsDate},
      {"IsEmpty", 1, 1, IsOfType<VariantType::Empty>},
      {"IsNull", 1, 1, IsOfType<VariantType::Null>},
      {"IsNumeric", 1, 1, IsNumeric},
      {"IsObject", 1, 1, IsOfType<VariantType::Object>},
      {"Oct", 1, 1, Oct},
      {"TypeName", 1, 1, TypeName},
      {"VarType", 1, 1, VarType},
  };
  return kIntrinsics;
}

}  // namespace hearthmake::vbscript
