#pragma once

#include <cstdint>
#include <string>

namespace hearthmake::automation {

// A date and time as automation keeps it: whole days since 1899-12-30 and the time of day as a fraction
// that counts forward also before that day (-1.25 is 1899-12-29 06:00). A type of its own so that
// declarations can tell it from a Double.
struct Date {
  double value = 0;
  friend bool operator==(const Date&, const Date&) = default;
};

struct DateParts {
  std::int32_t year = 1899;
  std::int32_t month = 12;  // 1 to 12
  std::int32_t day = 30;
  std::int32_t hour = 0;
  std::int32_t minute = 0;
  std::int32_t second = 0;
};

// To the nearest second. A date outside the calendar (100-01-01 to 9999-12-31) is taken for its end.
DateParts SplitDate(double oleDate);
double JoinDate(const DateParts& parts);

// As Visual Basic prints it in English: "3/24/2001 1:05:00 PM", the date alone at midnight, the time
// alone on day 0 (also at its midnight, "12:00:00 AM").
std::string FormatDate(double oleDate);
// "2001-03-24 13:05:00"
std::string FormatIsoDate(double oleDate);

}  // namespace hearthmake::automation
