#include "adapters/git/GetPlan.hpp"

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

constexpr std::size_t kMostFiles = 4'000'000;  // a few folders that hold each other's ids can name billions
constexpr std::size_t kMostFolders = 1'000'000;
constexpr int kDeepest = 512;

class FolderReader {
 public:
  FolderReader(const Repository& repository, const TreeItem& item, bool isRecursive, GetPlan& plan)
      : m_repository(repository), m_item(item), m_isRecursive(isRecursive), m_plan(plan) {}

  void Read(std::size_t folder, const git_oid& treeId, int depth) {
    const Handle<git_tree> tree = m_repository.Tree(treeId);
    const std::size_t count = git_tree_entrycount(tree.get());
    for (std::size_t i = 0; i < count; ++i) AddFile(folder, git_tree_entry_byindex(tree.get(), i));
    for (std::size_t i = 0; i < count && m_isRecursive; ++i) {
      const git_tree_entry* entry = git_tree_entry_byindex(tree.get(), i);
      if (git_tree_entry_filemode(entry) == GIT_FILEMODE_TREE) AddFolder(folder, entry, depth);
    }
  }

 private:
  [[noreturn]] void Refuse(std::size_t folder, const std::string& name, const std::string& why) const {
    const std::string& path = m_plan.folders[folder].path;
    const std::string root = m_item.path.Spec();
    const std::string where = path.empty() ? root : root + (m_item.path.IsRoot() ? "" : "/") + path;
    Fail(Number::kPathAccess, "The entry \"" + name + "\" in " + where + " is refused: " + why);
  }

  void AddFile(std::size_t folder, const git_tree_entry* entry) {
    const std::string name = git_tree_entry_name(entry);
    const git_filemode_t mode = git_tree_entry_filemode(entry);
    if (!IsSafeName(name)) Refuse(folder, name, "it can't be a name in a working folder");
    if (mode == GIT_FILEMODE_LINK) Refuse(folder, name, "it is a symbolic link");
    if (mode != GIT_FILEMODE_BLOB && mode != GIT_FILEMODE_BLOB_EXECUTABLE) return;
    if (m_plan.files.size() == kMostFiles) Refuse(folder, name, "there are too many files");
    m_plan.files.push_back({folder, name, *git_tree_entry_id(entry), mode == GIT_FILEMODE_BLOB_EXECUTABLE});
  }

  void AddFolder(std::size_t folder, const git_tree_entry* entry, int depth) {
    const std::string name = git_tree_entry_name(entry);
    if (depth == kDeepest) Refuse(folder, name, "the folders are nested too deeply");
    if (m_plan.folders.size() == kMostFolders) Refuse(folder, name, "there are too many folders");
    const std::string& above = m_plan.folders[folder].path;
    std::string path = above.empty() ? name : above + "/" + name;
    m_plan.folders.push_back({folder, name, std::move(path)});
    Read(m_plan.folders.size() - 1, *git_tree_entry_id(entry), depth + 1);
  }

  const Repository& m_repository;
  const TreeItem& m_item;
  bool m_isRecursive;
  GetPlan& m_plan;
};

}  // namespace

std::string GetPlan::PathOf(const File& file) const {
  const std::string& folder = folders[file.folder].path;
  return folder.empty() ? file.name : folder + "/" + file.name;
}

GetPlan GetPlan::ForFile(const TreeItem& item, const std::string& localName) {
  GetPlan plan;
  plan.folders.emplace_back();
  plan.files.push_back({0, localName, item.id, item.mode == GIT_FILEMODE_BLOB_EXECUTABLE});
  return plan;
}

GetPlan GetPlan::ForFolder(const Repository& repository, const TreeItem& item, bool isRecursive) {
  GetPlan plan;
  plan.folders.emplace_back();
  FolderReader(repository, item, isRecursive, plan).Read(0, item.id, 0);
  return plan;
}

}  // namespace hearthmake::git
