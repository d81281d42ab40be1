#include "host/scripting/ScriptConsole.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/DescriptorStreams.hpp"
#include "automation/Error.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kFlushAt = 64U << 10U;

// A descriptor of its own, so that closing it leaves the standard one alone.
posix::FileDescriptor Duplicate(int descriptor) {
  return posix::FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

bool IsRegularFile(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

class ScriptConsole::SystemStandard final : public Standard {
 public:
  explicit SystemStandard(int descriptor)
      : m_stream(Duplicate(descriptor), "standard output"), m_isHeldBack(IsRegularFile(descriptor)) {}

  void Write(std::string_view bytes) override {
    m_bytes += bytes;
    if (!m_isHeldBack || m_bytes.size() >= kFlushAt) Flush();
  }
  std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) override {
    if (m_isHeldBack) {
      Write(bytes);
      return bytes.size();
    }
    return Unheard(bytes.size(), [&] { return m_stream.WriteSome(bytes, timeout); });
  }

  void Flush() override {
    std::string bytes;
    bytes.swap(m_bytes);
    Unheard(bytes.size(), [&] {
      m_stream.Write(bytes);
      return bytes.size();
    });
    bytes.clear();
    m_bytes.swap(bytes);
  }

 private:
  // What nobody reads counts as written.
  template <class Writing>
  static std::size_t Unheard(std::size_t size, Writing writing) {
    try {
      return writing();
    } catch (const automation::Error&) {
      return size;
    }
  }

  posix::DescriptorOutput m_stream;
  bool m_isHeldBack;
  std::string m_bytes;
};

ScriptConsole::ScriptConsole()
    : m_input(std::make_unique<posix::DescriptorInput>(Duplicate(STDIN_FILENO))),
      m_output(std::make_unique<SystemStandard>(STDOUT_FILENO)),
      m_error(std::make_unique<SystemStandard>(STDERR_FILENO)) {}

}  // namespace hearthmake::host
