#include <gtest/gtest.h>

#include "support/IntrinsicBench.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

void Check(const std::vector<IntrinsicCase>& table) {
  IntrinsicBench bench;
  for (const IntrinsicCase& line : table) {
    EXPECT_EQ(bench.Tell(line.name, line.arguments), line.expected) << Describe(line);
  }
}

TEST(DateIntrinsics, ReadTheClock) {
  IntrinsicBench bench;
  bench.TheHost().clock->now = Moment(2001, 3, 24, 13, 5, 9).AsDouble() + 0.25 / 86400;
  EXPECT_EQ(bench.Tell("Now", {}), "Date 2001-03-24 13:05:09");
  EXPECT_EQ(bench.Tell("Date", {}), "Date 2001-03-24 00:00:00");
  EXPECT_EQ(bench.Tell("Time", {}), "Date 1899-12-30 13:05:09");
  EXPECT_EQ(bench.Tell("Timer", {}), "Single 47109.25");
  EXPECT_EQ(bench.Tell("Now", {N(1)}),
            "error 450 Wrong number of arguments or invalid property assignment: 'Now'");
  // A whole second that the fraction of a day holds a hair too low.
  for (int second = 0; second < 60; ++second) {
    bench.TheHost().clock->now = Moment(2026, 11, 21, 17, 43, second).AsDouble();
    EXPECT_EQ(bench.Tell("Second", {bench.Call("Now", {})}), "Integer " + std::to_string(second));
  }
}

TEST(DateIntrinsics, TakeDatesApart) {
  const Variant date = Moment(2001, 3, 24, 13, 5, 9);
  Check({
      {"Year", {date}, "Integer 2001"},
      {"Month", {date}, "Integer 3"},
      {"Day", {date}, "Integer 24"},
      {"Hour", {date}, "Integer 13"},
      {"Minute", {date}, "Integer 5"},
      {"Second", {date}, "Integer 9"},
      {"Year", {T(u"March 24, 2001")}, "Integer 2001"},
      {"Year", {EmptyValue()}, "Integer 1899"},
      {"Month", {EmptyValue()}, "Integer 12"},
      {"Day", {EmptyValue()}, "Integer 30"},
      {"Day", {N(1)}, "Integer 31"},
      {"Hour", {D(-1.75)}, "Integer 18"},
      {"Day", {D(-1.75)}, "Integer 29"},
      {"Year", {N(-657434)}, "Integer 100"},
      {"Year", {N(2958465)}, "Integer 9999"},
      {"Year", {NullValue()}, "Null"},
      {"Month", {NullValue()}, "Null"},
      {"Day", {NullValue()}, "Null"},
      {"Hour", {NullValue()}, "Null"},
      {"Minute", {NullValue()}, "Null"},
      {"Second", {NullValue()}, "Null"},
      {"Day", {T(u"x")}, "error 13 Type mismatch: 'Day'"},
      {"Year", {N(2958466)}, "error 6 Overflow: 'Year'"},
  });
}

