#include "vbscript/intrinsics/DecimalNumber.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr int kSignificantDigits = 15;

}  // namespace

DecimalNumber::DecimalNumber(const automation::Variant& value) {
  if (value.Type() == automation::VariantType::Currency) {
    SetCurrency(value.AsCurrency());
    return;
  }
  const double number = ToDouble64(value);
  m_isNegative = number < 0;
  SetDouble(std::fabs(number));
}

void DecimalNumber::SetDouble(double magnitude) {
  if (magnitude == 0 || !std::isfinite(magnitude)) return;
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                 std::chars_format::scientific, kSignificantDigits - 1)
                       .ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  m_digits = text.substr(0, 1);
  m_digits += text.substr(2, kSignificantDigits - 1);
  std::string_view exponent = text.substr(text.find('e') + 1);
  if (exponent.starts_with('+')) exponent.remove_prefix(1);
  std::from_chars(exponent.data(), exponent.data() + exponent.size(), m_pointAt);
  ++m_pointAt;
}

void DecimalNumber::SetCurrency(std::int64_t tenThousandths) {
  m_isNegative = tenThousandths < 0;
  const auto bits = static_cast<std::uint64_t>(tenThousandths);
  m_digits = std::to_string(m_isNegative ? 0 - bits : bits);
  m_pointAt = static_cast<std::int32_t>(m_digits.size()) - 4;
}

void DecimalNumber::Round(std::int32_t decimals) {
  const std::int32_t kept = m_pointAt + decimals;
  if (kept >= static_cast<std::int32_t>(m_digits.size())) return;
  if (kept < 0) {
    m_digits.clear();
    return;
  }
  const auto count = static_cast<std::size_t>(kept);
  const bool roundsUp = m_digits[count] >= '5';
  m_digits.resize(count);
  if (roundsUp) CarryInto(count);
}

void DecimalNumber::CarryInto(std::size_t count) {
  std::size_t place = count;
  while (place > 0 && m_digits[place - 1] == '9') m_digits[--place] = '0';
  if (place > 0) {
    ++m_digits[place - 1];
    return;
  }
  m_digits.insert(m_digits.begin(), '1');
  ++m_pointAt;
}

std::string DecimalNumber::Whole() const {
  if (m_pointAt <= 0) return {};
  std::string whole = m_digits.substr(0, static_cast<std::size_t>(m_pointAt));
  if (!m_digits.empty()) whole.resize(static_cast<std::size_t>(m_pointAt), '0');
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
  return whole;
}

std::string DecimalNumber::Fraction(std::int32_t decimals) const {
  std::string fraction;
  if (m_pointAt < 0) fraction.assign(static_cast<std::size_t>(std::min(-m_pointAt, decimals)), '0');
  const auto start = static_cast<std::size_t>(std::max(m_pointAt, 0));
  if (start < m_digits.size()) fraction += m_digits.substr(start);
  fraction.resize(static_cast<std::size_t>(decimals), '0');
  return fraction;
}

}  // namespace hearthmake::vbscript
