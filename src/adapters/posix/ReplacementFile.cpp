#include "adapters/posix/ReplacementFile.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "adapters/posix/FileFailure.hpp"

namespace hearthmake::posix {

namespace {

// Short whatever the target is called, so that a name of full length can be replaced too.
std::string TemporaryName(const std::string& target) {
  static std::atomic<unsigned> counter = 0;
  return target.substr(0, target.rfind('/') + 1) + ".hearthmake-" + std::to_string(getpid()) + "-" +
         std::to_string(counter++) + ".tmp";
}

}  // namespace

ReplacementFile::ReplacementFile(std::string target, std::string_view dosPath, mode_t mode)
    : m_target(std::move(target)), m_dosPath(dosPath) {
  constexpr int kAttempts = 100;  // names left behind by killed processes with our id
  for (int attempt = 0; attempt < kAttempts && !m_file; ++attempt) {
    std::string name = TemporaryName(m_target);
    m_file.Reset(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (m_file) {
      m_temporary = std::move(name);
    } else if (errno != EEXIST) {
      break;
    }
  }
  if (!m_file) Fail(errno);
}

ReplacementFile::~ReplacementFile() {
  if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

void ReplacementFile::InheritFrom(const struct stat& old) {
  struct stat own {};
  if (fstat(m_file.Get(), &own) != 0) Fail(errno);
  if (own.st_uid != old.st_uid || own.st_gid != old.st_gid) {
    // Only root may give a file away; a member of the folder's group writes under their own name.
    [[maybe_unused]] const int ignored = fchown(m_file.Get(), old.st_uid, old.st_gid);
  }
  // FAT and some network file systems have no permissions to give.
  const bool failed = fchmod(m_file.Get(), old.st_mode & 07777U) != 0;
  if (failed && errno != EPERM && errno != EOPNOTSUPP) Fail(errno);
}

void ReplacementFile::SetModified(const timespec& time) {
  const timespec times[] = {{0, UTIME_OMIT}, time};
  if (futimens(m_file.Get(), times) != 0) Fail(errno);
}

void ReplacementFile::Write(std::string_view bytes) {
  if (const int error = m_file.WriteAll(bytes); error != 0) Fail(error);
}

void ReplacementFile::Commit() {
  // Some file systems tell of a full disk only now.
  if (close(m_file.Release()) != 0 && errno != EINTR) Fail(errno);
  if (rename(m_temporary.c_str(), m_target.c_str()) != 0) Fail(errno);
  m_temporary.clear();
}

void ReplacementFile::Fail(int error) const { RaiseFileErrno(error, m_dosPath, m_target); }

}  // namespace hearthmake::posix
