#include "vbscript/values/DateText.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>

#include "vbscript/values/Dates.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

namespace {

// More than any date has; a longer text is none, whatever stands in it.
constexpr std::size_t kMaximumParts = 8;
constexpr std::int32_t kMaximumDigits = 4;
constexpr std::size_t kAbbreviation = 3;

constexpr std::array<std::u16string_view, 12> kMonths = {u"january",   u"february", u"march",    u"april",
                                                         u"may",       u"june",     u"july",     u"august",
                                                         u"september", u"october",  u"november", u"december"};

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool IsBlank(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }
bool IsLetter(char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z' && unit < 0x80; }
bool IsSeparator(char16_t unit) {
  return unit == u'/' || unit == u'-' || unit == u'.' || unit == u':' || unit == u',';
}

std::int32_t MonthOf(std::u16string_view word) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (EqualsIgnoreCase(word, kMonths[i]) || EqualsIgnoreCase(word, kMonths[i].substr(0, kAbbreviation)))
      return static_cast<std::int32_t>(i) + 1;
  }
  return 0;
}

// The local year. The fields of now in UTC, read as local ones, are off by what the two clocks differ by;
// unlike std::localtime this leaves no buffer for other threads to write into.
std::int32_t YearOfClock() {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto today = std::chrono::floor<std::chrono::days>(now);
  const std::chrono::year_month_day date(today);
  std::tm fields{};
  fields.tm_year = static_cast<int>(date.year()) - 1900;
  fields.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  fields.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  fields.tm_sec = static_cast<int>((now - today).count());
  fields.tm_isdst = -1;
  const auto local = now + (now - std::chrono::system_clock::from_time_t(std::mktime(&fields)));
  return static_cast<std::int32_t>(
      std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(local)).year());
}

}  // namespace

std::optional<double> DateText::Parse() {
  if (!Split() || m_parts.empty() || !TakeTime() || !TakeDate()) return std::nullopt;
  return automation::JoinDate(m_date);
}

// Takes the text apart into numbers, months, AM and PM, each with the separator before it.
bool DateText::Split() {
  while (true) {
    Part part;
    if (!ReadSeparator(part.separator)) return false;
    if (m_text.empty()) return part.separator == 0 || part.separator == u' ';
    if (m_parts.size() == kMaximumParts) return false;
    if (!(IsDigit(m_text.front()) ? ReadNumber(part) : ReadWord(part))) return false;
    m_parts.push_back(part);
  }
}

// Blanks, one separator at most, blanks.
bool DateText::ReadSeparator(char16_t& separator) {
  for (; !m_text.empty(); m_text.remove_prefix(1)) {
    const char16_t unit = m_text.front();
    if (IsBlank(unit)) {
      if (separator == 0 && !m_parts.empty()) separator = u' ';
    } else if (IsSeparator(unit)) {
      if (m_parts.empty() || (separator != 0 && separator != u' ')) return false;
      separator = unit;
    } else {
      return true;
    }
  }
  return true;
}

bool DateText::ReadNumber(Part& part) {
  for (; !m_text.empty() && IsDigit(m_text.front()); m_text.remove_prefix(1)) {
    if (++part.digits > kMaximumDigits) return false;
    part.value = part.value * 10 + (m_text.front() - u'0');
  }
  return true;
}

bool DateText::ReadWord(Part& part) {
  const auto end = std::find_if_not(m_text.begin(), m_text.end(), IsLetter);
  const std::u16string_view word = m_text.substr(0, static_cast<std::size_t>(end - m_text.begin()));
  m_text.remove_prefix(word.size());
  if (EqualsIgnoreCase(word, u"am") || EqualsIgnoreCase(word, u"a")) {
    part.kind = Kind::Am;
  } else if (EqualsIgnoreCase(word, u"pm") || EqualsIgnoreCase(word, u"p")) {
    part.kind = Kind::Pm;
  } else {
    part.kind = Kind::Month;
    part.value = MonthOf(word);
  }
  return part.kind != Kind::Month || part.value != 0;
}

// Numbers joined by colons are a time, and so is a number before AM or PM. A point joins a time as well
// ("13.50") where the numbers can be one and no colon says which are.
bool DateText::TakeTime() {
  std::size_t count = 0;
  std::size_t first = FindTime(u':', count);
  if (count == 0) {
    const std::size_t pointed = FindTime(u'.', count);
    if (count != 0 && (IsTimeOfDay(pointed, count) || HasHalfDayAt(pointed + count))) {
      first = pointed;
    } else {
      count = 0;
    }
  }
  for (std::size_t i = 0; count == 0 && i + 1 < m_parts.size(); ++i) {
    if (m_parts[i].kind == Kind::Number && HasHalfDayAt(i + 1)) {
      first = i;
      count = 1;
    }
  }
  return count == 0 || TakeTimeAt(first, count);
}

