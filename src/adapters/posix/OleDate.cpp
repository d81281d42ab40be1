#include "adapters/posix/OleDate.hpp"

#include <cmath>

#include "automation/Error.hpp"

namespace hearthmake::posix {

namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::milliseconds;
using std::chrono::year;

constexpr local_days kZero{year{1899} / 12 / 30};
constexpr LocalTime kFirst = local_days{year{100} / 1 / 1};
constexpr LocalTime kBehindLast = local_days{year{10000} / 1 / 1};
constexpr double kMillisecondsPerDay = 86'400'000.0;

LocalTime InRange(LocalTime time) {
  if (time < kFirst || time >= kBehindLast) {
    automation::Raise(automation::RuntimeError::Overflow, "Date");
  }
  return time;
}

}  // namespace

double ToOleDate(LocalTime time) {
  const local_days midnight = std::chrono::floor<days>(InRange(time));
  const auto whole = static_cast<double>((midnight - kZero).count());
  const double timeOfDay = static_cast<double>((time - midnight).count()) / kMillisecondsPerDay;
  return whole < 0 ? whole - timeOfDay : whole + timeOfDay;
}

LocalTime FromOleDate(double date) {
  constexpr double kFarthest = 3'000'000.0;  // beyond every date, and safe to convert
  if (!(std::fabs(date) < kFarthest)) automation::Raise(automation::RuntimeError::Overflow, "Date");
  const double whole = std::trunc(date);
  const days wholeDays{static_cast<days::rep>(whole)};
  const milliseconds timeOfDay{std::llround(std::fabs(date - whole) * kMillisecondsPerDay)};
  return InRange(LocalTime{kZero + wholeDays} + timeOfDay);
}

}  // namespace hearthmake::posix
