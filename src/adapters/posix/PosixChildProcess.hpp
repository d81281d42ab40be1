#pragma once

#include <sys/types.h>

#include <memory>

#include "adapters/posix/ChildTable.hpp"
#include "adapters/posix/FileDescriptor.hpp"
#include "platform/ProcessLauncher.hpp"

namespace hearthmake::posix {

// A child of this process that leads its own process group.
class PosixChildProcess : public platform::ChildProcess {
 public:
  enum class Waiting {
    Descriptor,  // by a process descriptor where the system has them: the end is seen at once
    Pauses,      // by short pauses, which is what an old system gets
  };

  // The child must be in the table.
  PosixChildProcess(std::shared_ptr<ChildTable> table, pid_t pid, Waiting waiting = Waiting::Descriptor)
      : m_table(std::move(table)), m_pid(pid), m_useDescriptor(waiting == Waiting::Descriptor) {}
  ~PosixChildProcess() override;

  bool Wait(std::chrono::milliseconds timeout) override;
  // Returns when the child and what it started are gone: at once in most cases, after the launcher's
  // grace when they do not listen.
  void Terminate() override;
  std::optional<std::int32_t> ExitCode() override;
  std::int32_t ProcessId() const override { return m_pid; }

 private:
  bool HasEnded();
  void WaitByDescriptor(std::chrono::milliseconds timeout) const;
  void WaitByPauses(std::chrono::milliseconds timeout);

  std::shared_ptr<ChildTable> m_table;
  pid_t m_pid;
  bool m_useDescriptor;
  bool m_ended = false;
  std::optional<int> m_status;  // as waitpid gave it
  FileDescriptor m_descriptor;
};

}  // namespace hearthmake::posix
