#include "adapters/win32/Win32Shell.hpp"

#include <windows.h>

#include <string>

#include "adapters/win32/Handle.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

namespace {

// The first word of a command line, or what stands in the quotes that it begins with.
std::string_view ProgramOf(std::string_view commandLine) {
  const std::size_t begin = commandLine.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  const bool isQuoted = commandLine[begin] == '"';
  const std::string_view rest = commandLine.substr(begin + (isQuoted ? 1 : 0));
  return rest.substr(0, rest.find(isQuoted ? '"' : ' '));
}

}  // namespace

void Win32Shell::Start(std::string_view commandLine, platform::WindowState window) {
  STARTUPINFOW startUp{};
  startUp.cb = sizeof startUp;
  startUp.dwFlags = STARTF_USESHOWWINDOW;
  startUp.wShowWindow = static_cast<WORD>(window);  // the port has the system's numbers
  std::wstring line = ToWide(commandLine);
  PROCESS_INFORMATION information{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                     &startUp, &information) == 0) {
    automation::Raise(automation::RuntimeError::FileNotFound, "Shell", std::string(ProgramOf(commandLine)));
  }
  const Handle process(information.hProcess);
  const Handle thread(information.hThread);
}

}  // namespace hearthmake::win32
