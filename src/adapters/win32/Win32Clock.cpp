#include "adapters/win32/Win32Clock.hpp"

#include <windows.h>

#include <algorithm>

#include "adapters/win32/SystemTime.hpp"

namespace hearthmake::win32 {

double Win32Clock::Now() {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return ToLocalOleDate(now);
}

void Win32Clock::Sleep(std::chrono::milliseconds duration) {
  constexpr std::chrono::milliseconds::rep kLongest = INFINITE - 1;
  ::Sleep(static_cast<DWORD>(std::clamp<std::chrono::milliseconds::rep>(duration.count(), 0, kLongest)));
}

}  // namespace hearthmake::win32
