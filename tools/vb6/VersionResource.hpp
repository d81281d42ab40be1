#pragma once

#include <string>

#include "vb6/ProjectFile.hpp"

namespace hearthmake::vb6 {

// The version information of a binary: the project's version and the texts that it keeps for it.
std::string VersionResource(const ProjectFile& project, const std::string& exeName);

}  // namespace hearthmake::vb6
