#include "adapters/posix/PosixClock.hpp"

#include <gtest/gtest.h>

#include <ctime>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

class PosixClockTest : public ::testing::TestWithParam<const char*> {};

// The zones are spelled out so that no zone files are needed.
TEST_P(PosixClockTest, TellsTheLocalTime) {
  const support::EnvironmentOverride zone("TZ", GetParam());
  tzset();
  PosixClock clock;
  const double before = clock.Now();
  const std::time_t time = std::time(nullptr);
  const std::tm local = *std::localtime(&time);
  const double after = clock.Now();
  const double midnight = 25569.0 + static_cast<double>((time + local.tm_gmtoff) / 86400);
  const double expected = midnight + (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
  constexpr double kSecond = 1.0 / 86400.0;
  EXPECT_GE(expected, before - kSecond);
  EXPECT_LE(expected, after + kSecond);
  EXPECT_LE(before, after);
}

INSTANTIATE_TEST_SUITE_P(Zones, PosixClockTest, ::testing::Values("UTC0", "EST5", "IST-5:30", "LINT-14"));

TEST(PosixClock, ZonesAreHoursApart) {
  PosixClock clock;
  const auto now = [&clock](const char* zone) {
    const support::EnvironmentOverride override("TZ", zone);
    tzset();
    return clock.Now();
  };
  EXPECT_NEAR((now("AAA-12") - now("BBB+12")) * 24.0, 24.0, 0.01);
  tzset();
}

TEST(PosixClock, Sleeps) {
  PosixClock clock;
  const auto start = std::chrono::steady_clock::now();
  clock.Sleep(std::chrono::milliseconds(20));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
}

}  // namespace
}  // namespace hearthmake::posix
