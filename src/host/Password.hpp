#pragma once

#include <string>

namespace hearthmake::host {

// Asks for a password on the terminal, without showing what is typed. HostError where standard input is no
// terminal, and (cancelled) after Ctrl-C.
std::string AskPassword(const std::string& question);

// The first line of standard input, without its end.
std::string ReadPasswordLine();

}  // namespace hearthmake::host