// The first of the numbers that a separator joins, and how many they are.
std::size_t DateText::FindTime(char16_t separator, std::size_t& count) const {
  count = 0;
  for (std::size_t i = 1; i < m_parts.size(); ++i) {
    if (m_parts[i].separator != separator) continue;
    std::size_t end = i + 1;
    while (end < m_parts.size() && m_parts[end].separator == separator) ++end;
    count = end - i + 1;
    return i - 1;
  }
  return 0;
}

bool DateText::HasHalfDayAt(std::size_t index) const {
  return index < m_parts.size() && (m_parts[index].kind == Kind::Am || m_parts[index].kind == Kind::Pm) &&
         (m_parts[index].separator == 0 || m_parts[index].separator == u' ');
}

bool DateText::IsTimeOfDay(std::size_t first, std::size_t count) const {
  if (count > 3) return false;
  for (std::size_t i = 0; i < count; ++i) {
    const Part& part = m_parts[first + i];
    if (part.kind != Kind::Number || part.digits > 2 || part.value > (i == 0 ? 23 : 59)) return false;
  }
  return true;
}

bool DateText::TakeTimeAt(std::size_t first, std::size_t count) {
  if (!IsTimeOfDay(first, count)) return false;
  const auto value = [&](std::size_t i) { return i < count ? m_parts[first + i].value : 0; };
  m_date.hour = value(0);
  m_date.minute = value(1);
  m_date.second = value(2);
  if (HasHalfDayAt(first + count)) {
    const bool isPm = m_parts[first + count].kind == Kind::Pm;
    if (isPm && m_date.hour < 12) m_date.hour += 12;
    if (!isPm && m_date.hour == 12) m_date.hour = 0;
    ++count;
  }
  // What stands before the time and behind it is the date, and no separator joins the two.
  if (first != 0 && m_parts[first].separator != u' ' && m_parts[first].separator != u',') return false;
  const std::size_t end = first + count;
  if (end < m_parts.size() && m_parts[end].separator != u' ' && m_parts[end].separator != u',') return false;
  if (first != 0 && end < m_parts.size()) return false;
  m_parts.erase(m_parts.begin() + static_cast<std::ptrdiff_t>(first),
                m_parts.begin() + static_cast<std::ptrdiff_t>(end));
  m_hasTime = true;
  return true;
}

bool DateText::TakeDate() {
  if (m_parts.empty()) return m_hasTime;
  std::vector<Part> numbers;
  std::int32_t month = 0;
  for (const Part& part : m_parts) {
    if (part.kind == Kind::Number) {
      numbers.push_back(part);
    } else if (part.kind == Kind::Month && month == 0) {
      month = part.value;
    } else {
      return false;
    }
  }
  return month != 0 ? TakeNumbersWithMonth(month, numbers) : TakeNumbers(numbers);
}

// Month, day and year in the order of the locale, or the next one that makes a date.
bool DateText::TakeNumbers(const std::vector<Part>& numbers) {
  if (numbers.size() == 3) {
    const auto& [a, b, c] = std::array{numbers[0], numbers[1], numbers[2]};
    if (a.digits > 2) return SetDate(a, b.value, c.value) || SetDate(a, c.value, b.value);
    return SetDate(c, a.value, b.value) || SetDate(c, b.value, a.value) || SetDate(a, b.value, c.value) ||
           SetDate(a, c.value, b.value);
  }
  if (numbers.size() != 2) return false;
  const auto& [a, b] = std::array{numbers[0], numbers[1]};
  if (a.digits > 2) return SetDate(a, b.value, 1);
  if (b.digits > 2) return SetDate(b, a.value, 1);
  return SetDateOfThisYear(a.value, b.value) || SetDateOfThisYear(b.value, a.value) ||
         SetDate(b, a.value, 1) || SetDate(a, b.value, 1);
}

bool DateText::TakeNumbersWithMonth(std::int32_t month, const std::vector<Part>& numbers) {
  if (numbers.size() == 2) {
    const auto& [a, b] = std::array{numbers[0], numbers[1]};
    return (a.digits <= 2 && SetDate(b, month, a.value)) || SetDate(a, month, b.value);
  }
  if (numbers.size() != 1) return false;
  const Part& number = numbers.front();
  return (number.digits <= 2 && SetDateOfThisYear(month, number.value)) || SetDate(number, month, 1);
}

bool DateText::SetDate(const Part& year, std::int32_t month, std::int32_t day) {
  m_date.year = year.digits <= 2 ? FullYear(year.value) : year.value;
  if (m_date.year < 100 || month < 1 || month > 12 || day < 1 || day > DaysOfMonth(m_date.year, month))
    return false;
  m_date.month = month;
  m_date.day = day;
  return true;
}

bool DateText::SetDateOfThisYear(std::int32_t month, std::int32_t day) {
  if (m_currentYear == kThisYear) m_currentYear = YearOfClock();
  return SetDate({.value = m_currentYear, .digits = kMaximumDigits}, month, day);
}

}  // namespace hearthmake::vbscript
