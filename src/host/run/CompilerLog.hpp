#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::host {

// What the compiler said: the message of a failed compile without the library's words in front. Line ends as
// they came.
std::string_view CompilerWords(std::string_view message);

// An error that the compiler's log tells of.
struct CompilerError {
  std::string file;      // as the log names it: a DOS path, absolute or not; empty when it names none
  std::size_t line = 0;  // from 1; 0 when it names none
  std::string text;      // without line ends
};

// The errors of a log, in its order; those beyond a thousand are left out. Lines that name no place count
// where no other line does, and the verdict of the build ("Build of 'Lib.dll' failed.") never does.
std::vector<CompilerError> CompilerErrors(std::string_view log);

}  // namespace hearthmake::host
