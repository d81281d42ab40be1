#include "adapters/win32/SystemTime.hpp"

#include "automation/OleDate.hpp"

namespace hearthmake::win32 {

double ToLocalOleDate(const FILETIME& time) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  // By the rules of that day, where the conversion of file times takes today's.
  if (FileTimeToSystemTime(&time, &universal) == 0 ||
      SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) == 0) {
    return 0;
  }
  return automation::JoinDate(
      {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond});
}

std::int64_t ToUnixNanoseconds(const FILETIME& time) {
  constexpr std::int64_t kTicksUntil1970 = 116'444'736'000'000'000;
  constexpr std::int64_t kNanosecondsPerTick = 100;
  const auto ticks =
      static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime);
  return (ticks - kTicksUntil1970) * kNanosecondsPerTick;
}

}  // namespace hearthmake::win32
