#include "vbscript/values/NumberText.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

namespace {

// More digits than any Double needs to be told from its neighbours; what follows only counts as more or
// nothing.
constexpr std::size_t kMostDigitsKept = 800;
constexpr std::int64_t kLargestExponent = 4'000'000'000;  // more than a text has places

bool IsBlank(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }
bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

void SkipBlanks(std::u16string_view& text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
}

// Signs, currency sign and opening parenthesis before the digits, or what may follow them: each once at most,
// in any order, blanks between them.
struct Decoration {
  bool hasSign = false;
  bool isNegative = false;
  bool hasCurrency = false;
  bool isOpen = false;  // "(" without its ")"

  void ReadBefore(std::u16string_view& text) {
    for (SkipBlanks(text); !text.empty(); SkipBlanks(text)) {
      const char16_t unit = text.front();
      if (!TakeSignOrCurrency(unit)) {
        if (unit != u'(' || isOpen) return;
        isOpen = isNegative = true;
      }
      text.remove_prefix(1);
    }
  }
  void ReadBehind(std::u16string_view& text) {
    for (SkipBlanks(text); !text.empty(); SkipBlanks(text)) {
      const char16_t unit = text.front();
      if (!TakeSignOrCurrency(unit)) {
        if (unit != u')' || !isOpen) return;
        isOpen = false;
      }
      text.remove_prefix(1);
    }
  }

 private:
  bool TakeSignOrCurrency(char16_t unit) {
    if ((unit == u'+' || unit == u'-') && !hasSign) {
      hasSign = true;
      isNegative = isNegative || unit == u'-';
      return true;
    }
    if (unit == u'$' && !hasCurrency) {
      hasCurrency = true;
      return true;
    }
    return false;
  }
};

// "E+5", "d-3"; false for a letter without digits behind it.
bool ReadExponent(std::u16string_view& text, std::int64_t& exponent) {
  if (text.empty() || (text.front() | 0x20) < u'd' || (text.front() | 0x20) > u'e') return true;
  text.remove_prefix(1);
  const bool hasSign = !text.empty() && (text.front() == u'+' || text.front() == u'-');
  const bool isNegative = hasSign && text.front() == u'-';
  if (hasSign) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return false;
  std::int64_t value = 0;
  for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1))
    value = std::min(value * 10 + (text.front() - u'0'), kLargestExponent);
  exponent = isNegative ? -value : value;
  return true;
}

int DigitValue(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  const int letter = unit | 0x20;
  return unit < 0x80 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 16;
}

}  // namespace

std::optional<NumberText> NumberText::Parse(std::u16string_view text) {
  NumberText number;
  Decoration decoration;
  decoration.ReadBefore(text);
  if (text.empty()) return std::nullopt;
  if (text.front() == u'&') {
    if (decoration.hasCurrency || decoration.isOpen || !number.ParseBits(text)) return std::nullopt;
  } else {
    std::size_t end = 0;
    while (end < text.size() && (IsDigit(text[end]) || text[end] == u'.' || text[end] == u',')) ++end;
    std::u16string_view rest = text.substr(end);
    std::int64_t exponent = 0;
    if (!number.ParseDecimal(text.substr(0, end)) || !ReadExponent(rest, exponent)) return std::nullopt;
    number.m_powerOfTen += exponent;
    decoration.ReadBehind(rest);
    if (!rest.empty() || decoration.isOpen) return std::nullopt;
  }
  number.m_isNegative = decoration.isNegative;
  return number;
}

// Digits, one point, thousands separators anywhere behind the first digit.
bool NumberText::ParseDecimal(std::u16string_view text) {
  bool hasDigit = false;
  bool hasPoint = false;
  for (const char16_t unit : text) {
    if (unit == u'.') {
      if (hasPoint) return false;
      hasPoint = true;
    } else if (unit == u',') {
      if (!hasDigit) return false;
    } else {
      hasDigit = true;
      if (m_digits.size() == kMostDigitsKept) {
        if (unit != u'0' && m_digits.back() == '0') m_digits.back() = '1';
        if (!hasPoint) ++m_powerOfTen;
        continue;
      }
      if (hasPoint) --m_powerOfTen;
      if (unit != u'0' || !m_digits.empty()) m_digits.push_back(static_cast<char>(unit));
    }
  }
  return hasDigit;
}

