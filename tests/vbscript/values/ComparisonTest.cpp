#include <gtest/gtest.h>

#include <cstdint>

#include "support/VbsOperandMatrix.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {
namespace {

Variant PlainEqual(const Variant& left, const Variant& right) { return Equal(left, right); }
Variant PlainLess(const Variant& left, const Variant& right) { return Less(left, right); }
Variant PlainGreater(const Variant& left, const Variant& right) { return Greater(left, right); }

TEST(Comparison, TellsWhetherEverySubtypeEqualsEveryOther) {
  ExpectMatrix(PlainEqual, R"(
    bT N bF bF bF bF bF bF bF bF bF bF
    N  N N  N  N  N  N  N  N  N  N  N
    bF N bT bF bF bF bF bF bF bF bF bF
    bF N bF bT bF bF bF bF bF bF bF bF
    bF N bF bF bT bF bF bF bF bF bF bF
    bF N bF bF bF bT bF bF bF bF bF bF
    bF N bF bF bF bF bT bF bF bF bF bF
    bF N bF bF bF bF bF bT bF bF bF bF
    bF N bF bF bF bF bF bF bT bF bF bF
    bF N bF bF bF bF bF bF bF bT bF bF
    bF N bF bF bF bF bF bF bF bF bT bF
    bF N bF bF bF bF bF bF bF bF bF bT
  )");
}

TEST(Comparison, TellsWhetherEverySubtypeIsLessThanEveryOther) {
  ExpectMatrix(PlainLess, R"(
    bF N bF bT bT bT bT bT bT bT bT bT
    N  N N  N  N  N  N  N  N  N  N  N
    bT N bF bT bT bT bT bT bT bT bT bT
    bF N bF bF bT bT bF bF bF bF bT bT
    bF N bF bF bF bT bF bF bF bF bT bT
    bF N bF bF bF bF bF bF bF bF bT bT
    bF N bF bT bT bT bF bT bF bT bT bT
    bF N bF bT bT bT bF bF bF bF bT bT
    bF N bF bT bT bT bT bT bF bT bT bT
    bF N bF bT bT bT bF bT bF bF bT bT
    bF N bF bF bF bF bF bF bF bF bF bT
    bF N bF bF bF bF bF bF bF bF bF bF
  )");
}

TEST(Comparison, TellsWhetherEverySubtypeIsGreaterThanEveryOther) {
  ExpectMatrix(PlainGreater, R"(
    bF N bT bF bF bF bF bF bF bF bF bF
    N  N N  N  N  N  N  N  N  N  N  N
    bF N bF bF bF bF bF bF bF bF bF bF
    bT N bT bF bF bF bT bT bT bT bF bF
    bT N bT bT bF bF bT bT bT bT bF bF
    bT N bT bT bT bF bT bT bT bT bF bF
    bT N bT bF bF bF bF bF bT bF bF bF
    bT N bT bF bF bF bT bF bT bT bF bF
    bT N bT bF bF bF bF bF bF bF bF bF
    bT N bT bF bF bF bT bF bT bF bF bF
    bT N bT bT bT bT bT bT bT bT bF bF
    bT N bT bT bT bT bT bT bT bT bT bF
  )");
}

TEST(Comparison, RefusesWhatHasNoValue) {
  for (const auto apply : {PlainEqual, PlainLess, PlainGreater}) ExpectRefusals(apply);
}

TEST(Comparison, FollowsReferencesAndDefaultMembers) {
  for (const auto apply : {PlainEqual, PlainLess, PlainGreater}) ExpectIndirectOperands(apply);
}

TEST(Comparison, TheOtherRelationsFollowFromTheThree) {
  for (const Variant& left : VbsOperands()) {
    for (const Variant& right : VbsOperands()) {
      if (left.IsNull() || right.IsNull()) {
        EXPECT_TRUE(NotEqual(left, right).IsNull());
        EXPECT_TRUE(LessOrEqual(left, right).IsNull());
        EXPECT_TRUE(GreaterOrEqual(left, right).IsNull());
        continue;
      }
      EXPECT_NE(NotEqual(left, right).AsBoolean(), Equal(left, right).AsBoolean());
      EXPECT_NE(LessOrEqual(left, right).AsBoolean(), Greater(left, right).AsBoolean());
      EXPECT_NE(GreaterOrEqual(left, right).AsBoolean(), Less(left, right).AsBoolean());
    }
  }
}

Variant Text(const char* text) { return Variant::FromText(text); }
Variant Int(int value) { return Variant::FromInteger(static_cast<std::int16_t>(value)); }
bool AreEqual(const Variant& left, const Variant& right) { return Equal(left, right).AsBoolean(); }
bool IsLess(const Variant& left, const Variant& right) { return Less(left, right).AsBoolean(); }

TEST(Comparison, TextsCompareUnitByUnit) {
  EXPECT_TRUE(IsLess(Text("B"), Text("a")));
  EXPECT_TRUE(IsLess(Text("a"), Text("aa")));
  EXPECT_TRUE(IsLess(Text("10"), Text("9")));
  EXPECT_FALSE(AreEqual(Text("a"), Text("A")));
  EXPECT_TRUE(IsLess(Text("z"), Text("\u00E4")));
  EXPECT_TRUE(IsLess(Text("\U0001F600"), Text("\uFF5E")));  // a surrogate comes before U+FF5E
  EXPECT_TRUE(AreEqual(Variant::FromUtf16(std::u16string_view(u"a\0b", 3)),
                       Variant::FromUtf16(std::u16string_view(u"a\0b", 3))));
  EXPECT_FALSE(AreEqual(Variant::FromUtf16(std::u16string_view(u"a\0b", 3)), Text("a")));
}

TEST(Comparison, EmptyIsZeroOrTheEmptyText) {
  EXPECT_TRUE(AreEqual(Variant(), Text("")));
  EXPECT_TRUE(AreEqual(Variant(), Int(0)));
  EXPECT_TRUE(AreEqual(Variant::FromBoolean(false), Variant()));
  EXPECT_TRUE(AreEqual(Variant(), Variant()));
  EXPECT_TRUE(IsLess(Variant(), Text("0")));
  EXPECT_FALSE(AreEqual(Text("0"), Variant()));
}

TEST(Comparison, TruthsAreNumbers) {
  EXPECT_TRUE(AreEqual(Variant::FromBoolean(true), Int(-1)));
  EXPECT_FALSE(AreEqual(Variant::FromBoolean(true), Int(1)));
  EXPECT_TRUE(IsLess(Variant::FromBoolean(true), Variant::FromBoolean(false)));
}

TEST(Comparison, ADoubleIsRoundedToTheSubtypeItMeets) {
  EXPECT_TRUE(AreEqual(Variant::FromSingle(1.1F), Variant::FromDouble(1.1)));
  EXPECT_FALSE(AreEqual(Variant::FromSingle(1.1F), Variant::FromDouble(1.1001)));
  EXPECT_TRUE(AreEqual(Variant::FromCurrency(12500), Variant::FromDouble(1.25001)));
  EXPECT_TRUE(AreEqual(Variant::FromDouble(1.25001), Variant::FromCurrency(12500)));
  EXPECT_TRUE(IsLess(Variant::FromCurrency(12500), Variant::FromDouble(1e300)));
  EXPECT_TRUE(IsLess(Variant::FromDouble(-1e300), Variant::FromCurrency(12500)));
  EXPECT_TRUE(AreEqual(Variant::FromDate(36974.5), Variant::FromDouble(36974.5)));
}

TEST(Comparison, MoneyIsComparedToTheLastTenThousandth) {
  EXPECT_TRUE(IsLess(Variant::FromCurrency(9223372036854775806), Variant::FromCurrency(9223372036854775807)));
  EXPECT_TRUE(IsLess(Int(1), Variant::FromCurrency(10001)));
}

// x = "5" and n = 5 below are variables; the rest are literals.
TEST(Comparison, ANumberIsLessThanATextWhenBothAreVariables) {
  EXPECT_FALSE(AreEqual(Text("5"), Int(5)));
  EXPECT_TRUE(IsLess(Int(5), Text("")));
  EXPECT_TRUE(IsLess(Variant::FromDate(1), Text("1")));
  EXPECT_TRUE(IsLess(Variant::FromBoolean(false), Text("")));
  EXPECT_TRUE(Greater(Text("1"), Int(1000)).AsBoolean());
}

TEST(Comparison, ATextMeetsANumberLiteralAsANumber) {
  EXPECT_TRUE(Equal(Text("5"), Int(5), Literals::Right).AsBoolean());
  EXPECT_TRUE(Equal(Int(5), Text(" 5.0 "), Literals::Left).AsBoolean());
  EXPECT_TRUE(Less(Text("9"), Int(10), Literals::Right).AsBoolean());
  EXPECT_TRUE(Greater(Int(10), Text("9"), Literals::Left).AsBoolean());
  EXPECT_TRUE(Equal(Text("True"), Variant::FromBoolean(true), Literals::Right).AsBoolean());
  EXPECT_TRUE(Equal(Text("-1"), Variant::FromBoolean(true), Literals::Right).AsBoolean());
  EXPECT_TRUE(Equal(Text("3/24/2001"), Variant::FromDate(36974), Literals::Right).AsBoolean());
  EXPECT_EQ(VbsOutcome([] { return Equal(Text("abc"), Int(5), Literals::Right); }), "E13");
  EXPECT_EQ(VbsOutcome([] { return Equal(Text(""), Int(0), Literals::Right); }), "E13");
  EXPECT_EQ(VbsOutcome([] { return Equal(Int(0), Text(""), Literals::Left); }), "E13");
}

TEST(Comparison, ANumberMeetsATextLiteralAsAText) {
  EXPECT_TRUE(Equal(Int(5), Text("5"), Literals::Right).AsBoolean());
  EXPECT_FALSE(Equal(Int(5), Text("5.0"), Literals::Right).AsBoolean());
  EXPECT_FALSE(Less(Int(5), Text("10"), Literals::Right).AsBoolean());
  EXPECT_TRUE(Equal(Text("True"), Variant::FromBoolean(true), Literals::Left).AsBoolean());
  EXPECT_FALSE(Equal(Int(5), Text("abc"), Literals::Right).AsBoolean());
  EXPECT_TRUE(Equal(Variant(), Text(""), Literals::Right).AsBoolean());
}

TEST(Comparison, TwoLiteralsMeetAsNumbers) {
  EXPECT_TRUE(Equal(Text("5.0"), Int(5), Literals::Both).AsBoolean());
  EXPECT_EQ(VbsOutcome([] { return Equal(Text("abc"), Int(5), Literals::Both); }), "E13");
}

TEST(Comparison, LiteralsOfOneKindCompareAsEver) {
  EXPECT_TRUE(Less(Text("10"), Text("9"), Literals::Both).AsBoolean());
  EXPECT_TRUE(Less(Int(9), Int(10), Literals::Left).AsBoolean());
  EXPECT_TRUE(Equal(Variant::Null(), Int(1), Literals::Right).IsNull());
}

TEST(Comparison, IsTellsTheSameObject) {
  const Variant object = Variant::FromObject(automation::Make<VbsPlainObject>());
  const Variant other = Variant::FromObject(automation::Make<VbsPlainObject>());
  Variant copy = object;
  EXPECT_TRUE(Is(object, Variant::ByReference(&copy)).AsBoolean());
  EXPECT_FALSE(Is(object, other).AsBoolean());
  EXPECT_FALSE(Is(object, Variant::FromObject(nullptr)).AsBoolean());
  EXPECT_TRUE(Is(Variant::FromObject(nullptr), Variant::FromObject(nullptr)).AsBoolean());
  for (const Variant& value : VbsOperands()) {
    EXPECT_EQ(VbsOutcome([&] { return Is(object, value); }), "E424");
    EXPECT_EQ(VbsOutcome([&] { return Is(value, object); }), "E424");
  }
}

}  // namespace
}  // namespace hearthmake::vbscript
