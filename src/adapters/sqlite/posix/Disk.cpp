#include "adapters/sqlite/Disk.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace hearthmake::sqlite::disk {

namespace {

std::error_code SystemError(int number) { return {number, std::system_category()}; }

}  // namespace

Kind KindOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return errno == ENOENT || errno == ENOTDIR ? Kind::Missing : Kind::Unreadable;
  }
  if (!S_ISREG(status.st_mode)) return Kind::Other;
  return status.st_size == 0 ? Kind::EmptyFile : Kind::File;
}

FileStamp StampOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size,
          status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec};
}

bool Exists(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

std::string MakeTemporary(const std::string& path, std::error_code& error) {
  std::string name = path + ".new-XXXXXX";
  const int file = mkstemp(name.data());
  if (file < 0) {
    error = SystemError(errno);
    return {};
  }
  // As the umask has it, where mkstemp leaves the file to its owner alone.
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(file, 0666 & ~mask);
  close(file);
  return name;
}

void Remove(const std::string& path) { unlink(path.c_str()); }

// link refuses an existing name, which rename would replace.
std::error_code MoveWithoutReplacing(const std::string& from, const std::string& to) {
  if (link(from.c_str(), to.c_str()) == 0) {
    unlink(from.c_str());
    return {};
  }
  const int linkError = errno;
  if (linkError == EEXIST) return SystemError(linkError);
  // A file system without hard links.
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
  return SystemError(errno == EEXIST ? EEXIST : linkError);
}

void FlushFolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  const int file = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

bool IsFull(int systemError) {
  return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

bool OpenFilesCanBeReplaced() { return true; }

}  // namespace hearthmake::sqlite::disk
