#include "adapters/win32/Win32ChildProcess.hpp"

#include "adapters/win32/PipeStreams.hpp"

namespace hearthmake::win32 {

bool Win32ChildProcess::Wait(std::chrono::milliseconds timeout) {
  const HANDLE process = m_process->Process();
  // New messages only: a caller that lets none be delivered must not spin.
  const DWORD result = MsgWaitForMultipleObjects(1, &process, FALSE, ToWait(timeout), QS_ALLINPUT);
  return result == WAIT_OBJECT_0 || m_process->HasEnded();
}

void Win32ChildProcess::Terminate() {
  if (!m_process->HasEnded()) m_process->Terminate();
}

std::optional<std::int32_t> Win32ChildProcess::ExitCode() {
  DWORD code = 0;
  // 259 is what a running process has, but one that has ended may have it too.
  if (!m_process->HasEnded() || GetExitCodeProcess(m_process->Process(), &code) == 0) return std::nullopt;
  return static_cast<std::int32_t>(code);
}

}  // namespace hearthmake::win32
