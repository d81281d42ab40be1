#include "vbscript/values/Dates.hpp"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <string>
#include <utility>

#include "automation/OleDate.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Utf8ToUtf16;

constexpr std::int32_t kCurrentYear = 2026;

// The date as FormatIsoDate prints it, "" for none.
std::string Parsed(const char* text) {
  const auto date = ParseDate(Utf8ToUtf16(text), kCurrentYear);
  return date ? automation::FormatIsoDate(*date) : "";
}

void ExpectDates(std::initializer_list<std::pair<const char*, const char*>> dates) {
  for (const auto& [text, expected] : dates)
    EXPECT_EQ(Parsed(text), std::string(expected) + " 00:00:00") << text;
}

void ExpectTimes(std::initializer_list<std::pair<const char*, const char*>> times) {
  for (const auto& [text, expected] : times)
    EXPECT_EQ(Parsed(text), "1899-12-30 " + std::string(expected)) << text;
}

TEST(Dates, ReadsNumbersInTheOrderThatMakesADate) {
  ExpectDates({{"3/24/2001", "2001-03-24"},
               {"24/3/2001", "2001-03-24"},
               {"2001/3/24", "2001-03-24"},
               {"2001-24-03", "2001-03-24"},
               {"1/2/2003", "2003-01-02"},
               {"13/1/2003", "2003-01-13"},
               {"99/1/2", "1999-01-02"},
               {"32/1/2", "1932-01-02"},
               {"10/11/12", "2012-10-11"}});
}

TEST(Dates, ReadsEverySeparator) {
  ExpectDates({{"3/24/2001", "2001-03-24"},
               {"3-24-2001", "2001-03-24"},
               {"3.24.2001", "2001-03-24"},
               {"3 24 2001", "2001-03-24"},
               {"3,24,2001", "2001-03-24"},
               {"3 / 24 / 2001", "2001-03-24"},
               {"2001-03-24", "2001-03-24"},
               {"24.3.2001", "2001-03-24"},
               {"3/24-2001", "2001-03-24"},
               {" 3/24/2001 ", "2001-03-24"}});
}

TEST(Dates, ReadsNamesOfMonths) {
  ExpectDates({{"March 24, 2001", "2001-03-24"},
               {"24 Mar 2001", "2001-03-24"},
               {"mar 24 2001", "2001-03-24"},
               {"24-MAR-01", "2001-03-24"},
               {"Mar-24-2001", "2001-03-24"},
               {"2001 Mar 24", "2001-03-24"},
               {"24Mar2001", "2001-03-24"},
               {"March24,2001", "2001-03-24"},
               {"March, 24 2001", "2001-03-24"},
               {"Mar 2001", "2001-03-01"},
               {"2001 March", "2001-03-01"},
               {"Mar 45", "1945-03-01"},
               {"May 5", "2026-05-05"},
               {"5 May", "2026-05-05"},
               {"Feb 30", "1930-02-01"}});
  const char* const months[] = {"January", "February", "March",     "April",   "May",      "June",
                                "July",    "August",   "September", "October", "November", "December"};
  for (int month = 1; month <= 12; ++month) {
    const std::string name = months[month - 1];
    const std::string expected =
        std::string("2001-") + (month < 10 ? "0" : "") + std::to_string(month) + "-02 00:00:00";
    EXPECT_EQ(Parsed((name + " 2, 2001").c_str()), expected);
    EXPECT_EQ(Parsed(("2-" + name.substr(0, 3) + "-2001").c_str()), expected);
  }
}

TEST(Dates, TakesTheYearOfTheClockWhereNoneIsNamed) {
  ExpectDates({{"3/24", "2026-03-24"},
               {"24/3", "2026-03-24"},
               {"3-24", "2026-03-24"},
               {"1 1", "2026-01-01"},
               {"3/2001", "2001-03-01"},
               {"2001/3", "2001-03-01"},
               {"2/30", "1930-02-01"},
               {"4/31", "1931-04-01"}});
  const std::time_t now = std::time(nullptr);
  const int year = std::localtime(&now)->tm_year + 1900;
  EXPECT_EQ(automation::SplitDate(ParseDate(u"3/24").value()).year, year);
}

TEST(Dates, TwoDigitYearsLieBetween1930And2029) {
  ExpectDates({{"1/1/0", "2000-01-01"},
               {"1/1/00", "2000-01-01"},
               {"1/1/29", "2029-01-01"},
               {"1/1/30", "1930-01-01"},
               {"1/1/99", "1999-01-01"},
               {"1/1/100", "0100-01-01"},
               {"12/31/9999", "9999-12-31"}});
  EXPECT_EQ(FullYear(29), 2029);
  EXPECT_EQ(FullYear(30), 1930);
  EXPECT_EQ(FullYear(100), 100);
}

TEST(Dates, ReadsTimes) {
  ExpectTimes({{"1:05 PM", "13:05:00"},
               {"13:05:09", "13:05:09"},
               {"1:05PM", "13:05:00"},
               {"1:05 am", "01:05:00"},
               {"1:05p", "13:05:00"},
               {"1 PM", "13:00:00"},
               {"1PM", "13:00:00"},
               {"12 AM", "00:00:00"},
               {"12:00 AM", "00:00:00"},
               {"12 PM", "12:00:00"},
               {"0:05 AM", "00:05:00"},
               {"13:05 PM", "13:05:00"},
               {"13:05 AM", "13:05:00"},
               {"1:2:3", "01:02:03"},
               {"23:59:59", "23:59:59"},
               {"0:0", "00:00:00"},
               {"13.50", "13:50:00"},
               {"1.5", "01:05:00"},
               {"1.5.20 PM", "13:05:20"}});
}

