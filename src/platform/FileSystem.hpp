#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ByteStreams.hpp"

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

// What a file or folder shows of itself. Times are local OLE dates, as Clock::Now.
struct FileDetails {
  bool isFolder = false;
  std::uint32_t attributes = kNormal;
  std::uint64_t size = 0;  // of a folder 0
  double created = 0;      // the time of the last change where the disk keeps no other
  double accessed = 0;
  double modified = 0;
};

// With the values that drives have had for scripts.
enum class VolumeKind : std::int32_t {
  Unknown = 0,
  Removable = 1,
  Fixed = 2,
  Network = 3,
  CdRom = 4,
  RamDisk = 5
};

// The volume behind a drive letter.
struct VolumeDetails {
  VolumeKind kind = VolumeKind::Unknown;
  bool isReady = false;  // the rest is known only then
  std::uint64_t totalBytes = 0;
  std::uint64_t freeBytes = 0;
  std::uint64_t availableBytes = 0;  // to this user
  std::string fileSystem;            // "ext4", "NTFS"; "" when it is not known
  std::uint32_t serialNumber = 0;
};

// How a file is opened for writing.
struct WriteMode {
  bool mayCreate = true;    // else error 53 when there is none
  bool mayReplace = true;   // else error 58 when there is one
  bool isAppended = false;  // behind what is there, instead of an empty file
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

  // A stamp for people. Error 53 or 76 when there is nothing of that name.
  virtual FileDetails Details(std::string_view path) = 0;
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
  // For content that comes piece by piece. What is written is in the file at once, so that readers see it
  // grow. A read-only file is refused with error 75.
  virtual std::unique_ptr<OutputStream> OpenForWriting(std::string_view path, const WriteMode& mode) = 0;
  virtual void Remove(std::string_view path) = 0;
  // Replaces an existing target, whole or not at all.
  virtual void Copy(std::string_view from, std::string_view to) = 0;
  virtual void Rename(std::string_view from, std::string_view to) = 0;

  // Makes the folder and those above it that are missing; one that exists is no error.
  virtual void CreateFolders(std::string_view path) = 0;
  // Makes one folder: error 58 when there is a file or folder of the name, 76 when the one above is missing.
  virtual void CreateFolder(std::string_view path) = 0;
  virtual void RemoveFolder(std::string_view path) = 0;
  // Every name in the folder, in no particular order.
  virtual std::vector<FolderEntry> List(std::string_view folder) = 0;

  // The process's current folder, where relative paths start; without a final backslash but at a root.
  virtual std::string CurrentFolder() = 0;
  // Error 76 when there is no such folder.
  virtual void SetCurrentFolder(std::string_view path) = 0;
  // The letters of the drives, in order: "CZ".
  virtual std::string DriveLetters() = 0;
  // Of a drive letter in any case; of kind Unknown and not ready when there is no such drive.
  virtual VolumeDetails Volume(char letter) = 0;
};

}  // namespace hearthmake::platform
