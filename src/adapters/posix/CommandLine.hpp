#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::posix {

// One way to read the start of a command line.
struct ProgramCandidate {
  std::string_view program;    // without quotes
  std::string_view arguments;  // what follows it, blanks included
};

// Reads a Windows command line in two steps, as Windows does: which program it names, and how a
// program takes its arguments apart.
class CommandLine {
 public:
  // The text must outlive the object.
  explicit CommandLine(std::string_view text) : m_text(text) {}

  // What the line may name as its program, in the order in which CreateProcess tries it: a quoted
  // start is one candidate; otherwise every beginning that ends before a blank or at the end is one.
  // Nothing when there are no more.
  std::optional<ProgramCandidate> NextCandidate();

  // Takes arguments apart by the rules of Microsoft's C run time: blanks and tabs separate, quotes
  // group, 2n backslashes and a quote are n backslashes and a delimiter, 2n+1 are n and a quote, and a
  // doubled quote inside quotes is one quote. Backslashes elsewhere are themselves.
  static std::vector<std::string> SplitArguments(std::string_view arguments);

 private:
  std::string_view m_text;
  std::size_t m_next = 0;
  bool m_done = false;
};

}  // namespace hearthmake::posix
