#include "adapters/git/LocalFolder.hpp"

#include <dirent.h>
#include <fcntl.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <utility>

#include "adapters/git/GitFailure.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

std::optional<struct stat> StatusOf(int folder, const std::string& name, const std::string& path) {
  struct stat status {};
  if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return status;
  if (errno != ENOENT) FailErrno(errno, path);
  return std::nullopt;
}

}  // namespace

LocalFolder::LocalFolder(FileHandle folder, std::string path, bool isEmpty)
    : m_folder(std::move(folder)), m_path(std::move(path)) {
  if (isEmpty) m_names.emplace();
}

LocalFolder LocalFolder::OpenRoot(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  FileHandle folder(open(path.c_str(), kFolderFlags));
  if (!folder) FailErrno(errno, path);
  return LocalFolder(std::move(folder), path, false);
}

LocalFolder LocalFolder::Open(const std::string& name, const IsTaken& isTaken) {
  const Found found = Find(name, isTaken);
  const std::string path = PathOf(found.name);
  bool isNew = false;
  if (!found.status) {
    isNew = mkdirat(m_folder.Get(), found.name.c_str(), 0777) == 0;
    if (!isNew && errno != EEXIST) FailErrno(errno, path);
  } else if (S_ISLNK(found.status->st_mode)) {
    Fail(Number::kPathAccess, path + " is a symbolic link, which may lead out of the working folder");
  } else if (!S_ISDIR(found.status->st_mode)) {
    Fail(Number::kPathAccess, path + " is a file, where a folder has to be");
  }
  FileHandle folder(openat(m_folder.Get(), found.name.c_str(), kFolderFlags | O_NOFOLLOW));
  if (!folder) FailErrno(errno, path);
  return LocalFolder(std::move(folder), path, isNew);
}

LocalFolder::Found LocalFolder::Find(const std::string& name, const IsTaken& isTaken) {
  // A folder that was made a moment ago has nothing in it but what came by its exact name.
  if (m_names && m_names->empty()) return {name, StatusOf(m_folder.Get(), name, PathOf(name))};
  if (auto status = StatusOf(m_folder.Get(), name, PathOf(name))) return {name, status};
  if (!m_names) ReadNames();
  const auto [begin, end] = m_names->equal_range(automation::Lower(name));
  for (auto it = begin; it != end; ++it) {
    const std::string& known = it->second;
    if (isTaken(known)) continue;
    if (auto status = StatusOf(m_folder.Get(), known, PathOf(known))) return {known, status};
  }
  return {name, std::nullopt};
}

void LocalFolder::ReadNames() {
  m_names.emplace();
  const int copy = openat(m_folder.Get(), ".", kFolderFlags);
  DIR* stream = copy < 0 ? nullptr : fdopendir(copy);
  if (stream == nullptr) FailErrno(errno, m_path);
  const std::unique_ptr<DIR, int (*)(DIR*)> closer(stream, &closedir);
  while (const dirent* entry = readdir(stream)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") m_names->emplace(automation::Lower(name), name);
  }
}

}  // namespace hearthmake::git
