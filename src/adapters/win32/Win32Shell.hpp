#pragma once

#include <string_view>

#include "platform/Shell.hpp"

namespace hearthmake::win32 {

// Starts programs in windows of their own, as Visual Basic's Shell does, and forgets them.
class Win32Shell final : public platform::Shell {
 public:
  void Start(std::string_view commandLine, platform::WindowState window) override;
};

}  // namespace hearthmake::win32
