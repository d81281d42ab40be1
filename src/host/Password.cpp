#include "host/Password.hpp"

#include <termios.h>
#include <unistd.h>

#include <cerrno>

#include "host/HostError.hpp"
#include "host/Interrupt.hpp"

namespace hearthmake::host {

namespace {

// Far more than a password: what never ends its line is no terminal's.
constexpr std::size_t kLongestLine = 64 * 1024;

// Byte by byte: what follows the line is for another reader of the same stream.
std::string ReadLine() {
  std::string line;
  char byte = 0;
  while (line.size() < kLongestLine) {
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    if (count < 0 && errno == EINTR && !Interrupt::IsRequested()) continue;
    if (count <= 0 || byte == '\n') break;
    line += byte;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

class SilentTerminal {
 public:
  SilentTerminal() {
    if (tcgetattr(STDIN_FILENO, &m_before) != 0) {
      throw HostError("A password can be asked for on a terminal only.",
                      "Elsewhere, --password-stdin reads it from the first line of standard input.");
    }
    termios silent = m_before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;
  ~SilentTerminal() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }

 private:
  termios m_before{};
};

void Show(const std::string& text) {
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace

std::string AskPassword(const std::string& question) {
  // A signal that ended the process at once would leave the terminal silent.
  const InterruptibleRun interruptible;
  std::string password;
  {
    const SilentTerminal silent;
    Show(question);
    password = ReadLine();
    Show("\n");
  }
  if (Interrupt::IsRequested()) throw HostError("Cancelled.", "", ExitStatus::Cancelled);
  return password;
}

std::string ReadPasswordLine() { return ReadLine(); }

}  // namespace hearthmake::host
