#include "vb6/Text.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

TEST(Text, ReadsWholeNumbersOnly) {
  EXPECT_EQ(ParseNumber("120"), 120U);
  EXPECT_EQ(ParseNumber("1F", 16), 31U);
  EXPECT_FALSE(ParseNumber(""));
  EXPECT_FALSE(ParseNumber("12x"));
  EXPECT_FALSE(ParseNumber("-1"));
  EXPECT_FALSE(ParseNumber("99999999999"));
  EXPECT_EQ(Hex(0x1AF), "1AF");
  EXPECT_EQ(Hex(0), "0");
}

}  // namespace
}  // namespace hearthmake::vb6
