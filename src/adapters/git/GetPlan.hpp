#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// The files that a get is about, each folder's own before those of the folders in it. Everything is looked
// through before the first file is written: a tree with an entry that can't be had is refused as a whole.
struct GetPlan {
  struct Folder {
    std::size_t parent = 0;  // its place in folders; the first, the working folder itself, has none
    std::string name;
    std::string path;  // from the working folder on, "Lib/Sub"
  };
  struct File {
    std::size_t folder = 0;
    std::string name;
    git_oid id{};
    bool isExecutable = false;
  };

  std::vector<Folder> folders;
  std::vector<File> files;

  // "Lib/Sub/a.cls"
  std::string PathOf(const File& file) const;

  // One file, by the name that it is to have.
  static GetPlan ForFile(const TreeItem& item, const std::string& localName);
  // A folder's files, of all below it when it is recursive. Submodules are left out. Error 75, with the
  // entry's name, for one that would leave the working folder, for a link, and for more than memory should
  // hold.
  static GetPlan ForFolder(const Repository& repository, const TreeItem& item, bool isRecursive);
};

}  // namespace hearthmake::git
