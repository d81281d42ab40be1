#pragma once

#include <sys/types.h>

#include <chrono>
#include <mutex>
#include <optional>
#include <vector>

namespace hearthmake::posix {

// The children of one launcher that were not reaped yet, each the leader of its own process group.
// The table alone reaps, under its lock, so that no signal can reach a process that got the number of
// a child that is gone. Shared by the launcher and its children; safe from several threads.
class ChildTable {
 public:
  explicit ChildTable(std::chrono::milliseconds grace) : m_grace(grace) {}
  ChildTable(const ChildTable&) = delete;
  ChildTable& operator=(const ChildTable&) = delete;
  // Reaps what has ended; children that still run are left to themselves.
  ~ChildTable();

  void Add(pid_t child);
  // True when the child has ended; then it is reaped and out of the table, and its wait status is in
  // *status, unless somebody else took that.
  bool TryReap(pid_t child, std::optional<int>* status = nullptr);
  // Nobody waits for this child any more: it runs on and is reaped at some later start.
  void Abandon(pid_t child);
  void ReapAbandoned();

  // Asks the children's groups to end (SIGTERM), gives them the grace, and kills what is left of them.
  // Returns when they are gone. The wait status of a single child is in *status as by TryReap.
  void Terminate(std::vector<pid_t> children, std::optional<int>* status = nullptr);
  void TerminateAll();

 private:
  struct Child {
    pid_t pid;
    bool abandoned;
  };

  bool TryReapLocked(pid_t child, std::optional<int>* status = nullptr);
  bool GroupIsGone(pid_t child, std::optional<int>* status);
  void WaitUntilGone(std::vector<pid_t>& children, std::chrono::milliseconds limit,
                     std::optional<int>* status);

  const std::chrono::milliseconds m_grace;
  std::mutex m_mutex;
  std::vector<Child> m_children;
  std::size_t m_abandoned = 0;
};

}  // namespace hearthmake::posix
