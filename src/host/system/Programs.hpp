#pragma once

#include <string>

#include "host/Session.hpp"

namespace hearthmake::host {

enum class ProgramKind {
  Missing,
  Native,
  NeedsWine,  // a Windows program, on a system that is not Windows
};

struct FoundProgram {
  ProgramKind kind = ProgramKind::Missing;
  std::string path;  // the system's
};

// The program that a command line starts, found as the library finds it.
FoundProgram FindProgram(Session& session, const std::string& commandLine);
// A tool of the system by its name, on PATH; empty when there is none.
std::string FindTool(const std::string& name);

}  // namespace hearthmake::host
