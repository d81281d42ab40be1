#include "host/system/Terminal.hpp"

#include <windows.h>

namespace hearthmake::host {

namespace {

HANDLE HandleOf(StandardStream stream) {
  switch (stream) {
    case StandardStream::Input: return GetStdHandle(STD_INPUT_HANDLE);
    case StandardStream::Output: return GetStdHandle(STD_OUTPUT_HANDLE);
    default: return GetStdHandle(STD_ERROR_HANDLE);
  }
}

}  // namespace

bool IsTerminal(StandardStream stream) {
  DWORD mode = 0;
  return GetConsoleMode(HandleOf(stream), &mode) != 0;
}

// From Windows 10 on consoles understand escape sequences, when they are told to.
bool IsCapableTerminal(StandardStream stream) {
  constexpr DWORD kEscapeSequences = 4;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
  const HANDLE console = HandleOf(stream);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != 0 && SetConsoleMode(console, mode | kEscapeSequences) != 0;
}

std::optional<std::size_t> TerminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO information{};
  if (GetConsoleScreenBufferInfo(HandleOf(StandardStream::Output), &information) == 0) return std::nullopt;
  const int width = information.srWindow.Right - information.srWindow.Left + 1;
  if (width <= 0) return std::nullopt;
  return static_cast<std::size_t>(width);
}

}  // namespace hearthmake::host
