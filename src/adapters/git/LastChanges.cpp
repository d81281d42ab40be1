#include "adapters/git/LastChanges.hpp"

#include <set>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/HistoryWalk.hpp"

namespace hearthmake::git {

namespace {

using Paths = std::set<std::string>;

// The paths of the files that the new tree has and the old one has not, or not so. An id of zero is no tree.
void AddDifferences(const Repository& repository, const git_oid& before, const git_oid& now,
                    const std::string& prefix, Paths& changed) {
  if (git_oid_equal(&before, &now) != 0 || git_oid_is_zero(&now) != 0) return;
  const Handle<git_tree> old = git_oid_is_zero(&before) != 0 ? nullptr : repository.Tree(before);
  const Handle<git_tree> fresh = repository.Tree(now);
  for (std::size_t i = 0; i < git_tree_entrycount(fresh.get()); ++i) {
    const git_tree_entry* entry = git_tree_entry_byindex(fresh.get(), i);
    const git_tree_entry* other =
        old ? git_tree_entry_byname(old.get(), git_tree_entry_name(entry)) : nullptr;
    const std::string path = prefix + git_tree_entry_name(entry);
    if (git_tree_entry_filemode(entry) == GIT_FILEMODE_TREE) {
      const bool wasTree = other != nullptr && git_tree_entry_filemode(other) == GIT_FILEMODE_TREE;
      AddDifferences(repository, wasTree ? *git_tree_entry_id(other) : git_oid{}, *git_tree_entry_id(entry),
                     path + "/", changed);
    } else if (other == nullptr || git_oid_equal(git_tree_entry_id(other), git_tree_entry_id(entry)) == 0) {
      changed.insert(path);
    }
  }
}

// What a commit has changed against all of its parents.
Paths ChangedBy(const Repository& repository, const git_commit* commit, const ItemPath& item) {
  const git_oid own = IdAt(repository, commit, item);
  Paths changed;
  bool isFirst = true;
  for (unsigned i = 0; i < git_commit_parentcount(commit); ++i) {
    const git_oid* id = git_commit_parent_id(commit, i);
    if (git_odb_exists(repository.Objects(), id) == 0) continue;
    Paths against;
    AddDifferences(repository, IdAt(repository, repository.Commit(*id).get(), item), own, "", against);
    if (isFirst) {
      changed = std::move(against);
    } else {
      std::erase_if(changed, [&](const std::string& path) { return !against.contains(path); });
    }
    isFirst = false;
  }
  if (isFirst) AddDifferences(repository, {}, own, "", changed);
  return changed;
}

}  // namespace

std::unordered_map<std::string, std::int64_t> FindLastChanges(const Repository& repository,
                                                              const git_oid& commitId, const TreeItem& item,
                                                              const GetPlan& plan) {
  std::unordered_map<std::string, std::int64_t> times;
  HistoryWalk walk(repository, commitId);
  if (!item.IsFolder()) {
    while (const Handle<git_commit> commit = walk.Next()) {
      if (!Touches(repository, commit.get(), item.path)) continue;
      times.emplace(plan.PathOf(plan.files.front()), git_commit_time(commit.get()));
      break;
    }
    return times;
  }
  Paths open;
  for (const GetPlan::File& file : plan.files) open.insert(plan.PathOf(file));
  while (const Handle<git_commit> commit = open.empty() ? nullptr : walk.Next()) {
    for (const std::string& path : ChangedBy(repository, commit.get(), item.path)) {
      if (open.erase(path) > 0) times.emplace(path, git_commit_time(commit.get()));
    }
  }
  return times;
}

}  // namespace hearthmake::git
