#pragma once

#include <string>
#include <vector>

#include "host/HostError.hpp"

namespace hearthmake::host {

// The command: reads what was typed, does it, and tells failures on standard error.
ExitStatus RunCommandLine(int argc, const char* const* argv);

// What is wrong with a command line (without the program's name) before anything is done; empty when nothing is.
std::string UsageProblem(const std::vector<std::string>& arguments);

}  // namespace hearthmake::host
