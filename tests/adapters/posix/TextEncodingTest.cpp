#include "adapters/posix/TextEncoding.hpp"

#include <gtest/gtest.h>

namespace hearthmake::posix {
namespace {

using namespace std::string_literals;

TEST(TextEncoding, TellsUtf8) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("Größe € \U0001F600"));
  for (const char* bad :
       {"\x80", "\xC3", "\xC0\x80", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "a\xE9z"})
    EXPECT_FALSE(IsUtf8(bad)) << bad;
}

TEST(TextEncoding, DecodesTextByItsMarkOrItsBytes) {
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0\xF6\0"s),
            "aö");
  EXPECT_EQ(DecodeText("\xFE\xFF\0a\0\xF6"s), "aö");
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                       "aö"),
            "aö");
  EXPECT_EQ(DecodeText("aö"), "aö");
  EXPECT_EQ(DecodeText("a\xF6\x80\x81"), "aö€\u0081");
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0b"s),
            "a");
  EXPECT_EQ(DecodeText(""), "");
}

TEST(TextEncoding, ConvertsUtf16BothWays) {
  EXPECT_EQ(Utf16FromUtf8("a\U0001F600"), "a\0\x3D\xD8\0\xDE"s);
  EXPECT_EQ(Utf8FromUtf16("a\0\x3D\xD8\0\xDE"s), "a\U0001F600");
  EXPECT_EQ(Utf8FromUtf16("\x3D\xD8"
                          "a\0"s),
            "\uFFFDa");
  EXPECT_EQ(Utf8FromUtf16("\0\xDE"s), "\uFFFD");
  EXPECT_EQ(Utf16FromUtf8("\xFF"), "\xFD\xFF");
}

TEST(TextEncoding, FoldsCaseAsWindowsDoes) {
  EXPECT_EQ(FoldCase("Software\\aZ_9"), "SOFTWARE\\AZ_9");
  EXPECT_EQ(FoldCase("größe"), FoldCase("GRÖßE"));
  EXPECT_EQ(FoldCase("ελλάδα"), FoldCase("ΕΛΛΆΔΑ"));
  EXPECT_NE(FoldCase("ı"), FoldCase("I"));
  EXPECT_EQ(FoldCase("ö\xFF"
                     "a"),
            "Ö\xFF"
            "A");
}

}  // namespace
}  // namespace hearthmake::posix
