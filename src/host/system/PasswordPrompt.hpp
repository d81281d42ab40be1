#pragma once

#include <string>
#include <string_view>

#include "host/Console.hpp"

namespace hearthmake::host {

// Asks for a password on the terminal of standard input, without showing what is typed; the prompt goes to
// standard error. An empty line is an empty password. HostError where there is no terminal, and with the
// status Cancelled when the question was ended by Ctrl-C or Ctrl-D.
std::string AskPassword(const Console& console, std::string_view prompt);

// The first line of standard input, without its line end. HostError when there is none.
std::string ReadPassword();

}  // namespace hearthmake::host
