#include "adapters/win32/Win32Clock.hpp"

#include <gtest/gtest.h>
#include <windows.h>

#include "automation/OleDate.hpp"

namespace hearthmake::win32 {
namespace {

TEST(Win32Clock, TellsTheLocalTime) {
  Win32Clock clock;
  const double before = clock.Now();
  SYSTEMTIME time{};
  GetLocalTime(&time);
  const double expected =
      automation::JoinDate({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond});
  const double after = clock.Now();
  EXPECT_GE(expected, before);
  EXPECT_LE(expected, after);
}

TEST(Win32Clock, Sleeps) {
  Win32Clock clock;
  const auto start = std::chrono::steady_clock::now();
  clock.Sleep(std::chrono::milliseconds(30));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(25));
  clock.Sleep(std::chrono::milliseconds(-1));
}

}  // namespace
}  // namespace hearthmake::win32
