#include <gtest/gtest.h>

#include "support/IntrinsicBench.hpp"

namespace hearthmake::vbscript {
namespace {

void Check(const std::vector<IntrinsicCase>& table) {
  IntrinsicBench bench;
  for (const IntrinsicCase& line : table) {
    EXPECT_EQ(bench.Tell(line.name, line.arguments), line.expected) << Describe(line);
  }
}

TEST(TextIntrinsics, MeasuresTexts) {
  Check({
      {"Len", {T(u"")}, "Long 0"},
      {"Len", {T(u"aäx")}, "Long 3"},
      {"Len", {EmptyValue()}, "Long 0"},
      {"Len", {N(-123)}, "Long 4"},
      {"Len", {B(true)}, "Long 4"},
      {"Len", {NullValue()}, "Null"},
      {"Len", {Nothing()}, "error 91 Object variable not set: 'Len'"},
      {"Len", {List({N(1)})}, "error 13 Type mismatch: 'Len'"},
      {"LenB", {T(u"abc")}, "Long 6"},
      {"LenB", {NullValue()}, "Null"},
  });
}

TEST(TextIntrinsics, TakesTheLeftAndTheRightOfAText) {
  Check({
      {"Left", {T(u"abcde"), N(2)}, "String ab"},
      {"Left", {T(u"abcde"), N(0)}, "String "},
      {"Left", {T(u"abcde"), N(5)}, "String abcde"},
      {"Left", {T(u"abcde"), N(99)}, "String abcde"},
      {"Left", {T(u"abcde"), D(2.5)}, "String ab"},
      {"Left", {T(u"abcde"), T(u"3")}, "String abc"},
      {"Left", {N(12345), N(2)}, "String 12"},
      {"Left", {EmptyValue(), N(2)}, "String "},
      {"Left", {NullValue(), N(2)}, "Null"},
      {"Left", {T(u"abc"), N(-1)}, "error 5 Invalid procedure call or argument: 'Left'"},
      {"Left", {T(u"abc"), NullValue()}, "error 94 Invalid use of Null: 'Left'"},
      {"Left", {T(u"abc"), T(u"x")}, "error 13 Type mismatch: 'Left'"},
      {"Left", {T(u"abc"), D(3e9)}, "error 6 Overflow: 'Left'"},
      {"left", {T(u"abc"), N(-1)}, "error 5 Invalid procedure call or argument: 'left'"},
      {"Left", {T(u"abc")}, "error 450 Wrong number of arguments or invalid property assignment: 'Left'"},
      {"Right", {T(u"abcde"), N(2)}, "String de"},
      {"Right", {T(u"abcde"), N(0)}, "String "},
      {"Right", {T(u"abcde"), N(9)}, "String abcde"},
      {"Right", {NullValue(), N(2)}, "Null"},
      {"Right", {T(u"abc"), N(-1)}, "error 5 Invalid procedure call or argument: 'Right'"},
      {"Right", {T(u"abc"), NullValue()}, "error 94 Invalid use of Null: 'Right'"},
  });
}

TEST(TextIntrinsics, TakesTheMiddleOfAText) {
  Check({
      {"Mid", {T(u"abcde"), N(2), N(3)}, "String bcd"},
      {"Mid", {T(u"abcde"), N(2)}, "String bcde"},
      {"Mid", {T(u"abcde"), N(2), Missing()}, "String bcde"},
      {"Mid", {T(u"abcde"), N(1)}, "String abcde"},
      {"Mid", {T(u"abcde"), N(5), N(1)}, "String e"},
      {"Mid", {T(u"abcde"), N(5), N(9)}, "String e"},
      {"Mid", {T(u"abcde"), N(6), N(1)}, "String "},
      {"Mid", {T(u"abcde"), N(99)}, "String "},
      {"Mid", {T(u"a€c"), N(2), N(1)}, "String €"},
      {"Mid", {T(u"abcde"), N(2), N(0)}, "String "},
      {"Mid", {NullValue(), N(1)}, "Null"},
      {"Mid", {T(u"abc"), N(0)}, "error 5 Invalid procedure call or argument: 'Mid'"},
      {"Mid", {T(u"abc"), N(-1)}, "error 5 Invalid procedure call or argument: 'Mid'"},
      {"Mid", {T(u"abc"), N(1), N(-1)}, "error 5 Invalid procedure call or argument: 'Mid'"},
      {"Mid", {T(u"abc"), NullValue()}, "error 94 Invalid use of Null: 'Mid'"},
      {"Mid", {T(u"abc"), N(1), NullValue()}, "error 94 Invalid use of Null: 'Mid'"},
  });
}

TEST(TextIntrinsics, TakesPartsByBytes) {
  Check({
      {"LeftB", {T(u"abc"), N(4)}, "String ab"},
      {"LeftB", {T(u"abc"), N(3)}, "String ab"},
      {"LeftB", {T(u"abc"), N(-1)}, "error 5 Invalid procedure call or argument: 'LeftB'"},
      {"LeftB", {NullValue(), N(1)}, "Null"},
      {"RightB", {T(u"abc"), N(2)}, "String c"},
      {"RightB", {T(u"abc"), N(99)}, "String abc"},
      {"RightB", {NullValue(), N(1)}, "Null"},
      {"MidB", {T(u"abc"), N(3), N(2)}, "String b"},
      {"MidB", {T(u"abc"), N(3)}, "String bc"},
      {"MidB", {T(u"abc"), N(1), N(1)}, "String a"},
      {"MidB", {T(u"abc"), N(9)}, "String "},
      {"MidB", {T(u"abc"), N(0)}, "error 5 Invalid procedure call or argument: 'MidB'"},
  });
}

TEST(TextIntrinsics, TrimsBlanksAndNothingElse) {
  Check({
      {"LTrim", {T(u"  a b  ")}, "String a b  "},
      {"RTrim", {T(u"  a b  ")}, "String   a b"},
      {"Trim", {T(u"  a b  ")}, "String a b"},
      {"Trim", {T(u"\ta\u00A0")}, "String \ta\u00A0"},
      {"Trim", {T(u"   ")}, "String "},
      {"Trim", {N(5)}, "String 5"},
      {"Trim", {EmptyValue()}, "String "},
      {"LTrim", {NullValue()}, "Null"},
      {"RTrim", {NullValue()}, "Null"},
      {"Trim", {NullValue()}, "Null"},
  });
}

TEST(TextIntrinsics, ChangesCaseAndOrder) {
  Check({
      {"LCase", {T(u"AbÄΩ1[")}, "String abäω1["},
      {"UCase", {T(u"aBäω1{")}, "String ABÄΩ1{"},
      {"LCase", {EmptyValue()}, "String "},
      {"LCase", {NullValue()}, "Null"},
      {"UCase", {NullValue()}, "Null"},
      {"StrReverse", {T(u"abc")}, "String cba"},
      {"StrReverse", {T(u"")}, "String "},
      {"StrReverse", {N(123)}, "String 321"},
      {"StrReverse", {NullValue()}, "error 94 Invalid use of Null: 'StrReverse'"},
  });
}

TEST(TextIntrinsics, ChangesCaseInEveryBlockOfALongText) {
  std::u16string lower(100, u'x');
  lower.replace(40, 2, u"äß");
  std::u16string upper(100, u'X');
  upper.replace(40, 2, u"Äß");
  IntrinsicBench bench;
  EXPECT_EQ(bench.Call("UCase", {T(lower)}).AsUtf16(), upper);
  EXPECT_EQ(bench.Call("LCase", {T(upper)}).AsUtf16(), lower);
}

TEST(TextIntrinsics, RepeatsOneCharacter) {
  Check({
      {"Space", {N(3)}, "String    "},
      {"Space", {N(0)}, "String "},
      {"Space", {N(-1)}, "error 5 Invalid procedure call or argument: 'Space'"},
      {"Space", {NullValue()}, "error 94 Invalid use of Null: 'Space'"},
      {"Space", {N(2147483647)}, "error 14 Out of string space: 'Space'"},
      {"String", {N(3), T(u"ab")}, "String aaa"},
      {"String", {N(1), T(u"€b")}, "String €"},
      {"String", {N(0), T(u"a")}, "String "},
      {"String", {N(3), N(65)}, "String AAA"},
      {"String", {N(2), N(256 + 66)}, "String BB"},
      {"String", {N(2), N(128)}, "String €€"},
      {"String", {N(2), T(u"65")}, "String 66"},
      {"String", {N(2), T(u"")}, "error 5 Invalid procedure call or argument: 'String'"},
      {"String", {N(-1), T(u"a")}, "error 5 Invalid procedure call or argument: 'String'"},
      {"String", {NullValue(), T(u"a")}, "Null"},
      {"String", {N(2), NullValue()}, "Null"},
      {"String", {N(2147483647), T(u"a")}, "error 14 Out of string space: 'String'"},
  });
}

TEST(TextIntrinsics, SharesTextsOfOneUnitAndWholeTexts) {
  IntrinsicBench bench;
  const automation::Variant text = T(u"abc");
  const auto buffer = [&](std::string_view name, std::vector<automation::Variant> arguments) {
    return bench.Call(name, std::move(arguments)).AsStringBuffer();
  };
  EXPECT_EQ(buffer("Mid", {text, N(2), N(1)}), buffer("Left", {T(u"bcd"), N(1)}));
  EXPECT_EQ(buffer("Mid", {text, N(9)}), buffer("Left", {text, N(0)}));
  EXPECT_EQ(buffer("Left", {text, N(3)}), text.AsStringBuffer());
  EXPECT_EQ(buffer("Trim", {text}), text.AsStringBuffer());
}

}  // namespace
}  // namespace hearthmake::vbscript
