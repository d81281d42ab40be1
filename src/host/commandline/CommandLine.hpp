#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/HostError.hpp"

namespace CLI {
class App;
}

namespace hearthmake::host {

// The command: reads what was typed, does it, and tells failures on standard error.
ExitStatus RunCommandLine(int argc, const char* const* argv);

// Every word of the command with its options, to read and not to run: for completions and the manual page.
class CommandDeclaration {
 public:
  CommandDeclaration();
  CommandDeclaration(const CommandDeclaration&) = delete;
  CommandDeclaration& operator=(const CommandDeclaration&) = delete;
  ~CommandDeclaration();

  const CLI::App& App() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> m_parts;
};

// What is wrong with a command line (without the program's name) before anything is done; empty when nothing
// is.
std::string UsageProblem(const std::vector<std::string>& arguments);

}  // namespace hearthmake::host
