#include "vbscript/objects/RegExp.hpp"

#include <gtest/gtest.h>

#include <functional>

#include "support/ErrorExpect.hpp"
#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::InvokeKind;
using automation::Make;
using automation::Ref;
using automation::Variant;

// An object whose default member is a function, as GetRef gives one.
class Procedure final : public automation::Object {
 public:
  using Function = std::function<Variant(std::span<Variant>)>;
  explicit Procedure(Function function) : m_function(std::move(function)) {}
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration("Procedure", "_Procedure", "", "");
    return declaration;
  }
  Variant Invoke(std::int32_t member, InvokeKind, std::span<Variant> arguments) override {
    EXPECT_EQ(member, automation::kDefaultMember);
    return m_function(arguments);
  }

 private:
  Function m_function;
};

class RegExpTest : public testing::Test {
 protected:
  Ref<RegExp> Make(std::u16string_view pattern, bool isGlobal = true) {
    auto regExp = automation::Make<RegExp>(m_bench.context);
    regExp->SetPattern(Text(pattern));
    regExp->SetGlobal(isGlobal);
    return regExp;
  }
  std::vector<std::u16string> Found(RegExp& regExp, std::u16string_view text) {
    std::vector<std::u16string> found;
    for (const Variant& match : WalkOver(*regExp.Execute(Text(text))))
      found.push_back(Units(match.AsObject()->Get("Value")));
    return found;
  }

  ScriptObjectBench m_bench;
};

using Texts = std::vector<std::u16string>;

TEST_F(RegExpTest, IsMadeByTheEngineWithItsDefaults) {
  const Ref<automation::Object> regExp = CreateRegExp(m_bench.context);
  EXPECT_EQ(Units(regExp->Get("Pattern")), u"");
  for (const char* flag : {"Global", "IgnoreCase", "MultiLine"}) EXPECT_FALSE(regExp->Get(flag).AsBoolean());
  EXPECT_EQ(regExp->Declaration().Name(), "IRegExp2");
}

TEST_F(RegExpTest, OffersItsMembersByName) {
  const Ref<automation::Object> regExp = CreateRegExp(m_bench.context);
  regExp->Let("pattern", {Text(u"(B)")});
  regExp->Let("global", {Variant::FromBoolean(true)});
  regExp->Let("ignorecase", {Variant::FromBoolean(true)});
  regExp->Let("multiline", {Variant::FromBoolean(true)});
  for (const char* flag : {"Global", "IgnoreCase", "Multiline"}) EXPECT_TRUE(regExp->Get(flag).AsBoolean());
  EXPECT_TRUE(regExp->Call("Test", {Text(u"abc")}).AsBoolean());
  EXPECT_EQ(Units(regExp->Call("Replace", {Text(u"abcb"), Text(u"[$1]")})), u"a[b]c[b]");
  EXPECT_EQ(regExp->Call("Execute", {Text(u"abcb")}).AsObject()->Get("Count").AsLong(), 2);
}

TEST_F(RegExpTest, KeepsAnyUnitOfItsPattern) {
  const std::u16string pattern(u"\0\xD800", 2);
  EXPECT_EQ(Units(Make(pattern)->Pattern()), pattern);
}

TEST_F(RegExpTest, ConvertsItsArguments) {
  const auto regExp = Make(u"2");
  EXPECT_TRUE(regExp->Test(Number(123)));
  EXPECT_FALSE(regExp->Test(Variant()));
  EXPECT_EQ(Units(regExp->Replace(Number(123), Number(9))), u"193");
  regExp->SetPattern(Number(5));
  EXPECT_EQ(Units(regExp->Pattern()), u"5");
  EXPECT_EQ(ErrorOf([&] { regExp->Test(Variant::Null()); }), number::kInvalidUseOfNull);
}

TEST_F(RegExpTest, FindsTheFirstOrEveryMatch) {
  const auto regExp = Make(u"a.", false);
  EXPECT_EQ(Found(*regExp, u"abacad"), Texts{u"ab"});
  regExp->SetGlobal(true);
  EXPECT_EQ(Found(*regExp, u"abacad"), (Texts{u"ab", u"ac", u"ad"}));
  EXPECT_EQ(Found(*regExp, u"xyz"), Texts());
}

TEST_F(RegExpTest, GoesOnAfterEmptyMatches) {
  EXPECT_EQ(Found(*Make(u"a*"), u"baac"), (Texts{u"", u"aa", u"", u""}));
  EXPECT_EQ(Found(*Make(u""), u"ab"), (Texts{u"", u"", u""}));
  EXPECT_EQ(Found(*Make(u"^"), u"ab"), Texts{u""});
  EXPECT_EQ(Units(Make(u"x*")->Replace(Text(u"ab"), Text(u"-"))), u"-a-b-");
}

TEST_F(RegExpTest, UsesFlagsThatChangeBetweenCalls) {
  const auto regExp = Make(u"^b");
  EXPECT_FALSE(regExp->Test(Text(u"A\nB")));
  regExp->SetMultiline(true);
  EXPECT_FALSE(regExp->Test(Text(u"A\nB")));
  regExp->SetIgnoreCase(true);
  EXPECT_TRUE(regExp->Test(Text(u"A\nB")));
  regExp->SetPattern(Text(u"^c"));
  EXPECT_FALSE(regExp->Test(Text(u"A\nB")));
}

