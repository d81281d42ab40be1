#pragma once

#include "host/HostError.hpp"

namespace hearthmake::host {

// The command: reads what was typed, does it, and tells failures on standard error.
ExitStatus RunCommandLine(int argc, const char* const* argv);

}  // namespace hearthmake::host
