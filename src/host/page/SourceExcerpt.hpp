#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/run/CompilerLog.hpp"

namespace hearthmake::host {

// Some lines of a source file around one of them.
struct SourceExcerpt {
  struct Line {
    std::size_t number = 0;
    std::string text;  // long ones are cut off
  };
  std::vector<Line> lines;  // none when the file can't be read or has no such line
};

// A relative file is looked for from the folder, which ends in a backslash.
SourceExcerpt ReadExcerpt(const CompilerError& error, std::string_view folder);

}  // namespace hearthmake::host
