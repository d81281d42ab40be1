#pragma once

#include <string>
#include <string_view>

#include "automation/Error.hpp"

// Failures of the FileSystem port: source "FileSystem", Visual Basic's text and the DOS path.

namespace hearthmake::posix {

[[noreturn]] void RaiseFileFailure(automation::RuntimeError error, std::string_view dosPath);

// The failure of a system call, from its errno.
[[noreturn]] void RaiseErrno(int error, std::string_view dosPath);

// The same for a file, which is error 53 when it is not there but its folder is, else 76.
[[noreturn]] void RaiseFileErrno(int error, std::string_view dosPath, const std::string& posixPath);

}  // namespace hearthmake::posix
