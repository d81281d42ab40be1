#include "vbscript/values/Conversions.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

#include "support/VbsOperandMatrix.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

// A conversion as a function from variant to variant, so that one table fits all.
using Conversion = std::function<Variant(const Variant&)>;

const Conversion kToByte = [](const Variant& v) { return Variant::FromByte(ToByte16(v)); };
const Conversion kToInteger = [](const Variant& v) { return Variant::FromInteger(ToInteger16(v)); };
const Conversion kToLong = [](const Variant& v) { return Variant::FromLong(ToLong32(v)); };
const Conversion kToSingle = [](const Variant& v) { return Variant::FromSingle(ToSingle32(v)); };
const Conversion kToDouble = [](const Variant& v) { return Variant::FromDouble(ToDouble64(v)); };
const Conversion kToCurrency = [](const Variant& v) { return Variant::FromCurrency(ToCurrency64(v)); };
const Conversion kToBoolean = [](const Variant& v) { return Variant::FromBoolean(ToBoolean1(v)); };
const Conversion kToDate = [](const Variant& v) { return Variant::FromDate(ToDate64(v)); };
const Conversion kToText = [](const Variant& v) { return ToTextVariant(v); };

std::string Outcome(const Conversion& convert, const Variant& value) {
  return VbsCell(VbsOutcome([&] { return convert(value); }));
}

// The operands in the order of VbsOperands: Empty Null True Byte3 5 70000 1.5 2.5 1.25 Date2 "7" "abc".
void ExpectRow(const Conversion& convert, const char* row) {
  std::istringstream cells(row);
  for (const Variant& operand : VbsOperands()) {
    std::string expected;
    ASSERT_TRUE(cells >> expected);
    EXPECT_EQ(Outcome(convert, operand), expected) << VbsDescribe(operand);
    Variant target = operand;
    EXPECT_EQ(Outcome(convert, Variant::ByReference(&target)), expected);
    EXPECT_EQ(Outcome(convert, Variant::FromObject(automation::Make<VbsDefaultObject>(operand))), expected);
  }
  EXPECT_EQ(Outcome(convert, VbsArray()), "!13");
  EXPECT_EQ(Outcome(convert, Variant::FromObject(nullptr)), "!91");
  EXPECT_EQ(Outcome(convert, Variant::FromObject(automation::Make<VbsPlainObject>())), "!438");
}

TEST(Conversions, ConvertEverySubtypeToEveryOther) {
  ExpectRow(kToByte, "y0 !94 y255 y3 y5 !6 y2 y2 y1 y2 y7 !13");
  ExpectRow(kToInteger, "i0 !94 i-1 i3 i5 !6 i2 i2 i1 i2 i7 !13");
  ExpectRow(kToLong, "l0 !94 l-1 l3 l5 l70000 l2 l2 l1 l2 l7 !13");
  ExpectRow(kToSingle, "s0 !94 s-1 s3 s5 s70000 s1.5 s2.5 s1.25 s2 s7 !13");
  ExpectRow(kToDouble, "d0 !94 d-1 d3 d5 d70000 d1.5 d2.5 d1.25 d2 d7 !13");
  ExpectRow(kToCurrency, "c0 !94 c-1 c3 c5 c70000 c1.5 c2.5 c1.25 c2 c7 !13");
  ExpectRow(kToBoolean, "bF !94 bT bT bT bT bT bT bT bT bT !13");
  ExpectRow(kToDate, "t0 !94 t-1 t3 t5 t70000 t1.5 t2.5 t1.25 t2 t7 !13");
  ExpectRow(kToText, "$ !94 $True $3 $5 $70000 $1.5 $2.5 $1.25 $1/1/1900 $7 $abc");
}

TEST(Conversions, RoundHalvesToTheEvenNumber) {
  for (const auto& [value, rounded] : std::initializer_list<std::pair<double, const char*>>{{0.5, "l0"},
                                                                                            {1.5, "l2"},
                                                                                            {2.5, "l2"},
                                                                                            {3.5, "l4"},
                                                                                            {-0.5, "l0"},
                                                                                            {-1.5, "l-2"},
                                                                                            {-2.5, "l-2"},
                                                                                            {2.51, "l3"}}) {
    EXPECT_EQ(Outcome(kToLong, Variant::FromDouble(value)), rounded) << value;
    EXPECT_EQ(Outcome(kToLong, Variant::FromCurrency(static_cast<std::int64_t>(value * 10000))), rounded)
        << value;
    EXPECT_EQ(Outcome(kToLong, Variant::FromSingle(static_cast<float>(value))), rounded) << value;
  }
  EXPECT_EQ(Outcome(kToCurrency, Variant::FromDouble(2.00005)), "c2");
  EXPECT_EQ(Outcome(kToCurrency, Variant::FromDouble(2.00015)), "c2.0002");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromText("2.5")), "i2");
}

