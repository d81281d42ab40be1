#pragma once

#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "platform/ProcessLauncher.hpp"

namespace hearthmake::win32 {

class RunningProcess;

// Starts programs with CreateProcess: found as the system finds them, hidden, without a console that others
// see, with the handles of this process that can be inherited.
class Win32ProcessLauncher final : public platform::ProcessLauncher {
 public:
  std::unique_ptr<platform::ChildProcess> Start(std::string_view commandLine) override;
  platform::PipedChild StartPiped(std::string_view commandLine) override;

  // Ends every child that somebody still holds, with what it has started. From any thread.
  void TerminateRunning();

 private:
  std::unique_ptr<platform::ChildProcess> Keep(std::shared_ptr<RunningProcess> process);

  std::mutex m_mutex;
  std::vector<std::weak_ptr<RunningProcess>> m_running;
};

}  // namespace hearthmake::win32
