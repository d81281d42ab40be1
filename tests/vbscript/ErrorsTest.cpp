#include "vbscript/Errors.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::vbscript {
namespace {

TEST(Errors, KnowsTheEnglishTextOfEveryNumberThatItNames) {
  EXPECT_STREQ(ErrorText(13), "Type mismatch");
  EXPECT_STREQ(ErrorText(1002), "Syntax error");
  EXPECT_STREQ(ErrorText(1058), "'Default' specification can only be on Property Get");
  EXPECT_STREQ(ErrorText(5021), "Invalid range in character set");
  EXPECT_STREQ(ErrorText(4711), "Unknown runtime error");
}

TEST(Errors, MapsAutomationResultCodesToNumbers) {
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x80070057)), 5);
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x80040154)), 429);
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x80030002)), 53);
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x800A000D)), 13);
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x80004001)), 445);
  EXPECT_EQ(NumberOfResultCode(static_cast<std::int32_t>(0x80040001)), static_cast<std::int32_t>(0x80040001));
  EXPECT_EQ(NumberOfResultCode(1234), 1234);
}

TEST(Errors, NamesWhatARunTimeErrorIsAbout) {
  try {
    RaiseRuntime(13, "x");
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 13);
    EXPECT_EQ(error.Source(), "Microsoft VBScript runtime error");
    EXPECT_EQ(error.Description(), "Type mismatch: 'x'");
  }
}

}  // namespace
}  // namespace hearthmake::vbscript
