#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hearthmake::vbscript {

// Dates of scripts: OLE dates from 100-01-01 to 9999-12-31. Two-digit years up to 29 are of this century,
// others of the one before.

inline constexpr double kFirstDate = -657434;
inline constexpr double kLastDate = 2958465;

// Asks the clock of the computer for the year of a date that names none.
inline constexpr std::int32_t kThisYear = 0;

// What a text says as a date in the engine's locale (US English): numbers in every order that makes sense
// (month first), names of months, am and pm, a time alone, a date alone, ISO dates. Nothing for what is none.
std::optional<double> ParseDate(std::u16string_view text, std::int32_t currentYear = kThisYear);
// The same for a literal, whose text stands between number signs.
std::optional<double> ParseDateLiteral(std::u16string_view text, std::int32_t currentYear = kThisYear);
// As CStr prints it: "3/24/2001 1:05:00 PM", the date alone at midnight, the time alone on day 0.
std::u16string FormatGeneralDate(double date);

// The year that one or two digits stand for; other years as they are.
std::int32_t FullYear(std::int32_t year);
std::int32_t DaysOfMonth(std::int32_t year, std::int32_t month);

}  // namespace hearthmake::vbscript
