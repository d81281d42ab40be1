#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "automation/Error.hpp"
#include "support/VbsOperandMatrix.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {
namespace {

TEST(Arithmetic, AddsEverySubtypeToEveryOther) {
  ExpectMatrix(Add, R"(
    i0     N i-1    y3     i5     l70000    s1.5     d2.5     c1.25     t2     $7     $abc
    N      N N      N      N      N         N        N        N         N      N      N
    i-1    N i-2    i2     i4     l69999    s0.5     d1.5     c0.25     t1     d6     !13
    y3     N i2     y6     i8     l70003    s4.5     d5.5     c4.25     t5     d10    !13
    i5     N i4     i8     i10    l70005    s6.5     d7.5     c6.25     t7     d12    !13
    l70000 N l69999 l70003 l70005 l140000   d70001.5 d70002.5 c70001.25 t70002 d70007 !13
    s1.5   N s0.5   s4.5   s6.5   d70001.5  s3       d4       c2.75     t3.5   d8.5   !13
    d2.5   N d1.5   d5.5   d7.5   d70002.5  d4       d5       c3.75     t4.5   d9.5   !13
    c1.25  N c0.25  c4.25  c6.25  c70001.25 c2.75    c3.75    c2.5      t3.25  c8.25  !13
    t2     N t1     t5     t7     t70002    t3.5     t4.5     t3.25     t4     t9     !13
    $7     N d6     d10    d12    d70007    d8.5     d9.5     c8.25     t9     $77    $7abc
    $abc   N !13    !13    !13    !13       !13      !13      !13       !13    $abc7  $abcabc
  )");
}

TEST(Arithmetic, SubtractsEverySubtypeFromEveryOther) {
  ExpectMatrix(Subtract, R"(
    i0     N i1     i-3    i-5    l-70000    s-1.5    d-2.5    c-1.25    t-2    d-7    !13
    N      N N      N      N      N          N        N        N         N      N      N
    i-1    N i0     i-4    i-6    l-70001    s-2.5    d-3.5    c-2.25    t-3    d-8    !13
    y3     N i4     y0     i-2    l-69997    s1.5     d0.5     c1.75     t1     d-4    !13
    i5     N i6     i2     i0     l-69995    s3.5     d2.5     c3.75     t3     d-2    !13
    l70000 N l70001 l69997 l69995 l0         d69998.5 d69997.5 c69998.75 t69998 d69993 !13
    s1.5   N s2.5   s-1.5  s-3.5  d-69998.5  s0       d-1      c0.25     t-0.5  d-5.5  !13
    d2.5   N d3.5   d-0.5  d-2.5  d-69997.5  d1       d0       c1.25     t0.5   d-4.5  !13
    c1.25  N c2.25  c-1.75 c-3.75 c-69998.75 c-0.25   c-1.25   c0        t-0.75 c-5.75 !13
    t2     N t3     t-1    t-3    t-69998    t0.5     t-0.5    t0.75     d0     t-5    !13
    d7     N d8     d4     d2     d-69993    d5.5     d4.5     c5.75     t5     d0     !13
    !13    N !13    !13    !13    !13        !13      !13      !13       !13    !13    !13
  )");
}

TEST(Arithmetic, MultipliesEverySubtypeWithEveryOther) {
  ExpectMatrix(Multiply, R"(
    i0  N i0      y0      i0      l0          s0      d0      c0      d0      d0      !13
    N   N N       N       N       N           N       N       N       N       N       N
    i0  N i1      i-3     i-5     l-70000     s-1.5   d-2.5   c-1.25  d-2     d-7     !13
    y0  N i-3     y9      i15     l210000     s4.5    d7.5    c3.75   d6      d21     !13
    i0  N i-5     i15     i25     l350000     s7.5    d12.5   c6.25   d10     d35     !13
    l0  N l-70000 l210000 l350000 d4900000000 d105000 d175000 c87500  d140000 d490000 !13
    s0  N s-1.5   s4.5    s7.5    d105000     s2.25   d3.75   d1.875  d3      d10.5   !13
    d0  N d-2.5   d7.5    d12.5   d175000     d3.75   d6.25   d3.125  d5      d17.5   !13
    c0  N c-1.25  c3.75   c6.25   c87500      d1.875  d3.125  c1.5625 d2.5    d8.75   !13
    d0  N d-2     d6      d10     d140000     d3      d5      d2.5    d4      d14     !13
    d0  N d-7     d21     d35     d490000     d10.5   d17.5   d8.75   d14     d49     !13
    !13 N !13     !13     !13     !13         !13     !13     !13     !13     !13     !13
  )");
}

TEST(Arithmetic, DividesEverySubtypeByEveryOther) {
  ExpectMatrix(Divide, R"(
    !6  N d0      d0                  d0     d0                     s0                 d0     d0     d0     d0                  !13
    N   N N       N                   N      N                      N                  N      N      N      N                   N
    !11 N d1      d-0.333333333333333 d-0.2  d-1.42857142857143E-05 s-0.6666667        d-0.4  d-0.8  d-0.5  d-0.142857142857143 !13
    !11 N d-3     d1                  d0.6   d4.28571428571429E-05  s2                 d1.2   d2.4   d1.5   d0.428571428571429  !13
    !11 N d-5     d1.66666666666667   d1     d7.14285714285714E-05  s3.333333          d2     d4     d2.5   d0.714285714285714  !13
    !11 N d-70000 d23333.3333333333   d14000 d1                     d46666.6666666667  d28000 d56000 d35000 d10000              !13
    !11 N s-1.5   s0.5                s0.3   d2.14285714285714E-05  s1                 d0.6   d1.2   d0.75  d0.214285714285714  !13
    !11 N d-2.5   d0.833333333333333  d0.5   d3.57142857142857E-05  d1.66666666666667  d1     d2     d1.25  d0.357142857142857  !13
    !11 N d-1.25  d0.416666666666667  d0.25  d1.78571428571429E-05  d0.833333333333333 d0.5   d1     d0.625 d0.178571428571429  !13
    !11 N d-2     d0.666666666666667  d0.4   d2.85714285714286E-05  d1.33333333333333  d0.8   d1.6   d1     d0.285714285714286  !13
    !11 N d-7     d2.33333333333333   d1.4   d0.0001                d4.66666666666667  d2.8   d5.6   d3.5   d1                  !13
    !13 N !13     !13                 !13    !13                    !13                !13    !13    !13    !13                 !13
  )");
}

TEST(Arithmetic, DividesWholeNumbersOfEverySubtypeByEveryOther) {
  ExpectMatrix(IntegerDivide, R"(
    !11 N i0      i0     i0     l0  l0     l0     l0     l0     l0     !13
    N   N N       N      N      N   N      N      N      N      N      N
    !11 N i1      i0     i0     l0  l0     l0     l-1    l0     l0     !13
    !11 N i-3     y1     i0     l0  l1     l1     l3     l1     l0     !13
    !11 N i-5     i1     i1     l0  l2     l2     l5     l2     l0     !13
    !11 N l-70000 l23333 l14000 l1  l35000 l35000 l70000 l35000 l10000 !13
    !11 N l-2     l0     l0     l0  l1     l1     l2     l1     l0     !13
    !11 N l-2     l0     l0     l0  l1     l1     l2     l1     l0     !13
    !11 N l-1     l0     l0     l0  l0     l0     l1     l0     l0     !13
    !11 N l-2     l0     l0     l0  l1     l1     l2     l1     l0     !13
    !11 N l-7     l2     l1     l0  l3     l3     l7     l3     l1     !13
    !13 N !13     !13    !13    !13 !13    !13    !13    !13    !13    !13
  )");
}

TEST(Arithmetic, TakesTheRestOfEverySubtypeByEveryOther) {
  ExpectMatrix(Modulo, R"(
    !11 N i0  i0  i0  l0  l0  l0  l0  l0  l0  !13
    N   N N   N   N   N   N   N   N   N   N   N
    !11 N i0  i-1 i-1 l-1 l-1 l-1 l0  l-1 l-1 !13
    !11 N i0  y0  i3  l3  l1  l1  l0  l1  l3  !13
    !11 N i0  i2  i0  l5  l1  l1  l0  l1  l5  !13
    !11 N l0  l1  l0  l0  l0  l0  l0  l0  l0  !13
    !11 N l0  l2  l2  l2  l0  l0  l0  l0  l2  !13
    !11 N l0  l2  l2  l2  l0  l0  l0  l0  l2  !13
    !11 N l0  l1  l1  l1  l1  l1  l0  l1  l1  !13
    !11 N l0  l2  l2  l2  l0  l0  l0  l0  l2  !13
    !11 N l0  l1  l2  l7  l1  l1  l0  l1  l0  !13
    !13 N !13 !13 !13 !13 !13 !13 !13 !13 !13 !13
  )");
}

TEST(Arithmetic, RaisesEverySubtypeToThePowerOfEveryOther) {
  ExpectMatrix(Power, R"(
    d1  N !5                    d0               d0            d0  d0                d0                d0                d0          d0                !13
    N   N N                     N                N             N   N                 N                 N                 N           N                 N
    d1  N d-1                   d-1              d-1           d1  !5                !5                !5                d1          d-1               !13
    d1  N d0.333333333333333    d27              d243          !6  d5.19615242270663 d15.5884572681199 d3.94822203885748 d9          d2187             !13
    d1  N d0.2                  d125             d3125         !6  d11.1803398874989 d55.9016994374947 d7.4767439061061  d25         d78125            !13
    d1  N d1.42857142857143E-05 d343000000000000 d1.6807E+24   !6  d18520259.1774521 d1296418142421.65 d1138603.59318845 d4900000000 d8.23543E+33      !13
    d1  N d0.666666666666667    d3.375           d7.59375      !6  d1.83711730708738 d2.75567596063108 d1.66002287955048 d2.25       d17.0859375       !13
    d1  N d0.4                  d15.625          d97.65625     !6  d3.95284707521047 d9.88211768802619 d3.14358357420734 d6.25       d610.3515625      !13
    d1  N d0.8                  d1.953125        d3.0517578125 !6  d1.39754248593737 d1.74692810742171 d1.32171407930071 d1.5625     d4.76837158203125 !13
    d1  N d0.5                  d8               d32           !6  d2.82842712474619 d5.65685424949238 d2.37841423000544 d4          d128              !13
    d1  N d0.142857142857143    d343             d16807        !6  d18.5202591774521 d129.641814242165 d11.3860359318845 d49         d823543           !13
    !13 N !13                   !13              !13           !13 !13               !13               !13               !13         !13               !13
  )");
}

TEST(Arithmetic, RefusesWhatHasNoValue) {
  for (const auto apply : {Add, Subtract, Multiply, Divide, IntegerDivide, Modulo, Power})
    ExpectRefusals(apply);
}

TEST(Arithmetic, FollowsReferencesAndDefaultMembers) {
  for (const auto apply : {Add, Subtract, Multiply, Divide, IntegerDivide, Modulo, Power})
    ExpectIndirectOperands(apply);
}

std::string Outcome(Variant (*apply)(const Variant&, const Variant&), const Variant& left,
                    const Variant& right) {
  return VbsCell(VbsOutcome([&] { return apply(left, right); }));
}

Variant Byte(int value) { return Variant::FromByte(static_cast<std::uint8_t>(value)); }
Variant Int(int value) { return Variant::FromInteger(static_cast<std::int16_t>(value)); }
Variant Long(std::int64_t value) { return Variant::FromLong(static_cast<std::int32_t>(value)); }
Variant Single(double value) { return Variant::FromSingle(static_cast<float>(value)); }
Variant Double(double value) { return Variant::FromDouble(value); }
Variant Money(std::int64_t tenThousandths) { return Variant::FromCurrency(tenThousandths); }
Variant Date(double value) { return Variant::FromDate(value); }
Variant Text(const char* text) { return Variant::FromText(text); }

constexpr std::int64_t kMostMoney = std::numeric_limits<std::int64_t>::max();

TEST(Arithmetic, AWholeNumberThatOverflowsBecomesTheNextWiderOne) {
  EXPECT_EQ(Outcome(Add, Byte(200), Byte(55)), "y255");
  EXPECT_EQ(Outcome(Add, Byte(200), Byte(56)), "i256");
  EXPECT_EQ(Outcome(Subtract, Byte(2), Byte(3)), "i-1");
  EXPECT_EQ(Outcome(Multiply, Byte(16), Byte(16)), "i256");
  EXPECT_EQ(Outcome(Multiply, Byte(255), Byte(255)), "l65025");
  EXPECT_EQ(Outcome(Add, Int(32767), Int(1)), "l32768");
  EXPECT_EQ(Outcome(Add, Int(32767), Byte(1)), "l32768");
  EXPECT_EQ(Outcome(Subtract, Int(-32768), Int(1)), "l-32769");
  EXPECT_EQ(Outcome(Subtract, Variant(), Int(-32768)), "l32768");
  EXPECT_EQ(Outcome(Multiply, Int(300), Int(300)), "l90000");
  EXPECT_EQ(Outcome(Multiply, Int(-32768), Int(-32768)), "l1073741824");
  EXPECT_EQ(Outcome(Add, Long(2147483647), Int(1)), "d2147483648");
  EXPECT_EQ(Outcome(Subtract, Long(-2147483648), Int(1)), "d-2147483649");
  EXPECT_EQ(Outcome(Multiply, Long(-2147483648), Long(-2147483648)), "d4.61168601842739E+18");
}

TEST(Arithmetic, ARealNumberThatOverflowsBecomesADoubleOrAnError) {
  EXPECT_EQ(Outcome(Add, Single(3e38), Single(3e38)), "d6.00000001099551E+38");
  EXPECT_EQ(Outcome(Multiply, Single(1e30), Single(1e30)).substr(0, 1), "d");
  EXPECT_EQ(Outcome(Add, Double(1.7e308), Double(1.7e308)), "!6");
  EXPECT_EQ(Outcome(Subtract, Double(-1.7e308), Double(1.7e308)), "!6");
  EXPECT_EQ(Outcome(Multiply, Double(1e308), Int(10)), "!6");
  EXPECT_EQ(Outcome(Divide, Double(1e308), Double(1e-10)), "!6");
  EXPECT_EQ(Outcome(Divide, Single(3e38), Single(1e-10)), "!6");
  EXPECT_EQ(Outcome(Power, Double(10), Double(309)), "!6");
}

TEST(Arithmetic, AnAmountOfMoneyThatOverflowsIsAnError) {
  EXPECT_EQ(Outcome(Add, Money(kMostMoney), Money(1)), "!6");
  EXPECT_EQ(Outcome(Subtract, Money(-kMostMoney), Money(2)), "!6");
  EXPECT_EQ(Outcome(Multiply, Money(kMostMoney), Int(2)), "!6");
  EXPECT_EQ(Outcome(Add, Money(1), Double(1e20)), "!6");
  EXPECT_EQ(VbsCell(VbsOutcome([] { return Negate(Money(std::numeric_limits<std::int64_t>::min())); })),
            "!6");
  EXPECT_EQ(Outcome(Add, Money(kMostMoney - 10000), Int(1)), "c922337203685477.5807");
}

TEST(Arithmetic, ProductsOfMoneyAreRoundedToTheEvenTenThousandth) {
  EXPECT_EQ(Outcome(Multiply, Money(5000), Money(1)), "c0");  // 0.5 * 0.0001
  EXPECT_EQ(Outcome(Multiply, Money(15000), Money(1)), "c0.0002");
  EXPECT_EQ(Outcome(Multiply, Money(25000), Money(1)), "c0.0002");
  EXPECT_EQ(Outcome(Multiply, Money(-15000), Money(1)), "c-0.0002");
}

TEST(Arithmetic, ADateStaysOneAsLongAsTheCalendarReaches) {
  EXPECT_EQ(Outcome(Add, Date(2958465), Int(0)), "t2958465");
  EXPECT_EQ(Outcome(Add, Date(2958465), Int(1)), "d2958466");
  EXPECT_EQ(Outcome(Subtract, Date(-657434), Int(1)), "d-657435");
  EXPECT_EQ(Outcome(Subtract, Date(5), Date(2.5)), "d2.5");
}

TEST(Arithmetic, DivisionByZeroIsAnErrorAndNothingByNothingAnOverflow) {
  EXPECT_EQ(Outcome(Divide, Int(1), Int(0)), "!11");
  EXPECT_EQ(Outcome(Divide, Double(-1), Variant()), "!11");
  EXPECT_EQ(Outcome(Divide, Int(0), Int(0)), "!6");
  EXPECT_EQ(Outcome(Divide, Double(0), Text("0")), "!6");
  EXPECT_EQ(Outcome(Divide, Variant::Null(), Int(0)), "N");
  EXPECT_EQ(Outcome(IntegerDivide, Int(1), Int(0)), "!11");
  EXPECT_EQ(Outcome(IntegerDivide, Int(0), Int(0)), "!11");
  EXPECT_EQ(Outcome(IntegerDivide, Int(1), Double(0.5)), "!11");
  EXPECT_EQ(Outcome(Modulo, Int(1), Variant()), "!11");
  EXPECT_EQ(Outcome(Modulo, Variant::Null(), Int(0)), "N");
}

TEST(Arithmetic, WholeDivisionRoundsBothSidesToEvenAndCutsTheQuotient) {
  EXPECT_EQ(Outcome(IntegerDivide, Double(2.5), Int(1)), "l2");
  EXPECT_EQ(Outcome(IntegerDivide, Double(3.5), Int(1)), "l4");
  EXPECT_EQ(Outcome(IntegerDivide, Double(-2.5), Int(1)), "l-2");
  EXPECT_EQ(Outcome(IntegerDivide, Int(-7), Int(2)), "i-3");
  EXPECT_EQ(Outcome(IntegerDivide, Money(25000), Int(1)), "l2");
  EXPECT_EQ(Outcome(IntegerDivide, Money(-35000), Int(1)), "l-4");
  EXPECT_EQ(Outcome(Modulo, Int(19), Double(6.7)), "l5");
  EXPECT_EQ(Outcome(Modulo, Int(-7), Int(3)), "i-1");
  EXPECT_EQ(Outcome(Modulo, Int(7), Int(-3)), "i1");
  EXPECT_EQ(Outcome(Modulo, Byte(7), Byte(3)), "y1");
}

TEST(Arithmetic, WholeDivisionOverflowsBeyondALong) {
  EXPECT_EQ(Outcome(IntegerDivide, Long(-2147483648), Int(-1)), "!6");
  EXPECT_EQ(Outcome(IntegerDivide, Int(-32768), Int(-1)), "l32768");
  EXPECT_EQ(Outcome(Modulo, Long(-2147483648), Int(-1)), "l0");
  EXPECT_EQ(Outcome(IntegerDivide, Double(2147483648.0), Int(2)), "!6");
  EXPECT_EQ(Outcome(Modulo, Double(4294967295.0), Int(2)), "!6");
  EXPECT_EQ(Outcome(IntegerDivide, Double(2147483647.4), Int(1)), "l2147483647");
}

TEST(Arithmetic, PowersWithoutAValueAreErrors) {
  EXPECT_EQ(Outcome(Power, Int(-8), Double(0.5)), "!5");
  EXPECT_EQ(Outcome(Power, Int(-2), Int(3)), "d-8");
  EXPECT_EQ(Outcome(Power, Int(0), Int(-1)), "!5");
  EXPECT_EQ(Outcome(Power, Int(0), Int(0)), "d1");
  EXPECT_EQ(Outcome(Power, Int(2), Variant::Null()), "N");
  EXPECT_EQ(Outcome(Power, Text("2"), Text("10")), "d1024");
}

TEST(Arithmetic, TextsAreJoinedByPlusAndComputedWithOtherwise) {
  EXPECT_EQ(Outcome(Add, Text("1"), Text("2")), "$12");
  EXPECT_EQ(Outcome(Add, Text("1"), Int(2)), "d3");
  EXPECT_EQ(Outcome(Subtract, Text("1"), Text("2")), "d-1");
  EXPECT_EQ(Outcome(Multiply, Text("1,000"), Text("&H10")), "d16000");
  EXPECT_EQ(Outcome(Add, Text(""), Int(2)), "!13");
  EXPECT_EQ(Outcome(Add, Text("1e400"), Int(2)), "!6");
}

TEST(Arithmetic, AMismatchNamesTheText) {
  try {
    Add(Text("abc"), Int(1));
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 13);
    EXPECT_EQ(error.Description(), "Type mismatch: '[string: \"abc\"]'");
  }
}

