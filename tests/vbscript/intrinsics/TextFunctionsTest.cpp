#include "vbscript/intrinsics/TextFunctions.hpp"

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

TEST(TextFunctions, CompareTexts) {
  Check({
      {"StrComp", {T(u"a"), T(u"b")}, "Integer -1"},
      {"StrComp", {T(u"b"), T(u"a")}, "Integer 1"},
      {"StrComp", {T(u"ab"), T(u"ab")}, "Integer 0"},
      {"StrComp", {T(u"a"), T(u"A")}, "Integer 1"},
      {"StrComp", {T(u"a"), T(u"A"), N(0)}, "Integer 1"},
      {"StrComp", {T(u"aÄ"), T(u"Aä"), N(1)}, "Integer 0"},
      {"StrComp", {T(u"ab"), T(u"A"), N(1)}, "Integer 1"},
      {"StrComp", {EmptyValue(), T(u"")}, "Integer 0"},
      {"StrComp", {N(10), T(u"10")}, "Integer 0"},
      {"StrComp", {NullValue(), T(u"a")}, "Null"},
      {"StrComp", {T(u"a"), NullValue()}, "Null"},
      {"StrComp", {T(u"a"), T(u"A"), N(2)}, "error 5 Invalid procedure call or argument: 'StrComp'"},
      {"StrComp", {T(u"a"), T(u"A"), N(-1)}, "error 5 Invalid procedure call or argument: 'StrComp'"},
      {"StrComp", {T(u"a"), T(u"A"), NullValue()}, "error 94 Invalid use of Null: 'StrComp'"},
      {"StrComp", {List({N(1)}), T(u"A")}, "error 13 Type mismatch: 'StrComp'"},
  });
}

TEST(TextFunctions, FindATextInAnother) {
  Check({
      {"InStr", {T(u"abcabc"), T(u"c")}, "Long 3"},
      {"InStr", {T(u"abcabc"), T(u"ca")}, "Long 3"},
      {"InStr", {T(u"abcabc"), T(u"x")}, "Long 0"},
      {"InStr", {T(u"abcabc"), T(u"C")}, "Long 0"},
      {"InStr", {N(4), T(u"abcabc"), T(u"c")}, "Long 6"},
      {"InStr", {N(7), T(u"abcabc"), T(u"c")}, "Long 0"},
      {"InStr", {N(1), T(u"abcabc"), T(u"CA"), N(1)}, "Long 3"},
      {"InStr", {N(2), T(u"xÄxä"), T(u"Xä"), N(1)}, "Long 3"},
      {"InStr", {N(1), T(u"abcabc"), T(u"CA"), N(0)}, "Long 0"},
      {"InStr", {T(u"aabaac"), T(u"aac")}, "Long 4"},
      {"InStr", {T(u"x€y"), T(u"€")}, "Long 2"},
      {"InStr", {T(u"\u6100a"), T(u"a")}, "Long 2"},
      {"InStr", {T(u"a\u0161\u6161a"), T(u"aa")}, "Long 0"},
      {"InStr", {T(u"ab\u0100"), T(u"\u0100")}, "Long 3"},
      {"InStr", {N(1234), N(3)}, "Long 3"},
      // Nothing to look in, nothing to look for.
      {"InStr", {T(u""), T(u"")}, "Long 0"},
      {"InStr", {T(u""), T(u"a")}, "Long 0"},
      {"InStr", {T(u"abc"), T(u"")}, "Long 1"},
      {"InStr", {N(3), T(u"abc"), T(u"")}, "Long 3"},
      {"InStr", {N(4), T(u"abc"), T(u"")}, "Long 0"},
      {"InStr", {NullValue(), T(u"a")}, "Null"},
      {"InStr", {T(u"a"), NullValue()}, "Null"},
      {"InStr", {N(1), NullValue(), T(u"a"), N(1)}, "Null"},
      {"InStr", {NullValue(), T(u"a"), T(u"a")}, "error 94 Invalid use of Null: 'InStr'"},
      {"InStr", {N(1), T(u"a"), T(u"a"), NullValue()}, "error 94 Invalid use of Null: 'InStr'"},
      {"InStr", {N(0), T(u"a"), T(u"a")}, "error 5 Invalid procedure call or argument: 'InStr'"},
      {"InStr", {EmptyValue(), T(u"a"), T(u"a")}, "error 5 Invalid procedure call or argument: 'InStr'"},
      {"InStr", {N(1), T(u"a"), T(u"a"), N(2)}, "error 5 Invalid procedure call or argument: 'InStr'"},
      {"InStr", {T(u"abc"), T(u"b"), N(1)}, "error 13 Type mismatch: 'InStr'"},
  });
}