TEST(DateIntrinsics, NameDaysAndMonths) {
  const Variant saturday = Moment(2001, 3, 24);
  Check({
      {"Weekday", {saturday}, "Integer 7"},
      {"Weekday", {saturday, N(0)}, "Integer 7"},
      {"Weekday", {saturday, N(1)}, "Integer 7"},
      {"Weekday", {saturday, N(2)}, "Integer 6"},
      {"Weekday", {saturday, N(7)}, "Integer 1"},
      {"Weekday", {Moment(1899, 12, 29)}, "Integer 6"},
      {"Weekday", {D(-6.5)}, "Integer 1"},
      {"Weekday", {NullValue()}, "Null"},
      {"Weekday", {saturday, N(8)}, "error 5 Invalid procedure call or argument: 'Weekday'"},
      {"Weekday", {saturday, N(-1)}, "error 5 Invalid procedure call or argument: 'Weekday'"},
      {"Weekday", {saturday, NullValue()}, "error 94 Invalid use of Null: 'Weekday'"},
      {"MonthName", {N(1)}, "String January"},
      {"MonthName", {N(12)}, "String December"},
      {"MonthName", {N(9), B(true)}, "String Sep"},
      {"MonthName", {N(5), B(true)}, "String May"},
      {"MonthName", {N(0)}, "error 5 Invalid procedure call or argument: 'MonthName'"},
      {"MonthName", {N(13)}, "error 5 Invalid procedure call or argument: 'MonthName'"},
      {"MonthName", {NullValue()}, "error 94 Invalid use of Null: 'MonthName'"},
      {"MonthName", {T(u"x")}, "error 13 Type mismatch: 'MonthName'"},
      {"WeekdayName", {N(1)}, "String Sunday"},
      {"WeekdayName", {N(7)}, "String Saturday"},
      {"WeekdayName", {N(4), B(true)}, "String Wed"},
      {"WeekdayName", {N(1), B(false), N(2)}, "String Monday"},
      {"WeekdayName", {N(7), B(false), N(2)}, "String Sunday"},
      {"WeekdayName", {N(7), B(false), N(7)}, "String Friday"},
      {"WeekdayName", {N(1), Missing(), N(0)}, "String Sunday"},
      {"WeekdayName", {N(0)}, "error 5 Invalid procedure call or argument: 'WeekdayName'"},
      {"WeekdayName", {N(8)}, "error 5 Invalid procedure call or argument: 'WeekdayName'"},
      {"WeekdayName", {N(1), B(false), N(8)}, "error 5 Invalid procedure call or argument: 'WeekdayName'"},
      {"WeekdayName", {NullValue()}, "error 94 Invalid use of Null: 'WeekdayName'"},
  });
}

TEST(DateIntrinsics, AddIntervals) {
  const Variant date = Moment(2001, 1, 31, 10);
  Check({
      {"DateAdd", {T(u"yyyy"), N(1), date}, "Date 2002-01-31 10:00:00"},
      {"DateAdd", {T(u"q"), N(1), date}, "Date 2001-04-30 10:00:00"},
      {"DateAdd", {T(u"m"), N(1), date}, "Date 2001-02-28 10:00:00"},
      {"DateAdd", {T(u"m"), N(-2), date}, "Date 2000-11-30 10:00:00"},
      {"DateAdd", {T(u"m"), N(-1), date}, "Date 2000-12-31 10:00:00"},
      {"DateAdd", {T(u"y"), N(1), date}, "Date 2001-02-01 10:00:00"},
      {"DateAdd", {T(u"d"), N(-31), date}, "Date 2000-12-31 10:00:00"},
      {"DateAdd", {T(u"w"), N(1), date}, "Date 2001-02-01 10:00:00"},
      {"DateAdd", {T(u"ww"), N(1), date}, "Date 2001-02-07 10:00:00"},
      {"DateAdd", {T(u"h"), N(15), date}, "Date 2001-02-01 01:00:00"},
      {"DateAdd", {T(u"n"), N(-1), date}, "Date 2001-01-31 09:59:00"},
      {"DateAdd", {T(u"s"), N(86400), date}, "Date 2001-02-01 10:00:00"},
      {"DateAdd", {T(u"D"), N(1), date}, "Date 2001-02-01 10:00:00"},
      {"DateAdd", {T(u"yyyy"), N(1), Moment(2000, 2, 29)}, "Date 2001-02-28 00:00:00"},
      {"DateAdd", {T(u"yyyy"), N(4), Moment(2000, 2, 29)}, "Date 2004-02-29 00:00:00"},
      {"DateAdd", {T(u"d"), D(1.5), date}, "Date 2001-02-02 10:00:00"},
      {"DateAdd", {T(u"d"), D(-1.7), date}, "Date 2001-01-29 10:00:00"},
      {"DateAdd", {T(u"d"), N(1), T(u"1/31/2001")}, "Date 2001-02-01 00:00:00"},
      // Across day 0, before which the time of day still counts forward.
      {"DateAdd", {T(u"h"), N(-1), Moment(1899, 12, 30)}, "Date 1899-12-29 23:00:00"},
      {"DateAdd", {T(u"d"), N(-1), Moment(1899, 12, 30, 6)}, "Date 1899-12-29 06:00:00"},
      {"DateAdd", {T(u"m"), N(1), Moment(1899, 12, 1, 6)}, "Date 1900-01-01 06:00:00"},
      {"DateAdd", {T(u"n"), N(120), Moment(1899, 12, 29, 23)}, "Date 1899-12-30 01:00:00"},
  });
}

