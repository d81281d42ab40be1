#include "vbscript/objects/RegExpReplacement.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"

namespace hearthmake::vbscript {
namespace {

// The replacement of "b(c)(x)?" in "abcd": match 1 to 3, first group "c", second none, groups up to the
// number.
std::u16string Replaced(std::u16string_view text, std::uint32_t groups = 2) {
  MatchTable matches(Text(u"abcd"), groups);
  std::vector<std::size_t> places{1, 3, 2, 3};
  places.resize(2 * (groups + 1), ~std::size_t{0});
  matches.Add(places);
  const RegExpReplacement replacement(text, groups);
  std::u16string result;
  replacement.AppendTo(result, matches, 0);
  EXPECT_EQ(result.size(), replacement.LengthFor(matches, 0));
  return result;
}

TEST(RegExpReplacement, PutsGroupsAndSurroundingsIn) {
  EXPECT_EQ(Replaced(u"<$1|$2|$&|$`|$'>"), u"<c||bc|a|d>");
  EXPECT_EQ(Replaced(u"$01$02"), u"c");
}

TEST(RegExpReplacement, TakesTheLongestNumberThatHasAGroup) {
  EXPECT_EQ(Replaced(u"$10"), u"c0");
  EXPECT_EQ(Replaced(u"$10", 10), u"");
  EXPECT_EQ(Replaced(u"$19", 10), u"c9");
}

TEST(RegExpReplacement, LeavesOtherDollarSignsAlone) {
  EXPECT_EQ(Replaced(u"$0$00$3$x$ $"), u"$0$00$3$x$ $");
  EXPECT_EQ(Replaced(u"$1", 0), u"$1");
}

TEST(RegExpReplacement, HalvesTwoDollarSigns) {
  EXPECT_EQ(Replaced(u"$$"), u"$");
  EXPECT_EQ(Replaced(u"$$1"), u"$1");
  EXPECT_EQ(Replaced(u"a$$$1$$"), u"a$c$");
  EXPECT_EQ(Replaced(u"$$$$"), u"$$");
}

TEST(RegExpReplacement, MayBeEmptyOrPlain) {
  EXPECT_EQ(Replaced(u""), u"");
  EXPECT_EQ(Replaced(u"plain"), u"plain");
}

}  // namespace
}  // namespace hearthmake::vbscript
