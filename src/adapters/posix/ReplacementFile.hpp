#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

#include "adapters/posix/FileDescriptor.hpp"

namespace hearthmake::posix {

// New content for a file: written beside it under a name of its own, it takes the file's place in one
// step. Without Commit nothing has happened. Failures are those of the FileSystem port.
class ReplacementFile {
 public:
  // dosPath is for the texts of errors; mode is that of a new file, which the umask cuts.
  ReplacementFile(std::string target, std::string_view dosPath, mode_t mode);
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;
  ~ReplacementFile();

  // Gives the new file the permissions and the owner of the old one, where the system lets us.
  void InheritFrom(const struct stat& old);
  void SetModified(const timespec& time);
  void Write(std::string_view bytes);
  void Commit();

 private:
  [[noreturn]] void Fail(int error) const;

  std::string m_target;
  std::string m_dosPath;
  std::string m_temporary;  // "" once there is none
  FileDescriptor m_file;
};

}  // namespace hearthmake::posix
