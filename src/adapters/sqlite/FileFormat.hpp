#pragma once

#include <optional>
#include <string>

struct sqlite3;

namespace hearthmake::sqlite {

enum class FileFormat {
  Missing,     // no such file, or no folder to look for it in
  Folder,      // or anything else that is no file
  Unreadable,  // there, but it can't be opened
  Empty,
  Sqlite,
  Jet,  // a Jet or Access database of any version
  Other,
};

// What the file is by its header. Reads, never writes, and leaves locks held on the file by other
// connections of this process alone.
FileFormat DetectFormat(const std::string& posixPath);

// What it is by its name and size alone; nothing where only the header can tell.
std::optional<FileFormat> FormatBySize(const std::string& posixPath);
// What the header of the open file tells.
FileFormat FormatByHeader(sqlite3* db);

}  // namespace hearthmake::sqlite
