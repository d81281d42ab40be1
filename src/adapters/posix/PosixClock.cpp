#include "adapters/posix/PosixClock.hpp"

#include <ctime>
#include <thread>

#include "adapters/posix/OleDate.hpp"

namespace hearthmake::posix {

double PosixClock::Now() {
  using std::chrono::milliseconds;
  using std::chrono::seconds;
  const auto now = std::chrono::floor<milliseconds>(std::chrono::system_clock::now());
  const auto whole = std::chrono::floor<seconds>(now);
  const std::time_t time = std::chrono::system_clock::to_time_t(whole);
  std::tm local{};
  localtime_r(&time, &local);
  const seconds sinceEpoch = whole.time_since_epoch() + seconds{local.tm_gmtoff};
  return ToOleDate(LocalTime{sinceEpoch} + (now - whole));
}

void PosixClock::Sleep(std::chrono::milliseconds duration) { std::this_thread::sleep_for(duration); }

}  // namespace hearthmake::posix
