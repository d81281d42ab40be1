#pragma once

#include <string>

#include "automation/Text.hpp"

namespace hearthmake::host {

// The text as one word of a shell's command line.
inline std::string ShellQuote(const std::string& text) {
  return "'" + automation::ReplaceAll(text, "'", "'\\''") + "'";
}

}  // namespace hearthmake::host
