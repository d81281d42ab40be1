#include "adapters/jet/TextCode.hpp"

#include <gtest/gtest.h>

#include "automation/Error.hpp"

namespace hearthmake::jet {
namespace {

using namespace std::string_literals;

std::string Decode(Version version, std::uint16_t codePage, const std::string& bytes) {
  FileHeader header;
  header.version = version;
  header.codePage = codePage;
  return TextCode(header).Decode(bytes);
}

TEST(TextCode, ReadsTheCodePageOfJet3) {
  EXPECT_EQ(Decode(Version::Jet3, 1252,
                   "Gr\xFC\xDF"
                   "e \x80"),
            "Grüße €");
  EXPECT_EQ(Decode(Version::Jet3, 0, "\xFC"), "ü");
  EXPECT_EQ(Decode(Version::Jet3, 1251, "\xCF\xF0\xE8\xE2\xE5\xF2"), "Привет");
  EXPECT_EQ(Decode(Version::Jet3, 932, "\x93\xFA\x96\x7B"), "日本");
  EXPECT_EQ(Decode(Version::Jet3, 932, "a\x93"), "a\uFFFD");
  EXPECT_EQ(Decode(Version::Jet3, 1250, std::string(9000, '\xE8')).size(), 18000U);
}

TEST(TextCode, RefusesACodePageThatIsNotKnown) {
  try {
    Decode(Version::Jet3, 12345, "");
    FAIL() << "it is taken";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 3343);
    EXPECT_EQ(error.Description(), "The texts are in code page 12345, which is not known here.");
  }
}

TEST(TextCode, ReadsWideTextsOfJet4) {
  EXPECT_EQ(Decode(Version::Jet4, 0, "a\0\xFC\0\xAC\x20"s), "aü€");
  EXPECT_EQ(Decode(Version::Jet4, 0, "\x3D\xD8\x00\xDE"s), "😀");
  EXPECT_EQ(Decode(Version::Jet4, 0, "a\0b"s), "a\uFFFD");
  EXPECT_EQ(Decode(Version::Jet4, 0, ""), "");
}

TEST(TextCode, ReadsCompressedTextsOfJet4) {
  EXPECT_EQ(Decode(Version::Jet4, 0,
                   "\xFF\xFE"
                   "abc\xFC"),
            "abcü");
  EXPECT_EQ(Decode(Version::Jet4, 0,
                   "\xFF\xFE"
                   "ab\0\xAC\x20\x39\x20\0cd"s),
            "ab€‹cd");
  EXPECT_EQ(Decode(Version::Jet4, 0,
                   "\xFF\xFE"
                   "a\0\xAC"s),
            "a\uFFFD");
  EXPECT_EQ(Decode(Version::Jet4, 0, "\xFF\xFE"), "");
}

}  // namespace
}  // namespace hearthmake::jet
