#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace hearthmake::host {

// A file that one process has to itself, with what a journal needs: it grows at the end and may be cut.
class LockedFile {
 public:
  enum class Outcome { Opened, Held, Failed };

  LockedFile();
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  ~LockedFile();

  // Makes the file where it is missing. Held: another process has it. Failed: the error says why.
  Outcome Open(const std::string& path, std::error_code& error);
  // -1 for what is no file.
  std::int64_t Size() const;
  // From the start, up to count bytes.
  std::string Read(std::size_t count) const;
  std::error_code Cut(std::int64_t size) const;
  std::error_code Append(std::string_view bytes) const;
  // Removes the name; the lock stays as long as the object.
  void Remove() const;

 private:
  struct System;
  std::unique_ptr<System> m_system;
};

}  // namespace hearthmake::host
