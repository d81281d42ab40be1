#pragma once

#include <memory>

#include "adapters/win32/Win32ProcessLauncher.hpp"

namespace hearthmake::host {

// The children of this process, for the thread that the system calls on Ctrl-C.
void RememberLauncher(const std::shared_ptr<win32::Win32ProcessLauncher>& launcher);
void TerminateChildren();

}  // namespace hearthmake::host
