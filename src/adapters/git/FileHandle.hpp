#pragma once

#include <unistd.h>

#include <utility>

namespace hearthmake::git {

// An open file or folder.
class FileHandle {
 public:
  FileHandle() = default;
  explicit FileHandle(int file) : m_file(file) {}
  FileHandle(FileHandle&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    if (this != &other) {
      Close();
      m_file = std::exchange(other.m_file, -1);
    }
    return *this;
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() { Close(); }

  explicit operator bool() const { return m_file >= 0; }
  int Get() const { return m_file; }
  // False when the system tells, only now, that something was not written.
  bool Close() {
    const int file = std::exchange(m_file, -1);
    return file < 0 || close(file) == 0;
  }

 private:
  int m_file = -1;
};

}  // namespace hearthmake::git
