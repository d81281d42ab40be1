#include "adapters/posix/TemporaryDirectory.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <system_error>

#include "automation/Error.hpp"

namespace hearthmake::posix {

namespace {

namespace fs = std::filesystem;

// A folder that is not writable keeps its contents from being removed, even by their owner.
void MakeFoldersWritable(const fs::path& folder) {
  std::error_code error;
  fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, error);
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code ignored;
    if (entry->symlink_status(ignored).type() == fs::file_type::directory) MakeFoldersWritable(entry->path());
  }
}

void RemoveTree(const std::string& path) {
  std::error_code error;
  fs::remove_all(path, error);
  if (!error) return;
  MakeFoldersWritable(path);
  fs::remove_all(path, error);
}

// The folders that are still there, with the process that made each: a forked child that exits must
// leave its parent's alone.
class LiveFolders {
 public:
  // Never destroyed, so that objects which outlive it by the order of destruction can still go.
  static LiveFolders& Instance() {
    static LiveFolders& folders = *new LiveFolders;
    return folders;
  }

  void Add(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    m_owners.emplace(path, getpid());
  }

  void Remove(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    const auto owner = m_owners.find(path);
    if (owner == m_owners.end()) return;
    if (owner->second == getpid()) RemoveTree(path);
    m_owners.erase(owner);
  }

 private:
  LiveFolders() {
    std::atexit([] { Instance().RemoveAll(); });
  }

  void RemoveAll() {
    const std::lock_guard lock(m_mutex);
    for (const auto& [path, owner] : m_owners) {
      if (owner == getpid()) RemoveTree(path);
    }
    m_owners.clear();
  }

  std::mutex m_mutex;
  std::map<std::string, pid_t> m_owners;
};

bool IsUsable(std::string_view folder) {
  if (!folder.starts_with('/')) return false;
  if (folder.find_first_of(" \t\r\n\v\f") != std::string_view::npos) return false;
  struct stat status {};
  return stat(std::string(folder).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string Parent(const std::string& given) {
  const char* configured = std::getenv("TMPDIR");
  std::string folder = given;
  if (given.empty()) folder = configured != nullptr && IsUsable(configured) ? configured : "/tmp";
  if (!IsUsable(folder)) {
    automation::Raise(automation::RuntimeError::PathFileAccess, "TemporaryDirectory",
                      folder + " (a folder by its absolute path, without blanks, is needed)");
  }
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder == "/" ? "" : folder;
}

}  // namespace

TemporaryDirectory::TemporaryDirectory(const std::string& parent)
    : m_path(Parent(parent) + "/hearthmake-XXXXXX") {
  LiveFolders& folders = LiveFolders::Instance();
  if (mkdtemp(m_path.data()) == nullptr) {
    const int error = errno;
    automation::Raise(automation::RuntimeError::PathFileAccess, "TemporaryDirectory",
                      m_path + " (" + std::generic_category().message(error) + ")");
  }
  folders.Add(m_path);
}

TemporaryDirectory::~TemporaryDirectory() { LiveFolders::Instance().Remove(m_path); }

}  // namespace hearthmake::posix
