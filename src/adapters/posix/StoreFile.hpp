#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/posix/FileDescriptor.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::posix {

// A text file in which several processes keep a store: read when it has changed, changed under a lock
// and whole or not at all. Failures are error 61, 70, 75 …, source "FileSystem", with the path.
class StoreFile {
 public:
  // The path is a POSIX path; links are followed. A longer file than the limit (in bytes) is refused.
  StoreFile(std::string path, std::int64_t limit);

  const std::string& Path() const { return m_path; }

  // Whether the file is another one than at the last Read, Replace or Append; true before the first.
  bool HasChanged() const;
  // The bytes of the file, none when it is missing. A folder or device in its place is error 75, a
  // file over the limit error 45.
  std::string Read();
  // What was read is of no use: the file counts as changed.
  void Forget() { m_wasRead = false; }

  // Whoever changes the file holds this lock from before the Read on which the change is based; makes
  // the folder where it is missing. Waits for other holders.
  [[nodiscard]] FileDescriptor Lock() const;
  // Gives the file new contents in one step. A new file is for its user alone (mode 0600).
  void Replace(std::string_view bytes);
  // Adds to the end of the file, all or nothing.
  void Append(std::string_view bytes);

 private:
  static platform::FileStamp StampOf(const struct stat& status);
  [[noreturn]] void Fail(int error) const;
  std::string Target() const;

  std::string m_path;
  std::int64_t m_limit;
  bool m_wasRead = false;
  platform::FileStamp m_stamp;
};

}  // namespace hearthmake::posix