TEST(TextFunctions, FindATextAcrossAndBetweenLookouts) {
  // Searches go in stretches; what lies across the edge of one must be found too.
  IntrinsicBench bench;
  std::u16string text(200000, u'a');
  text.replace(65534, 3, u"bcd");
  EXPECT_EQ(bench.Tell("InStr", {T(text), T(u"bcd")}), "Long 65535");
  EXPECT_EQ(bench.Tell("InStr", {N(1), T(text), T(u"BCD"), N(1)}), "Long 65535");
  EXPECT_EQ(bench.Tell("InStrRev", {T(text), T(u"bcd")}), "Long 65535");
  EXPECT_EQ(bench.Tell("InStr", {T(text), T(u"cb")}), "Long 0");
}

TEST(TextFunctions, FindBytes) {
  Check({
      {"InStrB", {T(u"abc"), T(u"b")}, "Long 3"},
      {"InStrB", {N(4), T(u"abcb"), T(u"b")}, "Long 7"},
      {"InStrB", {T(u"\u6162\u6261"), T(u"\u6161")}, "Long 2"},
      {"InStrB", {T(u"abc"), T(u"x")}, "Long 0"},
      {"InStrB", {T(u"abc"), T(u"")}, "Long 1"},
      {"InStrB", {NullValue(), T(u"b")}, "Null"},
      {"InStrB", {N(0), T(u"abc"), T(u"b")}, "error 5 Invalid procedure call or argument: 'InStrB'"},
  });
}

TEST(TextFunctions, FindTheLastOfATextInAnother) {
  Check({
      {"InStrRev", {T(u"abcabc"), T(u"bc")}, "Long 5"},
      {"InStrRev", {T(u"abcabc"), T(u"bc"), N(6)}, "Long 5"},
      {"InStrRev", {T(u"abcabc"), T(u"bc"), N(5)}, "Long 2"},
      {"InStrRev", {T(u"abcabc"), T(u"bc"), N(1)}, "Long 0"},
      {"InStrRev", {T(u"abcabc"), T(u"bc"), N(-1)}, "Long 5"},
      {"InStrRev", {T(u"abcabc"), T(u"B"), N(-1), N(1)}, "Long 5"},
      {"InStrRev", {T(u"abcabc"), T(u"B"), Missing(), N(1)}, "Long 5"},
      {"InStrRev", {T(u"abcabc"), T(u"B")}, "Long 0"},
      {"InStrRev", {T(u"abc"), T(u"c"), N(9)}, "Long 0"},
      {"InStrRev", {T(u"abc"), T(u"")}, "Long 3"},
      {"InStrRev", {T(u"abc"), T(u""), N(2)}, "Long 2"},
      {"InStrRev", {T(u""), T(u"")}, "Long 0"},
      {"InStrRev", {T(u""), T(u"a")}, "Long 0"},
      {"InStrRev", {T(u"a"), T(u"abc")}, "Long 0"},
      {"InStrRev", {NullValue(), T(u"a")}, "Null"},
      {"InStrRev", {T(u"a"), NullValue()}, "Null"},
      {"InStrRev", {T(u"a"), T(u"a"), NullValue()}, "error 94 Invalid use of Null: 'InStrRev'"},
      {"InStrRev", {T(u"a"), T(u"a"), N(0)}, "error 5 Invalid procedure call or argument: 'InStrRev'"},
      {"InStrRev", {T(u"a"), T(u"a"), N(-2)}, "error 5 Invalid procedure call or argument: 'InStrRev'"},
      {"InStrRev", {T(u"a"), T(u"a"), N(1), N(3)}, "error 5 Invalid procedure call or argument: 'InStrRev'"},
  });
}

