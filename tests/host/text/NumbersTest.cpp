#include "host/text/Numbers.hpp"

#include <gtest/gtest.h>

#include "host/HostError.hpp"

namespace hearthmake::host {
namespace {

TEST(Numbers, ReadsDecimalAndBothSpellingsOfHexadecimal) {
  EXPECT_EQ(ParseLong("-2147483648", "x"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ParseLong("12", "x"), 12);
  EXPECT_EQ(ParseLong("&H11000000", "x"), 0x11000000);
  EXPECT_EQ(ParseLong("&h7fff0000&", "x"), 0x7FFF0000);
  EXPECT_EQ(ParseLong("0xFFFFFFFF", "x"), -1);
}

TEST(Numbers, RefusesWhatIsNoNumberOf32Bits) {
  for (const char* text :
       {"", "-", "+1", "1.5", " 1", "1x", "2147483648", "&H", "&H100000000", "0x-1", "0x1&"}) {
    EXPECT_THROW(ParseLong(text, "x"), HostError) << text;
  }
}

TEST(Numbers, WritesAddressesAsVisualBasicDoes) { EXPECT_EQ(AddressText(0x11000000), "&H11000000"); }

TEST(Numbers, TellsDigits) {
  EXPECT_TRUE(IsDigits("12"));
  EXPECT_FALSE(IsDigits(""));
  EXPECT_FALSE(IsDigits("1a"));
}

TEST(Counted, AddsTheLetterOfThePlural) {
  EXPECT_EQ(Counted(0, "file"), "0 files");
  EXPECT_EQ(Counted(1, "file"), "1 file");
  EXPECT_EQ(Counted(2, "file"), "2 files");
}

}  // namespace
}  // namespace hearthmake::host
