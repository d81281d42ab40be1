#pragma once

#include <cstdint>
#include <string>
#include <system_error>

namespace hearthmake::sqlite {

// Tells whether the file behind a path is still the one that was opened, as it was left.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = -1;
  std::int64_t modified = 0;  // nanoseconds

  bool IsSameFile(const FileStamp& other) const { return device == other.device && inode == other.inode; }
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

// The little that has to be known of files beside what SQLite does with them. Paths are those that SQLite is
// given, in UTF-8. Each operating system has its own Disk.cpp, in a folder of its name.
namespace disk {

enum class Kind { Missing, Unreadable, EmptyFile, File, Other };

Kind KindOf(const std::string& path);

// Of the file as it is now; the size of one that can't be looked at is -1.
FileStamp StampOf(const std::string& path);

// Whether anything has the name, be it a link to nothing.
bool Exists(const std::string& path);

// Makes an empty file whose name begins with the path, and gives its name; empty on a failure.
std::string MakeTemporary(const std::string& path, std::error_code& error);
void Remove(const std::string& path);

// std::errc::file_exists when the new name is taken.
std::error_code MoveWithoutReplacing(const std::string& from, const std::string& to);
// Sees to it that a new name in the folder of the path lasts through a power cut.
void FlushFolderOf(const std::string& path);

// Whether an error number of the system, as SQLite keeps it, tells that no room is left.
bool IsFull(int systemError);

// Whether others may replace and remove a file that we have open.
bool OpenFilesCanBeReplaced();

}  // namespace disk

}  // namespace hearthmake::sqlite
