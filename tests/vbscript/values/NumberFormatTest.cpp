#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "automation/Utf.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Utf16ToUtf8;

TEST(NumberFormat, PrintsADoubleWithFifteenDigits) {
  const std::pair<double, const char*> numbers[] = {
      {0, "0"},
      {-0.0, "0"},
      {1, "1"},
      {-1.5, "-1.5"},
      {0.5, "0.5"},
      {100, "100"},
      {123456.789, "123456.789"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {999999999999999, "999999999999999"},
      {999999999999999.9, "1E+15"},
      {100000000000000, "100000000000000"},
      {1e15, "1E+15"},
      {123456789012345678, "1.23456789012346E+17"},
      {1e100, "1E+100"},
      {-1.5e300, "-1.5E+300"},
      {std::numeric_limits<double>::max(), "1.79769313486232E+308"},
      {5e-324, "4.94065645841247E-324"},
  };
  for (const auto& [number, expected] : numbers) EXPECT_EQ(Utf16ToUtf8(FormatDouble(number)), expected);
}

TEST(NumberFormat, WritesFractionsOutWhileFifteenPlacesHoldThem) {
  const std::pair<double, const char*> numbers[] = {
      {0.01, "0.01"},
      {0.001234, "0.001234"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {0.000015, "1.5E-05"},
      {0.00390625, "0.00390625"},
      {0.123456789012345, "0.123456789012345"},
      {0.0123456789012345, "1.23456789012345E-02"},
      {1.0 / 24, "4.16666666666667E-02"},
      {1.0 / 300, "3.33333333333333E-03"},
      {0.99999999999999999, "1"},
  };
  for (const auto& [number, expected] : numbers) EXPECT_EQ(Utf16ToUtf8(FormatDouble(number)), expected);
}

TEST(NumberFormat, PrintsASingleWithSevenDigits) {
  const std::pair<float, const char*> numbers[] = {
      {0.1F, "0.1"},
      {1.5F, "1.5"},
      {0.0F, "0"},
      {-0.0F, "0"},
      {1e6F, "1000000"},
      {9999999.0F, "9999999"},
      {1e7F, "1E+07"},
      {12345678.0F, "1.234568E+07"},
      {1.0F / 3, "0.3333333"},
      {0.6171875F, "0.6171875"},
      {0.00390625F, "3.90625E-03"},
      {0.015625F, "0.015625"},
      {3.402823e38F, "3.402823E+38"},
      {1e-5F, "1E-05"},
      {52191.62F, "52191.62"},
  };
  for (const auto& [number, expected] : numbers) EXPECT_EQ(Utf16ToUtf8(FormatSingle(number)), expected);
}

}  // namespace
}  // namespace hearthmake::vbscript
