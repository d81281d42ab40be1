#include "vbscript/intrinsics/Calendar.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "automation/OleDate.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

using automation::DateParts;
using automation::SplitDate;

namespace {

constexpr std::int64_t kSecondsADay = 86400;
constexpr double kFirstDate = -657434;  // 100-01-01
constexpr double kEndOfDates = 2958466;
const std::chrono::sys_days kDayZero = std::chrono::year{1899} / 12 / 30;

constexpr std::pair<std::u16string_view, DateInterval> kIntervals[] = {
    {u"yyyy", DateInterval::Year},   {u"q", DateInterval::Quarter}, {u"m", DateInterval::Month},
    {u"y", DateInterval::DayOfYear}, {u"d", DateInterval::Day},     {u"w", DateInterval::Weekday},
    {u"ww", DateInterval::Week},     {u"h", DateInterval::Hour},    {u"n", DateInterval::Minute},
    {u"s", DateInterval::Second},
};

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  return value % divisor < 0 ? quotient - 1 : quotient;
}

// The time of day of a date before day 0 counts forward too, so the number alone is not in order of time:
// these two go to a number of days that is, and back.
double ToLinear(double date) {
  const double day = std::trunc(date);
  return day + std::fabs(date - day);
}

double FromLinear(double linear) {
  const double day = std::floor(linear);
  return day < 0 ? day - (linear - day) : linear;
}

// Whole seconds since day 0.
std::int64_t ToSeconds(double date) { return std::llround(ToLinear(date) * kSecondsADay); }

double FromSeconds(std::int64_t seconds) {
  const std::int64_t day = FloorDivide(seconds, kSecondsADay);
  const double time = static_cast<double>(seconds - day * kSecondsADay) / kSecondsADay;
  return day < 0 ? static_cast<double>(day) - time : static_cast<double>(day) + time;
}

// The number of the day on which a moment lies, the moment taken to whole seconds.
std::int64_t DayOf(double date) { return FloorDivide(ToSeconds(date), kSecondsADay); }

std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
  const std::chrono::sys_days date =
      std::chrono::year{static_cast<int>(year)} / static_cast<int>(month) / static_cast<int>(day);
  return (date - kDayZero).count();
}

std::int32_t LastDayOf(std::int64_t year, std::int64_t month) {
  const std::int64_t next = month == 12 ? DayNumber(year + 1, 1, 1) : DayNumber(year, month + 1, 1);
  return static_cast<std::int32_t>(next - DayNumber(year, month, 1));
}

// Day 1 was a Sunday.
std::int32_t WeekdayOfDay(std::int64_t day, std::int32_t firstDay) {
  const std::int64_t sinceFirst = day - 1 - (firstDay - 1);
  return static_cast<std::int32_t>(sinceFirst - 7 * FloorDivide(sinceFirst, 7)) + 1;
}

double AddMonths(double date, std::int64_t count) {
  const DateParts parts = SplitDate(date);
  const std::int64_t months = std::int64_t{parts.year} * 12 + parts.month - 1 + count;
  const std::int64_t year = FloorDivide(months, 12);
  const std::int64_t month = months - 12 * year + 1;
  if (year < 0 || year > 9999) return kEndOfDates;  // out of range, and safely so
  const std::int64_t day = DayNumber(year, month, std::min(parts.day, LastDayOf(year, month)));
  const double time = std::fabs(date - std::trunc(date));
  return FromLinear(static_cast<double>(day) + time);
}

std::int64_t MonthIndex(const DateParts& parts) { return std::int64_t{parts.year} * 12 + parts.month - 1; }

// The week that a day lies in, counted from some week.
std::int64_t WeekIndex(std::int64_t day, std::int32_t firstDay) {
  return FloorDivide(day - 1 - (firstDay - 1), 7);
}

std::int64_t StartOfFirstWeek(std::int32_t year, const WeekRule& rule) {
  const std::int64_t january = DayNumber(year, 1, 1);
  const std::int32_t daysBefore = WeekdayOfDay(january, rule.firstDay) - 1;
  const std::int32_t daysInYear = 7 - daysBefore;
  const bool isFirst = rule.firstWeek == FirstWeek::WithJanuaryFirst || daysBefore == 0 ||
                       (rule.firstWeek == FirstWeek::WithFourDays && daysInYear >= 4);
  return isFirst ? january - daysBefore : january + daysInYear;
}

