#include "vbscript/syntax/Ast.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vbscript {
namespace {

std::pair<int, int> Place(std::u16string_view source, Offset offset) {
  const LineAndColumn place = Locate(source, offset);
  return {place.line, place.column};
}

TEST(Ast, LocatesOffsetsByLineAndColumn) {
  constexpr std::u16string_view kSource = u"ab\r\nc\rd\n\ne";
  EXPECT_EQ(Place(kSource, 0), std::pair(1, 1));
  EXPECT_EQ(Place(kSource, 2), std::pair(1, 3));
  EXPECT_EQ(Place(kSource, 3), std::pair(1, 4));
  EXPECT_EQ(Place(kSource, 4), std::pair(2, 1));
  EXPECT_EQ(Place(kSource, 6), std::pair(3, 1));
  EXPECT_EQ(Place(kSource, 8), std::pair(4, 1));
  EXPECT_EQ(Place(kSource, 9), std::pair(5, 1));
  EXPECT_EQ(Place(kSource, 10), std::pair(5, 2));
  EXPECT_EQ(Place(kSource, 1000), std::pair(5, 2));
  EXPECT_EQ(Place(u"", 0), std::pair(1, 1));
}

TEST(Ast, FindsTheLineOfAnOffset) {
  constexpr std::u16string_view kSource = u"ab\r\nc\rd\n\ne";
  EXPECT_EQ(LineAt(kSource, 1), u"ab");
  EXPECT_EQ(LineAt(kSource, 2), u"ab");
  EXPECT_EQ(LineAt(kSource, 4), u"c");
  EXPECT_EQ(LineAt(kSource, 6), u"d");
  EXPECT_EQ(LineAt(kSource, 8), u"");
  EXPECT_EQ(LineAt(kSource, 99), u"e");
  EXPECT_EQ(LineAt(u"", 0), u"");
}

}  // namespace
}  // namespace hearthmake::vbscript
