#include "host/windows/RunningChildren.hpp"

#include <mutex>

namespace hearthmake::host {

namespace {

std::mutex s_mutex;
std::weak_ptr<win32::Win32ProcessLauncher> s_launcher;

}  // namespace

void RememberLauncher(const std::shared_ptr<win32::Win32ProcessLauncher>& launcher) {
  const std::lock_guard lock(s_mutex);
  s_launcher = launcher;
}

void TerminateChildren() {
  std::shared_ptr<win32::Win32ProcessLauncher> launcher;
  {
    const std::lock_guard lock(s_mutex);
    launcher = s_launcher.lock();
  }
  if (launcher) launcher->TerminateRunning();
}

}  // namespace hearthmake::host
