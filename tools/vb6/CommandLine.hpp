#pragma once

#include <string>
#include <vector>

namespace hearthmake::vb6 {

// The arguments of the compiler's make mode. A switch begins with '/' or '-', in any case of letters.
struct CommandLine {
  bool help = false;
  bool version = false;
  bool make = false;  // /make, /m, /makedll
  bool skipSources = false;
  std::string project;    // a DOS path, or a POSIX one that begins with '/'
  std::string log;        // /out; empty: messages go to standard error
  std::string outFolder;  // /outdir
  std::string problem;    // what can't be understood, empty when all can

  // The arguments without the program's name.
  static CommandLine Parse(const std::vector<std::string>& arguments);
};

}  // namespace hearthmake::vb6
