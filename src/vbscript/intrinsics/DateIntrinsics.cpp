#include <array>
#include <cmath>
#include <limits>

#include "automation/OleDate.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Arguments.hpp"
#include "vbscript/intrinsics/Calendar.hpp"
#include "vbscript/intrinsics/EnglishNames.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Dates.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

constexpr double kSecondsADay = 86400;

double TimeOfDay(double date) { return std::fabs(date - std::trunc(date)); }

double HostNow(Context& context) { return context.host.Platform().clock->Now(); }

// --- now

Variant Now(Context& context, Arguments) {
  // Whole seconds; a hair is added first, so that a whole second that the fraction can't hold exactly stays.
  const double now = HostNow(context);
  const double second = std::floor(TimeOfDay(now) * kSecondsADay + 1e-4);
  return Variant::FromDate(std::trunc(now) + second / kSecondsADay);
}

Variant Date(Context& context, Arguments) { return Variant::FromDate(std::trunc(HostNow(context))); }

Variant Time(Context& context, Arguments arguments) {
  return Variant::FromDate(TimeOfDay(Now(context, arguments).AsDouble()));
}

// Seconds since midnight, with their fraction.
Variant Timer(Context& context, Arguments) {
  return Variant::FromSingle(static_cast<float>(TimeOfDay(HostNow(context)) * kSecondsADay));
}

// --- parts

// The first day of a week that an argument names: 0 is the system's, which is Sunday.
std::int32_t FirstDayOr(Arguments arguments, std::size_t place, std::int32_t otherwise) {
  const std::int32_t day = LongOr(arguments, place, otherwise);
  if (day < 0 || day > 7) RaiseInvalidCall();
  return day == 0 ? 1 : day;
}

// 0 is the system's rule, the week with January 1.
FirstWeek FirstWeekOr(Arguments arguments, std::size_t place) {
  const std::int32_t rule = LongOr(arguments, place, 1);
  if (rule < 0 || rule > 3) RaiseInvalidCall();
  return rule == 0 ? FirstWeek::WithJanuaryFirst : static_cast<FirstWeek>(rule);
}

// An interval text; Null is error 94, one that names none error 5.
DateInterval AsInterval(Variant& argument) {
  const std::optional<DateInterval> interval = ParseInterval(AsText(argument).AsUtf16());
  if (!interval) RaiseInvalidCall();
  return *interval;
}

Variant PartAsInteger(double date, DateInterval interval, const WeekRule& rule) {
  return Variant::FromInteger(static_cast<std::int16_t>(PartOfDate(date, interval, rule)));
}

template <DateInterval kInterval>
Variant Part(Context&, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  return PartAsInteger(ToDate64(arguments[0]), kInterval, {});
}

Variant Weekday(Context&, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const WeekRule rule{FirstDayOr(arguments, 1, 1)};
  return PartAsInteger(ToDate64(arguments[0]), DateInterval::Weekday, rule);
}

// DatePart(interval, date, firstDayOfWeek, firstWeekOfYear)
Variant DatePart(Context&, Arguments arguments) {
  const DateInterval interval = AsInterval(arguments[0]);
  if (IsNullArgument(arguments[1])) return Variant::Null();
  const WeekRule rule{FirstDayOr(arguments, 2, 1), FirstWeekOr(arguments, 3)};
  return PartAsInteger(ToDate64(arguments[1]), interval, rule);
}

// --- names

Variant NameOf(Context& context, std::u16string_view name, bool abbreviate) {
  return context.texts.Text(abbreviate ? name.substr(0, 3) : name);
}

Variant MonthName(Context& context, Arguments arguments) {
  const std::int32_t month = AsLong(arguments[0]);
  const bool abbreviate = BooleanOr(arguments, 1, false);
  if (month < 1 || month > 12) RaiseInvalidCall();
  return NameOf(context, EnglishMonth(month), abbreviate);
}

