#include "vbscript/values/Text16.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vbscript {
namespace {

TEST(Text16, FoldsTheLettersOfEuropeanScriptsBothWays) {
  EXPECT_EQ(Lower(u"ÀÖŸŽĀΩЯЀԱ"), u"àöÿžāωяѐա");
  EXPECT_EQ(Upper(u"àöÿžāωяѐա"), u"ÀÖŸŽĀΩЯЀԱ");
}

TEST(Text16, LeavesLettersWithoutPartnerAndSurrogatesAlone) {
  EXPECT_EQ(Upper(u"ß÷"), u"ß÷");
  EXPECT_EQ(Lower(u"×"), u"×");
  const std::u16string lone(1, char16_t{0xD800});
  EXPECT_EQ(Lower(lone), lone);
}

TEST(Text16, ComparesWithoutRegardToCaseAndShorterFirst) {
  EXPECT_TRUE(EqualsIgnoreCase(u"HeLLo", u"hEllO"));
  EXPECT_FALSE(EqualsIgnoreCase(u"hello", u"hell"));
  EXPECT_LT(CompareIgnoreCase(u"ab", u"ABC"), 0);
  EXPECT_GT(CompareIgnoreCase(u"b", u"ABC"), 0);
}

TEST(Text16, FindsATextFromAPlaceOn) {
  EXPECT_EQ(FindIgnoreCase(u"abcABC", u"Bc", 0), 1u);
  EXPECT_EQ(FindIgnoreCase(u"abcABC", u"Bc", 2), 4u);
  EXPECT_EQ(FindIgnoreCase(u"abc", u"d", 0), std::u16string_view::npos);
  EXPECT_EQ(FindIgnoreCase(u"abc", u"", 3), 3u);
  EXPECT_EQ(FindIgnoreCase(u"abc", u"", 4), std::u16string_view::npos);
}

}  // namespace
}  // namespace hearthmake::vbscript
