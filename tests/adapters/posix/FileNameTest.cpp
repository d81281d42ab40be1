#include "adapters/posix/FileName.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::posix {
namespace {

void ExpectSameName(std::string_view left, std::string_view right) {
  EXPECT_TRUE(FoldedEqual(left, right)) << left << " / " << right;
  EXPECT_EQ(FoldedHash(left), FoldedHash(right)) << left << " / " << right;
}

TEST(FileName, IgnoresTheCaseOfLetters) {
  ExpectSameName("Lib.VBP", "lib.vbp");
  ExpectSameName("ÄÖÜ éÀç.txt", "äöü ÉàÇ.TXT");
  ExpectSameName("Łódź Český ÿ", "łÓDŹ čESKÝ Ÿ");
  ExpectSameName("ΑΒΓ Жук", "αβγ жУК");
}

TEST(FileName, KeepsDifferentLettersApart) {
  EXPECT_FALSE(FoldedEqual("a", "ä"));
  EXPECT_FALSE(FoldedEqual("ab", "abc"));
  EXPECT_FALSE(FoldedEqual("", "a"));
  EXPECT_FALSE(FoldedEqual("[", "{"));
  EXPECT_FALSE(FoldedEqual("i", "ı"));
  EXPECT_FALSE(FoldedEqual("ß", "ss"));
}

TEST(FileName, ReadsWhatIsNotUtf8AsWindows1252) {
  ExpectSameName("M\xFCller \x8A.vbp", "MÜLLER š.vbp");
  EXPECT_EQ(FileNameToUtf8("M\xFCller \x80\x81"), "Müller €\xC2\x81");
  EXPECT_EQ(FileNameToUtf8("Müller"), "Müller");
}

TEST(FileName, TakesOnlyWellFormedUtf8ForUtf8) {
  EXPECT_EQ(FileNameToUtf8("\xC0\xAF"), "À¯");              // overlong
  EXPECT_EQ(FileNameToUtf8("\xED\xA0\x80"), "í\xC2\xA0€");  // a surrogate
  EXPECT_EQ(FileNameToUtf8("a\xE2\x82"), "aâ‚");            // cut short
  EXPECT_EQ(FileNameToUtf8("\xF0\x9F\x99\x82"), "\xF0\x9F\x99\x82");
  EXPECT_EQ(FileNameToUtf8("\xF8\x88"), "øˆ");
}

TEST(FileName, DropsDotsAndBlanksAtTheEnd) {
  EXPECT_EQ(WithoutTrailingDots("a.txt. ."), "a.txt");
  EXPECT_EQ(WithoutTrailingDots(" a"), " a");
  EXPECT_EQ(WithoutTrailingDots("..."), "...");
  EXPECT_EQ(WithoutTrailingDots(""), "");
}

}  // namespace
}  // namespace hearthmake::posix
