#include "vbscript/objects/TextEncoding.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vbscript {
namespace {

using namespace std::string_literals;

std::u16string Decoded(TextEncoding encoding, std::string_view bytes, bool isEnd = true) {
  std::u16string text;
  DecodeText(encoding, bytes, isEnd, text);
  return text;
}

TEST(TextEncoding, DecodesTheCodePage) {
  EXPECT_EQ(Decoded(TextEncoding::Windows1252, "a\x80\xE9"), u"a\u20AC\u00E9");
}

TEST(TextEncoding, DecodesUtf16AndLeavesHalfAUnit) {
  std::u16string text;
  EXPECT_EQ(DecodeText(TextEncoding::Utf16, "a\0\xAC\x20x"s, false, text), 4U);
  EXPECT_EQ(text, u"a\u20AC");
}

TEST(TextEncoding, DecodesUtf8AndLeavesACharacterThatIsCut) {
  std::u16string text;
  EXPECT_EQ(DecodeText(TextEncoding::Utf8, "a\xE2\x82", false, text), 1U);
  EXPECT_EQ(text, u"a");
  EXPECT_EQ(Decoded(TextEncoding::Utf8, "\xE2\x82\xAC \xF0\x9F\x98\x80"), u"\u20AC \U0001F600");
}

TEST(TextEncoding, TakesStrayBytesAsTheCodePage) {
  EXPECT_EQ(Decoded(TextEncoding::Utf8, "caf\xE9 x"), u"caf\u00E9 x");
  EXPECT_EQ(Decoded(TextEncoding::Utf8, "caf\xE9"), u"caf\u00E9");
}

TEST(TextEncoding, EncodesWholeTextsOnly) {
  std::string bytes = "x";
  EXPECT_TRUE(EncodeText(TextEncoding::Windows1252, u"\u20AC\u00E9", bytes));
  EXPECT_EQ(bytes, "x\x80\xE9");
  EXPECT_FALSE(EncodeText(TextEncoding::Windows1252, u"ab\u4E00", bytes));
  EXPECT_EQ(bytes, "x\x80\xE9");
  bytes.clear();
  EXPECT_TRUE(EncodeText(TextEncoding::Utf16, u"a\u20AC", bytes));
  EXPECT_EQ(bytes, "a\0\xAC\x20"s);
}

}  // namespace
}  // namespace hearthmake::vbscript
