#include "vbscript/objects/SubMatches.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {
namespace {

automation::Ref<SubMatches> SomeGroups() {
  constexpr std::size_t kNone = ~std::size_t{0};
  auto matches = std::make_shared<MatchTable>(Text(u"abcd"), 3);
  matches->Add(std::vector<std::size_t>{1, 3, 2, 3, kNone, kNone, 1, 1});
  return automation::Make<SubMatches>(matches, std::size_t{0});
}

TEST(SubMatches, GiveTheTextOfEachGroup) {
  const auto groups = SomeGroups();
  EXPECT_EQ(groups->Get("Count").AsLong(), 3);
  EXPECT_EQ(groups->FindMember("Item"), automation::kDefaultMember);
  EXPECT_EQ(Units(groups->Get("Item", {Number(0)})), u"c");
  EXPECT_EQ(Units(groups->Get("Item", {Number(2)})), u"");
}

TEST(SubMatches, GiveEmptyForAGroupThatTookNoPart) { EXPECT_TRUE(SomeGroups()->Item(1).IsEmpty()); }

TEST(SubMatches, RefuseANumberWithoutAGroup) {
  for (const std::int32_t index : {-1, 3})
    EXPECT_EQ(ErrorOf([&] { SomeGroups()->Item(index); }), number::kInvalidProcedureCall);
}

TEST(SubMatches, CanBeWalked) {
  const auto items = WalkOver(*SomeGroups());
  ASSERT_EQ(items.size(), 3u);
  EXPECT_EQ(Units(items[0]), u"c");
  EXPECT_TRUE(items[1].IsEmpty());
}

TEST(SubMatches, AreNamedAsScriptsKnowThem) { EXPECT_EQ(SomeGroups()->Declaration().Name(), "ISubMatches"); }

}  // namespace
}  // namespace hearthmake::vbscript
