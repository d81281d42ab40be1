#include "adapters/git/TreeEdit.hpp"

#include <vector>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

git_oid ReplaceFile(const Repository& repository, const git_oid& commitId, const TreeItem& file,
                    const git_oid& blobId) {
  const std::vector<std::string>& names = file.path.Names();
  std::vector<Handle<git_tree>> trees;
  trees.push_back(repository.Tree(repository.RootTree(commitId)));
  for (std::size_t i = 0; i + 1 < names.size(); ++i)
    trees.push_back(repository.Tree(*git_tree_entry_id(FindEntry(trees.back().get(), names[i]))));
  git_oid id = blobId;
  git_filemode_t mode = file.mode;
  for (std::size_t i = names.size(); i-- > 0;) {
    Handle<git_treebuilder> builder;
    Check(git_treebuilder_new(Out(builder), repository.Get(), trees[i].get()), file.path.Spec());
    Check(git_treebuilder_insert(nullptr, builder.get(), names[i].c_str(), &id, mode), file.path.Spec());
    Check(git_treebuilder_write(&id, builder.get()), file.path.Spec());
    mode = GIT_FILEMODE_TREE;
  }
  return id;
}

}  // namespace hearthmake::git