TEST(TextFunctions, ReplaceTexts) {
  Check({
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"xy")}, "String axycaxyc"},
      {"Replace", {T(u"abcabc"), T(u"bc"), T(u"")}, "String aa"},
      {"Replace", {T(u"abcabc"), T(u"B"), T(u"x")}, "String abcabc"},
      {"Replace", {T(u"abcabc"), T(u"B"), T(u"x"), N(1), N(-1), N(1)}, "String axcaxc"},
      {"Replace", {T(u"aaaa"), T(u"aa"), T(u"a")}, "String aa"},
      {"Replace", {T(u"aaa"), T(u"a"), T(u"aa")}, "String aaaaaa"},
      {"Replace", {T(u"abc"), T(u""), T(u"x")}, "String abc"},
      {"Replace", {T(u""), T(u"a"), T(u"x")}, "String "},
      {"Replace", {N(1213), N(1), N(9)}, "String 9293"},
      {"Replace", {T(u"ab"), T(u"ab"), T(u"")}, "String "},
      // The start cuts the result.
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"x"), N(3)}, "String caxc"},
      {"Replace", {T(u"abcabc"), T(u"z"), T(u"x"), N(3)}, "String cabc"},
      {"Replace", {T(u"abcabc"), T(u""), T(u"x"), N(2)}, "String bcabc"},
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"x"), N(9)}, "String "},
      // The count limits it.
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"x"), N(1), N(1)}, "String axcabc"},
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"x"), N(3), N(0)}, "String cabc"},
      {"Replace", {T(u"abcabc"), T(u"b"), T(u"x"), Missing(), N(1)}, "String axcabc"},
      {"Replace", {NullValue(), T(u"a"), T(u"b")}, "error 94 Invalid use of Null: 'Replace'"},
      {"Replace", {T(u"a"), NullValue(), T(u"b")}, "error 94 Invalid use of Null: 'Replace'"},
      {"Replace", {T(u"a"), T(u"a"), NullValue()}, "error 94 Invalid use of Null: 'Replace'"},
      {"Replace", {T(u"a"), T(u"a"), T(u"b"), NullValue()}, "error 94 Invalid use of Null: 'Replace'"},
      {"Replace", {T(u"a"), T(u"a"), T(u"b"), N(0)}, "error 5 Invalid procedure call or argument: 'Replace'"},
      {"Replace",
       {T(u"a"), T(u"a"), T(u"b"), N(1), N(-2)},
       "error 5 Invalid procedure call or argument: 'Replace'"},
      {"Replace",
       {T(u"a"), T(u"a"), T(u"b"), N(1), N(-1), N(2)},
       "error 5 Invalid procedure call or argument: 'Replace'"},
  });
}

TEST(TextFunctions, RefuseResultsBeyondTheLongestText) {
  IntrinsicBench bench;
  const automation::Variant many = bench.Call("String", {N(40000), T(u"a")});
  EXPECT_EQ(bench.Tell("Replace", {many, T(u"a"), many}), "error 14 Out of string space: 'Replace'");
}

TEST(TextFunctions, ReplaceAtMorePlacesThanAreKeptNear) {
  IntrinsicBench bench;
  const automation::Variant many = bench.Call("String", {N(1000), T(u"a")});
  const automation::Variant result = bench.Call("Replace", {many, T(u"a"), T(u"bc")});
  EXPECT_EQ(bench.Tell("Replace", {result, T(u"bc"), T(u"")}), "String ");
  EXPECT_EQ(bench.Tell("Len", {result}), "Long 2000");
}

TEST(TextFunctions, EscapeAndUnescape) {
  Check({
      {"Escape", {T(u"aZ09@*_+-./")}, "String aZ09@*_+-./"},
      {"Escape", {T(u"a b!~é€")}, "String a%20b%21%7E%E9%u20AC"},
      {"Escape", {T(std::u16string_view(u"\0", 1))}, "String %00"},
      {"Escape", {N(12)}, "String 12"},
      {"Escape", {EmptyValue()}, "String "},
      {"Escape", {NullValue()}, "Null"},
      {"Unescape", {T(u"a%20b%u20AC%e9")}, "String a b€é"},
      {"Unescape", {T(u"%zz%u12%4%")}, "String %zz%u12%4%"},
      {"Unescape", {T(u"%2541")}, "String %41"},
      {"Unescape", {T(u"%u00g0%u0041")}, "String %u00g0A"},
      {"Unescape", {NullValue()}, "Null"},
  });
}

TEST(TextFunctions, ChargeTheBudgetForLongTexts) {
  IntrinsicBench bench;
  const automation::Variant text = T(std::u16string(1 << 20, u'a'));
  for (const std::vector<automation::Variant>& arguments :
       {std::vector<automation::Variant>{N(1), text, T(u"B"), N(1)}, {text, T(u"ab")}}) {
    bench.SharedContext().budget.LimitSteps(1000);
    EXPECT_THROW(bench.Call("InStr", arguments), Interrupted);
  }
  bench.SharedContext().budget.LimitSteps(1000);
  EXPECT_THROW(bench.Call("Replace", {text, T(u"a"), T(u"b")}), Interrupted);
  bench.SharedContext().budget.LimitSteps(1000);
  EXPECT_THROW(bench.Call("Split", {text, T(u"a")}), Interrupted);
  bench.SharedContext().budget.LimitSteps(1000);
  EXPECT_THROW(bench.Call("Space", {N(1 << 20)}), Interrupted);
}

TEST(TextFunctions, EndInTimeOnASearchWithoutHope) {
  IntrinsicBench bench;
  const automation::Variant text = T(std::u16string(4 << 20, u'a'));
  const automation::Variant sought = T(std::u16string(1 << 20, u'a') + u"b");
  bench.SharedContext().budget.StartTimeout(50);
  EXPECT_THROW(bench.Call("InStr", {text, sought}), Interrupted);
  bench.SharedContext().budget = {};
  bench.SharedContext().budget.StartTimeout(50);
  EXPECT_THROW(bench.Call("InStrRev", {text, sought}), Interrupted);
}

}  // namespace
}  // namespace hearthmake::vbscript
