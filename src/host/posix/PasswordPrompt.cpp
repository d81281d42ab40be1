#include "host/system/PasswordPrompt.hpp"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "host/HostError.hpp"
#include "host/system/Interrupt.hpp"

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

// Holds the signals back that end a process, so that they come while we wait for input and at no other time.
class HeldSignals {
 public:
  HeldSignals() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &m_before);
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;
  ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

  // False when a signal asked to end the process.
  bool WaitForInput() const {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (ppoll(&input, 1, nullptr, &m_before) < 0 && errno == EINTR) {
      if (Interrupt::IsRequested()) return false;
    }
    return true;
  }

 private:
  sigset_t m_before{};
};

// A line without its end; nothing when the input has ended, or wait says that it is not to come. Byte by
// byte, because what follows the line is not ours.
template <class Wait>
std::optional<std::string> ReadLine(const Wait& wait) {
  std::string line;
  for (char c = 0; line.size() < kLongest;) {
    if (!wait()) return std::nullopt;
    const ssize_t count = read(STDIN_FILENO, &c, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || (count == 0 && line.empty())) return std::nullopt;
    if (count == 0 || c == '\n') break;
    line += c;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::optional<std::string> AskSilently(const Console& console, std::string_view prompt) {
  // Else Ctrl-C would end the process with the terminal still silent.
  const InterruptibleRun interruptible;
  const HeldSignals signals;
  const HiddenInput hidden;
  console.Err(prompt);
  return ReadLine([&] { return signals.WaitForInput(); });
}

}  // namespace

std::string AskPassword(const Console& console, std::string_view prompt) {
  if (auto line = AskSilently(console, prompt)) return *line;
  console.Err("\n");
  throw HostError("No password was given.", "", ExitStatus::Cancelled);
}

std::string ReadPassword() {
  if (auto line = ReadLine([] { return true; })) return *line;
  throw HostError("There is no password on standard input.", "It is to be the first line there.");
}

}  // namespace hearthmake::host