// "&H1F", "&o17", perhaps with an "&" behind the digits.
bool NumberText::ParseBits(std::u16string_view text) {
  m_hasBits = true;
  while (IsBlank(text.back())) text.remove_suffix(1);
  if (text.size() > 3 && text.back() == u'&') text.remove_suffix(1);
  if (text.size() < 3) return false;
  const char16_t letter = text[1] | 0x20;
  if (letter != u'h' && letter != u'o') return false;
  const int shift = letter == u'h' ? 4 : 3;
  for (const char16_t unit : text.substr(2)) {
    const int digit = DigitValue(unit);
    if (digit >= 1 << shift) return false;
    if (m_bits >> (64 - shift) != 0) m_hasTooManyBits = true;
    m_bits = m_bits << shift | static_cast<std::uint64_t>(digit);
  }
  return true;
}

// Up to 32 bits are those of a Long, more those of the 64-bit number that a Double or a Currency starts from.
std::int64_t NumberText::SignedBits() const {
  return m_bits <= 0xFFFFFFFF ? static_cast<std::int32_t>(m_bits) : static_cast<std::int64_t>(m_bits);
}

// Up to fifteen digits and a power of ten that a Double holds exactly need one rounding, that of the
// division: as exact as reading the digits, and much faster.
std::optional<double> NumberText::SmallToDouble() const {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  constexpr std::size_t kMostDigits = 15;
  if (m_digits.size() > kMostDigits || std::abs(m_powerOfTen) > 15) return std::nullopt;
  std::int64_t digits = 0;
  for (const char digit : m_digits) digits = digits * 10 + (digit - '0');
  const auto value = static_cast<double>(digits);
  return m_powerOfTen < 0 ? value / kPowers[-m_powerOfTen] : value * kPowers[m_powerOfTen];
}

std::optional<double> NumberText::ToDouble() const {
  if (m_hasBits) {
    if (m_hasTooManyBits) return std::nullopt;
    const auto value = static_cast<double>(SignedBits());
    return m_isNegative ? -value : value;
  }
  if (m_digits.empty()) return 0.0;
  if (const auto value = SmallToDouble()) return m_isNegative ? -*value : *value;
  const std::string text = m_digits + "e" + std::to_string(m_powerOfTen);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    if (m_powerOfTen + static_cast<std::int64_t>(m_digits.size()) > 0) return std::nullopt;
    value = 0;
  }
  return m_isNegative ? -value : value;
}

std::optional<std::int16_t> NumberText::ToInteger() const {
  if (m_hasBits) {
    if (m_hasTooManyBits || m_bits > 0xFFFF) return std::nullopt;
    if (!m_isNegative) return static_cast<std::int16_t>(m_bits);
  }
  const auto wide = ToLong();
  if (!wide || *wide < -32768 || *wide > 32767) return std::nullopt;
  return static_cast<std::int16_t>(*wide);
}

std::optional<std::int32_t> NumberText::ToLong() const {
  if (m_hasBits && m_bits > 0xFFFFFFFF) return std::nullopt;
  const auto value = ToDouble();
  if (!value) return std::nullopt;
  const double rounded = std::nearbyint(*value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) return std::nullopt;
  return static_cast<std::int32_t>(rounded);
}

// Through the digits, since a Double cannot tell the last of them apart.
std::optional<std::int64_t> NumberText::ToCurrency() const {
  std::string digits = m_digits;
  std::int64_t powerOfTen = m_powerOfTen + 4;
  if (m_hasBits) {
    std::int64_t amount = 0;
    if (m_hasTooManyBits || __builtin_mul_overflow(SignedBits(), m_isNegative ? -10000 : 10000, &amount))
      return std::nullopt;
    return amount;
  }
  if (digits.empty()) return 0;
  const std::int64_t places = static_cast<std::int64_t>(digits.size()) + powerOfTen;
  if (places > 19) return std::nullopt;
  if (places < 0) return 0;
  if (powerOfTen > 0) digits.append(static_cast<std::size_t>(powerOfTen), '0');
  std::string_view kept = std::string_view(digits).substr(0, static_cast<std::size_t>(places));
  const std::string_view cut = std::string_view(digits).substr(static_cast<std::size_t>(places));
  std::uint64_t value = 0;
  for (const char digit : kept) value = value * 10 + static_cast<std::uint64_t>(digit - '0');
  const bool isHalf = cut.starts_with('5') && cut.find_first_not_of('0', 1) == std::string_view::npos;
  if (!cut.empty() && cut.front() >= '5' && (!isHalf || value % 2 != 0)) ++value;
  const std::uint64_t limit = m_isNegative ? 1ULL << 63 : (1ULL << 63) - 1;
  if (value > limit) return std::nullopt;
  return static_cast<std::int64_t>(m_isNegative ? 0 - value : value);
}

std::optional<double> ParseNumber16(std::u16string_view text) {
  const auto number = NumberText::Parse(text);
  return number ? number->ToDouble() : std::nullopt;
}

}  // namespace hearthmake::vbscript
