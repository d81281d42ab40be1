#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

#include "support/VbsIntrinsicCall.hpp"
#include "support/VbsOperandMatrix.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

Variant Int(int value) { return Variant::FromInteger(static_cast<std::int16_t>(value)); }
Variant Double(double value) { return Variant::FromDouble(value); }
Variant Single(float value) { return Variant::FromSingle(value); }
Variant Money(std::int64_t tenThousandths) { return Variant::FromCurrency(tenThousandths); }
Variant Text(const char* text) { return Variant::FromText(text); }

class MathIntrinsicsTest : public testing::Test {
 protected:
  // Every operand in the order of VbsOperands: Empty Null True Byte3 5 70000 1.5 2.5 1.25 Date2 "7" "abc".
  void ExpectRow(const char* name, const char* row) {
    std::istringstream cells(row);
    for (const Variant& operand : VbsOperands()) {
      std::string expected;
      ASSERT_TRUE(cells >> expected);
      EXPECT_EQ(VbsCell(call(name, {operand})), expected) << name << " of " << VbsDescribe(operand);
      EXPECT_EQ(VbsCell(call(name, {Variant::FromObject(automation::Make<VbsDefaultObject>(operand))})),
                expected);
    }
    EXPECT_EQ(call(name, {VbsArray()}), "E13");
    EXPECT_EQ(call(name, {Variant::FromErrorCode(5)}), "E13");
    EXPECT_EQ(call(name, {Variant::FromObject(nullptr)}), "E91");
  }

  VbsIntrinsicCall call{MathIntrinsics()};
};

TEST_F(MathIntrinsicsTest, AbsKeepsTheSubtype) {
  ExpectRow("Abs", "i0 N i1 y3 i5 l70000 s1.5 d2.5 c1.25 t2 d7 !13");
  EXPECT_EQ(call("Abs", {Int(-5)}), "Integer 5");
  EXPECT_EQ(call("Abs", {Int(-32768)}), "Long 32768");
  EXPECT_EQ(call("Abs", {Variant::FromLong(std::numeric_limits<std::int32_t>::min())}), "Double 2147483648");
  EXPECT_EQ(call("Abs", {Money(-12500)}), "Currency 1.25");
  EXPECT_EQ(call("Abs", {Money(std::numeric_limits<std::int64_t>::min())}), "E6");
  EXPECT_EQ(call("Abs", {Text("-5")}), "Double 5");
}

TEST_F(MathIntrinsicsTest, IntGoesDownAndFixTowardsZero) {
  ExpectRow("Int", "i0 N i-1 y3 i5 l70000 s1 d2 c1 t2 d7 !13");
  ExpectRow("Fix", "i0 N i-1 y3 i5 l70000 s1 d2 c1 t2 d7 !13");
  EXPECT_EQ(call("Int", {Double(-2.5)}), "Double -3");
  EXPECT_EQ(call("Fix", {Double(-2.5)}), "Double -2");
  EXPECT_EQ(call("Int", {Single(-2.5F)}), "Single -3");
  EXPECT_EQ(call("Int", {Money(-12500)}), "Currency -2");
  EXPECT_EQ(call("Fix", {Money(-12500)}), "Currency -1");
  EXPECT_EQ(call("Int", {Money(-20000)}), "Currency -2");
  EXPECT_EQ(call("Int", {Money(std::numeric_limits<std::int64_t>::min())}), "E6");
  EXPECT_EQ(call("Int", {Variant::FromDate(-1.5)}), "Date -2");
  EXPECT_EQ(call("Fix", {Text("-3.7")}), "Double -3");
}

TEST_F(MathIntrinsicsTest, SgnIsAnInteger) {
  ExpectRow("Sgn", "i0 !94 i-1 i1 i1 i1 i1 i1 i1 i1 i1 !13");
  EXPECT_EQ(call("Sgn", {Double(-0.001)}), "Integer -1");
}

TEST_F(MathIntrinsicsTest, RoundKeepsTheSubtypeAndGoesToTheEvenDigit) {
  ExpectRow("Round", "i0 N i-1 y3 i5 l70000 s2 d2 c1 t2 d7 !13");
  EXPECT_EQ(call("Round", {Double(3.5)}), "Double 4");
  EXPECT_EQ(call("Round", {Double(-2.5)}), "Double -2");
  EXPECT_EQ(call("Round", {Double(2.345), Int(2)}), "Double 2.35");
  EXPECT_EQ(call("Round", {Double(2.675), Int(2)}), "Double 2.68");
  EXPECT_EQ(call("Round", {Double(0.125), Int(2)}), "Double 0.12");
  EXPECT_EQ(call("Round", {Double(1e300), Int(5)}), "Double 1E+300");
  EXPECT_EQ(call("Round", {Double(1.5), Int(22)}), "Double 1.5");
  EXPECT_EQ(call("Round", {Double(1.5), Int(23)}), "E5");
  EXPECT_EQ(call("Round", {Double(1.5), Int(-1)}), "E5");
  EXPECT_EQ(call("Round", {Double(1.5), Variant::Missing()}), "Double 2");
  EXPECT_EQ(call("Round", {Double(1.5), Variant::Null()}), "E94");
  EXPECT_EQ(call("Round", {Money(12345), Int(3)}), "Currency 1.234");
  EXPECT_EQ(call("Round", {Money(12355), Int(3)}), "Currency 1.236");
  EXPECT_EQ(call("Round", {Money(-25000)}), "Currency -2");
  EXPECT_EQ(call("Round", {Money(12345), Int(4)}), "Currency 1.2345");
  EXPECT_EQ(call("Round", {Money(std::numeric_limits<std::int64_t>::max())}), "E6");
  EXPECT_EQ(call("Round", {Single(2.345F), Int(2)}), "Single 2.35");
  EXPECT_EQ(call("Round", {Int(5), Int(2)}), "Integer 5");
  EXPECT_EQ(call("Round", {Text("2.567"), Int(2)}), "Double 2.57");
}

