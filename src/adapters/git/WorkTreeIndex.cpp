#include "adapters/git/WorkTreeIndex.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <optional>
#include <thread>

#include "adapters/git/BlobReader.hpp"
#include "adapters/git/BlobWriter.hpp"
#include "adapters/git/FileHandle.hpp"
#include "adapters/git/GitFailure.hpp"
#include "adapters/git/NewFile.hpp"
#include "adapters/git/WriteLock.hpp"

namespace hearthmake::git {

namespace {

constexpr auto kPatience = std::chrono::seconds(5);
constexpr auto kPause = std::chrono::milliseconds(10);

// The folder of the file in the work tree, by no link.
FileHandle OpenFolder(const Repository& repository, const ItemPath& file) {
  FileHandle folder(open(git_repository_workdir(repository.Get()), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (std::size_t i = 0; folder && i + 1 < file.Names().size(); ++i)
    folder = FileHandle(
        openat(folder.Get(), file.Names()[i].c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  return folder;
}

// The status of the work tree's file when it has the new content, which an unmodified one is given.
std::optional<struct stat> UpdateFile(const Repository& repository, const TreeItem& before,
                                      const git_oid& blobId) {
  const FileHandle folder = OpenFolder(repository, before.path);
  const std::string& name = before.path.Names().back();
  const FileHandle file(openat(folder.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  const git_oid id = HashFile(file.Get(), status.st_size, before.path.Spec());
  if (git_oid_equal(&id, &blobId) != 0) return status;
  if (git_oid_equal(&id, &before.id) == 0) return std::nullopt;
  NewFile fresh(folder.Get(), status.st_mode & 0777U, before.path.Spec());
  CopyBlob(repository, blobId, fresh);
  return fresh.Commit(name);
}

git_index_entry EntryOf(const TreeItem& file, const git_oid& blobId, const std::string& path,
                        const std::optional<struct stat>& status) {
  git_index_entry entry{};
  entry.mode = static_cast<std::uint32_t>(file.mode);
  entry.id = blobId;
  entry.path = path.c_str();
  if (!status) return entry;  // zeros: git compares the content
  entry.ctime = {static_cast<std::int32_t>(status->st_ctim.tv_sec),
                 static_cast<std::uint32_t>(status->st_ctim.tv_nsec)};
  entry.mtime = {static_cast<std::int32_t>(status->st_mtim.tv_sec),
                 static_cast<std::uint32_t>(status->st_mtim.tv_nsec)};
  entry.dev = static_cast<std::uint32_t>(status->st_dev);
  entry.ino = static_cast<std::uint32_t>(status->st_ino);
  entry.uid = status->st_uid;
  entry.gid = status->st_gid;
  entry.file_size = static_cast<std::uint32_t>(status->st_size);
  return entry;
}

// False when git holds the index.
bool TryToUpdateIndex(const Repository& repository, const TreeItem& before, const git_oid& blobId) {
  Handle<git_index> index;
  Check(git_repository_index(Out(index), repository.Get()), "index");
  Check(git_index_read(index.get(), 1), "index");
  const std::string path = before.path.TreePath();
  const git_index_entry* staged = git_index_get_bypath(index.get(), path.c_str(), 0);
  // What somebody has staged is theirs.
  if (staged == nullptr || git_oid_equal(&staged->id, &before.id) == 0) return true;
  const git_index_entry entry = EntryOf(before, blobId, path, UpdateFile(repository, before, blobId));
  Check(git_index_add(index.get(), &entry), "index");
  const int code = git_index_write(index.get());
  if (code == GIT_ELOCKED) return false;
  Check(code, "index");
  return true;
}

}  // namespace

void FollowInWorkTree(const Session& session, const TreeItem& before, const git_oid& blobId) {
  const Repository& repository = session.Repo();
  if (!repository.IsCheckedOut(session.BranchRef())) return;
  const WriteLock lock(repository.Folder(), {"index.lock"});
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!TryToUpdateIndex(repository, before, blobId)) {
    if (std::chrono::steady_clock::now() > deadline)
      Fail(Number::kPermissionDenied, before.path.Spec() + " is checked in, but git holds the index of " +
                                          repository.Folder() +
                                          ". Remove index.lock if no git runs there, then run "
                                          "\"git reset -- " +
                                          before.path.TreePath() + "\"");
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace hearthmake::git
