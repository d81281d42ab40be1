#include "automation/Text.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace hearthmake::automation {
namespace {

TEST(Text, TrimTakesBlanksOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\t a\r\n"), "\t a\r\n");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Text, LeftCountsCharacters) {
  EXPECT_EQ(Left("abc", 2), "ab");
  EXPECT_EQ(Left("äöü", 2), "äö");
  EXPECT_EQ(Left("äöü", 9), "äöü");
  EXPECT_EQ(Left("", 3), "");
  EXPECT_EQ(Left("abc", 0), "");
}

TEST(Text, LeftCountsAStrayByteAsACharacter) {
  EXPECT_EQ(Left("\x80\x80\x80\x80", 2), "\x80\x80");
  EXPECT_EQ(Left("a\xC3", 2), "a\xC3");
}

TEST(Text, RightTakesTheLastBytes) {
  EXPECT_EQ(Right("C:\\a.vbp", 3), "vbp");
  EXPECT_EQ(Right("bp", 3), "bp");
}

TEST(Text, LowerKnowsTheLettersOfTheVbWorld) {
  EXPECT_EQ(Lower("ABC xyz 123"), "abc xyz 123");
  EXPECT_EQ(Lower("ÄÖÜ ÉÑ Ÿ Ž Š Œ"), "äöü éñ ÿ ž š œ");
  EXPECT_EQ(Lower("ΑΩ"), "αω");
  EXPECT_EQ(Lower("ЖЯЁ"), "жяё");
  EXPECT_EQ(Lower("×"), "×");
}

TEST(Text, LowerKeepsStrayBytes) { EXPECT_EQ(Lower("A\xFF\x80Ä"), "a\xFF\x80ä"); }

TEST(Text, UpperIsForAscii) { EXPECT_EQ(Upper("{abc-9f}ä"), "{ABC-9F}ä"); }

TEST(Text, ComparesWithoutRegardToCase) {
  EXPECT_TRUE(EqualsIgnoreCase("Lib", "LIB"));
  EXPECT_TRUE(EqualsIgnoreCase("Größe", "GRÖßE"));
  EXPECT_FALSE(EqualsIgnoreCase("Lib", "Lib2"));
  EXPECT_FALSE(EqualsIgnoreCase("a", "b"));
  EXPECT_TRUE(EqualsIgnoreCaseAscii("VBP", "vbp"));
  EXPECT_FALSE(EqualsIgnoreCaseAscii("Ä", "ä"));
}

TEST(Text, ReplacesEveryOccurrence) {
  EXPECT_EQ(ReplaceAll("a-b-c", "-", "+"), "a+b+c");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("a", "a", "aa"), "aa");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("", "a", "x"), "");
}

TEST(Text, ValReadsTheNumberThatATextBeginsWith) {
  EXPECT_EQ(Val("12 projects"), 12);
  EXPECT_EQ(Val("  -3.5x"), -3.5);
  EXPECT_EQ(Val("+7"), 7);
  EXPECT_EQ(Val(".5"), 0.5);
  EXPECT_EQ(Val("1 2 3"), 123);
  EXPECT_EQ(Val("1e3"), 1000);
}

TEST(Text, ValOfNoNumberIsZero) {
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("x1"), 0);
  EXPECT_EQ(Val("-"), 0);
  EXPECT_EQ(Val("inf"), 0);
  EXPECT_EQ(Val("nan"), 0);
  EXPECT_EQ(Val("+-5"), 0);
}

TEST(Text, ValReadsHexadecimal) {
  EXPECT_EQ(Val("&H11000000"), 0x11000000);
  EXPECT_EQ(Val("&h10"), 16);
  EXPECT_EQ(Val("&H10xyz"), 16);
}

TEST(Text, ValReadsShortHexadecimalAsSixteenBits) {
  EXPECT_EQ(Val("&HFFFF"), -1);
  EXPECT_EQ(Val("&HFFFF&"), 65535);
  EXPECT_EQ(Val("&H0FFFF"), 65535);
  EXPECT_EQ(Val("&HFFFFFFFF"), -1);
}

TEST(Text, ValIsHugeOrNothingBeyondItsRange) {
  EXPECT_TRUE(std::isinf(Val("1e999")));
  EXPECT_EQ(Val("1e-999"), 0);
}

TEST(Text, PrintsWholeNumbers) {
  EXPECT_EQ(Decimal(-2147483647 - 1), "-2147483648");
  EXPECT_EQ(Hex(0x11020000), "11020000");
  EXPECT_EQ(Hex(-1), "FFFFFFFF");
  EXPECT_EQ(Hex(0), "0");
  EXPECT_EQ(Hex(0xabc), "ABC");
}

}  // namespace
}  // namespace hearthmake::automation
