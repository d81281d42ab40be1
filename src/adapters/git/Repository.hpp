#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/git/Handle.hpp"
#include "adapters/git/ItemPath.hpp"

namespace hearthmake::git {

// Something in a tree, with its path as the tree spells it.
struct TreeItem {
  git_oid id{};
  git_filemode_t mode = GIT_FILEMODE_UNREADABLE;
  ItemPath path;

  bool IsFolder() const { return mode == GIT_FILEMODE_TREE; }
};

// A git repository and its objects. Ids are of commits unless it is said otherwise.
class Repository {
 public:
  // The folder of a bare repository, or the one that has `.git` in it; those above are not searched. Error 76
  // when it is no repository.
  explicit Repository(const std::string& folder);

  git_repository* Get() const { return m_repository.get(); }
  git_odb* Objects() const { return m_objects.get(); }
  // The folder of refs and objects, without a final slash.
  const std::string& Folder() const { return m_folder; }
  // Whether its work tree shows that branch ("refs/heads/main").
  bool IsCheckedOut(const std::string& branchRef) const;

  Handle<git_commit> Commit(const git_oid& id) const;
  Handle<git_tree> Tree(const git_oid& treeId) const;
  git_oid RootTree(const git_oid& commitId) const;
  // The names of the path are compared without regard to case, the exact spelling first. Nothing when there
  // is no such item, or it is a link or a submodule.
  std::optional<TreeItem> Find(const git_oid& commitId, const ItemPath& path) const;

 private:
  Handle<git_repository> m_repository;
  Handle<git_odb> m_objects;
  std::string m_folder;
};

// The entry of that name, exactly or, when there is none, in another case; null when there is none. It
// belongs to the tree.
const git_tree_entry* FindEntry(const git_tree* tree, std::string_view name);

}  // namespace hearthmake::git
