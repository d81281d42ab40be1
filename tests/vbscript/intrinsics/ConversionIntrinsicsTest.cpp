#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "support/VbsIntrinsicCall.hpp"
#include "support/VbsOperandMatrix.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

Variant Int(int value) { return Variant::FromInteger(static_cast<std::int16_t>(value)); }
Variant Text(const char* text) { return Variant::FromText(text); }
Variant Carrier(const Variant& value) {
  return Variant::FromObject(automation::Make<VbsDefaultObject>(value));
}

class ConversionIntrinsicsTest : public testing::Test {
 protected:
  // Every operand in the order of VbsOperands, then an array, an error, Nothing and a plain object. Blanks
  // are written as "_".
  void ExpectRow(const char* name, const char* row) {
    std::vector<Variant> operands = VbsOperands();
    operands.push_back(VbsArray());
    operands.push_back(Variant::FromErrorCode(5));
    operands.push_back(Variant::FromObject(nullptr));
    operands.push_back(Variant::FromObject(automation::Make<VbsPlainObject>()));
    std::istringstream cells(row);
    for (const Variant& operand : operands) {
      std::string expected;
      ASSERT_TRUE(cells >> expected);
      std::string actual = VbsCell(call(name, {operand}));
      std::replace(actual.begin(), actual.end(), ' ', '_');
      EXPECT_EQ(actual, expected) << name << " of " << VbsDescribe(operand);
    }
  }

  VbsIntrinsicCall call{ConversionIntrinsics()};
};

TEST_F(ConversionIntrinsicsTest, ConvertEverySubtype) {
  ExpectRow("CBool", "bF !94 bT bT bT bT bT bT bT bT bT !13 !13 !13 !91 !438");
  ExpectRow("CByte", "y0 !94 y255 y3 y5 !6 y2 y2 y1 y2 y7 !13 !13 !13 !91 !438");
  ExpectRow("CCur", "c0 !94 c-1 c3 c5 c70000 c1.5 c2.5 c1.25 c2 c7 !13 !13 !13 !91 !438");
  ExpectRow("CDate", "t0 !94 t-1 t3 t5 t70000 t1.5 t2.5 t1.25 t2 t7 !13 !13 !13 !91 !438");
  ExpectRow("CDbl", "d0 !94 d-1 d3 d5 d70000 d1.5 d2.5 d1.25 d2 d7 !13 !13 !13 !91 !438");
  ExpectRow("CInt", "i0 !94 i-1 i3 i5 !6 i2 i2 i1 i2 i7 !13 !13 !13 !91 !438");
  ExpectRow("CLng", "l0 !94 l-1 l3 l5 l70000 l2 l2 l1 l2 l7 !13 !13 !13 !91 !438");
  ExpectRow("CSng", "s0 !94 s-1 s3 s5 s70000 s1.5 s2.5 s1.25 s2 s7 !13 !13 !13 !91 !438");
  ExpectRow("CStr", "$ !94 $True $3 $5 $70000 $1.5 $2.5 $1.25 $1/1/1900 $7 $abc !13 $Error_5 !91 !438");
  // error is behind it
  EXPECT_EQ(call("CStr", {Carrier(Int(5))}), "String 5");
  EXPECT_EQ(call("CInt", {Carrier(Text("5"))}), "Integer 5");
}

TEST_F(ConversionIntrinsicsTest, AscGivesTheCodePageAndAscWTheUnit) {
  EXPECT_EQ(call("Asc", {Text("A")}), "Integer 65");
  EXPECT_EQ(call("Asc", {Text("Apple")}), "Integer 65");
  EXPECT_EQ(call("Asc", {Text("\u20AC")}), "Integer 128");
  EXPECT_EQ(call("Asc", {Text("\u00E4")}), "Integer 228");
  EXPECT_EQ(call("Asc", {Text("\u0434")}), "Integer 63");
  EXPECT_EQ(call("Asc", {Variant::FromUtf16({u"\xD800", 1})}), "Integer 63");
  EXPECT_EQ(call("Asc", {Int(7)}), "Integer 55");
  EXPECT_EQ(call("AscW", {Text("\u20AC")}), "Integer 8364");
  EXPECT_EQ(call("AscW", {Text("\uFFFD")}), "Integer -3");
  EXPECT_EQ(call("AscB", {Text("\u20AC")}), "Byte 172");
  for (const char* name : {"Asc", "AscB", "AscW"}) {
    EXPECT_EQ(call(name, {Text("")}), "E5") << name;
    EXPECT_EQ(call(name, {Variant()}), "E5") << name;
    EXPECT_EQ(call(name, {Variant::Null()}), "E94") << name;
    EXPECT_EQ(call(name, {VbsArray()}), "E13") << name;
  }
}

