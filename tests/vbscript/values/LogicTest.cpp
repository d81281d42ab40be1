#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/VbsOperandMatrix.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {
namespace {

TEST(Logic, AndsEverySubtypeWithEveryOther) {
  ExpectMatrix(And, R"(
    i0  i0  i0     i0  i0  l0     l0  l0  l0  l0  l0  !13
    i0  N   N      N   N   N      N   N   N   N   N   !13
    i0  N   bT     i3  i5  l70000 l2  l2  l1  l2  l7  !13
    i0  N   i3     y3  i1  l0     l2  l2  l1  l2  l3  !13
    i0  N   i5     i1  i5  l0     l0  l0  l1  l0  l5  !13
    l0  N   l70000 l0  l0  l70000 l0  l0  l0  l0  l0  !13
    l0  N   l2     l2  l0  l0     l2  l2  l0  l2  l2  !13
    l0  N   l2     l2  l0  l0     l2  l2  l0  l2  l2  !13
    l0  N   l1     l1  l1  l0     l0  l0  l1  l0  l1  !13
    l0  N   l2     l2  l0  l0     l2  l2  l0  l2  l2  !13
    l0  N   l7     l3  l5  l0     l2  l2  l1  l2  l7  !13
    !13 !13 !13    !13 !13 !13    !13 !13 !13 !13 !13 !13
  )");
}

TEST(Logic, OrsEverySubtypeWithEveryOther) {
  ExpectMatrix(Or, R"(
    i0     N      i-1 i3     i5     l70000 l2     l2     l1     l2     l7     !13
    N      N      bT  y3     i5     l70000 l2     l2     l1     l2     l7     !13
    i-1    bT     bT  i-1    i-1    l-1    l-1    l-1    l-1    l-1    l-1    !13
    i3     y3     i-1 y3     i7     l70003 l3     l3     l3     l3     l7     !13
    i5     i5     i-1 i7     i5     l70005 l7     l7     l5     l7     l7     !13
    l70000 l70000 l-1 l70003 l70005 l70000 l70002 l70002 l70001 l70002 l70007 !13
    l2     l2     l-1 l3     l7     l70002 l2     l2     l3     l2     l7     !13
    l2     l2     l-1 l3     l7     l70002 l2     l2     l3     l2     l7     !13
    l1     l1     l-1 l3     l5     l70001 l3     l3     l1     l3     l7     !13
    l2     l2     l-1 l3     l7     l70002 l2     l2     l3     l2     l7     !13
    l7     l7     l-1 l7     l7     l70007 l7     l7     l7     l7     l7     !13
    !13    !13    !13 !13    !13    !13    !13    !13    !13    !13    !13    !13
  )");
}

TEST(Logic, XorsEverySubtypeWithEveryOther) {
  ExpectMatrix(Xor, R"(
    i0     N   i-1     i3     i5     l70000  l2     l2     l1     l2     l7     !13
    N      N   N       N      N      N       N      N      N      N      N      !13
    i-1    N   bF      i-4    i-6    l-70001 l-3    l-3    l-2    l-3    l-8    !13
    i3     N   i-4     y0     i6     l70003  l1     l1     l2     l1     l4     !13
    i5     N   i-6     i6     i0     l70005  l7     l7     l4     l7     l2     !13
    l70000 N   l-70001 l70003 l70005 l0      l70002 l70002 l70001 l70002 l70007 !13
    l2     N   l-3     l1     l7     l70002  l0     l0     l3     l0     l5     !13
    l2     N   l-3     l1     l7     l70002  l0     l0     l3     l0     l5     !13
    l1     N   l-2     l2     l4     l70001  l3     l3     l0     l3     l6     !13
    l2     N   l-3     l1     l7     l70002  l0     l0     l3     l0     l5     !13
    l7     N   l-8     l4     l2     l70007  l5     l5     l6     l5     l0     !13
    !13    !13 !13     !13    !13    !13     !13    !13    !13    !13    !13    !13
  )");
}

TEST(Logic, EqvsEverySubtypeWithEveryOther) {
  ExpectMatrix(Eqv, R"(
    i-1     N   i0     i-4     i-6     l-70001 l-3     l-3     l-2     l-3     l-8     !13
    N       N   N      N       N       N       N       N       N       N       N       !13
    i0      N   bT     i3      i5      l70000  l2      l2      l1      l2      l7      !13
    i-4     N   i3     y255    i-7     l-70004 l-2     l-2     l-3     l-2     l-5     !13
    i-6     N   i5     i-7     i-1     l-70006 l-8     l-8     l-5     l-8     l-3     !13
    l-70001 N   l70000 l-70004 l-70006 l-1     l-70003 l-70003 l-70002 l-70003 l-70008 !13
    l-3     N   l2     l-2     l-8     l-70003 l-1     l-1     l-4     l-1     l-6     !13
    l-3     N   l2     l-2     l-8     l-70003 l-1     l-1     l-4     l-1     l-6     !13
    l-2     N   l1     l-3     l-5     l-70002 l-4     l-4     l-1     l-4     l-7     !13
    l-3     N   l2     l-2     l-8     l-70003 l-1     l-1     l-4     l-1     l-6     !13
    l-8     N   l7     l-5     l-3     l-70008 l-6     l-6     l-7     l-6     l-1     !13
    !13     !13 !13    !13     !13     !13     !13     !13     !13     !13     !13     !13
  )");
}

TEST(Logic, ImpsEverySubtypeWithEveryOther) {
  ExpectMatrix(Imp, R"(
    i-1     i-1     i-1 i-1     i-1     l-1    l-1     l-1     l-1     l-1     l-1     !13
    N       N       bT  y3      i5      l70000 l2      l2      l1      l2      l7      !13
    i0      N       bT  i3      i5      l70000 l2      l2      l1      l2      l7      !13
    i-4     y252    i-1 y255    i-3     l-4    l-2     l-2     l-3     l-2     l-1     !13
    i-6     i-6     i-1 i-5     i-1     l-6    l-6     l-6     l-5     l-6     l-1     !13
    l-70001 l-70001 l-1 l-70001 l-70001 l-1    l-70001 l-70001 l-70001 l-70001 l-70001 !13
    l-3     l-3     l-1 l-1     l-3     l-3    l-1     l-1     l-3     l-1     l-1     !13
    l-3     l-3     l-1 l-1     l-3     l-3    l-1     l-1     l-3     l-1     l-1     !13
    l-2     l-2     l-1 l-1     l-1     l-2    l-2     l-2     l-1     l-2     l-1     !13
    l-3     l-3     l-1 l-1     l-3     l-3    l-1     l-1     l-3     l-1     l-1     !13
    l-8     l-8     l-1 l-5     l-3     l-8    l-6     l-6     l-7     l-6     l-1     !13
    !13     !13     !13 !13     !13     !13    !13     !13     !13     !13     !13     !13
  )");
}

TEST(Logic, RefusesWhatHasNoValue) {
  for (const auto apply : {And, Or, Xor, Eqv, Imp}) ExpectRefusals(apply);
}

TEST(Logic, FollowsReferencesAndDefaultMembers) {
  for (const auto apply : {And, Or, Xor, Eqv, Imp}) ExpectIndirectOperands(apply);
}

// The three truths in the order True, False, Null.
void ExpectTruths(Variant (*apply)(const Variant&, const Variant&), const char* table) {
  const Variant truths[] = {Variant::FromBoolean(true), Variant::FromBoolean(false), Variant::Null()};
  std::istringstream cells(table);
  for (const Variant& left : truths) {
    for (const Variant& right : truths) {
      std::string expected;
      ASSERT_TRUE(cells >> expected);
      EXPECT_EQ(VbsCell(VbsDescribe(apply(left, right))), expected);
    }
  }
}

TEST(Logic, KnowsThreeTruths) {
  ExpectTruths(And, "bT bF N  bF bF bF  N bF N");
  ExpectTruths(Or, "bT bT bT  bT bF N  bT N N");
  ExpectTruths(Xor, "bF bT N  bT bF N  N N N");
  ExpectTruths(Eqv, "bT bF N  bF bT N  N N N");
  ExpectTruths(Imp, "bT bF N  bT bT bT  bT N N");
}

std::string Outcome(Variant (*apply)(const Variant&, const Variant&), const Variant& left,
                    const Variant& right) {
  return VbsCell(VbsOutcome([&] { return apply(left, right); }));
}

TEST(Logic, ZeroAndNullIsZeroOfItsSubtype) {
  EXPECT_EQ(Outcome(And, Variant::FromByte(0), Variant::Null()), "y0");
  EXPECT_EQ(Outcome(And, Variant::Null(), Variant::FromLong(0)), "l0");
  EXPECT_EQ(Outcome(And, Variant::Null(), Variant::FromDouble(0.4)), "l0");
  EXPECT_EQ(Outcome(Or, Variant::Null(), Variant::FromInteger(0)), "N");
  EXPECT_EQ(Outcome(Imp, Variant::FromInteger(-1), Variant::Null()), "N");
}

TEST(Logic, TakesTruthsFromTexts) {
  EXPECT_EQ(Outcome(And, Variant::FromText("True"), Variant::FromBoolean(true)), "bT");
  EXPECT_EQ(Outcome(Or, Variant::FromText("false"), Variant::FromText("FALSE")), "bF");
  EXPECT_EQ(Outcome(And, Variant::FromText("True"), Variant::FromInteger(6)), "i6");
}

TEST(Logic, OverflowsBeyondALong) {
  EXPECT_EQ(Outcome(And, Variant::FromDouble(2147483648.0), Variant::FromInteger(1)), "!6");
  EXPECT_EQ(Outcome(Or, Variant::FromText("4294967295"), Variant::FromInteger(1)), "!6");
}

TEST(Logic, ComplementsEverySubtype) {
  const auto complement = [](const Variant& operand) {
    return VbsCell(VbsOutcome([&] { return Not(operand); }));
  };
  const char* const expected[] = {"i-1", "N",   "bF",  "y252", "i-6", "l-70001",
                                  "l-3", "l-3", "l-2", "l-3",  "l-8", "!13"};
  for (std::size_t i = 0; i < VbsOperands().size(); ++i)
    EXPECT_EQ(complement(VbsOperands()[i]), expected[i]) << i;
  EXPECT_EQ(complement(Variant::FromText("False")), "bT");
  EXPECT_EQ(complement(VbsArray()), "!13");
  EXPECT_EQ(complement(Variant::FromErrorCode(1)), "!13");
  EXPECT_EQ(complement(Variant::FromObject(nullptr)), "!91");
  EXPECT_EQ(complement(Variant::FromObject(automation::Make<VbsPlainObject>())), "!438");
}

TEST(Logic, AConditionHoldsForWhatIsNotZero) {
  const auto truth = [](const Variant& condition) {
    return VbsCell(VbsOutcome([&] { return Variant::FromBoolean(IsTrue(condition)); }));
  };
  const char* const expected[] = {"bF", "bF", "bT", "bT", "bT", "bT", "bT", "bT", "bT", "bT", "bT", "!13"};
  for (std::size_t i = 0; i < VbsOperands().size(); ++i) EXPECT_EQ(truth(VbsOperands()[i]), expected[i]) << i;
  EXPECT_EQ(truth(Variant::FromDouble(0.1)), "bT");
  EXPECT_EQ(truth(Variant::FromDouble(0)), "bF");
  EXPECT_EQ(truth(Variant::FromText("True")), "bT");
  EXPECT_EQ(truth(Variant::FromText("0")), "bF");
  EXPECT_EQ(truth(Variant::FromText("")), "!13");
  EXPECT_EQ(truth(VbsArray()), "!13");
  EXPECT_EQ(truth(Variant::FromErrorCode(1)), "!13");
  EXPECT_EQ(truth(Variant::FromObject(nullptr)), "!91");
  EXPECT_EQ(truth(Variant::FromObject(automation::Make<VbsDefaultObject>(Variant::FromInteger(0)))), "bF");
}

}  // namespace
}  // namespace hearthmake::vbscript
