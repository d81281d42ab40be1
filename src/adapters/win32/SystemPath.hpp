#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hearthmake::win32 {

// A DOS path as the system's calls take it: absolute, with backslashes, and in the form without a limit of
// length where it is long. Nothing for what can't be a path: an empty text, one with a zero in it, one that
// is longer than any path.
std::optional<std::wstring> ToSystemPath(std::string_view dosPath);

// The folder that the last name of a system path stands in, with the backslash.
std::wstring FolderOf(const std::wstring& systemPath);

// The path with its last name spelled as on the disk; as it is where nothing has the name.
std::wstring AsOnDisk(const std::wstring& systemPath);

}  // namespace hearthmake::win32