// WeekdayName(weekday, abbreviate, firstDayOfWeek)
Variant WeekdayName(Context& context, Arguments arguments) {
  const std::int32_t weekday = AsLong(arguments[0]);
  const bool abbreviate = BooleanOr(arguments, 1, false);
  const std::int32_t firstDay = FirstDayOr(arguments, 2, 1);
  if (weekday < 1 || weekday > 7) RaiseInvalidCall();
  return NameOf(context, EnglishWeekday((weekday + firstDay - 2) % 7 + 1), abbreviate);
}

// --- arithmetic

Variant CheckedDate(double date) {
  if (!IsScriptDate(date)) RaiseInvalidCall();
  return Variant::FromDate(date);
}

// DateAdd(interval, number, date): a number with a fraction is rounded first.
Variant DateAdd(Context&, Arguments arguments) {
  const DateInterval interval = AsInterval(arguments[0]);
  const std::int32_t count = AsLong(arguments[1]);
  if (IsNullArgument(arguments[2])) return Variant::Null();
  return CheckedDate(AddInterval(ToDate64(arguments[2]), interval, count));
}

// DateDiff(interval, date1, date2, firstDayOfWeek, firstWeekOfYear). The last is checked, but no interval
// that is counted depends on it.
Variant DateDiff(Context&, Arguments arguments) {
  const DateInterval interval = AsInterval(arguments[0]);
  if (IsNullArgument(arguments[1]) || IsNullArgument(arguments[2])) return Variant::Null();
  const std::int32_t firstDay = FirstDayOr(arguments, 3, 1);
  FirstWeekOr(arguments, 4);
  const std::int64_t count =
      CountIntervals(ToDate64(arguments[1]), ToDate64(arguments[2]), interval, firstDay);
  if (count != static_cast<std::int32_t>(count)) RaiseRuntime(number::kOverflow);
  return Variant::FromLong(static_cast<std::int32_t>(count));
}

// --- from parts and texts

// Negative years count back from 2000.
std::int32_t YearOf(std::int32_t year) { return year < 0 ? year + 2000 : FullYear(year); }

Variant DateSerial(Context&, Arguments arguments) {
  const std::int32_t year = ToInteger16(arguments[0]);
  const std::int32_t month = ToInteger16(arguments[1]);
  const std::int32_t day = ToInteger16(arguments[2]);
  return CheckedDate(DateOfParts(YearOf(year), month, day));
}

Variant TimeSerial(Context&, Arguments arguments) {
  const std::int32_t hour = ToInteger16(arguments[0]);
  const std::int32_t minute = ToInteger16(arguments[1]);
  const std::int32_t second = ToInteger16(arguments[2]);
  return CheckedDate(TimeOfParts(hour, minute, second));
}

Variant DateValue(Context&, Arguments arguments) {
  return Variant::FromDate(std::trunc(ToDate64(Resolve(arguments[0]))));
}

Variant TimeValue(Context&, Arguments arguments) {
  return Variant::FromDate(TimeOfDay(ToDate64(Resolve(arguments[0]))));
}

constexpr Intrinsic kIntrinsics[] = {
    {"Date", 0, 0, Date},
    {"DateAdd", 3, 3, DateAdd},
    {"DateDiff", 3, 5, DateDiff},
    {"DatePart", 2, 4, DatePart},
    {"DateSerial", 3, 3, DateSerial},
    {"DateValue", 1, 1, DateValue},
    {"Day", 1, 1, Part<DateInterval::Day>},
    {"Hour", 1, 1, Part<DateInterval::Hour>},
    {"Minute", 1, 1, Part<DateInterval::Minute>},
    {"Month", 1, 1, Part<DateInterval::Month>},
    {"MonthName", 1, 2, MonthName},
    {"Now", 0, 0, Now},
    {"Second", 1, 1, Part<DateInterval::Second>},
    {"Time", 0, 0, Time},
    {"TimeSerial", 3, 3, TimeSerial},
    {"TimeValue", 1, 1, TimeValue},
    {"Timer", 0, 0, Timer},
    {"Weekday", 1, 2, Weekday},
    {"WeekdayName", 1, 3, WeekdayName},
    {"Year", 1, 1, Part<DateInterval::Year>},
};

}  // namespace

std::span<const Intrinsic> DateIntrinsics() { return kIntrinsics; }

}  // namespace hearthmake::vbscript
