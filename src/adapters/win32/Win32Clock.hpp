#pragma once

#include "platform/Clock.hpp"

namespace hearthmake::win32 {

// The system's clock in the system's time zone, to the second as Visual Basic's Now.
class Win32Clock final : public platform::Clock {
 public:
  double Now() override;
  void Sleep(std::chrono::milliseconds duration) override;
};

}  // namespace hearthmake::win32
