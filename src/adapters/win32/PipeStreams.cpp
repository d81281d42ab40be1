#include "adapters/win32/PipeStreams.hpp"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string>

#include "adapters/win32/FileFailure.hpp"

namespace hearthmake::win32 {

namespace {

constexpr DWORD kPipeBuffer = 64U << 10U;

std::wstring PipeName() {
  static std::atomic<unsigned> counter = 0;
  return LR"(\\.\pipe\hearthmake-)" + std::to_wstring(GetCurrentProcessId()) + L"-" +
         std::to_wstring(counter++);
}

}  // namespace

DWORD ToWait(std::chrono::milliseconds timeout) {
  constexpr std::chrono::milliseconds::rep kLongest = INFINITE - 1;
  return static_cast<DWORD>(std::clamp<std::chrono::milliseconds::rep>(timeout.count(), 0, kLongest));
}

Pipe MakePipe(PipeDirection direction) {
  const bool isToChild = direction == PipeDirection::ToChild;
  const std::wstring name = PipeName();
  const DWORD access = isToChild ? PIPE_ACCESS_OUTBOUND : PIPE_ACCESS_INBOUND;
  Pipe pipe;
  pipe.ours =
      Handle(CreateNamedPipeW(name.c_str(), access | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                              PIPE_TYPE_BYTE | PIPE_WAIT, 1, kPipeBuffer, kPipeBuffer, 0, nullptr));
  if (!pipe.ours) return {};
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  pipe.childs = Handle(CreateFileW(name.c_str(), isToChild ? GENERIC_READ : GENERIC_WRITE, 0, &inherited,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!pipe.childs) return {};
  return pipe;
}

PendingTransfer::PendingTransfer(Handle pipe)
    : m_pipe(std::move(pipe)), m_event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  m_state.hEvent = m_event.Get();
}

PendingTransfer::~PendingTransfer() {
  if (!m_isRunning) return;
  // The system writes into this object until it says that it has stopped.
  DWORD moved = 0;
  CancelIo(m_pipe.Get());
  GetOverlappedResult(m_pipe.Get(), &m_state, &moved, TRUE);
}

DWORD PendingTransfer::Started(BOOL isDone) {
  const DWORD error = isDone != 0 ? DWORD{ERROR_SUCCESS} : GetLastError();
  m_isRunning = error == ERROR_SUCCESS || error == ERROR_IO_PENDING;
  return m_isRunning ? DWORD{ERROR_SUCCESS} : error;
}

DWORD PendingTransfer::StartRead() {
  return Started(ReadFile(m_pipe.Get(), m_buffer.data(), static_cast<DWORD>(kCapacity), nullptr, &m_state));
}

DWORD PendingTransfer::StartWrite(std::size_t count) {
  return Started(WriteFile(m_pipe.Get(), m_buffer.data(), static_cast<DWORD>(count), nullptr, &m_state));
}

DWORD PendingTransfer::Finish(DWORD milliseconds, std::size_t& moved) {
  if (WaitForSingleObject(m_event.Get(), milliseconds) == WAIT_TIMEOUT) return WAIT_TIMEOUT;
  DWORD count = 0;
  const bool isGood = GetOverlappedResult(m_pipe.Get(), &m_state, &count, TRUE) != 0;
  m_isRunning = false;
  moved = count;
  return isGood ? DWORD{ERROR_SUCCESS} : GetLastError();
}

std::optional<std::size_t> PipeInput::Read(void* buffer, std::size_t count,
                                           std::chrono::milliseconds timeout) {
  if (m_begin == m_end && !m_isOver) {
    if (!m_transfer.IsRunning() && m_transfer.StartRead() != ERROR_SUCCESS) m_isOver = true;
    std::size_t got = 0;
    const DWORD error = m_isOver ? DWORD{ERROR_SUCCESS} : m_transfer.Finish(ToWait(timeout), got);
    if (error == WAIT_TIMEOUT) return std::nullopt;
    m_begin = 0;
    m_end = error == ERROR_SUCCESS ? got : 0;
    m_isOver = m_isOver || error != ERROR_SUCCESS;
    // A write of no bytes by the other end is no end.
    if (m_end == 0 && !m_isOver) return std::nullopt;
  }
  const std::size_t taken = std::min(count, m_end - m_begin);
  std::memcpy(buffer, m_transfer.Buffer() + m_begin, taken);
  m_begin += taken;
  return taken;
}

std::size_t PipeOutput::WriteWithin(std::string_view bytes, DWORD milliseconds) {
  // The system closes the ends of a process a moment after it tells of its end.
  DWORD error = m_reader->HasEnded() ? ERROR_BROKEN_PIPE : ERROR_SUCCESS;
  if (error == ERROR_SUCCESS && !m_transfer.IsRunning()) {
    const std::size_t count = std::min(bytes.size(), PendingTransfer::kCapacity);
    std::memcpy(m_transfer.Buffer(), bytes.data(), count);
    error = m_transfer.StartWrite(count);
  }
  std::size_t moved = 0;
  if (error == ERROR_SUCCESS) error = m_transfer.Finish(milliseconds, moved);
  if (error == WAIT_TIMEOUT) return 0;
  if (error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA) {
    RaiseFileFailure(automation::RuntimeError::PermissionDenied, "pipe");
  }
  if (error != ERROR_SUCCESS) RaiseSystemError(error, "pipe");
  return std::min(moved, bytes.size());
}

void PipeOutput::Write(std::string_view bytes) {
  while (!bytes.empty()) bytes.remove_prefix(WriteWithin(bytes, INFINITE));
}

std::size_t PipeOutput::WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) {
  return bytes.empty() ? 0 : WriteWithin(bytes, ToWait(timeout));
}

}  // namespace hearthmake::win32
