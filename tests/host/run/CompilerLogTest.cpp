#include "host/run/CompilerLog.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

CompilerError OnlyError(std::string_view log) {
  const auto errors = CompilerErrors(log);
  EXPECT_EQ(errors.size(), 1U) << log;
  return errors.empty() ? CompilerError{} : errors.front();
}

TEST(CompilerLog, TakesTheLibrarysWordsAway) {
  EXPECT_EQ(CompilerWords("Compile failed: Out of stack\r\n"), "Out of stack\r\n");
  EXPECT_EQ(CompilerWords("Projet path is incorrect"), "Projet path is incorrect");
  EXPECT_EQ(CompilerWords(""), "");
}

TEST(CompilerLog, KnowsThePlaceOfAnError) {
  const CompilerError error = OnlyError(
      "Compile Error in File 'C:\\src\\Order Desk\\c1.cls', Line 12 : Variable not defined\r\n"
      "Build of 'Lib.dll' failed.\r\n");
  EXPECT_EQ(error.file, "C:\\src\\Order Desk\\c1.cls");
  EXPECT_EQ(error.line, 12U);
  EXPECT_EQ(error.text, "Variable not defined");
}

TEST(CompilerLog, TakesFileNamesWithAndWithoutQuotes) {
  EXPECT_EQ(OnlyError("Compile Error in File c1.cls, Line 3 : Syntax error").file, "c1.cls");
  EXPECT_EQ(OnlyError("Compile Error in File \"c1.cls\", Line 3 : Syntax error").file, "c1.cls");
  EXPECT_EQ(OnlyError("Compile Error in File 'it's, here.cls', Line 3 : x").file, "it's, here.cls");
}

TEST(CompilerLog, KeepsTheOrderOfSeveralErrors) {
  const auto errors = CompilerErrors(
      "Compile Error in File 'b.cls', Line 2 : Second\nCompile Error in File 'a.cls', Line 1 : First: x\n"
      "Build of 'Lib.dll' failed.\n");
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[0].file, "b.cls");
  EXPECT_EQ(errors[1].text, "First: x");
}

TEST(CompilerLog, TakesOtherLinesWhereNoneNamesAPlace) {
  const CompilerError error =
      OnlyError("'Lib.dll' breaks binary compatibility\r\nBuild of 'Lib.dll' failed.\r\n");
  EXPECT_EQ(error.file, "");
  EXPECT_EQ(error.line, 0U);
  EXPECT_EQ(error.text, "'Lib.dll' breaks binary compatibility");
  EXPECT_EQ(CompilerErrors("A note\nCompile Error in File 'a.cls', Line 1 : x\n").size(), 1U);
}

TEST(CompilerLog, FindsNoErrorWhereThereIsNone) {
  EXPECT_TRUE(CompilerErrors("").empty());
  EXPECT_TRUE(CompilerErrors("\r\n\r\nBuild of 'Lib.dll' succeeded.\r\n").empty());
}

TEST(CompilerLog, TakesBrokenPlacesForText) {
  for (const char* line : {"Compile Error in File 'a.cls'", "Compile Error in File 'a.cls', Line x : y",
                           "Compile Error in File 'a.cls', Line 99999999999999999999999 : y",
                           "Compile Error in File 'a.cls', Line -3 : y"}) {
    EXPECT_EQ(OnlyError(line).text, line);
    EXPECT_EQ(OnlyError(line).line, 0U);
  }
}

TEST(CompilerLog, LeavesOutWhatNobodyWouldRead) {
  std::string log;
  for (int i = 0; i < 3000; ++i) log += "Compile Error in File 'a.cls', Line 1 : x\n";
  EXPECT_EQ(CompilerErrors(log).size(), 1000U);
}

}  // namespace
}  // namespace hearthmake::host
