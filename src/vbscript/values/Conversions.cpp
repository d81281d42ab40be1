#include "vbscript/values/Conversions.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Dates.hpp"
#include "vbscript/values/NumberText.hpp"
#include "vbscript/values/Operand.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

constexpr double kCurrencyUnit = 10000.0;
constexpr double kTwoToThe63 = 9223372036854775808.0;

NumberText NumberOf(const Variant& text) {
  auto number = NumberText::Parse(text.AsUtf16());
  if (!number) RaiseTypeMismatch(text);
  return *std::move(number);
}

template <class T>
T OrOverflow(std::optional<T> value) {
  if (!value) RaiseRuntime(number::kOverflow);
  return *value;
}

// Halves go to the even number, which is the rounding mode that a program starts in.
double RoundWithin(double value, double lowest, double highest) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= lowest && rounded <= highest)) RaiseRuntime(number::kOverflow);
  return rounded;
}

std::int64_t RoundCurrency(std::int64_t tenThousandths) {
  std::int64_t whole = tenThousandths / 10000;
  const std::int64_t rest = tenThousandths % 10000;
  const bool isOdd = whole % 2 != 0;
  if (rest > 5000 || (rest == 5000 && isOdd)) ++whole;
  if (rest < -5000 || (rest == -5000 && isOdd)) --whole;
  return whole;
}

double CheckedDate(double date) {
  // The time of day of the last day still counts; so does that of the first, which has a fraction below it.
  if (!(date > kFirstDate - 1 && date < kLastDate + 1)) RaiseRuntime(number::kOverflow);
  return date;
}

double ParseDateOrNumber(const Variant& text) {
  if (const auto date = ParseDate(text.AsUtf16())) return *date;
  const auto number = NumberText::Parse(text.AsUtf16());
  if (!number) RaiseTypeMismatch(text);
  return CheckedDate(OrOverflow(number->ToDouble()));
}

// "True" and "False" in any case, the same between number signs, or any number.
bool ParseTruth(const Variant& text) {
  if (const auto word = ParseBooleanWord(text.AsUtf16())) return *word;
  return OrOverflow(NumberOf(text).ToDouble()) != 0;
}

std::u16string FormatWhole(std::int64_t value) {
  char buffer[24];
  const char* end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  return std::u16string(static_cast<const char*>(buffer), end);
}

std::u16string FormatCurrency(std::int64_t tenThousandths) {
  const bool isNegative = tenThousandths < 0;
  const auto magnitude = isNegative ? 0 - static_cast<std::uint64_t>(tenThousandths)
                                    : static_cast<std::uint64_t>(tenThousandths);
  std::u16string text = isNegative ? u"-" : u"";
  text += FormatWhole(static_cast<std::int64_t>(magnitude / 10000));
  if (const auto fraction = static_cast<std::int64_t>(magnitude % 10000); fraction != 0) {
    std::u16string digits = FormatWhole(10000 + fraction);
    digits.erase(digits.find_last_not_of(u'0') + 1);
    text += u'.';
    text.append(digits, 1);
  }
  return text;
}

}  // namespace

std::optional<bool> ParseBooleanWord(std::u16string_view text) {
  if (text.size() < 4 || text.size() > 7) return std::nullopt;
  if (EqualsIgnoreCase(text, u"true") || text == u"#TRUE#") return true;
  if (EqualsIgnoreCase(text, u"false") || text == u"#FALSE#") return false;
  return std::nullopt;
}

std::uint8_t ToByte16(const Variant& value) {
  const Operand operand(value);
  if (operand.Type() == VariantType::Byte) return operand->AsByte();
  // A truth is -1 and does not fit as a number, but its lowest eight bits do.
  if (operand.Type() == VariantType::Boolean) return operand->AsBoolean() ? 255 : 0;
  const std::int32_t wide = ToLong32(operand.Value());
  if (wide < 0 || wide > 255) RaiseRuntime(number::kOverflow);
  return static_cast<std::uint8_t>(wide);
}

std::int16_t ToInteger16(const Variant& value) {
  const Operand operand(value);
  if (operand.Type() == VariantType::Integer || operand.Type() == VariantType::Boolean)
    return operand->AsInteger();
  if (operand.Type() == VariantType::String) return OrOverflow(NumberOf(operand.Value()).ToInteger());
  const std::int32_t wide = ToLong32(operand.Value());
  if (wide < -32768 || wide > 32767) RaiseRuntime(number::kOverflow);
  return static_cast<std::int16_t>(wide);
}

