#include "automation/Utf.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::automation {
namespace {

TEST(Utf, TellsTheLengthOfASequence) {
  EXPECT_EQ(Utf8SequenceLength("a"), 1U);
  EXPECT_EQ(Utf8SequenceLength("é"), 2U);
  EXPECT_EQ(Utf8SequenceLength("€"), 3U);
  EXPECT_EQ(Utf8SequenceLength("😀"), 4U);
}

TEST(Utf, TellsAsciiWhereverTheOtherByteIs) {
  for (std::size_t length = 0; length < 20; ++length) {
    const std::string text(length, '\x7F');
    EXPECT_TRUE(IsAscii(text)) << length;
    for (std::size_t i = 0; i < length; ++i) {
      std::string other = text;
      other[i] = '\x80';
      EXPECT_FALSE(IsAscii(other)) << length << ' ' << i;
    }
  }
}

TEST(Utf, WhatIsNoSequenceIsAByte) {
  EXPECT_EQ(Utf8SequenceLength("\x80"), 1U);
  EXPECT_EQ(Utf8SequenceLength("\xC3"), 1U);
  EXPECT_EQ(Utf8SequenceLength("\xC3\x41"), 1U);
  EXPECT_EQ(Utf8SequenceLength("\xE2\x82"), 1U);
  EXPECT_EQ(Utf8SequenceLength("\xC0\x80"), 1U) << "overlong";
  EXPECT_EQ(Utf8SequenceLength("\xE0\x80\x80"), 1U) << "overlong";
  EXPECT_EQ(Utf8SequenceLength("\xF0\x80\x80\x80"), 1U) << "overlong";
  EXPECT_EQ(Utf8SequenceLength("\xF4\x90\x80\x80"), 1U) << "beyond Unicode";
  EXPECT_EQ(Utf8SequenceLength("\xFF"), 1U);
}

TEST(Utf, DecodesTheFirstCodePoint) {
  EXPECT_EQ(DecodeUtf8("a"), U'a');
  EXPECT_EQ(DecodeUtf8("é"), U'é');
  EXPECT_EQ(DecodeUtf8("€x"), U'€');
  EXPECT_EQ(DecodeUtf8("😀"), U'😀');
  EXPECT_EQ(DecodeUtf8("\x80"), U'\uFFFD');
}

TEST(Utf, AppendsEveryLength) {
  std::string text;
  for (const char32_t c : {U'a', U'é', U'€', U'😀'}) AppendUtf8(text, c);
  EXPECT_EQ(text, "aé€😀");
}

TEST(Utf, Utf16HasPairsBeyondThePlane) {
  EXPECT_EQ(Utf8ToUtf16("a€😀"), u"a€😀");
  EXPECT_EQ(Utf16ToUtf8(u"a€😀"), "a€😀");
}

TEST(Utf, ALoneSurrogateSurvivesBothWays) {
  const std::u16string lone = {u'a', 0xD800, u'b', 0xDC00};
  EXPECT_EQ(Utf8ToUtf16(Utf16ToUtf8(lone)), lone);
}

TEST(Utf, AStrayByteBecomesTheReplacementCharacter) { EXPECT_EQ(Utf8ToUtf16("a\xFFz"), u"a\uFFFDz"); }

TEST(Utf, ReadsTheCodePage) {
  EXPECT_EQ(Windows1252ToUtf8("\x80 \xE4\xF6\xFC\xDF \x99"), "€ äöüß ™");
  EXPECT_EQ(Windows1252ToUtf8("ascii"), "ascii");
}

TEST(Utf, EveryByteOfTheCodePageSurvivesBothWays) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

TEST(Utf, WhatTheCodePageLacksBecomesAQuestionMark) {
  EXPECT_EQ(Utf8ToWindows1252("aЖb"), "a?b");
  EXPECT_EQ(Utf8ToWindows1252("😀"), "?");
  EXPECT_EQ(Utf8ToWindows1252("a\xFF"), "a?");
}

}  // namespace
}  // namespace hearthmake::automation
