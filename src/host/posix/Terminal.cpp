#include "host/system/Terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace hearthmake::host {

namespace {

int DescriptorOf(StandardStream stream) {
  switch (stream) {
    case StandardStream::Input: return STDIN_FILENO;
    case StandardStream::Output: return STDOUT_FILENO;
    default: return STDERR_FILENO;
  }
}

}  // namespace

bool IsTerminal(StandardStream stream) { return isatty(DescriptorOf(stream)) == 1; }

bool IsCapableTerminal(StandardStream stream) {
  const char* terminal = std::getenv("TERM");
  return IsTerminal(stream) && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::optional<std::size_t> TerminalWidth() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return std::nullopt;
  return size.ws_col;
}

}  // namespace hearthmake::host