std::int32_t ToLong32(const Variant& value) {
  const Operand operand(value);
  switch (operand.Type()) {
    case VariantType::Empty: return 0;
    case VariantType::Byte: return operand->AsByte();
    case VariantType::Boolean:
    case VariantType::Integer: return operand->AsInteger();
    case VariantType::Long: return operand->AsLong();
    case VariantType::Single:
    case VariantType::Double:
    case VariantType::Date:
      return static_cast<std::int32_t>(RoundWithin(ToDouble64(operand.Value()), -2147483648.0, 2147483647.0));
    case VariantType::Currency: {
      const std::int64_t whole = RoundCurrency(operand->AsCurrency());
      if (whole != static_cast<std::int32_t>(whole)) RaiseRuntime(number::kOverflow);
      return static_cast<std::int32_t>(whole);
    }
    case VariantType::String: return OrOverflow(NumberOf(operand.Value()).ToLong());
    default: RaiseNoConversion(operand.Value());
  }
}

float ToSingle32(const Variant& value) {
  const Operand operand(value);
  if (operand.Type() == VariantType::Single) return operand->AsSingle();
  const auto narrow = static_cast<float>(ToDouble64(operand.Value()));
  if (!std::isfinite(narrow)) RaiseRuntime(number::kOverflow);
  return narrow;
}

double ToDouble64(const Variant& value) {
  const Operand operand(value);
  switch (operand.Type()) {
    case VariantType::Empty: return 0;
    case VariantType::Byte: return operand->AsByte();
    case VariantType::Boolean:
    case VariantType::Integer: return operand->AsInteger();
    case VariantType::Long: return operand->AsLong();
    case VariantType::Single: return static_cast<double>(operand->AsSingle());
    case VariantType::Double:
    case VariantType::Date: return operand->AsDouble();
    case VariantType::Currency: return static_cast<double>(operand->AsCurrency()) / kCurrencyUnit;
    case VariantType::String: return OrOverflow(NumberOf(operand.Value()).ToDouble());
    default: RaiseNoConversion(operand.Value());
  }
}

std::int64_t ToCurrency64(const Variant& value) {
  const Operand operand(value);
  switch (operand.Type()) {
    case VariantType::Empty: return 0;
    case VariantType::Byte: return std::int64_t{operand->AsByte()} * 10000;
    case VariantType::Boolean:
    case VariantType::Integer: return std::int64_t{operand->AsInteger()} * 10000;
    case VariantType::Long: return std::int64_t{operand->AsLong()} * 10000;
    case VariantType::Single:
    case VariantType::Double:
    case VariantType::Date: {
      const double scaled = std::nearbyint(ToDouble64(operand.Value()) * kCurrencyUnit);
      if (!(scaled >= -kTwoToThe63 && scaled < kTwoToThe63)) RaiseRuntime(number::kOverflow);
      return static_cast<std::int64_t>(scaled);
    }
    case VariantType::Currency: return operand->AsCurrency();
    case VariantType::String: return OrOverflow(NumberOf(operand.Value()).ToCurrency());
    default: RaiseNoConversion(operand.Value());
  }
}

bool ToBoolean1(const Variant& value) {
  const Operand operand(value);
  switch (operand.Type()) {
    case VariantType::Boolean:
    case VariantType::Integer: return operand->AsInteger() != 0;
    case VariantType::Long: return operand->AsLong() != 0;
    case VariantType::Currency: return operand->AsCurrency() != 0;
    case VariantType::String: return ParseTruth(operand.Value());
    default: return ToDouble64(operand.Value()) != 0;
  }
}

double ToDate64(const Variant& value) {
  const Operand operand(value);
  if (operand.Type() == VariantType::Date) return operand->AsDouble();
  if (operand.Type() == VariantType::String) return ParseDateOrNumber(operand.Value());
  return CheckedDate(ToDouble64(operand.Value()));
}

std::u16string ToText16(const Variant& value) {
  const Operand operand(value);
  switch (operand.Type()) {
    case VariantType::Empty: return {};
    case VariantType::Boolean: return operand->AsBoolean() ? u"True" : u"False";
    case VariantType::Byte: return FormatWhole(operand->AsByte());
    case VariantType::Integer: return FormatWhole(operand->AsInteger());
    case VariantType::Long: return FormatWhole(operand->AsLong());
    case VariantType::Single: return FormatSingle(operand->AsSingle());
    case VariantType::Double: return FormatDouble(operand->AsDouble());
    case VariantType::Currency: return FormatCurrency(operand->AsCurrency());
    case VariantType::Date: return FormatGeneralDate(operand->AsDouble());
    case VariantType::String: return std::u16string(operand->AsUtf16());
    case VariantType::Error: return u"Error " + FormatWhole(operand->AsErrorCode());
    default: RaiseNoConversion(operand.Value());
  }
}

Variant ToTextVariant(const Variant& value) {
  const Operand operand(value);
  if (operand.Type() == VariantType::String) return operand.Value();
  return Variant::FromUtf16(ToText16(operand.Value()));
}

}  // namespace hearthmake::vbscript
