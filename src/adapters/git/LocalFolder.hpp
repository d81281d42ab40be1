#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "adapters/git/FileHandle.hpp"

namespace hearthmake::git {

// One folder of a working folder, open: what is done in it stays in it, whatever happens to its path
// meanwhile. Names are matched without regard to case, the exact spelling first. Links below the working
// folder are not followed; they are refused with error 75.
class LocalFolder {
 public:
  struct Found {
    std::string name;  // as the disk spells it; the name that was asked for when there is none
    std::optional<struct stat> status;
  };
  // Whether a name that differs in case belongs to something else.
  using IsTaken = std::function<bool(std::string_view name)>;

  // The working folder itself, made with those above it when it is missing; links on the way are followed.
  static LocalFolder OpenRoot(const std::string& path);
  // A folder in this one, made when it is missing.
  LocalFolder Open(const std::string& name, const IsTaken& isTaken);
  Found Find(const std::string& name, const IsTaken& isTaken);

  int Handle() const { return m_folder.Get(); }
  std::string PathOf(const std::string& name) const { return m_path + "/" + name; }

 private:
  LocalFolder(FileHandle folder, std::string path, bool isEmpty);
  void ReadNames();

  FileHandle m_folder;
  std::string m_path;  // for the texts of errors
  // Those that were there when they were first asked for, by their lower case.
  std::optional<std::unordered_multimap<std::string, std::string>> m_names;
};

}  // namespace hearthmake::git
