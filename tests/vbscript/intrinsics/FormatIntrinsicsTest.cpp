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

TEST(FormatIntrinsics, FormatNumbers) {
  Check({
      {"FormatNumber", {N(0)}, "String 0.00"},
      {"FormatNumber", {D(1234567.891)}, "String 1,234,567.89"},
      {"FormatNumber", {D(-1234.567)}, "String -1,234.57"},
      {"FormatNumber", {N(999)}, "String 999.00"},
      {"FormatNumber", {N(1000), N(0)}, "String 1,000"},
      {"FormatNumber", {D(0.5)}, "String 0.50"},
      {"FormatNumber", {T(u"12.5")}, "String 12.50"},
      {"FormatNumber", {EmptyValue()}, "String 0.00"},
      {"FormatNumber", {B(true)}, "String -1.00"},
      {"FormatNumber", {Variant::FromCurrency(9223372036854775807), N(4)}, "String 922,337,203,685,477.5807"},
      {"FormatNumber", {Variant::FromCurrency(5), N(4)}, "String 0.0005"},
      {"FormatNumber", {D(1e20), N(0)}, "String 100,000,000,000,000,000,000"},
      {"FormatNumber", {D(1e-7), N(8)}, "String 0.00000010"},
      {"FormatNumber", {D(1e-7)}, "String 0.00"},
  });
}

TEST(FormatIntrinsics, RoundHalvesAwayFromZeroByTheirDigits) {
  Check({
      {"FormatNumber", {D(0.5), N(0)}, "String 1"},
      {"FormatNumber", {D(2.5), N(0)}, "String 3"},
      {"FormatNumber", {D(-2.5), N(0)}, "String -3"},
      {"FormatNumber", {D(0.49), N(0)}, "String 0"},
      {"FormatNumber", {D(1.005)}, "String 1.01"},
      {"FormatNumber", {D(1.275)}, "String 1.28"},
      {"FormatNumber", {D(9.995)}, "String 10.00"},
      {"FormatNumber", {D(999.999)}, "String 1,000.00"},
      {"FormatNumber", {D(0.005)}, "String 0.01"},
      {"FormatNumber", {D(0.004)}, "String 0.00"},
      {"FormatNumber", {D(0.05), N(0)}, "String 0"},
  });
}

TEST(FormatIntrinsics, FollowTheStyleAskedFor) {
  Check({
      {"FormatNumber", {D(1.5), N(-1)}, "String 1.50"},
      {"FormatNumber", {D(1.5), Missing(), N(0)}, "String 1.50"},
      {"FormatNumber", {D(0.5), N(2), N(0)}, "String .50"},
      {"FormatNumber", {D(0.5), N(2), N(-1)}, "String 0.50"},
      {"FormatNumber", {D(0.5), N(2), N(-2)}, "String 0.50"},
      {"FormatNumber", {D(-0.5), N(2), B(false)}, "String -.50"},
      {"FormatNumber", {N(0), N(2), N(0)}, "String .00"},
      {"FormatNumber", {D(-1234.5), N(1), N(-2), N(-1)}, "String (1,234.5)"},
      {"FormatNumber", {D(1234.5), N(1), N(-2), N(-1)}, "String 1,234.5"},
      {"FormatNumber", {D(1234567.891), N(2), N(-2), N(-2), N(0)}, "String 1234567.89"},
      {"FormatNumber", {D(1.5), N(20)}, "String 1.50000000000000000000"},
      {"FormatNumber", {D(-0.001)}, "String -0.00"},
  });
}

