#include "adapters/posix/DescriptorStreams.hpp"

#include <poll.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "adapters/posix/FileFailure.hpp"

namespace hearthmake::posix {

namespace {

// A write to a pipe without a reader raises a signal that ends the process; blocked in this thread for the
// time of the write, it is only an errno.
class BrokenPipeBlock {
 public:
  BrokenPipeBlock() {
    sigset_t pending;
    sigpending(&pending);
    m_wasPending = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&m_signal);
    sigaddset(&m_signal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &m_signal, &m_old);
  }
  BrokenPipeBlock(const BrokenPipeBlock&) = delete;
  BrokenPipeBlock& operator=(const BrokenPipeBlock&) = delete;
  ~BrokenPipeBlock() {
    // The signal that the write has raised must not arrive when it is let through again.
    const timespec atOnce{};
    if (!m_wasPending) sigtimedwait(&m_signal, nullptr, &atOnce);
    pthread_sigmask(SIG_SETMASK, &m_old, nullptr);
  }

 private:
  sigset_t m_signal{};
  sigset_t m_old{};
  bool m_wasPending = false;
};

}  // namespace

std::optional<std::size_t> DescriptorInput::Read(void* buffer, std::size_t count,
                                                 std::chrono::milliseconds timeout) {
  constexpr std::chrono::milliseconds kLongest{std::numeric_limits<int>::max()};
  pollfd entry{m_file.Get(), POLLIN, 0};
  const int ready = poll(&entry, 1, static_cast<int>(std::min(timeout, kLongest).count()));
  if (ready == 0 || (ready < 0 && errno == EINTR)) return std::nullopt;
  const ssize_t got = read(m_file.Get(), buffer, count);
  if (got < 0 && (errno == EINTR || errno == EAGAIN)) return std::nullopt;
  return got > 0 ? static_cast<std::size_t>(got) : 0;
}

void DescriptorOutput::Write(std::string_view bytes) {
  const BrokenPipeBlock block;
  const int error = m_file.WriteAll(bytes);
  if (error == EPIPE) RaiseFileFailure(automation::RuntimeError::PermissionDenied, m_name);
  if (error != 0) RaiseErrno(error, m_name);
}

}  // namespace hearthmake::posix
