#include "adapters/git/NewFile.hpp"

#include <fcntl.h>

#include <atomic>
#include <cerrno>
#include <utility>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

NewFile::NewFile(int folder, mode_t mode, std::string shownPath)
    : m_folder(folder), m_shownPath(std::move(shownPath)) {
  static std::atomic<unsigned> counter = 0;
  constexpr int kAttempts = 100;  // names left behind by killed processes with our id
  for (int attempt = 0; attempt < kAttempts && !m_file; ++attempt) {
    std::string name = ".hearthmake-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + ".tmp";
    m_file = FileHandle(openat(m_folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (m_file) {
      m_temporary = std::move(name);
    } else if (errno != EEXIST) {
      break;
    }
  }
  if (!m_file) FailErrno(errno, m_shownPath);
}

NewFile::~NewFile() {
  if (!m_temporary.empty()) unlinkat(m_folder, m_temporary.c_str(), 0);
}

void NewFile::Write(const void* bytes, std::size_t count) {
  const char* rest = static_cast<const char*>(bytes);
  while (count > 0) {
    const ssize_t written = write(m_file.Get(), rest, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) FailErrno(errno, m_shownPath);
    rest += written;
    count -= static_cast<std::size_t>(written);
  }
}

void NewFile::SetModified(std::int64_t time) {
  const timespec times[] = {{0, UTIME_OMIT}, {time, 0}};
  if (futimens(m_file.Get(), times) != 0) FailErrno(errno, m_shownPath);
}

struct stat NewFile::Commit(const std::string& name) {
  if (renameat(m_folder, m_temporary.c_str(), m_folder, name.c_str()) != 0) FailErrno(errno, m_shownPath);
  m_temporary.clear();
  struct stat status {};  // after the renaming, which changes the time of the last change
  if (fstat(m_file.Get(), &status) != 0 || !m_file.Close()) FailErrno(errno, m_shownPath);
  return status;
}

}  // namespace hearthmake::git
