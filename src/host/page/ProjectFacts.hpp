#pragma once

#include <cstdint>
#include <string>

#include "project/Project.hpp"

namespace hearthmake::host {

// What a project is at one moment: the version that its file names and what its binary is.
struct ProjectFacts {
  std::string version;         // "1.0.12" of the project file; empty when that can't be read
  std::int64_t size = -1;      // of the binary, in bytes; -1 when there is none
  std::string library;         // id of the binary's type library, {...}; empty when there is none
  std::string libraryVersion;  // hexadecimal as in project files: 1.A

  friend bool operator==(const ProjectFacts&, const ProjectFacts&) = default;
};

// A look at the files. What can't be read is left out.
ProjectFacts ReadFacts(Project& project);

}  // namespace hearthmake::host
