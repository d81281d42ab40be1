#include "host/system/PasswordPrompt.hpp"

#include <windows.h>

#include <array>
#include <optional>

#include "adapters/win32/WideText.hpp"
#include "host/HostError.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

// No password is longer than a line of a console.
constexpr std::size_t kLongest = 4096;

HANDLE Input() { return GetStdHandle(STD_INPUT_HANDLE); }

// What is typed is not shown while it lives.
class HiddenInput {
 public:
  HiddenInput() {
    if (GetConsoleMode(Input(), &m_before) == 0)
      throw HostError("There is no console on which to ask for the password.",
                      "Give it as a line on standard input, with --password-stdin.");
    SetConsoleMode(Input(), m_before & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  }
  HiddenInput(const HiddenInput&) = delete;
  HiddenInput& operator=(const HiddenInput&) = delete;
  ~HiddenInput() { SetConsoleMode(Input(), m_before); }

 private:
  DWORD m_before = 0;
};

void DropLineEnd(std::string& line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
}

// Nothing when the question was ended by Ctrl-C or Ctrl-Z.
std::optional<std::string> ReadTyped() {
  std::array<wchar_t, kLongest> units{};
  DWORD count = 0;
  const BOOL isRead = ReadConsoleW(Input(), units.data(), static_cast<DWORD>(units.size()), &count, nullptr);
  if (isRead == 0 || count == 0 || Interrupt::IsRequested()) return std::nullopt;
  std::string line = win32::ToUtf8({units.data(), count});
  if (line.starts_with('\x1A')) return std::nullopt;
  DropLineEnd(line);
  return line;
}

// Byte by byte, because what follows the line is not ours.
std::optional<std::string> ReadPiped() {
  std::string line;
  char c = 0;
  DWORD count = 0;
  while (line.size() < kLongest && ReadFile(Input(), &c, 1, &count, nullptr) != 0 && count == 1) {
    line += c;
    if (c == '\n') break;
  }
  if (line.empty()) return std::nullopt;
  DropLineEnd(line);
  return line;
}

}  // namespace

std::string AskPassword(const Console& console, std::string_view prompt) {
  std::optional<std::string> line;
  {
    // Else Ctrl-C would end the process with the console still silent.
    const InterruptibleRun interruptible;
    const HiddenInput hidden;
    console.Err(prompt);
    line = ReadTyped();
  }
  console.Err("\n");
  if (!line) throw HostError("No password was given.", "", ExitStatus::Cancelled);
  return *line;
}

std::string ReadPassword() {
  if (auto line = ReadPiped()) return *line;
  throw HostError("There is no password on standard input.", "It is to be the first line there.");
}

}  // namespace hearthmake::host
