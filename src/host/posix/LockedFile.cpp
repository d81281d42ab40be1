#include "host/system/LockedFile.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "adapters/posix/FileDescriptor.hpp"

namespace hearthmake::host {

namespace {

constexpr mode_t kMode = 0666;  // and what the umask takes from it

std::error_code ErrorOf(int number) { return {number, std::generic_category()}; }

bool IsFileAt(int descriptor, const std::string& path) {
  struct stat open {};
  struct stat named {};
  return fstat(descriptor, &open) == 0 && stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
         open.st_dev == named.st_dev;
}

}  // namespace

struct LockedFile::System {
  posix::FileDescriptor file;
  std::string path;
};

LockedFile::LockedFile() : m_system(std::make_unique<System>()) {}
LockedFile::~LockedFile() = default;

LockedFile::Outcome LockedFile::Open(const std::string& path, std::error_code& error) {
  m_system->path = path;
  posix::FileDescriptor& file = m_system->file;
  while (true) {
    file = posix::FileDescriptor(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kMode));
    if (!file || flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
      const bool isHeld = file && errno == EWOULDBLOCK;
      error = ErrorOf(errno);
      return isHeld ? Outcome::Held : Outcome::Failed;
    }
    // Its owner may have removed it: the one that is locked now may be that.
    if (IsFileAt(file.Get(), path)) return Outcome::Opened;
  }
}

std::int64_t LockedFile::Size() const {
  struct stat status {};
  if (fstat(m_system->file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return -1;
  return status.st_size;
}

std::string LockedFile::Read(std::size_t count) const {
  std::string bytes(count, '\0');
  const ssize_t got = m_system->file.ReadFully(bytes.data(), bytes.size());
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

std::error_code LockedFile::Cut(std::int64_t size) const {
  return ftruncate(m_system->file.Get(), size) == 0 ? std::error_code() : ErrorOf(errno);
}

std::error_code LockedFile::Append(std::string_view bytes) const {
  return ErrorOf(m_system->file.WriteAll(bytes));
}

void LockedFile::Remove() const { unlink(m_system->path.c_str()); }

}  // namespace hearthmake::host
