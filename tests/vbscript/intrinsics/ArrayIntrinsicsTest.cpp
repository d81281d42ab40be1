#include <gtest/gtest.h>

#include "support/IntrinsicBench.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::ArrayBuffer;
using automation::Ref;
using automation::Variant;

void Check(const std::vector<IntrinsicCase>& table) {
  IntrinsicBench bench;
  for (const IntrinsicCase& line : table) {
    EXPECT_EQ(bench.Tell(line.name, line.arguments), line.expected) << Describe(line);
  }
}

TEST(ArrayIntrinsics, MakeArraysOfValues) {
  Check({
      {"Array", {}, "[]"},
      {"Array", {N(1), T(u"a"), NullValue(), EmptyValue()}, "[Long 1, String a, Null, Empty]"},
      {"Array", {List({N(1)}), Nothing()}, "[[Long 1], Nothing]"},
  });
}

TEST(ArrayIntrinsics, TellTheBoundsOfADimension) {
  const Variant two = Variant::FromArray(Ref<ArrayBuffer>(new ArrayBuffer({{0, 2}, {-1, 4}})));
  const Variant unsized =
      Variant::FromArray(Ref<ArrayBuffer>(new ArrayBuffer(std::span<const ArrayBuffer::Bound>())));
  Check({
      {"LBound", {List({N(1), N(2)})}, "Long 0"},
      {"UBound", {List({N(1), N(2)})}, "Long 1"},
      {"UBound", {List({})}, "Long -1"},
      {"LBound", {two, N(2)}, "Long -1"},
      {"UBound", {two, N(1)}, "Long 1"},
      {"UBound", {two, T(u"2")}, "Long 2"},
      {"UBound", {two, D(1.6)}, "Long 2"},
      {"UBound", {two, Missing()}, "Long 1"},
      {"UBound", {two, N(0)}, "error 9 Subscript out of range: 'UBound'"},
      {"UBound", {two, N(3)}, "error 9 Subscript out of range: 'UBound'"},
      {"UBound", {two, N(-1)}, "error 9 Subscript out of range: 'UBound'"},
      {"LBound", {unsized}, "error 9 Subscript out of range: 'LBound'"},
      {"UBound", {unsized}, "error 9 Subscript out of range: 'UBound'"},
      {"UBound", {two, NullValue()}, "error 94 Invalid use of Null: 'UBound'"},
      {"UBound", {two, T(u"x")}, "error 13 Type mismatch: 'UBound'"},
      {"UBound", {T(u"a")}, "error 13 Type mismatch: 'UBound'"},
      {"LBound", {EmptyValue()}, "error 13 Type mismatch: 'LBound'"},
      {"LBound", {NullValue()}, "error 13 Type mismatch: 'LBound'"},
      {"LBound", {Nothing()}, "error 91 Object variable not set: 'LBound'"},
  });
}

}  // namespace
}  // namespace hearthmake::vbscript
