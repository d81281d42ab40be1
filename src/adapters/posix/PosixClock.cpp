#include "adapters/posix/PosixClock.hpp"

#include <ctime>
#include <thread>

#include "automation/OleDate.hpp"

namespace hearthmake::posix {

double PosixClock::Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return automation::JoinDate({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                               local.tm_min, local.tm_sec == 60 ? 59 : local.tm_sec});
}

void PosixClock::Sleep(std::chrono::milliseconds duration) { std::this_thread::sleep_for(duration); }

}  // namespace hearthmake::posix
