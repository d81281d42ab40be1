#include "adapters/posix/ChildTable.hpp"

#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace hearthmake::posix {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// How long a killed child may take to go; only one that hangs inside the kernel takes longer.
constexpr milliseconds kKillLimit{1000};

}  // namespace

ChildTable::~ChildTable() {
  for (const Child& child : m_children) ::waitpid(child.pid, nullptr, WNOHANG);
}

void ChildTable::Add(pid_t child) {
  const std::lock_guard lock(m_mutex);
  m_children.push_back({child, false});
}

bool ChildTable::TryReap(pid_t child, std::optional<int>* status) {
  const std::lock_guard lock(m_mutex);
  return TryReapLocked(child, status);
}

bool ChildTable::TryReapLocked(pid_t child, std::optional<int>* status) {
  const auto found = std::find_if(m_children.begin(), m_children.end(),
                                  [&](const Child& entry) { return entry.pid == child; });
  if (found == m_children.end()) return true;
  // ECHILD: somebody else reaped it, or the host ignores SIGCHLD; it has ended in any case.
  int ended = 0;
  const pid_t reaped = ::waitpid(child, &ended, WNOHANG);
  if (reaped == 0) return false;
  if (reaped == child && status != nullptr) *status = ended;
  if (found->abandoned) --m_abandoned;
  *found = m_children.back();
  m_children.pop_back();
  return true;
}

void ChildTable::Abandon(pid_t child) {
  const std::lock_guard lock(m_mutex);
  if (TryReapLocked(child)) return;
  for (Child& entry : m_children)
    if (entry.pid == child) entry.abandoned = true;
  ++m_abandoned;
}

void ChildTable::ReapAbandoned() {
  const std::lock_guard lock(m_mutex);
  if (m_abandoned == 0) return;
  for (const Child& entry : std::vector<Child>(m_children))
    if (entry.abandoned) TryReapLocked(entry.pid);
}

void ChildTable::Terminate(std::vector<pid_t> children, std::optional<int>* status) {
  {
    const std::lock_guard lock(m_mutex);
    std::erase_if(children, [&](pid_t child) { return TryReapLocked(child, status); });
    for (const pid_t child : children) {
      ::kill(-child, SIGTERM);
      ::kill(-child, SIGCONT);  // a stopped process would not see the first one
    }
  }
  WaitUntilGone(children, m_grace, status);
  for (const pid_t child : children) ::kill(-child, SIGKILL);
  WaitUntilGone(children, kKillLimit, status);
}

void ChildTable::TerminateAll() {
  std::vector<pid_t> children;
  {
    const std::lock_guard lock(m_mutex);
    for (const Child& entry : m_children) children.push_back(entry.pid);
  }
  Terminate(std::move(children));
}

bool ChildTable::GroupIsGone(pid_t child, std::optional<int>* status) {
  // The leader first: while it is a zombie its group exists.
  return TryReap(child, status) && ::kill(-child, 0) != 0;
}

// Removes the children whose groups are gone. There is no descriptor to wait on for a whole group, so
// this looks again and again, at first often: most children go at once.
void ChildTable::WaitUntilGone(std::vector<pid_t>& children, milliseconds limit, std::optional<int>* status) {
  const auto deadline = steady_clock::now() + limit;
  milliseconds pause{1};
  while (true) {
    std::erase_if(children, [&](pid_t child) { return GroupIsGone(child, status); });
    if (children.empty() || steady_clock::now() >= deadline) return;
    std::this_thread::sleep_for(pause);
    pause = std::min(pause * 2, milliseconds{20});
  }
}

}  // namespace hearthmake::posix
