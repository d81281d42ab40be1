#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hearthmake::vbscript {

// Calendar arithmetic on OLE dates, as DateAdd, DateDiff and DatePart do it.

// The part of a date that an interval text ("yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s") names.
enum class DateInterval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

// Nothing for a text that names none; case does not count.
std::optional<DateInterval> ParseInterval(std::u16string_view text);

enum class FirstWeek : std::int32_t { WithJanuaryFirst = 1, WithFourDays = 2, Full = 3 };

// Which day begins a week (1 is Sunday, 7 Saturday), and which week of a year is its first.
struct WeekRule {
  std::int32_t firstDay = 1;
  FirstWeek firstWeek = FirstWeek::WithJanuaryFirst;
};

// 100-01-01 up to the end of 9999-12-31.
bool IsScriptDate(double date);

// From 1 on, counted from the first day of the week.
std::int32_t WeekdayOf(double date, std::int32_t firstDay);

// The date so many intervals later. Months keep the day, or take the last one that the month has. May give
// a date out of range.
double AddInterval(double date, DateInterval interval, std::int32_t count);
// How many boundaries of the interval lie between two dates; Weekday counts whole weeks.
std::int64_t CountIntervals(double from, double to, DateInterval interval, std::int32_t firstDay);
std::int32_t PartOfDate(double date, DateInterval interval, const WeekRule& rule);

// A date of parts that may lie outside their range: month 13 is the January of the next year, day 0 the last
// of the month before.
double DateOfParts(std::int32_t year, std::int32_t month, std::int32_t day);
// A time of day, or a time some days before or after day 0.
double TimeOfParts(std::int32_t hour, std::int32_t minute, std::int32_t second);

}  // namespace hearthmake::vbscript
