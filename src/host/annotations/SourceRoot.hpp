#pragma once

#include <string>

namespace hearthmake::host {

// The folder that servers know as the repository, to name files as it does.
class SourceRoot {
 public:
  // The folder itself.
  explicit SourceRoot(std::string folder) : m_folder(std::move(folder)) {}
  // What the service on which the process runs says, else the work tree of git that the file or folder lies
  // in, else the current folder.
  static SourceRoot Find(const std::string& nearby);

  const std::string& Folder() const { return m_folder; }
  // A system's path from the root on, with forward slashes; one that lies elsewhere stays as it is.
  std::string Relative(const std::string& path) const;

 private:
  std::string m_folder;
};

}  // namespace hearthmake::host
