#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "adapters/posix/TemporaryDirectory.hpp"

namespace hearthmake::support {

// A folder of its own for a test, with the few things tests do in it behind the back of what they test.
class PosixFolder {
 public:
  std::string Path(const std::string& name = {}) const {
    return name.empty() ? m_folder.Path() : m_folder.Path() + "/" + name;
  }

  std::string MakeFolder(const std::string& name) const {
    std::filesystem::create_directories(Path(name));
    return Path(name);
  }

  // With the folders above it.
  std::string MakeFile(const std::string& name, const std::string& bytes = {}) const {
    std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }

  std::string Content(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  mode_t Mode(const std::string& name) const {
    struct stat status {};
    return stat(Path(name).c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
  }

 private:
  posix::TemporaryDirectory m_folder;
};

// Sets an environment variable (nothing: removes it) for as long as the object lives.
class EnvironmentOverride {
 public:
  EnvironmentOverride(const char* name, const std::optional<std::string>& value) : m_name(name) {
    if (const char* old = std::getenv(name)) m_old = old;
    Put(value);
  }
  EnvironmentOverride(const EnvironmentOverride&) = delete;
  EnvironmentOverride& operator=(const EnvironmentOverride&) = delete;
  ~EnvironmentOverride() { Put(m_old); }

 private:
  void Put(const std::optional<std::string>& value) const {
    if (value) {
      setenv(m_name, value->c_str(), 1);
    } else {
      unsetenv(m_name);
    }
  }

  const char* m_name;
  std::optional<std::string> m_old;
};

// Makes a folder the current one for as long as the object lives.
class CurrentFolderOverride {
 public:
  explicit CurrentFolderOverride(const std::string& folder) : m_old(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  CurrentFolderOverride(const CurrentFolderOverride&) = delete;
  CurrentFolderOverride& operator=(const CurrentFolderOverride&) = delete;
  ~CurrentFolderOverride() { std::filesystem::current_path(m_old); }

 private:
  std::filesystem::path m_old;
};

}  // namespace hearthmake::support