TEST(Conversions, OverflowAtTheEndsOfARange) {
  EXPECT_EQ(Outcome(kToByte, Variant::FromInteger(255)), "y255");
  EXPECT_EQ(Outcome(kToByte, Variant::FromInteger(256)), "!6");
  EXPECT_EQ(Outcome(kToByte, Variant::FromInteger(-1)), "!6");
  EXPECT_EQ(Outcome(kToByte, Variant::FromDouble(255.5)), "!6");
  EXPECT_EQ(Outcome(kToByte, Variant::FromDouble(-0.5)), "y0");
  EXPECT_EQ(Outcome(kToByte, Variant::FromText("&HFF")), "y255");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromDouble(32767.4)), "i32767");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromDouble(32767.5)), "!6");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromDouble(-32768.5)), "i-32768");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromText("40000")), "!6");
  EXPECT_EQ(Outcome(kToInteger, Variant::FromText("&HFFFF")), "i-1");
  EXPECT_EQ(Outcome(kToLong, Variant::FromDouble(2147483647.4)), "l2147483647");
  EXPECT_EQ(Outcome(kToLong, Variant::FromDouble(2147483647.5)), "!6");
  EXPECT_EQ(Outcome(kToLong, Variant::FromDouble(-2147483648.5)), "l-2147483648");
  EXPECT_EQ(Outcome(kToLong, Variant::FromCurrency(std::numeric_limits<std::int64_t>::max())), "!6");
  EXPECT_EQ(Outcome(kToLong, Variant::FromDouble(1e300)), "!6");
  EXPECT_EQ(Outcome(kToSingle, Variant::FromDouble(1e39)), "!6");
  EXPECT_EQ(Outcome(kToSingle, Variant::FromDouble(1e-60)), "s0");
  EXPECT_EQ(Outcome(kToCurrency, Variant::FromDouble(1e15)), "!6");
  EXPECT_EQ(Outcome(kToCurrency, Variant::FromDouble(-1e15)), "!6");
  EXPECT_EQ(Outcome(kToCurrency, Variant::FromText("922337203685477.5807")), "c922337203685477.5807");
  EXPECT_EQ(Outcome(kToDouble, Variant::FromText("1e309")), "!6");
}

TEST(Conversions, DatesReachFromTheYear100To9999) {
  EXPECT_EQ(Outcome(kToDate, Variant::FromLong(-657434)), "t-657434");
  EXPECT_EQ(Outcome(kToDate, Variant::FromDouble(-657434.75)), "t-657434.75");
  EXPECT_EQ(Outcome(kToDate, Variant::FromLong(-657435)), "!6");
  EXPECT_EQ(Outcome(kToDate, Variant::FromDouble(2958465.99)), "t2958465.99");
  EXPECT_EQ(Outcome(kToDate, Variant::FromLong(2958466)), "!6");
}

TEST(Conversions, ReadDatesFromTextsAndNumbersBehindThem) {
  EXPECT_EQ(Outcome(kToDate, Variant::FromText("3/24/2001 12:00")), "t36974.5");
  EXPECT_EQ(Outcome(kToDate, Variant::FromText("36974")), "t36974");
  EXPECT_EQ(Outcome(kToDate, Variant::FromText("3000000")), "!6");
  EXPECT_EQ(Outcome(kToDate, Variant::FromText("2/29/2001")), "!13");
  EXPECT_EQ(Outcome(kToDate, Variant::FromText("")), "!13");
}

TEST(Conversions, ReadTruthsFromTexts) {
  for (const char* text : {"True", "TRUE", "tRuE", "#TRUE#", "1", "-1", "0.5", "&H1"})
    EXPECT_EQ(Outcome(kToBoolean, Variant::FromText(text)), "bT") << text;
  for (const char* text : {"False", "FALSE", "#FALSE#", "0", "0.0", "-0"})
    EXPECT_EQ(Outcome(kToBoolean, Variant::FromText(text)), "bF") << text;
  for (const char* text : {"", "yes", " True", "Tru", "#true"})
    EXPECT_EQ(Outcome(kToBoolean, Variant::FromText(text)), "!13") << text;
}

TEST(Conversions, PrintMoneyWithUpToFourPlaces) {
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(0)), "$0");
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(1)), "$0.0001");
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(-1)), "$-0.0001");
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(12340000)), "$1234");
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(12345000)), "$1234.5");
  EXPECT_EQ(Outcome(kToText, Variant::FromCurrency(std::numeric_limits<std::int64_t>::min())),
            "$-922337203685477.5808");
}

TEST(Conversions, PrintErrorsWithTheirCodes) {
  EXPECT_EQ(Outcome(kToText, Variant::FromErrorCode(2147)), "$Error 2147");
  EXPECT_EQ(Outcome(kToLong, Variant::FromErrorCode(2147)), "!13");
  EXPECT_EQ(Outcome(kToBoolean, Variant::FromErrorCode(2147)), "!13");
}

TEST(Conversions, ASingleShowsItsOwnDigitsAsADouble) {
  EXPECT_EQ(Outcome(kToDouble, Variant::FromSingle(0.1F)), "d0.100000001490116");
}

TEST(Conversions, ATextIsNotCopied) {
  const Variant text = Variant::FromText("abc");
  EXPECT_EQ(ToTextVariant(text).AsStringBuffer(), text.AsStringBuffer());
}

}  // namespace
}  // namespace hearthmake::vbscript
