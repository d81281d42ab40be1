#include "automation/OleDate.hpp"

#include <gtest/gtest.h>

namespace hearthmake::automation {
namespace {

void ExpectParts(double date, const DateParts& expected) {
  const DateParts parts = SplitDate(date);
  EXPECT_EQ(parts.year, expected.year) << date;
  EXPECT_EQ(parts.month, expected.month) << date;
  EXPECT_EQ(parts.day, expected.day) << date;
  EXPECT_EQ(parts.hour, expected.hour) << date;
  EXPECT_EQ(parts.minute, expected.minute) << date;
  EXPECT_EQ(parts.second, expected.second) << date;
}

TEST(OleDate, DayZeroIsTheEndOf1899) { ExpectParts(0, {1899, 12, 30, 0, 0, 0}); }

TEST(OleDate, SplitsDayAndTime) {
  ExpectParts(36974.545138888889, {2001, 3, 24, 13, 5, 0});
  ExpectParts(1.5, {1899, 12, 31, 12, 0, 0});
  ExpectParts(36585, {2000, 2, 29, 0, 0, 0});
}

TEST(OleDate, TimeRunsForwardBeforeDayZeroToo) {
  ExpectParts(-1.25, {1899, 12, 29, 6, 0, 0});
  ExpectParts(-0.25, {1899, 12, 30, 6, 0, 0});
}

TEST(OleDate, AFractionThatRoundsToMidnightIsTheNextDay) {
  ExpectParts(1.9999999, {1900, 1, 1, 0, 0, 0});
  ExpectParts(-1.9999999, {1899, 12, 30, 0, 0, 0});
}

TEST(OleDate, ADateOutsideTheCalendarIsTakenForItsEnd) {
  ExpectParts(1e300, {9999, 12, 31, 0, 0, 0});
  ExpectParts(-1e300, {100, 1, 1, 0, 0, 0});
  ExpectParts(-700000, {100, 1, 1, 0, 0, 0});
}

TEST(OleDate, JoinUndoesSplit) {
  for (const double date : {0.0, 36974.25, -1.25, -657434.0, 2958465.75, 0.5}) {
    EXPECT_DOUBLE_EQ(JoinDate(SplitDate(date)), date);
  }
}

TEST(OleDate, PrintsAsVisualBasicDoes) {
  EXPECT_EQ(FormatDate(36974.545138888889), "3/24/2001 1:05:00 PM");
  EXPECT_EQ(FormatDate(36974), "3/24/2001");
  EXPECT_EQ(FormatDate(0.5), "12:00:00 PM");
  EXPECT_EQ(FormatDate(36974.00000001), "3/24/2001");
  EXPECT_EQ(FormatDate(36974.0 + 1.0 / 1440), "3/24/2001 12:01:00 AM");
  EXPECT_EQ(FormatDate(0), "12:00:00 AM");
  EXPECT_EQ(FormatDate(-1.5), "12/29/1899 12:00:00 PM");
}

TEST(OleDate, PrintsIsoDates) {
  EXPECT_EQ(FormatIsoDate(36974.545138888889), "2001-03-24 13:05:00");
  EXPECT_EQ(FormatIsoDate(-1.25), "1899-12-29 06:00:00");
}

}  // namespace
}  // namespace hearthmake::automation
