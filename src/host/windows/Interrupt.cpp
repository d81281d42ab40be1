#include "host/system/Interrupt.hpp"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <mutex>

#include "host/HostError.hpp"
#include "host/windows/RunningChildren.hpp"

namespace hearthmake::host {

namespace {

std::atomic<bool> s_isRunning = false;
std::atomic<bool> s_isRequested = false;
// The system calls on a thread of its own, which must not meet a context that is just going.
std::mutex s_mutex;
void (*s_onRequest)(void*) = nullptr;
void* s_requestContext = nullptr;
std::filesystem::path s_folder;

void CallOnRequest() {
  const std::lock_guard lock(s_mutex);
  if (s_onRequest != nullptr) s_onRequest(s_requestContext);
}

void RemoveFolder() {
  const std::lock_guard lock(s_mutex);
  std::error_code ignored;
  if (!s_folder.empty()) std::filesystem::remove_all(s_folder, ignored);
}

BOOL WINAPI OnControl(DWORD event) {
  const bool isFirst = s_isRunning && !s_isRequested.exchange(true);
  // After the console has been closed the system waits for nobody.
  if (isFirst && (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)) {
    CallOnRequest();
    return TRUE;
  }
  TerminateChildren();
  RemoveFolder();
  ExitProcess(static_cast<UINT>(ExitStatus::Cancelled));
}

}  // namespace

void Interrupt::Install() { SetConsoleCtrlHandler(OnControl, TRUE); }

bool Interrupt::IsRequested() { return s_isRequested; }

void Interrupt::OnRequest(void (*call)(void*), void* context) {
  const std::lock_guard lock(s_mutex);
  s_onRequest = call;
  s_requestContext = context;
}

void Interrupt::RemoveAtEnd(const std::string& folder) {
  const std::lock_guard lock(s_mutex);
  s_folder = std::filesystem::path(std::u8string(folder.begin(), folder.end()));
}

InterruptibleRun::InterruptibleRun() {
  s_isRequested = false;
  s_isRunning = true;
}

InterruptibleRun::~InterruptibleRun() { s_isRunning = false; }

}  // namespace hearthmake::host
