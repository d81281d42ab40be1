#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <string>

#include "automation/Error.hpp"

namespace hearthmake::git {

// The numbers of this adapter's errors: those of Visual Basic, with texts of our own.
namespace Number {
inline constexpr std::int32_t kInvalidArgument = 5;    // a path, label or user that can't be one
inline constexpr std::int32_t kInterrupted = 18;       // the person at the host wanted it to end
inline constexpr std::int32_t kLibraryMissing = 48;    // libgit2 can't be loaded
inline constexpr std::int32_t kNotFound = 53;          // ini file or item
inline constexpr std::int32_t kGitFailed = 57;         // damaged objects, network, what git refuses
inline constexpr std::int32_t kPermissionDenied = 70;  // held by somebody, credentials refused, locked
inline constexpr std::int32_t kPathAccess = 75;        // a local path, or an entry of a tree, that is refused
inline constexpr std::int32_t kPathNotFound = 76;      // repository, branch, working folder
inline constexpr std::int32_t kFunctionMissing = 453;  // the libgit2 that was loaded is another one
}  // namespace Number

// Raises an error from inside the adapter; the operation that was called puts its own name to it.
[[noreturn]] void Fail(std::int32_t number, std::string text);
// The failure of a system call on a path.
[[noreturn]] void FailErrno(int error, const std::string& path);
// The failure that a function of the library has just returned, "what: its own words".
[[noreturn]] void FailGit(int code, const std::string& what);

inline void Check(int code, const char* what) {
  if (code < 0) FailGit(code, what);
}
inline void Check(int code, const std::string& what) {
  if (code < 0) FailGit(code, what);
}

// Runs one operation of the port: whatever fails inside leaves it as an error of that source.
template <class Function>
auto Operation(const char* source, const Function& function) {
  try {
    return function();
  } catch (const automation::Error& error) {
    throw automation::Error(error.Number(), source, error.Description());
  } catch (const std::bad_alloc&) {
    automation::Raise(automation::RuntimeError::OutOfMemory, source);
  } catch (const std::exception& error) {
    throw automation::Error(Number::kGitFailed, source, error.what());
  }
}

}  // namespace hearthmake::git
