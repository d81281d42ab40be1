#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::mFindFiles {

// Full paths of all files below a folder (which ends in a backslash) whose names end in an extension
// (".vbp"), without regard to case. The files of a folder come by lower-cased name, then those of its
// subfolders by lower-cased name. Links to folders are not followed, so a walk always ends. A folder that
// can't be listed is passed over; the starting folder must exist (error 76).
std::vector<std::string> FindFiles(std::string_view folder, std::string_view extension);

// Names of the files in one folder that end in the extension, by lower-cased name.
std::vector<std::string> FilesOf(std::string_view folder, std::string_view extension);

}  // namespace hearthmake::mFindFiles
