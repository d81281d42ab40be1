#include "adapters/git/WriteLock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <thread>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

// A lock that a git process holds just now has the same name; it goes within this time, a stale one stays.
constexpr auto kPatience = std::chrono::milliseconds(500);

bool IsSameFile(const std::string& path, const struct stat& known) {
  struct stat now {};
  return lstat(path.c_str(), &now) == 0 && now.st_ino == known.st_ino && now.st_dev == known.st_dev;
}

void RemoveWhenStale(const std::string& path) {
  struct stat known {};
  if (lstat(path.c_str(), &known) != 0) return;
  std::this_thread::sleep_for(kPatience);
  if (IsSameFile(path, known)) unlink(path.c_str());
}

void RemoveLocksBelow(const std::string& folder) {
  std::error_code ignored;
  for (std::filesystem::recursive_directory_iterator it(folder, ignored), end; it != end && !ignored;
       it.increment(ignored)) {
    if (it->path().extension() == ".lock") unlink(it->path().c_str());
  }
}

void MakeFolder(const std::string& path, mode_t mode) {
  if (mkdir(path.c_str(), mode) == 0) {
    // A shared repository's folders are writable for the group whatever this person's umask is.
    chmod(path.c_str(), mode);
  } else if (errno != EEXIST) {
    FailErrno(errno, path);
  }
}

mode_t ModeOfRefs(const std::string& repositoryFolder) {
  struct stat status {};
  const bool isThere = stat((repositoryFolder + "/refs").c_str(), &status) == 0;
  return isThere ? status.st_mode & 07777U : 0755U;
}

}  // namespace

std::string OwnFolder(const std::string& repositoryFolder, const std::string& name) {
  const mode_t mode = ModeOfRefs(repositoryFolder);
  std::string folder = repositoryFolder + "/hearthmake";
  MakeFolder(folder, mode);
  if (name.empty()) return folder;
  folder += "/" + name;
  MakeFolder(folder, mode);
  return folder;
}

WriteLock::WriteLock(const std::string& repositoryFolder, const std::vector<std::string>& locks)
    : m_folder(repositoryFolder) {
  const std::string path = OwnFolder(repositoryFolder) + "/lock";
  m_file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (m_file < 0) FailErrno(errno, path);
  fchmod(m_file, ModeOfRefs(repositoryFolder) & 0666U);  // fails, rightly, for all but its owner
  while (flock(m_file, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const int error = errno;
    close(m_file);
    FailErrno(error, path);
  }
  ClearStale();
  Note(locks);
}

WriteLock::~WriteLock() {
  // An empty note says that this process has finished with its locks.
  [[maybe_unused]] const int ignored = ftruncate(m_file, 0);
  close(m_file);
}

void WriteLock::ClearStale() const {
  std::array<char, 16384> buffer{};
  const ssize_t count = pread(m_file, buffer.data(), buffer.size(), 0);
  if (count <= 0) return;
  std::string_view note(buffer.data(), static_cast<std::size_t>(count));
  // Each line was written whole or not at all; one without its end is of no use.
  for (std::size_t end = note.find('\n'); end != std::string_view::npos; end = note.find('\n')) {
    const std::string_view name = note.substr(0, end);
    note.remove_prefix(end + 1);
    // Anybody may have written here what they liked: nothing but lock files of this repository.
    if (name == kOwnRefs) RemoveLocksBelow(m_folder + "/" + kOwnRefs);
    if (name.ends_with(".lock") && name.find("..") == std::string_view::npos)
      RemoveWhenStale(m_folder + "/" + std::string(name));
  }
}

void WriteLock::Note(const std::vector<std::string>& locks) const {
  std::string note;
  for (const std::string& lock : locks) note += lock + "\n";
  const bool isCut = ftruncate(m_file, 0) == 0;
  const ssize_t written = pwrite(m_file, note.data(), note.size(), 0);
  if (!isCut || written != static_cast<ssize_t>(note.size())) FailErrno(errno, m_folder + "/hearthmake/lock");
}

}  // namespace hearthmake::git
