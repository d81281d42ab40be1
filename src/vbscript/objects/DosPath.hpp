#pragma once

#include <string>
#include <string_view>

// The parts of DOS paths, taken apart by their text alone, as the file system object of scripts does it.
// Both slashes separate names; separators at the end of a path do not count.
namespace hearthmake::vbscript::dospath {

bool IsSeparator(char c);

// The drive ("c:") or share ("\\server\share") that a path begins with; "" where there is none.
std::string DriveName(std::string_view path);
// The path without its last name: "c:\a" of "c:\a\b", "c:\" of "c:\a"; "" where there is nothing above.
std::string ParentFolderName(std::string_view path);
std::string FileName(std::string_view path);
// The last name up to its last dot, and what is behind that dot.
std::string BaseName(std::string_view path);
std::string ExtensionName(std::string_view path);
// The two with one separator between them.
std::string Join(std::string_view path, std::string_view name);

// The path from the root of its drive on, `.` and `..` resolved, names without the dots and blanks at their
// end, no separator at the end but at a root. Relative paths start at the current folder, which is absolute;
// those of another drive at its root.
std::string Absolute(std::string_view path, std::string_view currentFolder);
// Of an absolute path.
bool IsRoot(std::string_view absolutePath);
// Whether an absolute path is a folder or below it, without regard to case.
bool IsWithin(std::string_view absolutePath, std::string_view absoluteFolder);

// Whether the last name has a `*` or `?`.
bool HasWildcards(std::string_view path);
// Whether a name matches a pattern as DOS matches: without regard to case; `*.*` is every name.
bool Matches(std::string_view name, std::string_view pattern);

}  // namespace hearthmake::vbscript::dospath
