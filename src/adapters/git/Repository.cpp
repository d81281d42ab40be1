#include "adapters/git/Repository.hpp"

#include "adapters/git/GitFailure.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

std::string IdText(const git_oid& id) {
  char hex[GIT_OID_HEXSZ + 1];
  return git_oid_tostr(hex, sizeof hex, &id);
}

}  // namespace

Repository::Repository(const std::string& folder) {
  const int code = git_repository_open(Out(m_repository), folder.c_str());
  if (code == GIT_ENOTFOUND)
    Fail(Number::kPathNotFound,
         "There is no git repository in " + folder +
             ". Make one (git init), or name it in the section [git] of the ini file.");
  Check(code, folder);
  Check(git_repository_odb(Out(m_objects), m_repository.get()), folder);
  m_folder = git_repository_commondir(m_repository.get());
  while (m_folder.size() > 1 && m_folder.ends_with('/')) m_folder.pop_back();
}

bool Repository::IsCheckedOut(const std::string& branchRef) const {
  if (git_repository_is_bare(m_repository.get()) != 0) return false;
  Handle<git_reference> head;
  if (git_reference_lookup(Out(head), m_repository.get(), "HEAD") != 0) return false;
  const char* target = git_reference_symbolic_target(head.get());
  return target != nullptr && target == branchRef;
}

Handle<git_commit> Repository::Commit(const git_oid& id) const {
  Handle<git_commit> commit;
  Check(git_commit_lookup(Out(commit), m_repository.get(), &id), "commit " + IdText(id));
  return commit;
}

Handle<git_tree> Repository::Tree(const git_oid& treeId) const {
  Handle<git_tree> tree;
  Check(git_tree_lookup(Out(tree), m_repository.get(), &treeId), "tree " + IdText(treeId));
  return tree;
}

git_oid Repository::RootTree(const git_oid& commitId) const {
  return *git_commit_tree_id(Commit(commitId).get());
}

std::optional<TreeItem> Repository::Find(const git_oid& commitId, const ItemPath& path) const {
  TreeItem item{RootTree(commitId), GIT_FILEMODE_TREE, {}};
  for (const std::string& name : path.Names()) {
    if (!item.IsFolder()) return std::nullopt;
    const Handle<git_tree> tree = Tree(item.id);
    const git_tree_entry* entry = FindEntry(tree.get(), name);
    if (entry == nullptr) return std::nullopt;
    item.id = *git_tree_entry_id(entry);
    item.mode = git_tree_entry_filemode(entry);
    item.path = item.path.Child(git_tree_entry_name(entry));
  }
  const bool isUsual =
      item.IsFolder() || item.mode == GIT_FILEMODE_BLOB || item.mode == GIT_FILEMODE_BLOB_EXECUTABLE;
  return isUsual ? std::optional(item) : std::nullopt;
}

const git_tree_entry* FindEntry(const git_tree* tree, std::string_view name) {
  const git_tree_entry* exact = git_tree_entry_byname(tree, std::string(name).c_str());
  if (exact != nullptr) return exact;
  const std::size_t count = git_tree_entrycount(tree);
  for (std::size_t i = 0; i < count; ++i) {
    const git_tree_entry* entry = git_tree_entry_byindex(tree, i);
    if (automation::EqualsIgnoreCase(git_tree_entry_name(entry), name)) return entry;
  }
  return nullptr;
}

}  // namespace hearthmake::git
