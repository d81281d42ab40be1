#pragma once

#include <cstdint>
#include <string>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// A number by its decimal digits, as texts are formatted from it: what CStr would show, not what the binary
// fraction is, so 1.005 rounds to 1.01.
class DecimalNumber {
 public:
  // Of any value that CDbl takes. A Currency keeps all its digits, others have fifteen. Errors as of
  // ToDouble64.
  explicit DecimalNumber(const automation::Variant& value);

  bool IsNegative() const { return m_isNegative; }
  void MultiplyByHundred() { m_pointAt += 2; }
  // To so many digits behind the point; halves go away from zero.
  void Round(std::int32_t decimals);
  // The digits before the point, none for a number below one, and so many behind it.
  std::string Whole() const;
  std::string Fraction(std::int32_t decimals) const;

 private:
  void SetDouble(double magnitude);
  void SetCurrency(std::int64_t tenThousandths);
  void CarryInto(std::size_t count);

  bool m_isNegative = false;
  std::string m_digits;  // the number is 0.DIGITS times ten to the power of m_pointAt
  std::int32_t m_pointAt = 0;
};

}  // namespace hearthmake::vbscript
