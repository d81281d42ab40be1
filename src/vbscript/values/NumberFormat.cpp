#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr int kSmallestFixedExponent = -4;  // 0.0001 is written out, 0.00001 is 1E-05

// Significant digits of a number and the power of ten of the first of them.
struct Scientific {
  std::string digits;  // at least one, no zeros at the end
  int exponent = 0;
};

Scientific Split(double magnitude, int precision) {
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                 std::chars_format::scientific, precision - 1)
                       .ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const std::size_t letter = text.find('e');
  Scientific result;
  result.digits.append(text.substr(0, 1));
  if (precision > 1) result.digits.append(text.substr(2, letter - 2));
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  result.exponent = std::atoi(buffer.data() + letter + 1);
  return result;
}

void AppendFixed(std::u16string& text, const Scientific& number) {
  const auto count = static_cast<int>(number.digits.size());
  const auto append = [&](std::string_view digits) { text.append(digits.begin(), digits.end()); };
  if (number.exponent < 0) {
    text += u"0.";
    text.append(static_cast<std::size_t>(-number.exponent - 1), u'0');
    append(number.digits);
  } else if (count <= number.exponent + 1) {
    append(number.digits);
    text.append(static_cast<std::size_t>(number.exponent + 1 - count), u'0');
  } else {
    const auto whole = static_cast<std::size_t>(number.exponent + 1);
    append(std::string_view(number.digits).substr(0, whole));
    text += u'.';
    append(std::string_view(number.digits).substr(whole));
  }
}

void AppendExponent(std::u16string& text, const Scientific& number) {
  text += static_cast<char16_t>(number.digits.front());
  if (number.digits.size() > 1) text += u'.';
  text.append(number.digits.begin() + 1, number.digits.end());
  text += number.exponent < 0 ? u"E-" : u"E+";
  const std::string exponent = std::to_string(std::abs(number.exponent));
  if (exponent.size() < 2) text += u'0';
  text.append(exponent.begin(), exponent.end());
}

std::u16string Format(double value, int precision) {
  if (value == 0) return u"0";
  const Scientific number = Split(std::fabs(value), precision);
  std::u16string text;
  if (value < 0) text += u'-';
  // A fraction is written out as long as its last digit is one of the first fifteen (seven) places: 1/24 is
  // 4.16666666666667E-02, while 0.0416 stays as it is.
  const int places = static_cast<int>(number.digits.size()) - 1 - number.exponent;
  const bool isFixed =
      number.exponent < precision &&
      (number.exponent >= 0 || (number.exponent >= kSmallestFixedExponent && places <= precision));
  if (isFixed) {
    AppendFixed(text, number);
  } else {
    AppendExponent(text, number);
  }
  return text;
}

}  // namespace

std::u16string FormatDouble(double value) { return Format(value, 15); }

std::u16string FormatSingle(float value) { return Format(static_cast<double>(value), 7); }

}  // namespace hearthmake::vbscript