TEST(FormatIntrinsics, FormatCurrenciesAndPercents) {
  Check({
      {"FormatCurrency", {D(1234.567)}, "String $1,234.57"},
      {"FormatCurrency", {D(-1234.567)}, "String ($1,234.57)"},
      {"FormatCurrency", {D(-1234.567), N(2), N(-2), N(0)}, "String -$1,234.57"},
      {"FormatCurrency", {D(0.5), N(1), N(0)}, "String $.5"},
      {"FormatCurrency", {N(1000), N(0), N(-2), N(-2), N(0)}, "String $1000"},
      {"FormatPercent", {D(0.0625)}, "String 6.25%"},
      {"FormatPercent", {D(0.1234), N(0)}, "String 12%"},
      {"FormatPercent", {D(0.285), N(0)}, "String 29%"},
      {"FormatPercent", {D(-12.3456), N(1)}, "String -1,234.6%"},
      {"FormatPercent", {D(-12.3456), N(1), N(-2), N(-1)}, "String (1,234.6)%"},
      {"FormatPercent", {D(0.001), N(2), N(0)}, "String .10%"},
      {"FormatPercent", {N(1)}, "String 100.00%"},
      {"FormatPercent", {N(0)}, "String 0.00%"},
  });
}

TEST(FormatIntrinsics, RefuseWhatIsNoNumber) {
  Check({
      {"FormatNumber", {NullValue()}, "error 13 Type mismatch: 'FormatNumber'"},
      {"FormatCurrency", {NullValue()}, "error 13 Type mismatch: 'FormatCurrency'"},
      {"FormatPercent", {NullValue()}, "error 13 Type mismatch: 'FormatPercent'"},
      {"FormatNumber", {T(u"x")}, "error 13 Type mismatch: 'FormatNumber'"},
      {"FormatNumber", {List({})}, "error 13 Type mismatch: 'FormatNumber'"},
      {"FormatNumber", {N(1), N(-2)}, "error 5 Invalid procedure call or argument: 'FormatNumber'"},
      {"FormatNumber", {N(1), N(100)}, "error 5 Invalid procedure call or argument: 'FormatNumber'"},
      {"FormatNumber", {N(1), NullValue()}, "error 94 Invalid use of Null: 'FormatNumber'"},
      {"FormatNumber", {N(1), N(1), NullValue()}, "error 94 Invalid use of Null: 'FormatNumber'"},
  });
}

TEST(FormatIntrinsics, FormatDatesInFiveWays) {
  const Variant date = Moment(2001, 3, 24, 13, 5, 9);
  Check({
      {"FormatDateTime", {date}, "String 3/24/2001 1:05:09 PM"},
      {"FormatDateTime", {date, N(0)}, "String 3/24/2001 1:05:09 PM"},
      {"FormatDateTime", {date, N(1)}, "String Saturday, March 24, 2001"},
      {"FormatDateTime", {date, N(2)}, "String 3/24/2001"},
      {"FormatDateTime", {date, N(3)}, "String 1:05:09 PM"},
      {"FormatDateTime", {date, N(4)}, "String 13:05"},
      {"FormatDateTime", {Moment(2001, 3, 4)}, "String 3/4/2001"},
      {"FormatDateTime", {Moment(2001, 3, 4, 0, 5, 3), N(3)}, "String 12:05:03 AM"},
      {"FormatDateTime", {Moment(2001, 3, 4, 0, 5, 3), N(4)}, "String 00:05"},
      {"FormatDateTime", {D(0.5), N(1)}, "String Saturday, December 30, 1899"},
      {"FormatDateTime", {T(u"3/24/2001"), N(1)}, "String Saturday, March 24, 2001"},
      {"FormatDateTime", {date, N(5)}, "error 5 Invalid procedure call or argument: 'FormatDateTime'"},
      {"FormatDateTime", {date, N(-1)}, "error 5 Invalid procedure call or argument: 'FormatDateTime'"},
      {"FormatDateTime", {NullValue()}, "error 13 Type mismatch: 'FormatDateTime'"},
      {"FormatDateTime", {T(u"x")}, "error 13 Type mismatch: 'FormatDateTime'"},
  });
}

}  // namespace
}  // namespace hearthmake::vbscript
