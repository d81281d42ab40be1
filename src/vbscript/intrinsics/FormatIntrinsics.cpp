#include <cstdio>
#include <string>

#include "automation/OleDate.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Arguments.hpp"
#include "vbscript/intrinsics/Calendar.hpp"
#include "vbscript/intrinsics/DecimalNumber.hpp"
#include "vbscript/intrinsics/EnglishNames.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Dates.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

// Formats are those of US English, whatever SetLocale has set.
constexpr std::int32_t kDefaultDecimals = 2;
constexpr std::int32_t kMostDecimals = 99;

enum class Subject { Number, Currency, Percent };

struct NumberStyle {
  std::int32_t decimals = kDefaultDecimals;
  bool hasLeadingZero = true;
  bool hasParentheses = false;
  bool isGrouped = true;
};

// An argument of three states: -2 is the locale's own choice, 0 is no, everything else is yes.
bool TristateOr(Arguments arguments, std::size_t place, bool otherwise) {
  const std::int32_t state = LongOr(arguments, place, -2);
  return state == -2 ? otherwise : state != 0;
}

// (expression, decimals, leading zero, parentheses, groups)
NumberStyle ReadStyle(Arguments arguments, bool usuallyParentheses) {
  NumberStyle style;
  const std::int32_t decimals = LongOr(arguments, 1, -1);
  if (decimals < -1 || decimals > kMostDecimals) RaiseInvalidCall();
  if (decimals != -1) style.decimals = decimals;
  style.hasLeadingZero = TristateOr(arguments, 2, true);
  style.hasParentheses = TristateOr(arguments, 3, usuallyParentheses);
  style.isGrouped = TristateOr(arguments, 4, true);
  return style;
}

std::string Group(const std::string& digits) {
  std::string grouped;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i != 0 && (digits.size() - i) % 3 == 0) grouped += ',';
    grouped += digits[i];
  }
  return grouped;
}

std::string FormatMagnitude(const DecimalNumber& number, const NumberStyle& style) {
  std::string text = number.Whole();
  if (text.empty() && style.hasLeadingZero) text = "0";
  if (style.isGrouped) text = Group(text);
  if (style.decimals > 0) text += "." + number.Fraction(style.decimals);
  return text;
}

// A number that is rounded to zero keeps its sign, as the original's formats do.
template <Subject kSubject>
Variant FormatAmount(Context&, Arguments arguments) {
  // The formats take Null for a value of the wrong type, not for a missing one.
  if (IsNullArgument(arguments[0])) RaiseRuntime(number::kTypeMismatch);
  DecimalNumber number(arguments[0]);
  const NumberStyle style = ReadStyle(arguments, kSubject == Subject::Currency);
  if (kSubject == Subject::Percent) number.MultiplyByHundred();
  number.Round(style.decimals);
  std::string text = FormatMagnitude(number, style);
  if (kSubject == Subject::Currency) text.insert(0, "$");
  if (number.IsNegative()) text = style.hasParentheses ? "(" + text + ")" : "-" + text;
  if (kSubject == Subject::Percent) text += "%";
  return Variant::FromText(text);
}

enum class DateFormat : std::int32_t {
  General = 0,
  LongDate = 1,
  ShortDate = 2,
  LongTime = 3,
  ShortTime = 4
};

template <class... Values>
std::u16string Print(const char* format, Values... values) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, format, values...);
  return std::u16string(buffer, buffer + length);
}

std::u16string FormatLongDate(double date, const automation::DateParts& parts) {
  std::u16string text(EnglishWeekday(WeekdayOf(date, 1)));
  text += u", ";
  text += EnglishMonth(parts.month);
  return text + Print(" %d, %d", parts.day, parts.year);
}

std::u16string FormatAs(double date, DateFormat format) {
  const automation::DateParts parts = automation::SplitDate(date);
  switch (format) {
    case DateFormat::LongDate: return FormatLongDate(date, parts);
    case DateFormat::ShortDate: return Print("%d/%d/%d", parts.month, parts.day, parts.year);
    case DateFormat::LongTime:
      return Print("%d:%02d:%02d %s", parts.hour % 12 == 0 ? 12 : parts.hour % 12, parts.minute, parts.second,
                   parts.hour < 12 ? "AM" : "PM");
    case DateFormat::ShortTime: return Print("%02d:%02d", parts.hour, parts.minute);
    default: return FormatGeneralDate(date);
  }
}

Variant FormatDateTime(Context&, Arguments arguments) {
  if (IsNullArgument(arguments[0])) RaiseRuntime(number::kTypeMismatch);
  const double date = ToDate64(arguments[0]);
  const std::int32_t format = LongOr(arguments, 1, 0);
  if (format < 0 || format > static_cast<std::int32_t>(DateFormat::ShortTime)) RaiseInvalidCall();
  return Variant::FromUtf16(FormatAs(date, static_cast<DateFormat>(format)));
}

constexpr Intrinsic kIntrinsics[] = {
    {"FormatCurrency", 1, 5, FormatAmount<Subject::Currency>},
    {"FormatDateTime", 1, 2, FormatDateTime},
    {"FormatNumber", 1, 5, FormatAmount<Subject::Number>},
    {"FormatPercent", 1, 5, FormatAmount<Subject::Percent>},
};

}  // namespace

std::span<const Intrinsic> FormatIntrinsics() { return kIntrinsics; }

}  // namespace hearthmake::vbscript
