#include "adapters/win32/RunningProcess.hpp"

namespace hearthmake::win32 {

namespace {

// What a console program ends with on Ctrl-C.
constexpr UINT kTerminated = 0xC000013A;
constexpr DWORD kGrace = 5000;  // milliseconds

}  // namespace

void RunningProcess::Terminate() const {
  if (m_job) TerminateJobObject(m_job.Get(), kTerminated);
  if (!HasEnded()) TerminateProcess(m_process.Get(), kTerminated);
  // The end is asked for here and comes a moment later.
  WaitForSingleObject(m_process.Get(), kGrace);
}

}  // namespace hearthmake::win32
