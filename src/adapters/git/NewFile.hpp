#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "adapters/git/FileHandle.hpp"

namespace hearthmake::git {

// A file in the making: it has a name of its own (".hearthmake-….tmp") in the folder until it is whole, and
// takes its place in one step. Without Commit nothing stays.
class NewFile {
 public:
  // folder is an open folder; the umask cuts the mode. shownPath is for the texts of errors.
  NewFile(int folder, mode_t mode, std::string shownPath);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  void Write(const void* bytes, std::size_t count);
  // Seconds since 1970, UTC.
  void SetModified(std::int64_t time);
  // Replaces what has the name; the result is the file's status there.
  struct stat Commit(const std::string& name);

 private:
  int m_folder;
  std::string m_shownPath;
  std::string m_temporary;  // "" once there is none
  FileHandle m_file;
};

}  // namespace hearthmake::git
