#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

namespace hearthmake::platform {

// Bytes that come at their own pace: from a file, a pipe, a terminal.
class InputStream {
 public:
  InputStream() = default;
  InputStream(const InputStream&) = delete;
  InputStream& operator=(const InputStream&) = delete;
  virtual ~InputStream() = default;

  // Copies what is there, up to count bytes, into buffer. 0: there will never be more. Nothing: no byte came
  // in time, or a signal came in. A failure counts as the end.
  virtual std::optional<std::size_t> Read(void* buffer, std::size_t count,
                                          std::chrono::milliseconds timeout) = 0;
};

// Bytes that go to a file, a pipe, a terminal. The destructor closes it.
class OutputStream {
 public:
  OutputStream() = default;
  OutputStream(const OutputStream&) = delete;
  OutputStream& operator=(const OutputStream&) = delete;
  virtual ~OutputStream() = default;

  // All of them, or automation::Error with Visual Basic's number (61 disk full, 70 when the other end of a
  // pipe is gone, 57 otherwise).
  virtual void Write(std::string_view bytes) = 0;
  // The same for who can't wait: writes what is taken in time and returns how many bytes that were. 0 also
  // when a signal came in.
  virtual std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) = 0;
};

}  // namespace hearthmake::platform