// Automation's own calendar has a well-known mistake that scripts reckon with: by ISO's rule, the last Monday
// of a year before a leap year is in week 53 where it should be in week 1 (12/29/2003, 12/31/2007 …).
bool IsMondayOfWeek53(std::int64_t day, std::int32_t year, const WeekRule& rule) {
  constexpr std::int32_t kMonday = 2;
  return rule.firstDay == kMonday && WeekdayOfDay(day, kMonday) == 1 && std::chrono::year{year + 1}.is_leap();
}

std::int32_t WeekOf(std::int64_t day, std::int32_t year, const WeekRule& rule) {
  if (day < StartOfFirstWeek(year, rule)) return WeekOf(DayNumber(year - 1, 12, 31), year - 1, rule);
  if (rule.firstWeek == FirstWeek::WithFourDays && day >= StartOfFirstWeek(year + 1, rule))
    return IsMondayOfWeek53(day, year, rule) ? 53 : 1;
  return static_cast<std::int32_t>((day - StartOfFirstWeek(year, rule)) / 7) + 1;
}

}  // namespace

std::optional<DateInterval> ParseInterval(std::u16string_view text) {
  for (const auto& [name, interval] : kIntervals) {
    if (EqualsIgnoreCase(text, name)) return interval;
  }
  return std::nullopt;
}

bool IsScriptDate(double date) { return std::trunc(date) >= kFirstDate && date < kEndOfDates; }

std::int32_t WeekdayOf(double date, std::int32_t firstDay) { return WeekdayOfDay(DayOf(date), firstDay); }

double AddInterval(double date, DateInterval interval, std::int32_t count) {
  const std::int64_t wide = count;
  switch (interval) {
    case DateInterval::Year: return AddMonths(date, 12 * wide);
    case DateInterval::Quarter: return AddMonths(date, 3 * wide);
    case DateInterval::Month: return AddMonths(date, wide);
    case DateInterval::Week: return FromLinear(ToLinear(date) + 7.0 * count);
    case DateInterval::Hour: return FromSeconds(ToSeconds(date) + 3600 * wide);
    case DateInterval::Minute: return FromSeconds(ToSeconds(date) + 60 * wide);
    case DateInterval::Second: return FromSeconds(ToSeconds(date) + wide);
    default: return FromLinear(ToLinear(date) + count);
  }
}

std::int64_t CountIntervals(double from, double to, DateInterval interval, std::int32_t firstDay) {
  const std::int64_t days = DayOf(to) - DayOf(from);
  const auto steps = [&](std::int64_t seconds) {
    return FloorDivide(ToSeconds(to), seconds) - FloorDivide(ToSeconds(from), seconds);
  };
  const auto months = [&](std::int64_t count) {
    return MonthIndex(SplitDate(to)) / count - MonthIndex(SplitDate(from)) / count;
  };
  switch (interval) {
    case DateInterval::Year: return months(12);
    case DateInterval::Quarter: return months(3);
    case DateInterval::Month: return months(1);
    case DateInterval::Weekday: return days / 7;
    case DateInterval::Week: return WeekIndex(DayOf(to), firstDay) - WeekIndex(DayOf(from), firstDay);
    case DateInterval::Hour: return steps(3600);
    case DateInterval::Minute: return steps(60);
    case DateInterval::Second: return steps(1);
    default: return days;
  }
}

std::int32_t PartOfDate(double date, DateInterval interval, const WeekRule& rule) {
  const DateParts parts = SplitDate(date);
  switch (interval) {
    case DateInterval::Year: return parts.year;
    case DateInterval::Quarter: return (parts.month - 1) / 3 + 1;
    case DateInterval::Month: return parts.month;
    case DateInterval::DayOfYear:
      return static_cast<std::int32_t>(DayOf(date) - DayNumber(parts.year, 1, 1)) + 1;
    case DateInterval::Day: return parts.day;
    case DateInterval::Weekday: return WeekdayOf(date, rule.firstDay);
    case DateInterval::Week: return WeekOf(DayOf(date), parts.year, rule);
    case DateInterval::Hour: return parts.hour;
    case DateInterval::Minute: return parts.minute;
    default: return parts.second;
  }
}

double DateOfParts(std::int32_t year, std::int32_t month, std::int32_t day) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  const std::int64_t realYear = FloorDivide(months, 12);
  // Far out of range: chrono's years end at 32767, and no day that fits the language leads back.
  if (realYear < -200 || realYear > 10200) return kEndOfDates;
  return static_cast<double>(DayNumber(realYear, months - 12 * realYear + 1, 1) + day - 1);
}

double TimeOfParts(std::int32_t hour, std::int32_t minute, std::int32_t second) {
  return FromSeconds(std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second);
}

}  // namespace hearthmake::vbscript
