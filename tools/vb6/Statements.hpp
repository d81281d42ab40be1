#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::vb6 {

// One statement of Basic, comments taken off and continued lines put together.
struct Statement {
  unsigned line = 0;  // of its first character
  std::string text;   // without blanks at its ends, never empty
};

// Takes Basic text apart; firstLine is the number of its first line. Throws CompileError for a text literal
// that the end of its line leaves open.
std::vector<Statement> SplitStatements(std::string_view text, unsigned firstLine);

}  // namespace hearthmake::vb6
