#include "host/reports/XmlText.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

using namespace std::string_literals;

TEST(XmlText, EscapesMarkup) {
  EXPECT_EQ(XmlContent("a < b && \"c\" ]]> 'd'"), "a &lt; b &amp;&amp; \"c\" ]]&gt; 'd'");
  EXPECT_EQ(XmlAttribute("a < \"b\" & 'c'"), "a &lt; &quot;b&quot; &amp; 'c'");
}

TEST(XmlText, KeepsLineEndsOfAttributes) {
  EXPECT_EQ(XmlContent("a\r\nb\rc\nd\te"), "a\nb\nc\nd\te");
  EXPECT_EQ(XmlAttribute("a\r\nb\rc\nd\te"), "a&#10;b&#10;c&#10;d&#9;e");
}

TEST(XmlText, ReplacesWhatXmlCantHold) {
  EXPECT_EQ(XmlContent("a\0b\x1b[0m\x7F\x08"s), "a\uFFFDb\uFFFD[0m\uFFFD\uFFFD");
  EXPECT_EQ(XmlContent("\xEF\xBF\xBE \xEF\xBF\xBF"), "\uFFFD \uFFFD");
  EXPECT_EQ(XmlContent("\xC2\x80"), "\uFFFD");
}

TEST(XmlText, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(XmlContent("\xFF!\xC3"), "\uFFFD!\uFFFD");
  // Of a lone surrogate, whole or byte by byte.
  EXPECT_EQ(XmlContent("\xED\xA0\x80").find('\xED'), std::string::npos);
}

TEST(XmlText, LeavesOtherCharactersAlone) { EXPECT_EQ(XmlContent("Größe 日本 😀"), "Größe 日本 😀"); }

}  // namespace
}  // namespace hearthmake::host
