#pragma once

#include <string>

namespace hearthmake::host {

// Lets the program `dot` of Graphviz draw a text of its language. The format is one of its own ("svg",
// "png"); the file's path is the system's. HostError when there is no such program (with what to install), or
// with what it says when it fails.
void DrawWithDot(const std::string& text, const std::string& format, const std::string& file);

}  // namespace hearthmake::host
