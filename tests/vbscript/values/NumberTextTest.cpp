#include "vbscript/values/NumberText.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "automation/Utf.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Utf8ToUtf16;

TEST(NumberText, ReadsWhatTheLocaleWritesAsANumber) {
  const std::pair<const char*, double> texts[] = {
      {"1", 1},
      {"  1 ", 1},
      {"\t1\r\n", 1},
      {"-1", -1},
      {" - 1", -1},
      {"1-", -1},
      {"1 -", -1},
      {"+1", 1},
      {"1+", 1},
      {"(1)", -1},
      {"-(1)", -1},
      {"( 1 )", -1},
      {"(-1)", -1},
      {"$1", 1},
      {"$ 1", 1},
      {"1$", 1},
      {"-$1", -1},
      {"$-1", -1},
      {"($1)", -1},
      {"$(1)", -1},
      {"1,234", 1234},
      {"1,2,3", 123},
      {"1,,2", 12},
      {"5,", 5},
      {"1,234.5", 1234.5},
      {".5", 0.5},
      {"5.", 5},
      {"-.5", -0.5},
      {"1e5", 1e5},
      {"1E+0005", 1e5},
      {"1d5", 1e5},
      {"1D-5", 1e-5},
      {"1.e5", 1e5},
      {"2,5e1", 250},
      {"$1,234.50", 1234.5},
      {"007", 7},
      {"1e-400", 0},
      {"0e999999999", 0},
      {"1.5,5", 1.55},
      {"1.7976931348623157e308", 1.7976931348623157e308},
      {"0.1", 0.1},
      {"12345678901234567890", 12345678901234567890.0},
  };
  for (const auto& [text, expected] : texts) EXPECT_EQ(ParseNumber16(Utf8ToUtf16(text)), expected) << text;
}

TEST(NumberText, RefusesOtherTexts) {
  for (const char* text : {"",
                           "  ",
                           ".",
                           ",",
                           ",5",
                           "-",
                           "+",
                           "$",
                           "()",
                           "(1",
                           "1)",
                           "1(",
                           "--1",
                           "-1-",
                           "+1-",
                           "1 2",
                           "1.5.5",
                           "1e",
                           "1e+",
                           "1 e5",
                           "1e 5",
                           "1e5.5",
                           "e5",
                           ".e5",
                           "1%",
                           "1&",
                           "1#",
                           "1!",
                           "0x10",
                           "1_000",
                           "inf",
                           "nan",
                           "True",
                           "abc",
                           "1x",
                           "$$1",
                           "\xE2\x82\xAC"
                           "1",
                           "\xC2\xA0"
                           "1",
                           "&H",
                           "&HG",
                           "&O8",
                           "&17",
                           "&",
                           "$&H1",
                           "&H 1",
                           "&&H1",
                           "&H1-"})
    EXPECT_EQ(ParseNumber16(Utf8ToUtf16(text)), std::nullopt) << text;
}

TEST(NumberText, KnowsNoNumberThatIsTooBig) {
  for (const char* text : {"1e309", "-1e309", "1e999999999999", "&H10000000000000000"})
    EXPECT_EQ(ParseNumber16(Utf8ToUtf16(text)), std::nullopt) << text;
}

TEST(NumberText, ReadsHexadecimalAndOctalBits) {
  EXPECT_EQ(ParseNumber16(u"&H10"), 16);
  EXPECT_EQ(ParseNumber16(u" &hff "), 255);
  EXPECT_EQ(ParseNumber16(u"&O17"), 15);
  EXPECT_EQ(ParseNumber16(u"-&H10"), -16);
  EXPECT_EQ(ParseNumber16(u"&HFFFF"), 65535);
  EXPECT_EQ(ParseNumber16(u"&HFFFF&"), 65535);
  EXPECT_EQ(ParseNumber16(u"&HFFFFFFFF"), -1);
  EXPECT_EQ(ParseNumber16(u"&H1FFFFFFFF"), 8589934591.0);
}