TEST_F(RegExpTest, GivesTheTextAsItStandsWhenCaseDoesNotCount) {
  const auto regExp = Make(u"(b)\\1");
  regExp->SetIgnoreCase(true);
  EXPECT_EQ(Found(*regExp, u"aBb"), Texts{u"Bb"});
  EXPECT_EQ(Units(regExp->Replace(Text(u"ABbC"), Text(u"<$1>"))), u"A<B>C");
}

TEST_F(RegExpTest, RaisesThePatternsErrorWhenItIsUsed) {
  const auto regExp = Make(u"a**");
  const auto raise = [&] { regExp->Test(Text(u"a")); };
  support::ExpectError(raise, 5018, kRuntimeErrorSource, "Unexpected quantifier");
  regExp->SetPattern(Text(u"["));
  support::ExpectError(raise, 5019, kRuntimeErrorSource, "Expected ']' in regular expression");
  regExp->SetPattern(Text(u"("));
  support::ExpectError(raise, 5020, kRuntimeErrorSource, "Expected ')' in regular expression");
  regExp->SetPattern(Text(u"[b-a]"));
  support::ExpectError(raise, 5021, kRuntimeErrorSource, "Invalid range in character set");
  regExp->SetPattern(Text(u"(?<a>)"));
  support::ExpectError(raise, 5017, kRuntimeErrorSource, "Syntax error in regular expression");
  EXPECT_EQ(ErrorOf([&] { regExp->Execute(Text(u"")); }), number::kRegExpSyntax);
  EXPECT_EQ(ErrorOf([&] { regExp->Replace(Text(u""), Text(u"")); }), number::kRegExpSyntax);
  regExp->SetPattern(Text(u"a"));
  EXPECT_TRUE(regExp->Test(Text(u"a")));
}

TEST_F(RegExpTest, ReplacesByAText) {
  EXPECT_EQ(Units(Make(u"(\\w+) (\\w+)")->Replace(Text(u"ab cd, ef gh"), Text(u"$2 $1"))), u"cd ab, gh ef");
  EXPECT_EQ(Units(Make(u"b", false)->Replace(Text(u"abab"), Text(u""))), u"aab");
  EXPECT_EQ(Units(Make(u"z")->Replace(Text(u"abab"), Text(u"y"))), u"abab");
}

TEST_F(RegExpTest, ReplacesByWhatAProcedureReturns) {
  std::vector<std::vector<Variant>> calls;
  const auto procedure = automation::Make<Procedure>([&](std::span<Variant> arguments) {
    calls.emplace_back(arguments.begin(), arguments.end());
    return Number(static_cast<std::int32_t>(calls.size()));
  });
  const Variant replaced =
      Make(u"(a)|(b)")->Replace(Text(u"a-b"), Variant::FromObject(Ref<automation::Object>(procedure.Get())));
  EXPECT_EQ(Units(replaced), u"1-2");
  ASSERT_EQ(calls.size(), 2u);
  ASSERT_EQ(calls[1].size(), 5u);
  EXPECT_EQ(Units(calls[1][0]), u"b");
  EXPECT_TRUE(calls[1][1].IsEmpty());
  EXPECT_EQ(Units(calls[1][2]), u"b");
  EXPECT_EQ(calls[1][3].AsLong(), 2);
  EXPECT_EQ(Units(calls[1][4]), u"a-b");
}

TEST_F(RegExpTest, MayBeUsedByItsReplacementProcedure) {
  const auto regExp = Make(u"\\d");
  const auto procedure = automation::Make<Procedure>([&](std::span<Variant> arguments) {
    regExp->SetPattern(Text(u"x"));
    EXPECT_FALSE(regExp->Test(arguments[0]));
    return Text(u"#");
  });
  const Variant replaced =
      regExp->Replace(Text(u"a1b2"), Variant::FromObject(Ref<automation::Object>(procedure.Get())));
  EXPECT_EQ(Units(replaced), u"a#b#");
}

TEST_F(RegExpTest, PassesTheErrorOfAReplacementProcedureOn) {
  const auto procedure = automation::Make<Procedure>(
      [](std::span<Variant>) -> Variant { RaiseRuntime(number::kDivisionByZero); });
  EXPECT_EQ(ErrorOf([&] {
              Make(u"a")->Replace(Text(u"a"), Variant::FromObject(Ref<automation::Object>(procedure.Get())));
            }),
            number::kDivisionByZero);
  EXPECT_EQ(ErrorOf([&] { Make(u"a")->Replace(Text(u"a"), Variant::FromObject(nullptr)); }),
            number::kObjectNotSet);
}

TEST_F(RegExpTest, StopsAReplacementThatGrowsWithoutEnd) {
  const std::u16string text(8'000, u'a');
  EXPECT_EQ(ErrorOf([&] { Make(u"a")->Replace(Text(text + text + text + text + text), Text(u"$'$`")); }),
            number::kOutOfMemory);
  m_bench.context.budget.LimitSteps(1'000'000);
  EXPECT_THROW(Make(u"a")->Replace(Text(text), Text(u"$'$`")), Interrupted);
}

TEST_F(RegExpTest, EndsASearchWithMoreMatchesThanItsTimeAllows) {
  m_bench.context.budget.LimitSteps(1'000'000);
  EXPECT_THROW(Make(u"")->Execute(Text(std::u16string(3'000'000, u'a'))), Interrupted);
}

}  // namespace
}  // namespace hearthmake::vbscript