TEST_F(ConversionIntrinsicsTest, ChrUndoesAsc) {
  for (int code = 0; code <= 255; ++code) {
    const Variant character = call.Value("Chr", {Int(code)});
    EXPECT_EQ(call("Asc", {character}), "Integer " + std::to_string(code));
  }
  EXPECT_EQ(call("Chr", {Int(128)}), "String \u20AC");
  EXPECT_EQ(call("Chr", {Text("65.4")}), "String A");
  EXPECT_EQ(call("Chr", {Int(256)}), "E5");
  EXPECT_EQ(call("Chr", {Int(-1)}), "E5");
  EXPECT_EQ(call("Chr", {Variant::Null()}), "E94");
  EXPECT_EQ(call("Chr", {Variant::FromDouble(1e10)}), "E6");
}

TEST_F(ConversionIntrinsicsTest, ChrWUndoesAscW) {
  for (const int code : {0, 65, 0x20AC, 0xD800, 0xFFFF}) {
    const Variant character = call.Value("ChrW", {Variant::FromLong(code)});
    EXPECT_EQ(character.AsUtf16(), std::u16string(1, static_cast<char16_t>(code)));
  }
  EXPECT_EQ(call("ChrW", {Int(-3)}), "String \uFFFD");
  EXPECT_EQ(call("ChrW", {Int(-32768)}), call("ChrW", {Variant::FromLong(32768)}));
  EXPECT_EQ(call("ChrW", {Variant::FromLong(65536)}), "E5");
  EXPECT_EQ(call("ChrW", {Variant::FromLong(-32769)}), "E5");
  EXPECT_EQ(call("ChrB", {Int(65)}), "String A");
  EXPECT_EQ(call("ChrB", {Int(256)}), "E5");
}

TEST_F(ConversionIntrinsicsTest, HexAndOctWriteTheBitsOfTheSubtype) {
  ExpectRow("Hex", "$0 N $FFFF $3 $5 $11170 $2 $2 $1 $2 $7 !13 !13 !13 !91 !438");
  ExpectRow("Oct", "$0 N $177777 $3 $5 $210560 $2 $2 $1 $2 $7 !13 !13 !13 !91 !438");
  EXPECT_EQ(call("Hex", {Int(-1)}), "String FFFF");
  EXPECT_EQ(call("Hex", {Variant::FromLong(-1)}), "String FFFFFFFF");
  EXPECT_EQ(call("Hex", {Variant::FromDouble(255.5)}), "String 100");
  EXPECT_EQ(call("Hex", {Variant::FromByte(255)}), "String FF");
  EXPECT_EQ(call("Hex", {Variant::FromDouble(4294967295.0)}), "E6");
  EXPECT_EQ(call("Oct", {Int(-1)}), "String 177777");
  EXPECT_EQ(call("Oct", {Variant::FromLong(-1)}), "String 37777777777");
}

TEST_F(ConversionIntrinsicsTest, TellTheKindOfAValue) {
  ExpectRow("IsArray", "bF bF bF bF bF bF bF bF bF bF bF bF bT bF bF bF");
  ExpectRow("IsDate", "bF bF bF bF bF bF bF bF bF bT bF bF bF bF bF bF");
  ExpectRow("IsEmpty", "bT bF bF bF bF bF bF bF bF bF bF bF bF bF bF bF");
  ExpectRow("IsNull", "bF bT bF bF bF bF bF bF bF bF bF bF bF bF bF bF");
  ExpectRow("IsNumeric", "bT bF bT bT bT bT bT bT bT bF bT bF bF bF bF bF");
  ExpectRow("IsObject", "bF bF bF bF bF bF bF bF bF bF bF bF bF bF bT bT");
  EXPECT_EQ(call("IsDate", {Text("3/24/2001")}), "Boolean True");
  EXPECT_EQ(call("IsDate", {Text("13:05")}), "Boolean True");
  EXPECT_EQ(call("IsDate", {Text("2/29/2001")}), "Boolean False");
  EXPECT_EQ(call("IsNumeric", {Text("$1,000.50")}), "Boolean True");
  EXPECT_EQ(call("IsNumeric", {Text("1d2")}), "Boolean True");
  EXPECT_EQ(call("IsNumeric", {Text("")}), "Boolean False");
  EXPECT_EQ(call("IsNumeric", {Text("1e400")}), "Boolean False");
  EXPECT_EQ(call("IsNumeric", {Carrier(Text("5"))}), "Boolean True");
  EXPECT_EQ(call("IsObject", {Carrier(Int(5))}), "Boolean True");
  EXPECT_EQ(call("IsEmpty", {Variant::Missing()}), "Boolean False");
}

TEST_F(ConversionIntrinsicsTest, VarTypeAndTypeNameNameTheSubtype) {
  ExpectRow("VarType", "i0 i1 i11 i17 i2 i3 i4 i5 i6 i7 i8 i8 i8204 i10 i9 i9");
  ExpectRow("TypeName",
            "$Empty $Null $Boolean $Byte $Integer $Long $Single $Double $Currency $Date $String $String "
            "$Variant() $Error $Nothing $Plain");
  EXPECT_EQ(call("VarType", {Carrier(Text("x"))}), "Integer 8");
  EXPECT_EQ(call("TypeName", {Carrier(Text("x"))}), "String Carrier");
}

}  // namespace
}  // namespace hearthmake::vbscript
