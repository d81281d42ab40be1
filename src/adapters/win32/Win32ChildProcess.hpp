#pragma once

#include <memory>

#include "adapters/win32/RunningProcess.hpp"
#include "platform/ProcessLauncher.hpp"

namespace hearthmake::win32 {

class Win32ChildProcess final : public platform::ChildProcess {
 public:
  explicit Win32ChildProcess(std::shared_ptr<RunningProcess> process) : m_process(std::move(process)) {}

  // Comes back as well when a message arrives for this thread, so that its windows stay alive.
  bool Wait(std::chrono::milliseconds timeout) override;
  void Terminate() override;
  std::optional<std::int32_t> ExitCode() override;
  std::int32_t ProcessId() const override { return static_cast<std::int32_t>(m_process->Id()); }

 private:
  std::shared_ptr<RunningProcess> m_process;
};

}  // namespace hearthmake::win32
