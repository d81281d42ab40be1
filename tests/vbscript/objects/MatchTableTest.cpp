#include "vbscript/objects/MatchTable.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"

namespace hearthmake::vbscript {
namespace {

TEST(MatchTable, KeepsThePlacesOfMatchesAndGroups) {
  MatchTable matches(Text(u"abcabc"), 2);
  constexpr std::size_t kNone = ~std::size_t{0};
  matches.Add(std::vector<std::size_t>{0, 2, 1, 2, kNone, kNone});
  matches.Add(std::vector<std::size_t>{3, 6, kNone, kNone, 4, 4});
  EXPECT_EQ(matches.Count(), 2u);
  EXPECT_EQ(matches.Text(0), u"ab");
  EXPECT_EQ(matches.Text(1), u"abc");
  EXPECT_EQ(matches.Begin(1), 3u);
  EXPECT_EQ(matches.End(1), 6u);
  EXPECT_EQ(matches.GroupText(0, 0), u"b");
  EXPECT_EQ(matches.GroupText(0, 1), u"");
  EXPECT_TRUE(matches.GroupValue(0, 1).IsEmpty());
  EXPECT_EQ(Units(matches.GroupValue(1, 1)), u"");
}

}  // namespace
}  // namespace hearthmake::vbscript