TEST(Dates, ReadsDateAndTimeInEitherOrder) {
  for (const char* text : {"3/24/2001 1:05:09 PM", "1:05:09 PM 3/24/2001", "2001-03-24 13:05:09",
                           "March 24, 2001 13:05:09", "24 Mar 2001 1:05:09PM", "3/24/2001,1:05:09 PM",
                           "13:05:09 24 March 2001", "3.24.2001 13:05:09", "3/24/2001 13.05.09"})
    EXPECT_EQ(Parsed(text), "2001-03-24 13:05:09") << text;
  EXPECT_EQ(Parsed("Mar 24, 2001 5 PM"), "2001-03-24 17:00:00");
}

TEST(Dates, RefusesWhatIsNoDate) {
  for (const char* text : {"",
                           " ",
                           "5",
                           "-1",
                           "1e5",
                           "abc",
                           "20010324",
                           "12345/1/1",
                           "2/29/2001",
                           "13/13/2001",
                           "31/4/2001",
                           "30-2-2001",
                           "0/1/2001",
                           "1/0/2001",
                           "1/32/3",
                           "1/1/10000",
                           "24:00",
                           "23:60",
                           "23:59:60",
                           "1:",
                           ":1",
                           "1:2:3:4",
                           "1:05:09.5",
                           "/1/2",
                           "1/2/",
                           "1//2",
                           "1/2/3/4",
                           "May",
                           "AM",
                           "1 AM PM",
                           "AM 1",
                           "3/24/2001 1",
                           "3/24/2001T13:05:09",
                           "#3/24/2001#",
                           "March March 2001",
                           "Sept 1, 2001",
                           "Saturday, March 24, 2001",
                           "1:05 3/24 2001 1:06",
                           "3/1:05",
                           "3/24 1:05 2001",
                           "Mar 24 2001 2002",
                           "1/1/00099",
                           "\xC2\xBD"})
    EXPECT_EQ(Parsed(text), "") << text;
}

TEST(Dates, LongTextsAreNoDates) {
  EXPECT_EQ(ParseDate(std::u16string(1'000'000, u'1')), std::nullopt);
  EXPECT_EQ(ParseDate(std::u16string(1'000'000, u' ') + u"1/1/2001"), std::nullopt);
}

TEST(Dates, WhateverReadsAsADateLiesInTheCalendar) {
  constexpr std::u16string_view kPieces = u"0123456789012/-.:, aApPmMMarMayJun";
  std::mt19937 random(1);
  int dates = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::u16string text;
    for (std::size_t length = random() % 14; length > 0; --length) text += kPieces[random() % kPieces.size()];
    const auto date = ParseDate(text, kCurrentYear);
    if (!date) continue;
    ++dates;
    EXPECT_GT(*date, kFirstDate - 1) << automation::Utf16ToUtf8(text);
    EXPECT_LT(*date, kLastDate + 1) << automation::Utf16ToUtf8(text);
    EXPECT_EQ(ParseDate(FormatGeneralDate(*date)), *date) << automation::Utf16ToUtf8(text);
  }
  EXPECT_GT(dates, 1000);
}

TEST(Dates, LeapYearsFollowTheCalendar) {
  ExpectDates({{"2/29/2000", "2000-02-29"}, {"2/29/2004", "2004-02-29"}});
  EXPECT_EQ(Parsed("2/29/1900"), "");
  EXPECT_EQ(DaysOfMonth(2000, 2), 29);
  EXPECT_EQ(DaysOfMonth(1900, 2), 28);
  EXPECT_EQ(DaysOfMonth(2001, 12), 31);
}

TEST(Dates, TheTimeOfDayCountsForwardBeforeDayZeroToo) {
  EXPECT_EQ(ParseDate(u"12/29/1899 6:00"), -1.25);
  EXPECT_EQ(ParseDate(u"12/30/1899 6:00"), 0.25);
  EXPECT_EQ(ParseDate(u"1/1/100"), -657434);
  EXPECT_EQ(ParseDate(u"1/1/100 12:00"), -657434.5);
}

TEST(Dates, LiteralsReadAsTextsDo) {
  EXPECT_EQ(ParseDateLiteral(u"3/24/2001 1:05 PM"), ParseDate(u"3/24/2001 1:05 PM"));
  EXPECT_EQ(ParseDateLiteral(u"nonsense"), std::nullopt);
}

TEST(Dates, PrintsInTheGeneralFormat) {
  EXPECT_EQ(FormatGeneralDate(36974), u"3/24/2001");
  EXPECT_EQ(FormatGeneralDate(36974.545138888889), u"3/24/2001 1:05:00 PM");
  EXPECT_EQ(FormatGeneralDate(0), u"12:00:00 AM");
  EXPECT_EQ(FormatGeneralDate(0.5), u"12:00:00 PM");
  EXPECT_EQ(FormatGeneralDate(-1.5), u"12/29/1899 12:00:00 PM");
  EXPECT_EQ(FormatGeneralDate(-657434), u"1/1/100");
}

TEST(Dates, WhatIsPrintedReadsBack) {
  for (const double date : {-657434.0, -1.25, 0.0, 0.25, 1.0, 36974.5, 2958465.75})
    EXPECT_EQ(ParseDate(FormatGeneralDate(date)), date);
}

}  // namespace
}  // namespace hearthmake::vbscript
