#include "vbscript/intrinsics/TextLists.hpp"

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

automation::Variant TwoByTwo() {
  return automation::Variant::FromArray(
      automation::Ref<automation::ArrayBuffer>(new automation::ArrayBuffer({{0, 2}, {0, 2}})));
}

TEST(TextLists, SplitTakesATextApart) {
  Check({
      {"Split", {T(u"a b c")}, "[String a, String b, String c]"},
      {"Split", {T(u"a,b,,c,"), T(u",")}, "[String a, String b, String , String c, String ]"},
      {"Split", {T(u"a--b-c"), T(u"--")}, "[String a, String b-c]"},
      {"Split", {T(u"aXbxc"), T(u"x")}, "[String aXb, String c]"},
      {"Split", {T(u"aXbxc"), T(u"x"), N(-1), N(1)}, "[String a, String b, String c]"},
      {"Split", {T(u"a b c"), T(u" "), N(2)}, "[String a, String b c]"},
      {"Split", {T(u"a b c"), T(u" "), N(1)}, "[String a b c]"},
      {"Split", {T(u"a b c"), Missing(), N(2)}, "[String a, String b c]"},
      {"Split", {T(u"a b c"), T(u" "), N(0)}, "[]"},
      {"Split", {T(u"abc"), T(u"")}, "[String abc]"},
      {"Split", {T(u"abc"), T(u"abcd")}, "[String abc]"},
      {"Split", {T(u"")}, "[]"},
      {"Split", {T(u""), T(u"")}, "[]"},
      {"Split", {EmptyValue()}, "[]"},
      {"Split", {N(10203), N(0)}, "[String 1, String 2, String 3]"},
      {"Split", {NullValue()}, "error 94 Invalid use of Null: 'Split'"},
      {"Split", {T(u"a"), NullValue()}, "error 94 Invalid use of Null: 'Split'"},
      {"Split", {T(u"a"), T(u" "), NullValue()}, "error 94 Invalid use of Null: 'Split'"},
      {"Split", {T(u"a"), T(u" "), N(-2)}, "error 5 Invalid procedure call or argument: 'Split'"},
      {"Split", {T(u"a"), T(u" "), N(-1), N(3)}, "error 5 Invalid procedure call or argument: 'Split'"},
      {"Split", {List({})}, "error 13 Type mismatch: 'Split'"},
  });
}

TEST(TextLists, SplitGivesArraysThatCountFromZero) {
  IntrinsicBench bench;
  const automation::Variant parts = bench.Call("Split", {T(u"a b")});
  EXPECT_EQ(bench.Tell("LBound", {parts}), "Long 0");
  EXPECT_EQ(bench.Tell("UBound", {parts}), "Long 1");
  EXPECT_EQ(bench.Tell("UBound", {bench.Call("Split", {T(u"")})}), "Long -1");
}

TEST(TextLists, JoinPutsTextsTogether) {
  Check({
      {"Join", {List({T(u"a"), T(u"b")})}, "String a b"},
      {"Join", {List({T(u"a"), T(u"b"), T(u"c")}), T(u", ")}, "String a, b, c"},
      {"Join", {List({T(u"a"), T(u"b")}), T(u"")}, "String ab"},
      {"Join", {List({T(u"a"), T(u"b")}), Missing()}, "String a b"},
      {"Join", {List({T(u"a"), EmptyValue(), N(1), B(true), D(1.5)}), T(u"-")}, "String a--1-True-1.5"},
      {"Join", {List({T(u"a")})}, "String a"},
      {"Join", {List({})}, "String "},
      {"Join", {List({T(u"a"), NullValue()})}, "error 13 Type mismatch: 'Join'"},
      {"Join", {List({List({})})}, "error 13 Type mismatch: 'Join'"},
      {"Join", {List({Nothing()})}, "error 91 Object variable not set: 'Join'"},
      {"Join", {T(u"a")}, "error 13 Type mismatch: 'Join'"},
      {"Join", {NullValue()}, "error 13 Type mismatch: 'Join'"},
      {"Join", {List({T(u"a")}), NullValue()}, "error 94 Invalid use of Null: 'Join'"},
      {"Join", {TwoByTwo()}, "error 5 Invalid procedure call or argument: 'Join'"},
  });
}

TEST(TextLists, FilterKeepsWhatContainsAText) {
  const automation::Variant list = List({T(u"ab"), T(u"Bc"), T(u"cd"), N(12)});
  Check({
      {"Filter", {list, T(u"b")}, "[String ab]"},
      {"Filter", {list, T(u"b"), B(true), N(1)}, "[String ab, String Bc]"},
      {"Filter", {list, T(u"b"), B(false)}, "[String Bc, String cd, String 12]"},
      {"Filter", {list, T(u"b"), Missing(), N(1)}, "[String ab, String Bc]"},
      {"Filter", {list, N(1)}, "[String 12]"},
      {"Filter", {list, T(u"x")}, "[]"},
      {"Filter", {list, T(u"")}, "[String ab, String Bc, String cd, String 12]"},
      {"Filter", {List({}), T(u"a")}, "[]"},
      {"Filter", {NullValue(), T(u"a")}, "error 13 Type mismatch: 'Filter'"},
      {"Filter", {T(u"a"), T(u"a")}, "error 13 Type mismatch: 'Filter'"},
      {"Filter", {TwoByTwo(), T(u"a")}, "error 13 Type mismatch: 'Filter'"},
      {"Filter", {List({NullValue()}), T(u"a")}, "error 13 Type mismatch: 'Filter'"},
      {"Filter", {list, NullValue()}, "error 94 Invalid use of Null: 'Filter'"},
      {"Filter", {list, T(u"a"), NullValue()}, "error 94 Invalid use of Null: 'Filter'"},
      {"Filter", {list, T(u"a"), B(true), N(5)}, "error 5 Invalid procedure call or argument: 'Filter'"},
  });
}

}  // namespace
}  // namespace hearthmake::vbscript
