#pragma once

#include <chrono>

namespace hearthmake::platform {

class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  // Local date and time as an OLE date: days since 1899-12-30, the time of day as the fraction.
  virtual double Now() = 0;
  virtual void Sleep(std::chrono::milliseconds duration) = 0;
};

}  // namespace hearthmake::platform
