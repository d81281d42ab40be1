#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "support/VbsOperandMatrix.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {
namespace {

TEST(Concatenation, JoinsEverySubtypeWithEveryOther) {
  ExpectMatrix(Concatenate, R"(
    $         $         $True         $3         $5         $70000         $1.5         $2.5         $1.25         $1/1/1900         $7         $abc
    $         N         $True         $3         $5         $70000         $1.5         $2.5         $1.25         $1/1/1900         $7         $abc
    $True     $True     $TrueTrue     $True3     $True5     $True70000     $True1.5     $True2.5     $True1.25     $True1/1/1900     $True7     $Trueabc
    $3        $3        $3True        $33        $35        $370000        $31.5        $32.5        $31.25        $31/1/1900        $37        $3abc
    $5        $5        $5True        $53        $55        $570000        $51.5        $52.5        $51.25        $51/1/1900        $57        $5abc
    $70000    $70000    $70000True    $700003    $700005    $7000070000    $700001.5    $700002.5    $700001.25    $700001/1/1900    $700007    $70000abc
    $1.5      $1.5      $1.5True      $1.53      $1.55      $1.570000      $1.51.5      $1.52.5      $1.51.25      $1.51/1/1900      $1.57      $1.5abc
    $2.5      $2.5      $2.5True      $2.53      $2.55      $2.570000      $2.51.5      $2.52.5      $2.51.25      $2.51/1/1900      $2.57      $2.5abc
    $1.25     $1.25     $1.25True     $1.253     $1.255     $1.2570000     $1.251.5     $1.252.5     $1.251.25     $1.251/1/1900     $1.257     $1.25abc
    $1/1/1900 $1/1/1900 $1/1/1900True $1/1/19003 $1/1/19005 $1/1/190070000 $1/1/19001.5 $1/1/19002.5 $1/1/19001.25 $1/1/19001/1/1900 $1/1/19007 $1/1/1900abc
    $7        $7        $7True        $73        $75        $770000        $71.5        $72.5        $71.25        $71/1/1900        $77        $7abc
    $abc      $abc      $abcTrue      $abc3      $abc5      $abc70000      $abc1.5      $abc2.5      $abc1.25      $abc1/1/1900      $abc7      $abcabc
  )");
}

TEST(Concatenation, RefusesWhatHasNoValue) { ExpectRefusals(Concatenate); }

TEST(Concatenation, FollowsReferencesAndDefaultMembers) { ExpectIndirectOperands(Concatenate); }

TEST(Concatenation, KeepsEveryUnit) {
  const std::u16string units = {u'a', u'\0', char16_t{0xD800}};
  const Variant joined = Concatenate(Variant::FromUtf16(units), Variant::FromUtf16(units));
  EXPECT_EQ(joined.AsUtf16(), units + units);
}

TEST(Concatenation, SharesATextThatNothingIsAddedTo) {
  const Variant text = Variant::FromText("abc");
  EXPECT_EQ(Concatenate(text, Variant()).AsStringBuffer(), text.AsStringBuffer());
  EXPECT_EQ(Concatenate(Variant(), text).AsStringBuffer(), text.AsStringBuffer());
}

TEST(Concatenation, WritesTheSmallestNumbers) {
  EXPECT_EQ(VbsDescribe(Concatenate(Variant::FromLong(std::numeric_limits<std::int32_t>::min()), Variant())),
            "String -2147483648");
  EXPECT_EQ(VbsDescribe(Concatenate(Variant::FromInteger(-32768), Variant::FromByte(255))),
            "String -32768255");
}

}  // namespace
}  // namespace hearthmake::vbscript