TEST_F(MathIntrinsicsTest, FunctionsOfCalculusGiveDoubles) {
  ExpectRow("Sqr",
            "d0 !94 !5 d1.73205080756888 d2.23606797749979 d264.575131106459 d1.22474487139159 "
            "d1.58113883008419 d1.11803398874989 d1.4142135623731 d2.64575131106459 !13");
  EXPECT_EQ(call("Sqr", {Int(4)}), "Double 2");
  EXPECT_EQ(call("Sin", {Int(0)}), "Double 0");
  EXPECT_EQ(call("Cos", {Variant()}), "Double 1");
  EXPECT_EQ(call("Tan", {Double(0.5)}), "Double 0.54630248984379");
  EXPECT_EQ(call("Atn", {Int(1)}), "Double 0.785398163397448");
  EXPECT_EQ(call("Exp", {Int(1)}), "Double 2.71828182845905");
  EXPECT_EQ(call("Log", {Text("10")}), "Double 2.30258509299405");
}

TEST_F(MathIntrinsicsTest, FunctionsOfCalculusRefuseWhatHasNoValue) {
  for (const char* name : {"Atn", "Cos", "Exp", "Log", "Sin", "Sqr", "Tan"}) {
    EXPECT_EQ(call(name, {Variant::Null()}), "E94") << name;
    EXPECT_EQ(call(name, {Text("x")}), "E13") << name;
    EXPECT_EQ(call(name, {VbsArray()}), "E13") << name;
  }
  EXPECT_EQ(call("Log", {Int(0)}), "E5");
  EXPECT_EQ(call("Log", {Int(-1)}), "E5");
  EXPECT_EQ(call("Sqr", {Double(-0.1)}), "E5");
  EXPECT_EQ(call("Exp", {Int(710)}), "E6");
  EXPECT_EQ(call("Exp", {Int(-1000)}), "Double 0");
}

TEST_F(MathIntrinsicsTest, RndRunsThroughTheSequenceOfTheLanguage) {
  EXPECT_EQ(call("Rnd", {}), "Single 0.7055475");
  EXPECT_EQ(call("Rnd", {}), "Single 0.533424");
  EXPECT_EQ(call("Rnd", {Int(1)}), "Single 0.5795186");
  EXPECT_EQ(call("Rnd", {Variant::Missing()}), "Single 0.2895625");
  EXPECT_EQ(call("Rnd", {Int(0)}), "Single 0.2895625");
  EXPECT_EQ(call("Rnd", {}), "Single 0.301948");
}

TEST_F(MathIntrinsicsTest, ANegativeArgumentSeedsRnd) {
  EXPECT_EQ(call("Rnd", {Int(-1)}), "Single 0.224007");
  EXPECT_EQ(call("Rnd", {}), "Single 3.584582E-02");
  EXPECT_EQ(call("Rnd", {Int(-1)}), "Single 0.224007");
  EXPECT_EQ(call("Rnd", {Variant::Null()}), "E94");
  EXPECT_EQ(call("Rnd", {Double(1e300)}), "E6");
}

TEST_F(MathIntrinsicsTest, RandomizeSeedsFromANumber) {
  EXPECT_EQ(call("Randomize", {Int(0)}), "Empty");
  EXPECT_EQ(call.TheContext().random.seed, 0u);
  EXPECT_EQ(call("Rnd", {}), "Single 0.7641413");
  EXPECT_EQ(call("Rnd", {}), "Single 0.3576428");
  call.TheContext().random.seed = 0xABCDEF;
  call("Randomize", {Int(1)});  // the upper half of 1.0 is 3FF00000
  EXPECT_EQ(call.TheContext().random.seed, 0x3FF0EFu);
  EXPECT_EQ(call("Randomize", {Text("x")}), "E13");
}

TEST_F(MathIntrinsicsTest, RandomizeSeedsFromTheTimeOfDayOtherwise) {
  call.TheContext().random.seed = 0x000012;
  call("Randomize", {});  // noon is 43200 seconds, as a Single 4728C000
  EXPECT_EQ(call.TheContext().random.seed, 0x872812u);
}

TEST_F(MathIntrinsicsTest, RgbPutsTheColoursTogether) {
  EXPECT_EQ(call("RGB", {Int(1), Int(2), Int(3)}), "Long 197121");
  EXPECT_EQ(call("RGB", {Int(255), Int(255), Int(255)}), "Long 16777215");
  EXPECT_EQ(call("RGB", {Int(300), Int(1), Int(2)}), "Long 131583");
  EXPECT_EQ(call("RGB", {Int(-1), Int(1), Int(2)}), "E5");
  EXPECT_EQ(call("RGB", {Int(1), Int(1), Variant::FromLong(70000)}), "E6");
  EXPECT_EQ(call("RGB", {Int(1), Text("x"), Int(2)}), "E13");
  EXPECT_EQ(call("RGB", {Variant::Null(), Int(1), Int(2)}), "E94");
}

}  // namespace
}  // namespace hearthmake::vbscript
