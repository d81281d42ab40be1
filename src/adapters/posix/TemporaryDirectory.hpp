#pragma once

#include <string>

namespace hearthmake::posix {

// A new folder for this process alone (mode 0700), removed with all it holds when the object goes or
// the process calls exit, whichever is first. It lies in the folder that is given, else in $TMPDIR, or in
// /tmp when that is not set, no absolute path, no folder, or holds a blank: command lines are built from
// the path without quotes.
class TemporaryDirectory {
 public:
  // Error 75 with the reason when no folder can be made, also when the folder given is of no use.
  explicit TemporaryDirectory(const std::string& parent = {});
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  // Absolute POSIX path without a final slash.
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

}  // namespace hearthmake::posix
