#pragma once

#include <windows.h>

#include "adapters/win32/Handle.hpp"

namespace hearthmake::win32 {

// A process that was started here, with the job that holds what it starts itself. Where the system grants no
// job (before Windows 8 in a process that is in one already), Terminate ends the process alone.
class RunningProcess {
 public:
  RunningProcess(Handle process, Handle job, DWORD id)
      : m_process(std::move(process)), m_job(std::move(job)), m_id(id) {}

  HANDLE Process() const { return m_process.Get(); }
  DWORD Id() const { return m_id; }
  bool HasEnded() const { return WaitForSingleObject(m_process.Get(), 0) == WAIT_OBJECT_0; }
  // From any thread. Comes back when it has ended.
  void Terminate() const;

 private:
  Handle m_process;
  Handle m_job;
  DWORD m_id;
};

}  // namespace hearthmake::win32
