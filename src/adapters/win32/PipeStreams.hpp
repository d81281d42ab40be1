#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>

#include "adapters/win32/Handle.hpp"
#include "adapters/win32/RunningProcess.hpp"
#include "platform/ByteStreams.hpp"

namespace hearthmake::win32 {

// A pipe whose one end a child inherits. Ours can be waited for with a time-out, which the system's plain
// pipes don't offer.
struct Pipe {
  Handle ours;
  Handle childs;
};

enum class PipeDirection { ToChild, FromChild };

// A pipe without ends when the system has none left.
Pipe MakePipe(PipeDirection direction);

// One input or output of a pipe that goes on by itself.
class PendingTransfer {
 public:
  explicit PendingTransfer(Handle pipe);
  PendingTransfer(const PendingTransfer&) = delete;
  PendingTransfer& operator=(const PendingTransfer&) = delete;
  // Gives up what has not been taken.
  ~PendingTransfer();

  static constexpr std::size_t kCapacity = 4096;

  bool IsRunning() const { return m_isRunning; }
  char* Buffer() { return m_buffer.data(); }
  // Of at most kCapacity bytes of the buffer. The result is the system's error code.
  DWORD StartRead();
  DWORD StartWrite(std::size_t count);
  // Waits for its end. WAIT_TIMEOUT while it runs; otherwise the system's error code, and how much it moved.
  DWORD Finish(DWORD milliseconds, std::size_t& moved);

 private:
  DWORD Started(BOOL isDone);

  Handle m_pipe;
  Handle m_event;
  OVERLAPPED m_state{};
  bool m_isRunning = false;
  std::array<char, kCapacity> m_buffer;
};

class PipeInput final : public platform::InputStream {
 public:
  explicit PipeInput(Handle pipe) : m_transfer(std::move(pipe)) {}

  std::optional<std::size_t> Read(void* buffer, std::size_t count,
                                  std::chrono::milliseconds timeout) override;

 private:
  PendingTransfer m_transfer;
  std::size_t m_begin = 0;
  std::size_t m_end = 0;
  bool m_isOver = false;
};

// What WriteSome could not hand over in time is offered again by its caller.
class PipeOutput final : public platform::OutputStream {
 public:
  // The reader is the process at the other end.
  PipeOutput(Handle pipe, std::shared_ptr<RunningProcess> reader)
      : m_transfer(std::move(pipe)), m_reader(std::move(reader)) {}

  void Write(std::string_view bytes) override;
  std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) override;

 private:
  std::size_t WriteWithin(std::string_view bytes, DWORD milliseconds);

  PendingTransfer m_transfer;
  std::shared_ptr<RunningProcess> m_reader;
};

// A time-out for the system's waits.
DWORD ToWait(std::chrono::milliseconds timeout);

}  // namespace hearthmake::win32