TEST(NumberText, BitsTakeTheSignOfTheSubtypeTheyFill) {
  const auto bits = [](std::u16string_view text) { return NumberText::Parse(text).value(); };
  EXPECT_EQ(bits(u"&HFFFF").ToInteger(), -1);
  EXPECT_EQ(bits(u"&H8000").ToInteger(), -32768);
  EXPECT_EQ(bits(u"&H10000").ToInteger(), std::nullopt);
  EXPECT_EQ(bits(u"&HFFFFFFFF").ToInteger(), std::nullopt);
  EXPECT_EQ(bits(u"&HFFFF").ToLong(), 65535);
  EXPECT_EQ(bits(u"&HFFFFFFFF").ToLong(), -1);
  EXPECT_EQ(bits(u"&H80000000").ToLong(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(bits(u"&H100000000").ToLong(), std::nullopt);
  EXPECT_EQ(bits(u"&HFFFFFFFFFFFFFFFF").ToLong(), std::nullopt);
  EXPECT_EQ(bits(u"&HFFFFFFFFFFFFFFFF").ToCurrency(), -10000);
  EXPECT_EQ(bits(u"&H7FFFFFFFFFFFFFFF").ToCurrency(), std::nullopt);
  EXPECT_EQ(bits(u"&H8000000000000000").ToCurrency(), std::nullopt);
}

TEST(NumberText, ReadsMoneyToTheLastDigit) {
  const auto money = [](std::u16string_view text) { return NumberText::Parse(text).value().ToCurrency(); };
  EXPECT_EQ(money(u"922337203685477.5807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(money(u"-922337203685477.5808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(money(u"922337203685477.5808"), std::nullopt);
  EXPECT_EQ(money(u"1e15"), std::nullopt);
  EXPECT_EQ(money(u"1e30"), std::nullopt);
  EXPECT_EQ(money(u"$1,234.5"), 12345000);
  EXPECT_EQ(money(u"0.00005"), 0);
  EXPECT_EQ(money(u"0.00015"), 2);
  EXPECT_EQ(money(u"0.00025"), 2);
  EXPECT_EQ(money(u"0.000250001"), 3);
  EXPECT_EQ(money(u"0.00005000000000000000000000001"), 1);
  EXPECT_EQ(money(u"0.000049"), 0);
  EXPECT_EQ(money(u"9e-5"), 1);
  EXPECT_EQ(money(u"9e-6"), 0);
  EXPECT_EQ(money(u"1e-100000"), 0);
  EXPECT_EQ(money(u"0"), 0);
}

TEST(NumberText, RandomTextsAgreeInEverySubtype) {
  constexpr std::u16string_view kPieces = u"0123456789019.,-+$() eEdD&hHoO";
  std::mt19937 random(1);
  int numbers = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::u16string text;
    for (std::size_t length = random() % 10; length > 0; --length) text += kPieces[random() % kPieces.size()];
    const auto number = NumberText::Parse(text);
    if (!number || !number->ToDouble()) continue;
    ++numbers;
    const double value = *number->ToDouble();
    const auto whole = number->ToLong();
    EXPECT_EQ(whole.value_or(0), whole ? std::nearbyint(value) : 0);
    const auto money = number->ToCurrency();
    const double amount = money ? static_cast<double>(*money) / 10000 : value;
    EXPECT_NEAR(amount, value, 0.00005 + std::fabs(value) * 1e-14);
  }
  EXPECT_GT(numbers, 10000);
}

TEST(NumberText, ManyDigitsAreNoTrouble) {
  const std::u16string nines(100000, u'9');
  EXPECT_EQ(ParseNumber16(nines), std::nullopt);
  EXPECT_EQ(ParseNumber16(u"0." + nines), 1.0);
  EXPECT_EQ(ParseNumber16(u"0." + std::u16string(100000, u'0') + u"1e100001"), 1.0);
  EXPECT_EQ(ParseNumber16(u"1" + std::u16string(100000, u'0') + u"e-100000"), 1.0);
  // 2^53 + 1 lies between two Doubles; one digit behind thousands decides.
  EXPECT_EQ(ParseNumber16(u"9007199254740993." + std::u16string(5000, u'0')), 9007199254740992.0);
  EXPECT_EQ(ParseNumber16(u"9007199254740993." + std::u16string(5000, u'0') + u"1"), 9007199254740994.0);
  EXPECT_EQ(ParseNumber16(std::u16string(100000, u'(')), std::nullopt);
}

}  // namespace
}  // namespace hearthmake::vbscript
