// What the tests of child processes start. The first argument says what to do:
//   quick            ends at once, with exit code 3
//   lasting          runs for a minute
//   echo             writes its standard input to its standard output
//   show FILE ARG…   writes the arguments behind FILE, each in angle brackets, to FILE
//   start FILE LINE  starts a command line and waits for it, its process id in FILE

#include <windows.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace {

constexpr int kQuick = 3;
constexpr DWORD kMinute = 60'000;

int Echo() {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  std::array<char, 4096> buffer{};
  DWORD count = 0;
  while (ReadFile(input, buffer.data(), buffer.size(), &count, nullptr) != 0 && count > 0) {
    DWORD written = 0;
    WriteFile(output, buffer.data(), count, &written, nullptr);
  }
  return 0;
}

int Show(int count, char** arguments) {
  std::ofstream file(arguments[0], std::ios::binary);
  for (int i = 1; i < count; ++i) file << '<' << arguments[i] << '>';
  return 0;
}

int Start(const char* file, char* line) {
  STARTUPINFOA startUp{};
  startUp.cb = sizeof startUp;
  PROCESS_INFORMATION information{};
  if (CreateProcessA(nullptr, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startUp, &information) ==
      0)
    return 1;
  std::ofstream(file, std::ios::binary) << information.dwProcessId << '\n';
  WaitForSingleObject(information.hProcess, INFINITE);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  if (what == "quick") return kQuick;
  if (what == "lasting") return Sleep(kMinute), 0;
  if (what == "echo") return Echo();
  if (what == "show" && argc > 2) return Show(argc - 2, argv + 2);
  if (what == "start" && argc == 4) return Start(argv[2], argv[3]);
  return 2;
}
