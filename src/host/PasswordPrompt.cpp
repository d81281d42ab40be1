#include "host/PasswordPrompt.hpp"

#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "host/HostError.hpp"
#include "host/Interrupt.hpp"

namespace hearthmake::host {

namespace {

// No password is longer than a line of a terminal.
constexpr std::size_t kLongest = 4096;

// What is typed is not shown while it lives. What was typed ahead is dropped: it was shown.
class HiddenInput {
 public:
  HiddenInput() {
    if (tcgetattr(STDIN_FILENO, &m_before) != 0)
      throw HostError("There is no terminal on which to ask for the password.",
                      "Give it as a line on standard input, with --password-stdin.");
    termios hidden = m_before;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    hidden.c_lflag |= static_cast<tcflag_t>(ECHONL);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  }
  HiddenInput(const HiddenInput&) = delete;
  HiddenInput& operator=(const HiddenInput&) = delete;
  ~HiddenInput() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }

 private:
  termios m_before{};
};

// A line without its end; nothing when the input has ended or a signal came. Byte by byte, because what
// follows the line is not ours.
std::optional<std::string> ReadLine() {
  std::string line;
  for (char c = 0; line.size() < kLongest;) {
    const ssize_t count = read(STDIN_FILENO, &c, 1);
    if (count < 0 && errno == EINTR && !Interrupt::IsRequested()) continue;
    if (count < 0 || (count == 0 && line.empty())) return std::nullopt;
    if (count == 0 || c == '\n') break;
    line += c;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace

std::string AskPassword(const Console& console, std::string_view prompt) {
  std::optional<std::string> line;
  {
    const HiddenInput hidden;
    console.Err(prompt);
    // Else Ctrl-C would end the process with the terminal still silent.
    const InterruptibleRun interruptible;
    line = ReadLine();
  }
  if (!line) {
    console.Err("\n");
    throw HostError("No password was given.", "", ExitStatus::Cancelled);
  }
  return *line;
}

std::string ReadPassword() {
  if (auto line = ReadLine()) return *line;
  throw HostError("There is no password on standard input.", "It is to be the first line there.");
}

}  // namespace hearthmake::host
