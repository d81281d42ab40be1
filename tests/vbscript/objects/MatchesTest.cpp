#include "vbscript/objects/Matches.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/RegExp.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Ref;
using automation::Variant;

Ref<Matches> Search(std::u16string_view pattern, std::u16string_view text) {
  static ScriptObjectBench bench;
  const auto regExp = automation::Make<RegExp>(bench.context);
  regExp->SetPattern(Text(pattern));
  regExp->SetGlobal(true);
  return regExp->Execute(Text(text));
}

TEST(Matches, CountsThemAndGivesEachByNumber) {
  const auto matches = Search(u"a.", u"abac");
  EXPECT_EQ(matches->Get("Count").AsLong(), 2);
  EXPECT_EQ(Units(matches->Get("Item", {Number(1)}).AsObject()->Get("Value")), u"ac");
  Variant index = Variant::FromDouble(0.4);
  const Variant first = matches->Invoke(automation::kDefaultMember, automation::InvokeKind::Get, {&index, 1});
  EXPECT_EQ(Units(first.AsObject()->Get("Value")), u"ab");
}

TEST(Matches, RefuseANumberWithoutAMatch) {
  const auto matches = Search(u"a", u"a");
  for (const std::int32_t index : {-1, 1, 2'000'000'000})
    EXPECT_EQ(ErrorOf([&] { matches->Item(index); }), number::kInvalidProcedureCall);
}

TEST(Matches, CanBeWalked) {
  const auto matches = Search(u".", u"abc");
  EXPECT_EQ(WalkOver(*matches).size(), 3u);
  EXPECT_TRUE(WalkOver(*Search(u"x", u"abc")).empty());
  EXPECT_TRUE(matches->Get("NewEnum").IsObject());
  EXPECT_EQ(matches->FindMember("NewEnum"), automation::kNewEnumMember);
}

TEST(Matches, OutliveTheirExpression) {
  auto matches = Search(u"b(c)?", u"abcb");
  const Variant last = matches->Item(1);
  matches = nullptr;
  EXPECT_EQ(Units(last.AsObject()->Get("Value")), u"b");
}

TEST(Matches, AreNamedAsScriptsKnowThem) {
  EXPECT_EQ(Search(u"b", u"")->Declaration().Name(), "IMatchCollection2");
}

}  // namespace
}  // namespace hearthmake::vbscript
