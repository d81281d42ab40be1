#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hearthmake {

// DOS path texts. Nothing here looks at a disk.

// The target as seen from the folder of the base, whose last segment counts as a file name. Folders that
// the two share are matched only as long as the target has folders left to drop one by one, so that a
// deep common path is climbed and descended again (C:\a\b\c\g.vbg and C:\a\b\c\f.vbp give
// ..\..\b\c\f.vbp). Group and batch files have always been written so. Another drive: the target as it is.
std::string RelativePath(std::string_view base, std::string_view target);

// True when ":\" does not occur in the path; so a UNC path counts as relative.
bool IsRelativePath(std::string_view path);

// The path without outer blanks, in double quotes.
std::string QuotePath(std::string_view path);

// Every "\..\" resolved against the folder in front of it. A leading "..\" stays.
std::string NormalizePath(std::string_view path);

// Up to and including the last backslash; empty without one.
std::string_view FolderPart(std::string_view path);
// Behind the last backslash.
std::string_view FileNamePart(std::string_view path);
// The file name up to its last full stop.
std::string_view FileStem(std::string_view path);

// A path that a project file names, made absolute from a folder (which ends in a backslash) and
// normalised, "\.\" steps included. For look-ups: unlike IsRelativePath it knows UNC paths, and unlike
// NormalizePath it takes the folder above the root of a drive or share for that root.
std::string AbsolutePath(std::string_view folder, std::string_view path);

// How much of a path the two share from their start on, compared without regard to case: in bytes of the
// first one. Names count letter by letter: C:\src\Library and C:\src\Lib share all of the second.
std::size_t CommonLength(std::string_view path, std::string_view other);

// A type-library path without the resource index that may follow the file name
// ("C:\x\vbscript.dll\3" gives "C:\x\vbscript.dll").
std::string_view WithoutResourceIndex(std::string_view path);

}  // namespace hearthmake