TEST(DateIntrinsics, RefuseToAddOutOfRange) {
  const Variant date = Moment(2001, 1, 31);
  const std::string invalid = "error 5 Invalid procedure call or argument: 'DateAdd'";
  Check({
      {"DateAdd", {T(u"yyyy"), N(7998), date}, "Date 9999-01-31 00:00:00"},
      {"DateAdd", {T(u"yyyy"), N(7999), date}, invalid},
      {"DateAdd", {T(u"yyyy"), N(-1902), date}, invalid},
      {"DateAdd", {T(u"yyyy"), N(2147483647), date}, invalid},
      {"DateAdd", {T(u"yyyy"), N(-2147483647), date}, invalid},
      {"DateAdd", {T(u"ww"), N(2147483647), date}, invalid},
      {"DateAdd", {T(u"h"), N(-2147483647), date}, invalid},
      {"DateAdd", {T(u"d"), N(1), Moment(9999, 12, 31)}, invalid},
      {"DateAdd", {T(u"s"), D(1e10), date}, "error 6 Overflow: 'DateAdd'"},
      {"DateAdd", {T(u"x"), N(1), date}, invalid},
      {"DateAdd", {T(u""), N(1), date}, invalid},
      {"DateAdd", {T(u" d"), N(1), date}, invalid},
      {"DateAdd", {T(u"d"), N(1), NullValue()}, "Null"},
      {"DateAdd", {NullValue(), N(1), date}, "error 94 Invalid use of Null: 'DateAdd'"},
      {"DateAdd", {T(u"d"), NullValue(), date}, "error 94 Invalid use of Null: 'DateAdd'"},
      {"DateAdd", {T(u"d"), N(1), T(u"x")}, "error 13 Type mismatch: 'DateAdd'"},
  });
}

