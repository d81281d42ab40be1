#include "adapters/posix/StoreFile.hpp"

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "adapters/posix/FileFailure.hpp"
#include "adapters/posix/ReplacementFile.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

using automation::RuntimeError;
using platform::FileStamp;

namespace {

constexpr mode_t kPrivate = 0600;

}  // namespace

StoreFile::StoreFile(std::string path, std::int64_t limit) : m_path(std::move(path)), m_limit(limit) {}

bool StoreFile::HasChanged() const {
  struct stat status {};
  const FileStamp now = ::stat(m_path.c_str(), &status) == 0 ? StampOf(status) : FileStamp();
  return !m_wasRead || now != m_stamp;
}

std::string StoreFile::Read() {
  m_wasRead = false;
  // O_NONBLOCK: a pipe in the place of the file must not hold us up.
  const FileDescriptor file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file && errno != ENOENT) Fail(errno);
  if (!file) {
    m_stamp = FileStamp();
    m_wasRead = true;
    return {};
  }
  if (::fstat(file.Get(), &status) != 0) Fail(errno);
  if (!S_ISREG(status.st_mode)) automation::Raise(RuntimeError::PathFileAccess, "FileSystem", m_path);
  if (status.st_size > m_limit)
    automation::Raise(automation::kInvalidValue, "FileSystem",
                      m_path + ": the file has " + std::to_string(status.st_size) +
                          " bytes, more than the limit of " + std::to_string(m_limit) +
                          "; move it away or make it shorter");
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  const ssize_t count = file.ReadFully(bytes.data(), bytes.size());
  if (count < 0) Fail(errno);
  bytes.resize(static_cast<std::size_t>(count));
  m_stamp = StampOf(status);
  m_wasRead = true;
  return bytes;
}

FileDescriptor StoreFile::Lock() const {
  const std::string target = Target();
  // A file of its own, because the store itself is another file after every Replace.
  const auto open = [&] {
    return FileDescriptor(::open((target + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kPrivate));
  };
  FileDescriptor lock = open();
  if (!lock && errno == ENOENT) {
    std::error_code failure;
    std::filesystem::create_directories(std::filesystem::path(target).parent_path(), failure);
    lock = open();
  }
  if (!lock) Fail(errno);
  while (::flock(lock.Get(), LOCK_EX) != 0)
    if (errno != EINTR) Fail(errno);
  return lock;
}

void StoreFile::Replace(std::string_view bytes) {
  m_wasRead = false;
  const std::string target = Target();
  struct stat status {};
  const bool exists = ::stat(target.c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode))
    automation::Raise(RuntimeError::PathFileAccess, "FileSystem", m_path);
  ReplacementFile replacement(target, m_path, kPrivate);
  if (exists) replacement.InheritFrom(status);
  replacement.Write(bytes);
  replacement.Commit();
  if (::stat(target.c_str(), &status) != 0) Fail(errno);
  m_stamp = StampOf(status);
  m_wasRead = true;
}

void StoreFile::Append(std::string_view bytes) {
  m_wasRead = false;
  const FileDescriptor file(::open(m_path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kPrivate));
  struct stat status {};
  if (!file || ::fstat(file.Get(), &status) != 0) Fail(errno);
  if (const int error = file.WriteAll(bytes); error != 0) {
    [[maybe_unused]] const int ignored = ::ftruncate(file.Get(), status.st_size);
    Fail(error);
  }
  if (::fstat(file.Get(), &status) != 0) Fail(errno);
  m_stamp = StampOf(status);
  m_wasRead = true;
}

FileStamp StoreFile::StampOf(const struct stat& status) {
  return {static_cast<std::uint64_t>(status.st_ino) ^ static_cast<std::uint64_t>(status.st_dev) << 48,
          status.st_size, status.st_mtim.tv_sec * std::int64_t{1'000'000'000} + status.st_mtim.tv_nsec};
}

void StoreFile::Fail(int error) const { RaiseFileErrno(error, m_path, m_path); }

// The file behind links, so that a Replace does not put a file in the place of a link. A link that
// leads nowhere yet leads to the file that is to be made.
std::string StoreFile::Target() const {
  constexpr int kLinks = 40;  // as many as the kernel follows
  std::filesystem::path target = m_path;
  std::error_code failure;
  for (int i = 0; i < kLinks && std::filesystem::is_symlink(target, failure); ++i)
    target = target.parent_path() / std::filesystem::read_symlink(target, failure);
  return target.string();
}

}  // namespace hearthmake::posix
