#include "host/ScriptConsole.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/posix/DescriptorStreams.hpp"
#include "automation/Error.hpp"
#include "host/Interrupt.hpp"
#include "host/Terminal.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kFlushAt = 64U << 10U;
constexpr std::chrono::milliseconds kLook{100};

// A descriptor of its own, so that closing it leaves the standard one alone.
posix::FileDescriptor Duplicate(int descriptor) {
  return posix::FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

bool IsRegularFile(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

class ScriptConsole::Standard final : public platform::OutputStream {
 public:
  explicit Standard(int descriptor)
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

  void Flush() {
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
      m_output(std::make_unique<Standard>(STDOUT_FILENO)),
      m_error(std::make_unique<Standard>(STDERR_FILENO)) {}

ScriptConsole::~ScriptConsole() { Flush(); }

platform::InputStream& ScriptConsole::Input() { return *m_input; }
platform::OutputStream& ScriptConsole::Output() { return *m_output; }
platform::OutputStream& ScriptConsole::Error() { return *m_error; }

void ScriptConsole::Flush() {
  m_output->Flush();
  m_error->Flush();
}

bool ScriptConsole::IsTerminal() const {
  return host::IsTerminal(StandardStream::Input) && host::IsTerminal(StandardStream::Output);
}

bool ScriptConsole::ReadLine(std::string& line) {
  Flush();
  line.clear();
  while (!Interrupt::IsRequested()) {
    char c = '\0';
    const auto count = m_input->Read(&c, 1, kLook);
    if (!count) continue;
    if (*count == 0) return !line.empty();
    if (c == '\n') return true;
    line += c;
  }
  return false;
}

}  // namespace hearthmake::host
