#include "vb6/Statements.hpp"

#include <gtest/gtest.h>

#include "vb6/CompileError.hpp"

namespace hearthmake::vb6 {
namespace {

// "line text" of each statement.
std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  for (const Statement& statement : SplitStatements(text, 1)) {
    lines.push_back(std::to_string(statement.line) + " " + statement.text);
  }
  return lines;
}

using List = std::vector<std::string>;

TEST(Statements, AreSplitAtColonsOutsideTexts) {
  EXPECT_EQ(Lines("a = 1: b = \":\"\r\nc x:=2\r\n"), (List{"1 a = 1", "1 b = \":\"", "2 c x:=2"}));
}

TEST(Statements, GoOnBehindAnUnderscore) {
  EXPECT_EQ(Lines("a = 1 + _\r\n  2\r\nb_\r\nc"), (List{"1 a = 1 +    2", "3 b_", "4 c"}));
}

TEST(Statements, LoseTheirComments) {
  EXPECT_EQ(Lines("a 'one: two\r\nRem b\r\nREM\r\nRemove c\r\n' d _\r\n still d\r\ne = \"it's\""),
            (List{"1 a", "4 Remove c", "7 e = \"it's\""}));
}

TEST(Statements, WantTextsClosedOnTheirLine) {
  try {
    SplitStatements("a = 1\r\nb = \"open\r\n", 5);
    FAIL() << "no error";
  } catch (const CompileError& error) {
    EXPECT_EQ(error.Line(), 6U);
  }
}

}  // namespace
}  // namespace hearthmake::vb6
