#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::platform {

// One name in a folder listing; "." and ".." are never listed.
struct FolderEntry {
  std::string name;
  bool isFolder = false;
  bool isLink = false;  // a link (or junction) to a file or folder elsewhere
};

// Tells whether a file is still the one that was looked at before.
struct FileStamp {
  std::uint64_t identity = 0;  // what the file system tells one file from another by
  std::int64_t size = -1;
  std::int64_t modified = 0;  // nanoseconds since 1970, UTC

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

// The attribute bits of a file, with their DOS values.
enum FileAttributes : std::uint32_t {
  kNormal = 0,
  kReadOnly = 1,
  kHidden = 2,
  kSystem = 4,
  kFolder = 16,
  kArchive = 32,
};

// A file open for reading at any place.
class RandomAccessFile {
 public:
  RandomAccessFile() = default;
  RandomAccessFile(const RandomAccessFile&) = delete;
  RandomAccessFile& operator=(const RandomAccessFile&) = delete;
  virtual ~RandomAccessFile() = default;

  virtual std::uint64_t Size() const = 0;
  // Copies up to count bytes from offset into buffer; returns how many there were (0 past the end).
  virtual std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) = 0;
};

// Files and folders by DOS path (`C:\src\Lib.vbp`, `\\server\share\x`), names matched without
// regard to case. A relative path starts at the process's current folder. Contents are bytes.
//
// A failure throws automation::Error with Visual Basic's number (53 file not found, 70 permission
// denied, 75 path/file access, 76 path not found, 61 disk full, 58 file already exists, 52 for a name that
// can't be one, 7 for a file too large to read, 57 otherwise), source "FileSystem"
// and the text followed by ": " and the path.
class FileSystem {
 public:
  FileSystem() = default;
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;
  virtual ~FileSystem() = default;

  // The questions that never throw: a thing that can't be looked at is not there.
  virtual bool FileExists(std::string_view path) = 0;
  virtual bool FolderExists(std::string_view path) = 0;
  // A stamp with size -1 when there is no such file.
  virtual FileStamp Stamp(std::string_view path) = 0;

  virtual std::uint32_t Attributes(std::string_view path) = 0;
  virtual void SetAttributes(std::string_view path, std::uint32_t attributes) = 0;

  virtual std::string Read(std::string_view path) = 0;
  // Like Read, but makes an empty file when there is none.
  virtual std::string ReadOrCreate(std::string_view path) = 0;
  virtual std::unique_ptr<RandomAccessFile> Open(std::string_view path) = 0;
  // Gives the file these bytes, whole or not at all: they go to a temporary file in the same folder
  // that takes the old one's place. A file that has these bytes already is not touched. Permissions
  // of a replaced file are kept; a read-only file is refused with error 75 (clear the attribute first).
  virtual void Replace(std::string_view path, std::string_view bytes) = 0;
  virtual void Append(std::string_view path, std::string_view bytes) = 0;
  virtual void Remove(std::string_view path) = 0;
  // Replaces an existing target, whole or not at all.
  virtual void Copy(std::string_view from, std::string_view to) = 0;
  virtual void Rename(std::string_view from, std::string_view to) = 0;

  // Makes the folder and those above it that are missing; one that exists is no error.
  virtual void CreateFolders(std::string_view path) = 0;
  virtual void RemoveFolder(std::string_view path) = 0;
  // Every name in the folder, in no particular order.
  virtual std::vector<FolderEntry> List(std::string_view folder) = 0;
};

}  // namespace hearthmake::platform
