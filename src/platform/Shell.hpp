#pragma once

#include <string_view>

namespace hearthmake::platform {

// How the window of a started program appears, with the shell's own numbers.
enum class WindowState : int {
  Normal = 1,          // with the focus
  MinimizedFocus = 2,  // an icon, with the focus
};

// Starts programs as the operating system's shell does, without waiting for them.
class Shell {
 public:
  Shell() = default;
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;
  virtual ~Shell() = default;

  // Starts a Windows command line and returns at once. Error 53 with the program's name when it can't be
  // started.
  virtual void Start(std::string_view commandLine, WindowState window) = 0;
};

}  // namespace hearthmake::platform
