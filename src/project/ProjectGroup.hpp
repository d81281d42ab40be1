#pragma once

#include <string>
#include <vector>

namespace hearthmake {

// Full paths of the projects that a group file (.vbg) lists, in file order: the rows with the key Project
// or StartupProject, in any case, the value with or without quotes, relative to the group file's folder
// or absolute. Other rows are passed over. Error 53 with the path for a missing file.
std::vector<std::string> ReadProjectGroup(const std::string& strFile);

}  // namespace hearthmake
