#include "adapters/posix/PosixChildProcess.hpp"

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace hearthmake::posix {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

PosixChildProcess::~PosixChildProcess() {
  if (!m_ended) m_table->Abandon(m_pid);
}

bool PosixChildProcess::Wait(milliseconds timeout) {
  if (m_ended) return true;
  if (timeout <= milliseconds::zero()) return HasEnded();
  if (m_useDescriptor && !m_descriptor) {
    // Safe against a reused number: the child was not reaped, so it still has it.
    m_descriptor = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0)));
    m_useDescriptor = static_cast<bool>(m_descriptor);
  }
  if (m_useDescriptor) {
    WaitByDescriptor(timeout);
  } else {
    WaitByPauses(timeout);
  }
  return HasEnded();
}

void PosixChildProcess::Terminate() {
  if (HasEnded()) return;
  m_table->Terminate({m_pid}, &m_status);
  HasEnded();
}

std::optional<std::int32_t> PosixChildProcess::ExitCode() {
  if (!HasEnded() || !m_status) return std::nullopt;
  // As a shell counts: there is no other number for a child that a signal ended.
  constexpr std::int32_t kSignal = 128;
  return WIFSIGNALED(*m_status) ? kSignal + WTERMSIG(*m_status) : WEXITSTATUS(*m_status);
}

bool PosixChildProcess::HasEnded() {
  if (!m_ended && m_table->TryReap(m_pid, &m_status)) {
    m_ended = true;
    m_descriptor = FileDescriptor();
  }
  return m_ended;
}

void PosixChildProcess::WaitByDescriptor(milliseconds timeout) const {
  constexpr milliseconds longest{std::numeric_limits<int>::max()};
  pollfd entry{m_descriptor.Get(), POLLIN, 0};
  ::poll(&entry, 1, static_cast<int>(std::min(timeout, longest).count()));
}

void PosixChildProcess::WaitByPauses(milliseconds timeout) {
  constexpr milliseconds day{24 * 60 * 60 * 1000};  // keeps the sum below from overflowing
  const auto deadline = steady_clock::now() + std::min(timeout, day);
  milliseconds pause{1};
  while (!HasEnded() && steady_clock::now() < deadline) {
    const timespec duration{0, static_cast<long>(pause.count()) * 1'000'000};
    if (::nanosleep(&duration, nullptr) != 0 && errno == EINTR) return;
    pause = std::min(pause * 2, milliseconds{10});
  }
}

}  // namespace hearthmake::posix
