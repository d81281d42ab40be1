#include "vbscript/values/Dates.hpp"

#include <chrono>

#include "automation/OleDate.hpp"
#include "vbscript/values/DateText.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr std::size_t kLongestDateText = 100;
constexpr std::int32_t kLastYearOfThisCentury = 29;

}  // namespace

std::optional<double> ParseDate(std::u16string_view text, std::int32_t currentYear) {
  if (text.size() > kLongestDateText) return std::nullopt;
  return DateText(text, currentYear).Parse();
}

std::optional<double> ParseDateLiteral(std::u16string_view text, std::int32_t currentYear) {
  return ParseDate(text, currentYear);
}

std::u16string FormatGeneralDate(double date) {
  const std::string text = automation::FormatDate(date);
  return {text.begin(), text.end()};
}

std::int32_t FullYear(std::int32_t year) {
  if (year < 0 || year > 99) return year;
  return year <= kLastYearOfThisCentury ? 2000 + year : 1900 + year;
}

std::int32_t DaysOfMonth(std::int32_t year, std::int32_t month) {
  const auto last = std::chrono::year{year} / month / std::chrono::last;
  return static_cast<std::int32_t>(static_cast<unsigned>(last.day()));
}

}  // namespace hearthmake::vbscript