TEST(DateIntrinsics, CountBoundariesBetweenDates) {
  Check({
      {"DateDiff", {T(u"yyyy"), Moment(2000, 12, 31), Moment(2001, 1, 1)}, "Long 1"},
      {"DateDiff", {T(u"yyyy"), Moment(2001, 1, 1), Moment(2001, 12, 31)}, "Long 0"},
      {"DateDiff", {T(u"q"), Moment(2000, 12, 31), Moment(2001, 4, 1)}, "Long 2"},
      {"DateDiff", {T(u"m"), Moment(2001, 1, 31), Moment(2001, 2, 1)}, "Long 1"},
      {"DateDiff", {T(u"m"), Moment(2001, 2, 1), Moment(2000, 1, 31)}, "Long -13"},
      {"DateDiff", {T(u"d"), Moment(2001, 1, 1, 23), Moment(2001, 1, 2, 1)}, "Long 1"},
      {"DateDiff", {T(u"y"), Moment(2001, 1, 1), Moment(2001, 3, 1)}, "Long 59"},
      {"DateDiff", {T(u"h"), Moment(2001, 1, 1, 1, 59), Moment(2001, 1, 1, 2, 0)}, "Long 1"},
      {"DateDiff", {T(u"h"), Moment(2001, 1, 1, 2, 0), Moment(2001, 1, 1, 2, 59)}, "Long 0"},
      {"DateDiff", {T(u"n"), Moment(2001, 1, 1, 1, 0, 59), Moment(2001, 1, 1, 1, 1)}, "Long 1"},
      {"DateDiff", {T(u"s"), Moment(2001, 1, 1), Moment(2001, 1, 2)}, "Long 86400"},
      {"DateDiff", {T(u"h"), Moment(1899, 12, 29, 23), Moment(1899, 12, 30, 1)}, "Long 2"},
      {"DateDiff", {T(u"d"), Moment(1899, 12, 29, 23), Moment(1899, 12, 30, 1)}, "Long 1"},
      {"DateDiff", {T(u"d"), T(u"1/1/2001"), T(u"1/11/2001")}, "Long 10"},
      // Whole weeks, and boundaries between weeks.
      {"DateDiff", {T(u"w"), Moment(2001, 1, 1), Moment(2001, 1, 15)}, "Long 2"},
      {"DateDiff", {T(u"w"), Moment(2001, 1, 15), Moment(2001, 1, 2)}, "Long -1"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 6), Moment(2001, 1, 7)}, "Long 1"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 7), Moment(2001, 1, 7)}, "Long 0"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 7), Moment(2001, 1, 14)}, "Long 1"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 14), Moment(2001, 1, 7)}, "Long -1"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 6), Moment(2001, 1, 7), N(2)}, "Long 0"},
      {"DateDiff", {T(u"ww"), Moment(2001, 1, 7), Moment(2001, 1, 8), N(2)}, "Long 1"},
      {"DateDiff", {T(u"s"), Moment(1900, 1, 1), Moment(2100, 1, 1)}, "error 6 Overflow: 'DateDiff'"},
      {"DateDiff", {T(u"d"), NullValue(), Moment(2001, 1, 1)}, "Null"},
      {"DateDiff", {T(u"d"), Moment(2001, 1, 1), NullValue()}, "Null"},
      {"DateDiff", {NullValue(), N(1), N(2)}, "error 94 Invalid use of Null: 'DateDiff'"},
      {"DateDiff", {T(u"x"), N(1), N(2)}, "error 5 Invalid procedure call or argument: 'DateDiff'"},
      {"DateDiff", {T(u"d"), N(1), N(2), N(8)}, "error 5 Invalid procedure call or argument: 'DateDiff'"},
      {"DateDiff",
       {T(u"d"), N(1), N(2), N(1), N(4)},
       "error 5 Invalid procedure call or argument: 'DateDiff'"},
      {"DateDiff", {T(u"d"), T(u"x"), N(2)}, "error 13 Type mismatch: 'DateDiff'"},
  });
}

TEST(DateIntrinsics, TellAnyPartOfADate) {
  const Variant date = Moment(2000, 12, 31, 13, 5, 9);
  Check({
      {"DatePart", {T(u"yyyy"), date}, "Integer 2000"},
      {"DatePart", {T(u"q"), date}, "Integer 4"},
      {"DatePart", {T(u"m"), date}, "Integer 12"},
      {"DatePart", {T(u"y"), date}, "Integer 366"},
      {"DatePart", {T(u"d"), date}, "Integer 31"},
      {"DatePart", {T(u"w"), date}, "Integer 1"},
      {"DatePart", {T(u"w"), date, N(2)}, "Integer 7"},
      {"DatePart", {T(u"ww"), date}, "Integer 54"},
      {"DatePart", {T(u"h"), date}, "Integer 13"},
      {"DatePart", {T(u"n"), date}, "Integer 5"},
      {"DatePart", {T(u"s"), date}, "Integer 9"},
      {"DatePart", {T(u"Q"), Moment(2001, 3, 31)}, "Integer 1"},
      {"DatePart", {T(u"d"), NullValue()}, "Null"},
      {"DatePart", {NullValue(), date}, "error 94 Invalid use of Null: 'DatePart'"},
      {"DatePart", {T(u"x"), date}, "error 5 Invalid procedure call or argument: 'DatePart'"},
      {"DatePart", {T(u"d"), date, N(8)}, "error 5 Invalid procedure call or argument: 'DatePart'"},
      {"DatePart", {T(u"d"), date, N(1), N(-1)}, "error 5 Invalid procedure call or argument: 'DatePart'"},
      {"DatePart", {T(u"d"), T(u"x")}, "error 13 Type mismatch: 'DatePart'"},
  });
}

