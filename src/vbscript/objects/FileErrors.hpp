#pragma once

#include "automation/Error.hpp"

namespace hearthmake::vbscript {

// Raises a failure of the FileSystem port as scripts know it: the number and its text without the path, 70
// for 75. Other errors pass.
[[noreturn]] void RaiseAsScriptError(const automation::Error& error);

// Does the work with its failures translated.
template <class Work>
auto WithScriptErrors(Work work) -> decltype(work()) {
  try {
    return work();
  } catch (const automation::Error& error) {
    RaiseAsScriptError(error);
  }
}

}  // namespace hearthmake::vbscript
