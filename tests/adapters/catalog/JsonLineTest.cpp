#include "adapters/catalog/JsonLine.hpp"

#include <gtest/gtest.h>

namespace hearthmake::catalog {
namespace {

constexpr std::string_view kText =
    "{\n"                   // 1
    "  \"a\": [\n"          // 2
    "    1,\n"              // 3
    "    {\"b\": 2.5\n"     // 4
    "    },\n"              // 5
    "    \"x\"\n"           // 6
    "  ],\n"                // 7
    "  \"c\":\n    null\n"  // 8, 9
    "}\n";

TEST(JsonLine, CountsTheLineOfAByte) {
  EXPECT_EQ(LineAt("a\nb\n", 1), 1U);
  EXPECT_EQ(LineAt("a\nb\n", 2), 1U);
  EXPECT_EQ(LineAt("a\nb\n", 3), 2U);
  EXPECT_EQ(LineAt("a\nb\n", 1000), 3U);
  EXPECT_EQ(LineAt("", 0), 1U);
}

TEST(JsonLine, FindsTheLineOfDamage) {
  EXPECT_EQ(LineOfDamage("{\n\"a\": 1,\noops}"), 3U);
  EXPECT_EQ(LineOfDamage("[1,\n1e400,\n2]"), 2U);
  EXPECT_EQ(LineOfDamage("[1,\n\"\xFF\"]"), 2U);
  EXPECT_EQ(LineOfDamage(kText), 1U);
  EXPECT_EQ(LineOfDamage("{\"\": 1,\n7}"), 2U);
}

TEST(JsonLine, FindsTheLineOfAPlace) {
  EXPECT_EQ(LineOfPlace(kText, ""), 1U);
  EXPECT_EQ(LineOfPlace(kText, "/a"), 2U);
  EXPECT_EQ(LineOfPlace(kText, "/a/0"), 3U);
  EXPECT_EQ(LineOfPlace(kText, "/a/1"), 4U);
  EXPECT_EQ(LineOfPlace(kText, "/a/1/b"), 4U);
  EXPECT_EQ(LineOfPlace(kText, "/a/2"), 6U);
  EXPECT_EQ(LineOfPlace(kText, "/c"), 9U);
}

TEST(JsonLine, IsTheFirstForAPlaceThatIsNotThere) {
  EXPECT_EQ(LineOfPlace(kText, "/a/3"), 1U);
  EXPECT_EQ(LineOfPlace(kText, "/a/1/b/c"), 1U);
}

TEST(JsonLine, FindsWhereBracketsNestTooDeep) {
  EXPECT_EQ(ByteTooDeep("[[1]]", 2), 0U);
  EXPECT_EQ(ByteTooDeep("[[1]]", 1), 2U);
  EXPECT_EQ(ByteTooDeep("[\"[[[[\\\"[[\"][]", 1), 0U);
  EXPECT_EQ(ByteTooDeep("]]]{{", 1), 5U);
  EXPECT_EQ(ByteTooDeep("\"\\", 1), 0U);
}

}  // namespace
}  // namespace hearthmake::catalog
