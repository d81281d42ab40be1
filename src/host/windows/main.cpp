#include <windows.h>

#include <ole2.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "adapters/win32/WideText.hpp"
#include "host/commandline/CommandLine.hpp"
#include "host/system/Interrupt.hpp"

namespace {

// The words of the command line in UTF-8. main's own have lost what the system's code page lacks.
std::vector<std::string> Words() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> texts;
  for (int i = 0; words != nullptr && i < count; ++i) texts.push_back(hearthmake::win32::ToUtf8(words[i]));
  LocalFree(words);
  return texts;
}

}  // namespace

int main() {
  SetConsoleOutputCP(CP_UTF8);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  hearthmake::host::Interrupt::Install();
  std::vector<std::string> words = Words();
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return static_cast<int>(hearthmake::host::RunCommandLine(static_cast<int>(words.size()), arguments.data()));
}