TEST(DateIntrinsics, NumberWeeksByEveryRule) {
  const auto week = [](Variant date, std::int32_t firstDay, std::int32_t firstWeek) {
    IntrinsicBench bench;
    return bench.Tell("DatePart", {T(u"ww"), std::move(date), N(firstDay), N(firstWeek)});
  };
  // 2005-01-01 is a Saturday.
  EXPECT_EQ(week(Moment(2005, 1, 1), 1, 1), "Integer 1");
  EXPECT_EQ(week(Moment(2005, 1, 2), 1, 1), "Integer 2");
  EXPECT_EQ(week(Moment(2005, 1, 2), 0, 0), "Integer 2");
  EXPECT_EQ(week(Moment(2005, 1, 2), 2, 1), "Integer 1");
  EXPECT_EQ(week(Moment(2005, 1, 1), 2, 2), "Integer 53");
  EXPECT_EQ(week(Moment(2005, 1, 3), 2, 2), "Integer 1");
  EXPECT_EQ(week(Moment(2005, 1, 1), 2, 3), "Integer 52");
  EXPECT_EQ(week(Moment(2005, 1, 1), 7, 3), "Integer 1");
  EXPECT_EQ(week(Moment(2004, 12, 31), 1, 1), "Integer 53");
  // 2001-12-31 is the Monday of the first week of 2002 by ISO's rule.
  EXPECT_EQ(week(Moment(2001, 12, 30), 2, 2), "Integer 52");
  EXPECT_EQ(week(Moment(2001, 12, 31), 2, 2), "Integer 1");
  EXPECT_EQ(week(Moment(2002, 1, 1), 2, 2), "Integer 1");
  EXPECT_EQ(week(Moment(9999, 12, 31), 2, 2), "Integer 52");
  EXPECT_EQ(week(Moment(100, 1, 1), 2, 2), "Integer 53");
}

TEST(DateIntrinsics, KeepAutomationsMistakeWithTheLastMondayBeforeALeapYear) {
  IntrinsicBench bench;
  for (const Variant& monday : {Moment(1855, 12, 31), Moment(1895, 12, 30), Moment(2003, 12, 29),
                                Moment(2007, 12, 31), Moment(2019, 12, 30)}) {
    EXPECT_EQ(bench.Tell("DatePart", {T(u"ww"), monday, N(2), N(2)}), "Integer 53");
    const Variant tuesday = Variant::FromDate(monday.AsDouble() + 1);
    EXPECT_EQ(bench.Tell("DatePart", {T(u"ww"), tuesday, N(2), N(2)}), "Integer 1");
  }
}

