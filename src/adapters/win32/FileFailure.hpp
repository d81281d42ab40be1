#pragma once

#include <windows.h>

#include <string_view>

#include "automation/Error.hpp"

namespace hearthmake::win32 {

// The failures of the FileSystem port, with the path as the caller gave it.
[[noreturn]] void RaiseFileFailure(automation::RuntimeError error, std::string_view dosPath);

// What Visual Basic calls an error code of the system.
automation::RuntimeError FromSystemError(DWORD error);
[[noreturn]] void RaiseSystemError(DWORD error, std::string_view dosPath);

}  // namespace hearthmake::win32
