#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/OleDate.hpp"

namespace hearthmake::vbscript {

// Reads one date or time, or both in either order, from a text of the US English locale.
class DateText {
 public:
  // kThisYear lets a date without a year ask the clock.
  DateText(std::u16string_view text, std::int32_t currentYear) : m_text(text), m_currentYear(currentYear) {}

  std::optional<double> Parse();

 private:
  enum class Kind : std::uint8_t { Number, Month, Am, Pm };
  struct Part {
    Kind kind = Kind::Number;
    std::int32_t value = 0;   // of a number, or the month from 1
    std::int32_t digits = 0;  // of a number
    char16_t separator = 0;   // before it: one of "/-.:,", a blank, or 0 where nothing stands
  };

  bool Split();
  bool ReadSeparator(char16_t& separator);
  bool ReadNumber(Part& part);
  bool ReadWord(Part& part);

  bool TakeTime();
  bool TakeTimeAt(std::size_t first, std::size_t count);
  std::size_t FindTime(char16_t separator, std::size_t& count) const;
  bool IsTimeOfDay(std::size_t first, std::size_t count) const;
  bool HasHalfDayAt(std::size_t index) const;

  bool TakeDate();
  bool TakeNumbers(const std::vector<Part>& numbers);
  bool TakeNumbersWithMonth(std::int32_t month, const std::vector<Part>& numbers);
  bool SetDate(const Part& year, std::int32_t month, std::int32_t day);
  bool SetDateOfThisYear(std::int32_t month, std::int32_t day);

  std::u16string_view m_text;
  std::int32_t m_currentYear;
  std::vector<Part> m_parts;
  automation::DateParts m_date;
  bool m_hasTime = false;
};

}  // namespace hearthmake::vbscript