TEST(DateIntrinsics, MakeDatesOfParts) {
  const std::string invalid = "error 5 Invalid procedure call or argument: 'DateSerial'";
  Check({
      {"DateSerial", {N(2001), N(3), N(24)}, "Date 2001-03-24 00:00:00"},
      {"DateSerial", {N(2001), N(14), N(35)}, "Date 2002-03-07 00:00:00"},
      {"DateSerial", {N(2001), N(0), N(0)}, "Date 2000-11-30 00:00:00"},
      {"DateSerial", {N(2001), N(-13), N(1)}, "Date 1999-11-01 00:00:00"},
      {"DateSerial", {N(2001), N(3), N(0)}, "Date 2001-02-28 00:00:00"},
      {"DateSerial", {N(2001), N(1), N(-31)}, "Date 2000-11-30 00:00:00"},
      {"DateSerial", {N(0), N(1), N(1)}, "Date 2000-01-01 00:00:00"},
      {"DateSerial", {N(29), N(1), N(1)}, "Date 2029-01-01 00:00:00"},
      {"DateSerial", {N(30), N(1), N(1)}, "Date 1930-01-01 00:00:00"},
      {"DateSerial", {N(99), N(1), N(1)}, "Date 1999-01-01 00:00:00"},
      {"DateSerial", {N(100), N(1), N(1)}, "Date 0100-01-01 00:00:00"},
      {"DateSerial", {N(-1), N(1), N(1)}, "Date 1999-01-01 00:00:00"},
      {"DateSerial", {N(9999), N(12), N(31)}, "Date 9999-12-31 00:00:00"},
      {"DateSerial", {D(2000.6), N(1), N(1)}, "Date 2001-01-01 00:00:00"},
      {"DateSerial", {N(9999), N(12), N(32)}, invalid},
      {"DateSerial", {N(100), N(1), N(0)}, invalid},
      {"DateSerial", {N(10000), N(1), N(1)}, invalid},
      {"DateSerial", {N(32767), N(32767), N(32767)}, invalid},
      {"DateSerial", {N(-32768), N(-32768), N(-32768)}, invalid},
      {"DateSerial", {N(2001), N(1), N(32768)}, "error 6 Overflow: 'DateSerial'"},
      {"DateSerial", {NullValue(), N(1), N(1)}, "error 94 Invalid use of Null: 'DateSerial'"},
      {"DateSerial", {T(u"x"), N(1), N(1)}, "error 13 Type mismatch: 'DateSerial'"},
  });
}

TEST(DateIntrinsics, MakeTimesOfParts) {
  Check({
      {"TimeSerial", {N(13), N(5), N(9)}, "Date 1899-12-30 13:05:09"},
      {"TimeSerial", {N(6), N(-15), N(0)}, "Date 1899-12-30 05:45:00"},
      {"TimeSerial", {N(0), N(0), N(3661)}, "Date 1899-12-30 01:01:01"},
      {"TimeSerial", {N(25), N(0), N(0)}, "Date 1899-12-31 01:00:00"},
      {"TimeSerial", {N(-1), N(0), N(0)}, "Date 1899-12-29 23:00:00"},
      {"TimeSerial", {N(32768), N(0), N(0)}, "error 6 Overflow: 'TimeSerial'"},
      {"TimeSerial", {N(0), NullValue(), N(0)}, "error 94 Invalid use of Null: 'TimeSerial'"},
  });
}

TEST(DateIntrinsics, ReadDatesAndTimesAlone) {
  Check({
      {"DateValue", {T(u"3/24/2001 13:05")}, "Date 2001-03-24 00:00:00"},
      {"DateValue", {T(u"March 24, 2001")}, "Date 2001-03-24 00:00:00"},
      {"DateValue", {Moment(2001, 3, 24, 13, 5)}, "Date 2001-03-24 00:00:00"},
      {"DateValue", {T(u"13:05")}, "Date 1899-12-30 00:00:00"},
      {"DateValue", {T(u"x")}, "error 13 Type mismatch: 'DateValue'"},
      {"DateValue", {T(u"3/24/2001 89:98")}, "error 13 Type mismatch: 'DateValue'"},
      {"DateValue", {NullValue()}, "error 94 Invalid use of Null: 'DateValue'"},
      {"TimeValue", {T(u"3/24/2001 1:05:09 PM")}, "Date 1899-12-30 13:05:09"},
      {"TimeValue", {Moment(1850, 3, 24, 6)}, "Date 1899-12-30 06:00:00"},
      {"TimeValue", {T(u"3/24/2001")}, "Date 1899-12-30 00:00:00"},
      {"TimeValue", {T(u"")}, "error 13 Type mismatch: 'TimeValue'"},
      {"TimeValue", {NullValue()}, "error 94 Invalid use of Null: 'TimeValue'"},
  });
}

}  // namespace
}  // namespace hearthmake::vbscript
