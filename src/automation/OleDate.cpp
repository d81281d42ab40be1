#include "automation/OleDate.hpp"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace hearthmake::automation {

namespace {

constexpr double kSecondsADay = 86400;
// The calendar of automation ends on both sides; what lies beyond is taken for its last day there.
constexpr double kFirstDay = -657434;  // 100-01-01
constexpr double kLastDay = 2958465;   // 9999-12-31
const std::chrono::sys_days kDayZero = std::chrono::year{1899} / 12 / 30;

std::string FormatTime(const DateParts& parts) {
  char buffer[48];
  const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
  std::snprintf(buffer, sizeof buffer, "%d:%02d:%02d %s", hour, parts.minute, parts.second,
                parts.hour < 12 ? "AM" : "PM");
  return buffer;
}

}  // namespace

DateParts SplitDate(double oleDate) {
  if (!(std::fabs(oleDate) < kLastDay + 1)) oleDate = oleDate > 0 ? kLastDay : kFirstDay;
  if (oleDate <= kFirstDay - 1) oleDate = kFirstDay;
  double day = std::trunc(oleDate);
  auto seconds = static_cast<std::int32_t>(std::lround(std::fabs(oleDate - day) * kSecondsADay));
  if (seconds == 86400) {
    seconds = 0;
    day += 1;
  }
  const std::chrono::year_month_day date(kDayZero + std::chrono::days(static_cast<std::int32_t>(day)));
  return {static_cast<std::int32_t>(date.year()),
          static_cast<std::int32_t>(static_cast<unsigned>(date.month())),
          static_cast<std::int32_t>(static_cast<unsigned>(date.day())),
          seconds / 3600,
          seconds / 60 % 60,
          seconds % 60};
}

double JoinDate(const DateParts& parts) {
  const std::chrono::sys_days date = std::chrono::year{parts.year} / parts.month / parts.day;
  const auto day = static_cast<double>((date - kDayZero).count());
  const double time = (parts.hour * 3600 + parts.minute * 60 + parts.second) / kSecondsADay;
  return day < 0 ? day - time : day + time;
}

std::string FormatDate(double oleDate) {
  const DateParts parts = SplitDate(oleDate);
  const bool isMidnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
  const bool isDayZero = parts.year == 1899 && parts.month == 12 && parts.day == 30;
  if (isDayZero) return FormatTime(parts);
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "%d/%d/%d", parts.month, parts.day, parts.year);
  return isMidnight ? buffer : std::string(buffer) + " " + FormatTime(parts);
}

std::string FormatIsoDate(double oleDate) {
  const DateParts parts = SplitDate(oleDate);
  char buffer[96];
  std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", parts.year, parts.month, parts.day,
                parts.hour, parts.minute, parts.second);
  return buffer;
}

}  // namespace hearthmake::automation
