#include "adapters/git/OleTime.hpp"

#include <ctime>

#include "automation/OleDate.hpp"

namespace hearthmake::git {

double OleTime(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm local{};
  if (localtime_r(&time, &local) == nullptr) return 0;
  return automation::JoinDate(
      {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

}  // namespace hearthmake::git
