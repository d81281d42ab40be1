#include "adapters/scriptcontrol/CheckedCode.hpp"

#include <gtest/gtest.h>

namespace hearthmake::scriptcontrol {
namespace {

const std::string kLeave = "Err.Raise &H8004B1F7 : ";

TEST(CheckedCode, IsLeftBeforeItsFirstStatement) {
  const CheckedCode code("x = 1\r\ny = 2");
  EXPECT_EQ(code.Text(), kLeave + "x = 1\r\ny = 2");
  EXPECT_EQ(code.ColumnsBefore(1), 23);
  EXPECT_EQ(code.ColumnsBefore(2), 0);
  EXPECT_EQ(CheckedCode("").Text(), kLeave);
}

TEST(CheckedCode, LeavesOptionExplicitTheFirstStatement) {
  const CheckedCode code("' what it does\r\n\r\n  option\tEXPLICIT\r\nDim x");
  EXPECT_EQ(code.Text(), "' what it does\r\n\r\n  option\tEXPLICIT : " + kLeave + "\r\nDim x");
  EXPECT_EQ(code.ColumnsBefore(1), 0);
  EXPECT_EQ(code.ColumnsBefore(3), 26);
  EXPECT_EQ(CheckedCode("Option Explicit").Text(), "Option Explicit : " + kLeave);
  EXPECT_EQ(CheckedCode("Option Explicit: x = 1").Text(), "Option Explicit : " + kLeave + ": x = 1");
}

TEST(CheckedCode, TakesNothingElseForOptionExplicit) {
  for (const char* code : {"Option ExplicitX", "OptionExplicit", "x = 1 : Option Explicit", "Option",
                           "' Option Explicit", "Option _\r\nExplicit"}) {
    EXPECT_EQ(CheckedCode(code).Text(), kLeave + code);
  }
}

}  // namespace
}  // namespace hearthmake::scriptcontrol
