#include "host/page/PageWords.hpp"

#include <fmt/format.h>

#include <array>
#include <chrono>
#include <cmath>

namespace hearthmake::host {

namespace {

struct Day {
  int year;
  unsigned month;
  unsigned day;
  std::int64_t hour;
  std::int64_t minute;
  std::int64_t second;
};

Day DayOf(std::int64_t secondsSince1970) {
  using namespace std::chrono;
  const sys_seconds time{seconds(secondsSince1970)};
  const auto midnight = floor<days>(time);
  const year_month_day date{midnight};
  const hh_mm_ss clock{time - midnight};
  return {static_cast<int>(date.year()),     static_cast<unsigned>(date.month()),
          static_cast<unsigned>(date.day()), clock.hours().count(),
          clock.minutes().count(),           clock.seconds().count()};
}

}  // namespace

const char* OutcomeWord(ProjectOutcome outcome) {
  switch (outcome) {
    case ProjectOutcome::NotReached: return "Not reached";
    case ProjectOutcome::Compiled: return "Compiled";
    case ProjectOutcome::Failed: return "Failed";
    case ProjectOutcome::Cancelled: return "Cancelled";
    case ProjectOutcome::UpToDate: return "Up to date";
    case ProjectOutcome::Blocked: return "Blocked";
    case ProjectOutcome::Earlier: return "Compiled before";
    case ProjectOutcome::NotWanted: return "Left out";
  }
  return "";
}

const char* OutcomeStyle(ProjectOutcome outcome) {
  switch (outcome) {
    case ProjectOutcome::NotReached: return "notreached";
    case ProjectOutcome::Compiled: return "compiled";
    case ProjectOutcome::Failed: return "failed";
    case ProjectOutcome::Cancelled: return "cancelled";
    case ProjectOutcome::UpToDate: return "uptodate";
    case ProjectOutcome::Blocked: return "blocked";
    case ProjectOutcome::Earlier: return "earlier";
    case ProjectOutcome::NotWanted: return "leftout";
  }
  return "";
}

std::string TypeWord(const std::string& typeName) {
  if (typeName == "StandardExe") return "Program";
  if (typeName == "ActiveXDll") return "Library";
  if (typeName == "ActiveXExe") return "OLE server";
  if (typeName == "UserControl") return "Control";
  return "Unknown type";
}

const char* TypeSign(const std::string& typeName) {
  if (typeName == "ActiveXDll") return "t-dll";
  if (typeName == "ActiveXExe") return "t-server";
  if (typeName == "UserControl") return "t-control";
  return "t-exe";
}

std::string SecondsWord(double seconds) {
  if (seconds < 0.0995) return fmt::format("{:.0f} ms", seconds * 1000);
  if (seconds < 9.995) return fmt::format("{:.2f} s", seconds);
  if (seconds < 59.95) return fmt::format("{:.1f} s", seconds);
  const auto whole = static_cast<long long>(std::llround(seconds));
  if (whole < 3600) return fmt::format("{}:{:02} min", whole / 60, whole % 60);
  return fmt::format("{}:{:02}:{:02} h", whole / 3600, whole / 60 % 60, whole % 60);
}

std::string BytesWord(std::int64_t bytes) {
  constexpr double kStep = 1024;
  if (bytes < 0) return "–";
  if (bytes < 1024) return fmt::format("{} B", bytes);
  const double kilobytes = static_cast<double>(bytes) / kStep;
  return kilobytes < kStep ? fmt::format("{:.1f} KB", kilobytes)
                           : fmt::format("{:.1f} MB", kilobytes / kStep);
}

std::string ByteChangeWord(std::int64_t bytes) {
  return (bytes < 0 ? "−" : "+") + BytesWord(bytes < 0 ? -bytes : bytes);
}

std::string SecondsChangeWord(double seconds) {
  return (seconds < 0 ? "−" : "+") + SecondsWord(std::abs(seconds));
}

std::string TimeWord(std::int64_t secondsSince1970) {
  const Day at = DayOf(secondsSince1970);
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02} UTC", at.year, at.month, at.day, at.hour, at.minute);
}

std::string TimeStamp(std::int64_t secondsSince1970) {
  const Day at = DayOf(secondsSince1970);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", at.year, at.month, at.day, at.hour, at.minute,
                     at.second);
}

}  // namespace hearthmake::host
