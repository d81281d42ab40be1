#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/ByteStreams.hpp"

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

  // What the child ended with; 128 and the number of the signal that ended it. Nothing while it runs, or
  // when it ended unseen.
  virtual std::optional<std::int32_t> ExitCode() = 0;
  virtual std::int32_t ProcessId() const = 0;
};

// A child whose standard streams are pipes to this process.
struct PipedChild {
  std::unique_ptr<ChildProcess> process;  // null when no program could be started
  std::unique_ptr<OutputStream> input;    // what is written here is the child's standard input
  std::unique_ptr<InputStream> output;
  std::unique_ptr<InputStream> error;
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
  // The same with the child's standard streams in our hands.
  virtual PipedChild StartPiped(std::string_view commandLine) = 0;
};

}  // namespace hearthmake::platform
