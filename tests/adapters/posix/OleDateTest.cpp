#include "adapters/posix/OleDate.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "automation/Error.hpp"

namespace hearthmake::posix {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using std::chrono::milliseconds;
using std::chrono::year_month_day;

LocalTime At(year_month_day date, milliseconds timeOfDay = 0ms) {
  return LocalTime{local_days{date}} + timeOfDay;
}

TEST(OleDate, CountsDaysFromTheEndOf1899) {
  EXPECT_DOUBLE_EQ(ToOleDate(At(1899y / 12 / 30)), 0.0);
  EXPECT_DOUBLE_EQ(ToOleDate(At(1899y / 12 / 31, 12h)), 1.5);
  EXPECT_DOUBLE_EQ(ToOleDate(At(1900y / 1 / 1, 6h)), 2.25);
  EXPECT_DOUBLE_EQ(ToOleDate(At(1970y / 1 / 1)), 25569.0);
  EXPECT_DOUBLE_EQ(ToOleDate(At(2000y / 2 / 29, 18h)), 36585.75);
}

TEST(OleDate, CountsTheTimeOfDayForwardBeforeThat) {
  EXPECT_DOUBLE_EQ(ToOleDate(At(1899y / 12 / 29, 6h)), -1.25);
  EXPECT_DOUBLE_EQ(ToOleDate(At(1899y / 12 / 29)), -1.0);
  EXPECT_DOUBLE_EQ(ToOleDate(At(100y / 1 / 1, 18h)), -657434.75);
  EXPECT_EQ(FromOleDate(-1.25), At(1899y / 12 / 29, 6h));
  EXPECT_EQ(FromOleDate(-0.25), At(1899y / 12 / 30, 6h));
}

TEST(OleDate, SurvivesTheWayThereAndBack) {
  for (const auto date : {100y / 1 / 1, 1582y / 10 / 15, 1899y / 12 / 28, 1899y / 12 / 29, 1899y / 12 / 30,
                          1900y / 2 / 28, 2024y / 2 / 29, 9999y / 12 / 31}) {
    for (const milliseconds time :
         {milliseconds{0}, milliseconds{1}, milliseconds{45'296'789}, milliseconds{86'399'999}}) {
      EXPECT_EQ(FromOleDate(ToOleDate(At(date, time))), At(date, time)) << ToOleDate(At(date, time));
    }
  }
}

TEST(OleDate, RoundsIntoTheNextDay) {
  EXPECT_EQ(FromOleDate(1.9999999999), At(1900y / 1 / 1));
  EXPECT_EQ(FromOleDate(-1.9999999999), At(1899y / 12 / 30));
}

TEST(OleDate, RefusesWhatIsNoDate) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double date : {2958466.0, -657435.0, 1e18, -1e300, kInfinity, -kInfinity,
                            std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(FromOleDate(date), automation::Error) << date;
  }
  EXPECT_THROW(ToOleDate(At(10000y / 1 / 1)), automation::Error);
  EXPECT_THROW(ToOleDate(At(99y / 12 / 31)), automation::Error);
}

}  // namespace
}  // namespace hearthmake::posix
