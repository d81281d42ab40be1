#include "adapters/git/FolderGet.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <unordered_map>

#include "adapters/git/BlobReader.hpp"
#include "adapters/git/BlobWriter.hpp"
#include "adapters/git/GitFailure.hpp"
#include "adapters/git/LastChanges.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::git {

namespace {

using namespace platform::SourceFlags;

constexpr mode_t kWriteBits = 0222;

// The flags, one decision each.
struct GetPolicy {
  explicit GetPolicy(std::int32_t flags)
      : isReadOnly((flags & kReadOnlyMask) != kReadOnlyNo),
        isModeAsked((flags & kReadOnlyMask) != 0),
        isTimeOfCommit((flags & kTimeMask) == kTimeModified || (flags & kTimeMask) == kTimeUpdated),
        // Nobody can be asked, and nothing is merged: a file that somebody has worked on goes only when these
        // very bits say so.
        mayReplace((flags & kReplaceMask) == kReplaceYes),
        isRecursive((flags & kRecursiveMask) == kRecursiveYes) {}

  bool isReadOnly;
  bool isModeAsked;
  bool isTimeOfCommit;
  bool mayReplace;
  bool isRecursive;
};

class FolderGet {
 public:
  FolderGet(const Session& session, const git_oid& commitId, const TreeItem& item, GetPlan plan,
            const std::string& root, const GetPolicy& policy)
      : m_session(session),
        m_commitId(commitId),
        m_item(item),
        m_plan(std::move(plan)),
        m_policy(policy),
        m_cache(session.Repo().Folder(), Canonical(root)) {
    m_chain.push_back({0, LocalFolder::OpenRoot(root)});
  }

  void Run() {
    try {
      for (std::size_t i = 0; i < m_plan.files.size(); ++i) Step(i);
    } catch (const automation::Error&) {
      m_cache.Save();  // what was got so far needs no second look
      throw;
    }
    m_cache.Save();
  }

 private:
  struct Level {
    std::size_t folder;
    LocalFolder local;
  };

  static std::string Canonical(const std::string& root) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::weakly_canonical(root, error);
    return error ? root : path.string();
  }

  void Step(std::size_t index) {
    const Options& options = m_session.HostOptions();
    if (options.isStopWanted && options.isStopWanted())
      Fail(Number::kInterrupted, m_item.path.Spec() + ": the get was stopped after " + std::to_string(index) +
                                     " of " + std::to_string(m_plan.files.size()) + " files");
    const GetPlan::File& file = m_plan.files[index];
    const FileOutcome outcome = GetFile(file);
    if (options.onFile) options.onFile({SpecOf(file), outcome, index + 1, m_plan.files.size()});
  }

  std::string SpecOf(const GetPlan::File& file) const {
    if (!m_item.IsFolder()) return m_item.path.Spec();
    return m_item.path.Spec() + (m_item.path.IsRoot() ? "" : "/") + m_plan.PathOf(file);
  }

  FileOutcome GetFile(const GetPlan::File& file) {
    LocalFolder& folder = Enter(file.folder);
    const std::string path = m_plan.PathOf(file);
    const LocalFolder::Found found =
        folder.Find(file.name, [&](std::string_view name) { return IsPlanned(file.folder, name); });
    if (!found.status) {
      Write(folder, found.name, path, file);
      return FileOutcome::Got;
    }
    RequireFile(*found.status, folder.PathOf(found.name));
    const FileStatus status = FileStatus::Of(*found.status);
    const git_oid* known = m_cache.Find(path, status);
    const git_oid local = known != nullptr ? *known : Hash(folder, found);
    if (git_oid_equal(&local, &file.id) != 0) {
      if (known == nullptr) m_cache.Put(path, status, file.id);
      if (AdjustMode(folder, found)) RememberMode(folder, found.name, path, status, file.id);
      return FileOutcome::Unchanged;
    }
    const bool isSomebodysWork = known == nullptr && (found.status->st_mode & kWriteBits) != 0;
    if (isSomebodysWork && !m_policy.mayReplace) {
      m_cache.Drop(path);
      return FileOutcome::Skipped;
    }
    Write(folder, found.name, path, file);
    return FileOutcome::Got;
  }

  // Files come folder by folder, so the folders that are open form one branch.
  LocalFolder& Enter(std::size_t folder) {
    std::vector<std::size_t> missing;
    while (std::none_of(m_chain.begin(), m_chain.end(), [&](const Level& l) { return l.folder == folder; })) {
      missing.push_back(folder);
      folder = m_plan.folders[folder].parent;
    }
    while (m_chain.back().folder != folder) m_chain.pop_back();
    for (; !missing.empty(); missing.pop_back()) {
      const GetPlan::Folder& next = m_plan.folders[missing.back()];
      LocalFolder local = m_chain.back().local.Open(
          next.name, [&](std::string_view name) { return IsPlanned(next.parent, name); });
      m_chain.push_back({missing.back(), std::move(local)});
    }
    return m_chain.back().local;
  }

