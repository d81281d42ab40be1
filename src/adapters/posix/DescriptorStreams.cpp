#include "adapters/posix/DescriptorStreams.hpp"

#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
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

int WaitFor(const FileDescriptor& file, short events, std::chrono::milliseconds timeout) {
  constexpr std::chrono::milliseconds kLongest{std::numeric_limits<int>::max()};
  pollfd entry{file.Get(), events, 0};
  return poll(&entry, 1, static_cast<int>(std::min(timeout, kLongest).count()));
}

}  // namespace

std::optional<std::size_t> DescriptorInput::Read(void* buffer, std::size_t count,
                                                 std::chrono::milliseconds timeout) {
  const int ready = WaitFor(m_file, POLLIN, timeout);
  if (ready == 0 || (ready < 0 && errno == EINTR)) return std::nullopt;
  const ssize_t got = read(m_file.Get(), buffer, count);
  if (got < 0 && (errno == EINTR || errno == EAGAIN)) return std::nullopt;
  return got > 0 ? static_cast<std::size_t>(got) : 0;
}

DescriptorOutput::DescriptorOutput(FileDescriptor file, std::string name)
    : m_file(std::move(file)), m_name(std::move(name)) {
  struct stat status {};
  m_isRegular = fstat(m_file.Get(), &status) == 0 && S_ISREG(status.st_mode);
}

void DescriptorOutput::Write(std::string_view bytes) {
  const BrokenPipeBlock block;
  const int error = m_file.WriteAll(bytes);
  if (error != 0) Fail(error);
}

std::size_t DescriptorOutput::WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) {
  if (m_isRegular) {
    Write(bytes);
    return bytes.size();
  }
  const int ready = WaitFor(m_file, POLLOUT, timeout);
  if (ready == 0 || (ready < 0 && errno == EINTR)) return 0;
  const BrokenPipeBlock block;
  // So much a pipe that is ready takes without waiting.
  const ssize_t written = write(m_file.Get(), bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
  if (written >= 0) return static_cast<std::size_t>(written);
  if (errno == EINTR || errno == EAGAIN) return 0;
  Fail(errno);
}

void DescriptorOutput::Fail(int error) const {
  if (error == EPIPE) RaiseFileFailure(automation::RuntimeError::PermissionDenied, m_name);
  RaiseErrno(error, m_name);
}

}  // namespace hearthmake::posix