TEST(Arithmetic, AMismatchNamesNoMoreThanTheBeginningOfALongText) {
  try {
    Add(Variant::FromUtf16(std::u16string(1000, u'x')), Int(1));
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Description(), "Type mismatch: '[string: \"" + std::string(60, 'x') + "...\"]'");
  }
}

std::string Negated(const Variant& operand) {
  return VbsCell(VbsOutcome([&] { return Negate(operand); }));
}

TEST(Arithmetic, NegatesEverySubtype) {
  const char* const expected[] = {"i0",    "N",     "i1",     "i-3", "i-5", "l-70000",
                                  "s-1.5", "d-2.5", "c-1.25", "t-2", "d-7", "!13"};
  for (std::size_t i = 0; i < VbsOperands().size(); ++i)
    EXPECT_EQ(Negated(VbsOperands()[i]), expected[i]) << i;
  EXPECT_EQ(Negated(Int(-32768)), "l32768");
  EXPECT_EQ(Negated(Long(-2147483648)), "d2147483648");
  EXPECT_EQ(Negated(Double(0)), "d0");
  EXPECT_EQ(Negated(Date(2958465)), "d-2958465");
  EXPECT_EQ(Negated(VbsArray()), "!13");
  EXPECT_EQ(Negated(Variant::FromErrorCode(1)), "!13");
  EXPECT_EQ(Negated(Variant::FromObject(nullptr)), "!91");
  EXPECT_EQ(Negated(Variant::FromObject(automation::Make<VbsDefaultObject>(Int(4)))), "i-4");
}

TEST(Arithmetic, UnaryPlusLeavesTheValueAsItIs) {
  for (const Variant& operand : VbsOperands()) EXPECT_EQ(VbsDescribe(Plus(operand)), VbsDescribe(operand));
  EXPECT_EQ(VbsDescribe(Plus(Variant::FromObject(automation::Make<VbsDefaultObject>(Int(4))))), "Integer 4");
}

}  // namespace
}  // namespace hearthmake::vbscript
