#include "host/Console.hpp"

#include <gtest/gtest.h>

#include "host/display/TextDisplay.hpp"

namespace hearthmake::host {
namespace {

TEST(Console, MakesForeignTextFitForATerminal) {
  EXPECT_EQ(Printable("one\r\ntwo\r\n\r\n"), "one\ntwo");
  EXPECT_EQ(Printable("old\rMac"), "old\nMac");
  EXPECT_EQ(Printable("\x1b[2Jgone\a\x7f"), "?[2Jgone??");
  EXPECT_EQ(Printable("tab\tand \xC3\xA9"), "tab\tand \xC3\xA9");
  EXPECT_EQ(Printable(""), "");
}

TEST(TextDisplay, ShowsSecondsAsAClockDoes) {
  EXPECT_EQ(ClockText(0), "0:00");
  EXPECT_EQ(ClockText(67), "1:07");
  EXPECT_EQ(ClockText(3723), "1:02:03");
}

}  // namespace
}  // namespace hearthmake::host
