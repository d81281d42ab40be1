#include "host/text/CleanText.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

TEST(CleanText, LeavesOrdinaryTextAsItIs) {
  EXPECT_EQ(CleanText("Größe: 5 €\n\tend"), "Größe: 5 €\n\tend");
  EXPECT_EQ(CleanText(""), "");
}

TEST(CleanText, EndsLinesWithLineFeeds) { EXPECT_EQ(CleanText("a\r\nb\rc\n"), "a\nb\nc\n"); }

TEST(CleanText, ShowsControlCharacters) {
  EXPECT_EQ(CleanText(std::string_view("a\x1b[0m\0b\x7f", 8)), "a␛[0m␀b␡");
}

TEST(CleanText, ReplacesWhatIsNoText) {
  EXPECT_EQ(CleanText("a\xff\xe9"
                      "b"),
            "a��b");
  EXPECT_EQ(CleanText("\xc2\x85"), "�");  // a control of the upper half
  EXPECT_EQ(CleanText("\xe2\x80\xae"
                      "abc"),
            "�abc");  // turns the direction of what follows
  EXPECT_EQ(CleanText("\xef\xbf\xbf"), "�");
}

TEST(CleanText, MakesOneLineOfSeveral) { EXPECT_EQ(CleanLine("a\r\nb\tc"), "a b c"); }

}  // namespace
}  // namespace hearthmake::host
