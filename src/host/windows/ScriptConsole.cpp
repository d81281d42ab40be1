#include "host/scripting/ScriptConsole.hpp"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "adapters/win32/FileStreams.hpp"
#include "adapters/win32/PipeStreams.hpp"
#include "adapters/win32/WideText.hpp"
#include "host/system/Terminal.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kFlushAt = 64U << 10U;
constexpr DWORD kPause = 5;  // milliseconds between two looks at a pipe that this process did not make

// Standard input, whatever it is.
class StandardInput final : public platform::InputStream {
 public:
  std::optional<std::size_t> Read(void* buffer, std::size_t count,
                                  std::chrono::milliseconds timeout) override {
    if (m_bytes.empty() && !m_isOver && !Fill(timeout)) return std::nullopt;
    const std::size_t taken = std::min(count, m_bytes.size());
    std::memcpy(buffer, m_bytes.data(), taken);
    m_bytes.erase(0, taken);
    return taken;
  }

 private:
  // False when nothing came in time.
  bool Fill(std::chrono::milliseconds timeout) {
    const DWORD type = GetFileType(m_handle);
    if (type == FILE_TYPE_PIPE && !HasBytes(timeout)) return false;
    if (type == FILE_TYPE_CHAR && WaitForSingleObject(m_handle, win32::ToWait(timeout)) == WAIT_TIMEOUT) {
      return false;
    }
    if (IsTerminal(StandardStream::Input)) {
      ReadTyped();
    } else {
      ReadBytes();
    }
    m_isOver = m_bytes.empty();
    return true;
  }

  bool HasBytes(std::chrono::milliseconds timeout) const {
    const ULONGLONG end = GetTickCount64() + win32::ToWait(timeout);
    while (true) {
      DWORD waiting = 0;
      // A pipe whose other end is gone tells so when it is read.
      if (PeekNamedPipe(m_handle, nullptr, 0, nullptr, &waiting, nullptr) == 0 || waiting > 0) return true;
      if (GetTickCount64() >= end) return false;
      Sleep(kPause);
    }
  }

  void ReadTyped() {
    std::array<wchar_t, 4096> units{};
    DWORD count = 0;
    if (ReadConsoleW(m_handle, units.data(), static_cast<DWORD>(units.size()), &count, nullptr) == 0) return;
    m_bytes = win32::ToUtf8({units.data(), count});
    if (m_bytes.starts_with('\x1A')) m_bytes.clear();  // Ctrl-Z is the end
  }

  void ReadBytes() {
    m_bytes.resize(4096);
    DWORD count = 0;
    if (ReadFile(m_handle, m_bytes.data(), static_cast<DWORD>(m_bytes.size()), &count, nullptr) == 0)
      count = 0;
    m_bytes.resize(count);
  }

  HANDLE m_handle = GetStdHandle(STD_INPUT_HANDLE);
  std::string m_bytes;
  bool m_isOver = false;
};

}  // namespace

// Lines end in "\n" for scripts and in "\r\n" outside, as with every program of the system.
class ScriptConsole::SystemStandard final : public Standard {
 public:
  explicit SystemStandard(DWORD which)
      : m_handle(GetStdHandle(which)), m_isHeldBack(GetFileType(m_handle) == FILE_TYPE_DISK) {}

  void Write(std::string_view bytes) override {
    for (const char c : bytes) {
      if (c == '\n' && m_last != '\r') m_bytes += '\r';
      m_bytes += c;
      m_last = c;
    }
    if (!m_isHeldBack || m_bytes.size() >= kFlushAt) Flush();
  }
  std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds /*timeout*/) override {
    Write(bytes);
    return bytes.size();
  }

  // What nobody reads counts as written.
  void Flush() override {
    win32::WriteAll(m_handle, m_bytes);
    m_bytes.clear();
  }

 private:
  HANDLE m_handle;
  bool m_isHeldBack;
  char m_last = '\0';
  std::string m_bytes;
};

ScriptConsole::ScriptConsole()
    : m_input(std::make_unique<StandardInput>()),
      m_output(std::make_unique<SystemStandard>(STD_OUTPUT_HANDLE)),
      m_error(std::make_unique<SystemStandard>(STD_ERROR_HANDLE)) {}

}  // namespace hearthmake::host
