#include "adapters/git/HistoryWalk.hpp"

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

HistoryWalk::HistoryWalk(const Repository& repository, const git_oid& start) : m_repository(repository) {
  Add(start);
}

void HistoryWalk::Add(const git_oid& id) {
  if (!m_seen.insert(id).second) return;
  m_waiting.push({git_commit_time(m_repository.Commit(id).get()), m_turn++, id});
}

Handle<git_commit> HistoryWalk::Next() {
  if (m_waiting.empty()) return nullptr;
  Handle<git_commit> commit = m_repository.Commit(m_waiting.top().id);
  m_waiting.pop();
  for (unsigned i = 0; i < git_commit_parentcount(commit.get()); ++i) {
    const git_oid* parent = git_commit_parent_id(commit.get(), i);
    // A shallow clone ends where its commits do.
    if (git_odb_exists(m_repository.Objects(), parent) != 0) Add(*parent);
  }
  return commit;
}

git_oid IdAt(const Repository& repository, const git_commit* commit, const ItemPath& path) {
  git_oid id = *git_commit_tree_id(commit);
  bool isFolder = true;
  for (const std::string& name : path.Names()) {
    if (!isFolder) return {};
    const Handle<git_tree> tree = repository.Tree(id);
    const git_tree_entry* entry = git_tree_entry_byname(tree.get(), name.c_str());
    if (entry == nullptr) return {};
    id = *git_tree_entry_id(entry);
    isFolder = git_tree_entry_type(entry) == GIT_OBJECT_TREE;
  }
  return id;
}

bool Touches(const Repository& repository, const git_commit* commit, const ItemPath& path) {
  const git_oid own = IdAt(repository, commit, path);
  const unsigned parents = git_commit_parentcount(commit);
  bool isShallow = true;
  for (unsigned i = 0; i < parents; ++i) {
    const git_oid* id = git_commit_parent_id(commit, i);
    if (git_odb_exists(repository.Objects(), id) == 0) continue;
    isShallow = false;
    const git_oid before = IdAt(repository, repository.Commit(*id).get(), path);
    if (git_oid_equal(&before, &own) != 0) return false;
  }
  // The first commit made all that it holds.
  return !isShallow || git_oid_is_zero(&own) == 0;
}

}  // namespace hearthmake::git
