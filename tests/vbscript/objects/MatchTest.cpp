#include "vbscript/objects/Match.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"

namespace hearthmake::vbscript {
namespace {

automation::Ref<Match> SomeMatch() {
  auto matches = std::make_shared<MatchTable>(Text(u"abcd"), 1);
  matches->Add(std::vector<std::size_t>{1, 3, 2, 3});
  return automation::Make<Match>(matches, std::size_t{0});
}

TEST(Match, SaysWhatAndWhere) {
  const auto match = SomeMatch();
  EXPECT_EQ(Units(match->Get("Value")), u"bc");
  EXPECT_EQ(match->Get("FirstIndex").AsLong(), 1);
  EXPECT_EQ(match->Get("Length").AsLong(), 2);
}

TEST(Match, StandsForItsValue) { EXPECT_EQ(SomeMatch()->FindMember("value"), automation::kDefaultMember); }

TEST(Match, HasItsGroups) {
  const automation::Variant groups = SomeMatch()->Get("SubMatches");
  EXPECT_EQ(Units(groups.AsObject()->Get("Item", {Number(0)})), u"c");
  // As m.SubMatches(0) says it.
  EXPECT_EQ(Units(SomeMatch()->Get("SubMatches", {Number(0)})), u"c");
}

TEST(Match, IsNamedAsScriptsKnowIt) { EXPECT_EQ(SomeMatch()->Declaration().Name(), "IMatch2"); }

}  // namespace
}  // namespace hearthmake::vbscript
