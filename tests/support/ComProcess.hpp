#pragma once

#include <string>

#include "com/Com.hpp"

namespace hearthmake::com {

struct ProcessResult {
  DWORD status = static_cast<DWORD>(-1);
  std::string output;  // standard output and error
};

// Runs a program of the machine to its end.
inline ProcessResult RunProcess(std::wstring commandLine) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  if (!CreatePipe(&reading, &writing, &inherited, 0)) return {};
  SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startUp = {};
  startUp.cb = sizeof startUp;
  startUp.dwFlags = STARTF_USESTDHANDLES;
  startUp.hStdOutput = writing;
  startUp.hStdError = writing;
  PROCESS_INFORMATION process = {};
  const BOOL started = CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                      nullptr, nullptr, &startUp, &process);
  CloseHandle(writing);
  ProcessResult result;
  char buffer[4096];
  DWORD count = 0;
  while (started && ReadFile(reading, buffer, sizeof buffer, &count, nullptr) && count != 0) {
    result.output.append(buffer, count);
  }
  CloseHandle(reading);
  if (!started) return result;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &result.status);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return result;
}

}  // namespace hearthmake::com
