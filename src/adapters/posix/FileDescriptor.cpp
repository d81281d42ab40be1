#include "adapters/posix/FileDescriptor.hpp"

#include <cerrno>

namespace hearthmake::posix {

ssize_t FileDescriptor::ReadFully(char* buffer, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = read(m_descriptor, buffer + done, count - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return got;
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return static_cast<ssize_t>(done);
}

int FileDescriptor::WriteAll(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t written = write(m_descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return written < 0 ? errno : EIO;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

}  // namespace hearthmake::posix
