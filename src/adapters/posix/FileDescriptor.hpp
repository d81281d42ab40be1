#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>
#include <utility>

namespace hearthmake::posix {

// Owns a file descriptor; -1 is none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(other.Release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Reset(); }

  int Get() const { return m_descriptor; }
  explicit operator bool() const { return m_descriptor >= 0; }
  int Release() { return std::exchange(m_descriptor, -1); }
  void Reset(int descriptor = -1) {
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = descriptor;
  }

  // Fills the buffer from the current place; less only at the end of the file. -1 with errno on failure.
  ssize_t ReadFully(char* buffer, std::size_t count) const;
  // 0, or the errno of what kept it from writing everything.
  int WriteAll(std::string_view bytes) const;

 private:
  int m_descriptor = -1;
};

}  // namespace hearthmake::posix
