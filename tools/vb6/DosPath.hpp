#pragma once

#include <string>
#include <string_view>

// DOS paths as text; nothing here looks at a disk.

namespace hearthmake::vb6 {

// The folder of a file, without the final backslash ("C:" for a file in a root); empty without a folder.
std::string_view FolderOf(std::string_view path);
// The name of a file without its folder.
std::string_view FileNameOf(std::string_view path);
// The name without the extension.
std::string_view BaseNameOf(std::string_view path);

// The path that a name in a file of the folder means, with ".." and "." folded.
std::string JoinPath(std::string_view folder, std::string_view path);

}  // namespace hearthmake::vb6
