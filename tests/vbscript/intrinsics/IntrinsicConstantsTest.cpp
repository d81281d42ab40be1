#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/VbsValues.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"

namespace hearthmake::vbscript {
namespace {

std::string ValueOfConstant(std::string_view name) {
  for (const IntrinsicConstant& constant : IntrinsicConstants()) {
    if (constant.name == name) return VbsDescribe(constant.value);
  }
  return "none";
}

TEST(IntrinsicConstants, HaveTheirDocumentedValues) {
  EXPECT_EQ(ValueOfConstant("vbRed"), "Long 255");
  EXPECT_EQ(ValueOfConstant("vbWhite"), "Long 16777215");
  EXPECT_EQ(ValueOfConstant("vbTextCompare"), "Integer 1");
  EXPECT_EQ(ValueOfConstant("vbSaturday"), "Integer 7");
  EXPECT_EQ(ValueOfConstant("vbFirstFullWeek"), "Integer 3");
  EXPECT_EQ(ValueOfConstant("vbShortTime"), "Integer 4");
  EXPECT_EQ(ValueOfConstant("vbObjectError"), "Long -2147221504");
  EXPECT_EQ(ValueOfConstant("vbYesNoCancel"), "Integer 3");
  EXPECT_EQ(ValueOfConstant("vbDefaultButton4"), "Integer 768");
  EXPECT_EQ(ValueOfConstant("vbMsgBoxRtlReading"), "Long 1048576");
  EXPECT_EQ(ValueOfConstant("vbUseDefault"), "Integer -2");
  EXPECT_EQ(ValueOfConstant("vbTrue"), "Integer -1");
  EXPECT_EQ(ValueOfConstant("vbByte"), "Integer 17");
  EXPECT_EQ(ValueOfConstant("vbArray"), "Integer 8192");
}

TEST(IntrinsicConstants, HaveTheTextsOfLinesAndTabs) {
  EXPECT_EQ(ValueOfConstant("vbCr"), "String \r");
  EXPECT_EQ(ValueOfConstant("vbLf"), "String \n");
  EXPECT_EQ(ValueOfConstant("vbCrLf"), "String \r\n");
  EXPECT_EQ(ValueOfConstant("vbNewLine"), "String \r\n");
  EXPECT_EQ(ValueOfConstant("vbTab"), "String \t");
  EXPECT_EQ(ValueOfConstant("vbVerticalTab"), "String \v");
  EXPECT_EQ(ValueOfConstant("vbFormFeed"), "String \f");
  EXPECT_EQ(ValueOfConstant("vbNullString"), "String ");
  EXPECT_EQ(ValueOfConstant("vbNullChar"), std::string("String \0", 8));
}

TEST(IntrinsicConstants, HaveEachNameOnce) {
  std::set<std::string> names;
  for (const IntrinsicConstant& constant : IntrinsicConstants()) {
    std::string folded = constant.name;
    for (char& letter : folded) letter = static_cast<char>(letter | 0x20);
    EXPECT_TRUE(names.insert(folded).second) << constant.name;
  }
  EXPECT_GE(names.size(), 80u);
}

}  // namespace
}  // namespace hearthmake::vbscript
