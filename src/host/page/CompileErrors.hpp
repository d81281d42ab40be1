#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::host {

// An error that a compiler's log tells: in which line of which file, and why.
struct CompileError {
  std::string file;  // as the log names it
  std::size_t line = 0;
  std::string text;
};

// The first errors of a log ("Compile Error in File 'C:\src\Shelf.cls', Line 12 : Expected End Sub").
std::vector<CompileError> CompileErrorsOf(std::string_view log, std::size_t most);

// Some lines of a source file around one of them.
struct SourceExcerpt {
  struct Line {
    std::size_t number = 0;
    std::string text;  // long ones are cut off
  };
  std::vector<Line> lines;  // none when the file can't be read or has no such line
};

// A relative file is looked for from the folder, which ends in a backslash.
SourceExcerpt ReadExcerpt(const CompileError& error, std::string_view folder);

}  // namespace hearthmake::host
