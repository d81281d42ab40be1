#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/FileDescriptor.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::posix {

// The FileSystem port over POSIX files.
//
// Where the two worlds differ:
// - A file without its owner's write permission is read-only, and is refused to Replace, Append,
//   Remove and as a target of Copy (error 75) even to root, whom the system would let through. Setting
//   the attribute takes every write permission away, clearing it gives the owner's back. A folder is
//   never read-only.
// - A name that begins with a dot is hidden. Hidden, system and archive can be set, to no effect; an
//   ordinary file has no attributes at all.
// - A file is a regular file. Pipes, sockets and devices do not exist for the questions, and are
//   refused with error 75 where one is opened.
// - Replace keeps a link and replaces what it points to; other hard links of a file keep the old
//   content. Copy takes over permissions and time of modification.
// - A name with a backslash in it can't be told from a path and is not listed.
class PosixFileSystem : public platform::FileSystem {
 public:
  explicit PosixFileSystem(std::shared_ptr<const DriveMap> drives);

  bool FileExists(std::string_view path) override;
  bool FolderExists(std::string_view path) override;
  platform::FileStamp Stamp(std::string_view path) override;
  platform::FileDetails Details(std::string_view path) override;
  std::uint32_t Attributes(std::string_view path) override;
  void SetAttributes(std::string_view path, std::uint32_t attributes) override;
  // Error 7 for a file of more than 2 GB.
  std::string Read(std::string_view path) override;
  std::string ReadOrCreate(std::string_view path) override;
  std::unique_ptr<platform::RandomAccessFile> Open(std::string_view path) override;
  void Replace(std::string_view path, std::string_view bytes) override;
  // All the bytes, or none when the disk is full.
  void Append(std::string_view path, std::string_view bytes) override;
  std::unique_ptr<platform::OutputStream> OpenForWriting(std::string_view path,
                                                         const platform::WriteMode& mode) override;
  void Remove(std::string_view path) override;
  // Error 70 when both are the same file.
  void Copy(std::string_view from, std::string_view to) override;
  // Error 58 when there is a file or folder of the new name; a new spelling of the same name is fine.
  // A file may move to another drive, a folder that would have to is error 75.
  void Rename(std::string_view from, std::string_view to) override;
  void CreateFolders(std::string_view path) override;
  void CreateFolder(std::string_view path) override;
  // Error 75 when it is not empty.
  void RemoveFolder(std::string_view path) override;
  std::vector<platform::FolderEntry> List(std::string_view folder) override;
  // Error 76 when it has been removed.
  std::string CurrentFolder() override;
  void SetCurrentFolder(std::string_view path) override;
  std::string DriveLetters() override;
  platform::VolumeDetails Volume(char letter) override;

 private:
  // Where a thing is or would be ("": its path leads nowhere), and the errno of looking there.
  struct Place {
    std::string path;
    int error = 0;
  };
  struct Found {
    Place place;
    struct stat status {};

    bool Exists() const { return place.error == 0; }
  };
  struct Opened {
    Place place;
    FileDescriptor file;
  };

  static std::uint32_t AttributesOf(const Found& found);
  // Tries `attempt` (it yields 0 or an errno) at the path as it is spelled, which costs nothing, and
  // once more with the names as they are on disk only when nothing is there.
  template <class Attempt>
  Place TryAt(std::string_view path, Attempt attempt) const;
  Found Look(std::string_view path) const;
  Opened OpenExisting(std::string_view path, int flags) const;
  Opened OpenForReading(std::string_view path) const;
  std::string Locate(std::string_view path) const;
  std::string RenameTarget(std::string_view to, const std::string& source) const;

  std::shared_ptr<const DriveMap> m_drives;
};

}  // namespace hearthmake::posix
