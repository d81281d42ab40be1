#include "host/scripting/ScriptText.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

using namespace std::string_literals;

TEST(ScriptText, IsWindows1252WithoutAMark) {
  EXPECT_EQ(DecodeScript("x = \"\xE9\x80\""), u"x = \"\u00E9\u20AC\"");
  EXPECT_EQ(DecodeScript(""), u"");
}

TEST(ScriptText, IsUtf8WithItsMark) { EXPECT_EQ(DecodeScript("\xEF\xBB\xBF\xE4\xB8\x80"), u"\u4E00"); }

TEST(ScriptText, IsUtf16InEitherOrderWithItsMark) {
  EXPECT_EQ(DecodeScript("\xFF\xFE"
                         "a\0\0\x4E"s),
            u"a\u4E00");
  EXPECT_EQ(DecodeScript("\xFE\xFF\0a\x4E\0"s), u"a\u4E00");
}

TEST(ScriptText, DropsHalfAUnit) {
  EXPECT_EQ(DecodeScript("\xFF\xFE"
                         "a\0b"s),
            u"a");
}

}  // namespace
}  // namespace hearthmake::host