  // A tree made elsewhere may hold names that differ in case only; each has its own file then.
  bool IsPlanned(std::size_t folder, std::string_view name) const {
    const auto isFile = [&](const GetPlan::File& f) { return f.folder == folder && f.name == name; };
    const auto isFolder = [&](const GetPlan::Folder& f) { return f.parent == folder && f.name == name; };
    return std::any_of(m_plan.files.begin(), m_plan.files.end(), isFile) ||
           std::any_of(m_plan.folders.begin() + 1, m_plan.folders.end(), isFolder);
  }

  static void RequireFile(const struct stat& status, const std::string& path) {
    if (S_ISLNK(status.st_mode))
      Fail(Number::kPathAccess, path + " is a symbolic link, which may lead out of the working folder");
    if (!S_ISREG(status.st_mode)) Fail(Number::kPathAccess, path + " is in the way: it is no file");
  }

  static git_oid Hash(const LocalFolder& folder, const LocalFolder::Found& found) {
    const std::string path = folder.PathOf(found.name);
    const FileHandle file(openat(folder.Handle(), found.name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    // Somebody's unreadable file is at least not what is wanted.
    if (!file && errno == EACCES) return {};
    if (!file) FailErrno(errno, path);
    return HashFile(file.Get(), found.status->st_size, path);
  }

  bool AdjustMode(const LocalFolder& folder, const LocalFolder::Found& found) const {
    if (!m_policy.isModeAsked) return false;
    const mode_t old = found.status->st_mode & 07777U;
    const mode_t wanted = m_policy.isReadOnly ? old & ~kWriteBits : old | 0200U;
    if (wanted == old) return false;
    if (fchmodat(folder.Handle(), found.name.c_str(), wanted, 0) != 0)
      FailErrno(errno, folder.PathOf(found.name));
    return true;
  }

  // A new mode is a new status of the same content, unless somebody has written to the file meanwhile.
  void RememberMode(const LocalFolder& folder, const std::string& name, const std::string& path,
                    const FileStatus& before, const git_oid& id) {
    struct stat status {};
    if (fstatat(folder.Handle(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return;
    const FileStatus after = FileStatus::Of(status);
    const FileStatus sameContent{before.size, before.modified, after.changed, before.inode};
    if (after == sameContent) m_cache.Put(path, after, id);
  }

  void Write(const LocalFolder& folder, const std::string& name, const std::string& path,
             const GetPlan::File& file) {
    mode_t mode = file.isExecutable ? 0777 : 0666;
    if (m_policy.isReadOnly) mode &= ~kWriteBits;
    NewFile fresh(folder.Handle(), mode, folder.PathOf(name));
    CopyBlob(m_session.Repo(), file.id, fresh);
    if (m_policy.isTimeOfCommit) fresh.SetModified(TimeOf(path));
    m_cache.Put(path, FileStatus::Of(fresh.Commit(name)), file.id);
  }

  std::int64_t TimeOf(const std::string& path) {
    if (!m_times) m_times = FindLastChanges(m_session.Repo(), m_commitId, m_item, m_plan);
    const auto found = m_times->find(path);
    if (found != m_times->end()) return found->second;
    return git_commit_time(m_session.Repo().Commit(m_commitId).get());
  }

  const Session& m_session;
  const git_oid& m_commitId;
  const TreeItem& m_item;
  GetPlan m_plan;
  GetPolicy m_policy;
  StatCache m_cache;
  std::vector<Level> m_chain;
  std::optional<std::unordered_map<std::string, std::int64_t>> m_times;
};

}  // namespace

void GetItem(const Session& session, const git_oid& commitId, const TreeItem& item,
             const std::string& localPath, std::int32_t flags) {
  const GetPolicy policy(flags);
  if (item.IsFolder()) {
    GetPlan plan = GetPlan::ForFolder(session.Repo(), item, policy.isRecursive);
    FolderGet(session, commitId, item, std::move(plan), localPath, policy).Run();
    return;
  }
  std::string path = localPath;
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) path += "/" + item.path.Names().back();
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == 0 ? "/" : path.substr(0, slash);
  FolderGet(session, commitId, item, GetPlan::ForFile(item, path.substr(slash + 1)), folder, policy).Run();
}

}  // namespace hearthmake::git
