#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace hearthmake::vbscript {

// What a text says as a number, before it is known which subtype it shall become: a decimal number keeps its
// digits, a hexadecimal or octal one its bits.
class NumberText {
 public:
  // Nothing for a text that is no number.
  static std::optional<NumberText> Parse(std::u16string_view text);

  // Bits of "&H" and "&O" take the sign of the subtype that they fill: "&HFFFF" is -1 as an Integer and
  // 65535 as a Long. Each is nothing when the number does not fit.
  std::optional<double> ToDouble() const;
  std::optional<std::int16_t> ToInteger() const;
  std::optional<std::int32_t> ToLong() const;
  std::optional<std::int64_t> ToCurrency() const;

 private:
  bool ParseDecimal(std::u16string_view text);
  bool ParseBits(std::u16string_view text);
  std::int64_t SignedBits() const;
  std::optional<double> SmallToDouble() const;

  bool m_isNegative = false;
  bool m_hasBits = false;
  bool m_hasTooManyBits = false;
  std::uint64_t m_bits = 0;
  std::string m_digits;           // without leading zeros; empty for 0
  std::int64_t m_powerOfTen = 0;  // of the last digit
};

}  // namespace hearthmake::vbscript
