#pragma once

#include <string_view>

#include "automation/Error.hpp"

namespace hearthmake::sourcesafe {

// The error of an operation: SourceSafe's number and words, its text naming what the operation was about.
// SourceSafe itself often says "File or project not found" and no more.
automation::Error SafeError(const automation::Error& error, std::string_view operation,
                            std::string_view about);

// Does what a function does, whose failure becomes the error of the operation.
template <class Function>
auto Named(std::string_view operation, std::string_view about, const Function& function) {
  try {
    return function();
  } catch (const automation::Error& error) {
    throw SafeError(error, operation, about);
  }
}

}  // namespace hearthmake::sourcesafe
