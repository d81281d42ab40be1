#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::host {

// A command line as bash is being typed it, up to the cursor: its words without their quotes, and how the
// last one, which may be unfinished or empty, was begun.
struct ShellWords {
  std::vector<std::string> words;  // never empty; the last is the one at the cursor
  std::string typed;               // that one as it was typed, quotes included
  char quote = 0;                  // the quote that it leaves open: ' or ", else 0
};
ShellWords SplitShellLine(std::string_view line);

// A word that begins with ~/ as shells understand it.
std::string WithHome(std::string word);

// A word as bash has to be given it so that it reads the text again; within the quote that is open, if any.
std::string QuoteForShell(std::string_view text, char openQuote);

}  // namespace hearthmake::host
