#pragma once

#include <chrono>
#include <memory>
#include <string_view>

namespace hearthmake::platform {

// A running child process. The destructor leaves the child running; it does not wait.
class ChildProcess {
 public:
  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  virtual ~ChildProcess() = default;

  // Waits until the child has ended, the time is over or a signal came in. True: it has ended.
  virtual bool Wait(std::chrono::milliseconds timeout) = 0;
  // Ends the child and what it started; no effect when it has ended.
  virtual void Terminate() = 0;
};

class ProcessLauncher {
 public:
  ProcessLauncher() = default;
  ProcessLauncher(const ProcessLauncher&) = delete;
  ProcessLauncher& operator=(const ProcessLauncher&) = delete;
  virtual ~ProcessLauncher() = default;

  // Starts the program of a Windows command line, hidden, without a shell, in the current folder and
  // with the environment of this process. Null when no program could be started.
  virtual std::unique_ptr<ChildProcess> Start(std::string_view commandLine) = 0;
};

}  // namespace hearthmake::platform
