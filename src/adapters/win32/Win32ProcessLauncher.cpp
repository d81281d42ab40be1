#include "adapters/win32/Win32ProcessLauncher.hpp"

#include <utility>

#include "adapters/win32/PipeStreams.hpp"
#include "adapters/win32/RunningProcess.hpp"
#include "adapters/win32/WideText.hpp"
#include "adapters/win32/Win32ChildProcess.hpp"

namespace hearthmake::win32 {

namespace {

STARTUPINFOW Hidden() {
  STARTUPINFOW startUp{};
  startUp.cb = sizeof startUp;
  startUp.dwFlags = STARTF_USESHOWWINDOW;
  startUp.wShowWindow = SW_HIDE;
  return startUp;
}

// Starts a program in a job of its own; the start-up information says the rest. Null when it can't be
// started.
std::shared_ptr<RunningProcess> StartProcess(std::string_view commandLine, STARTUPINFOW& startUp,
                                             DWORD flags) {
  std::wstring line = ToWide(commandLine);  // the system may write into it
  PROCESS_INFORMATION information{};
  // Suspended until it is in the job, lest it has started something before.
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                     NORMAL_PRIORITY_CLASS | CREATE_SUSPENDED | flags, nullptr, nullptr, &startUp,
                     &information) == 0) {
    return nullptr;
  }
  Handle process(information.hProcess);
  const Handle thread(information.hThread);
  Handle job(CreateJobObjectW(nullptr, nullptr));
  if (job && AssignProcessToJobObject(job.Get(), process.Get()) == 0) job.Reset();
  ResumeThread(thread.Get());
  return std::make_shared<RunningProcess>(std::move(process), std::move(job), information.dwProcessId);
}

}  // namespace

std::unique_ptr<platform::ChildProcess> Win32ProcessLauncher::Keep(std::shared_ptr<RunningProcess> process) {
  if (!process) return nullptr;
  const std::lock_guard lock(m_mutex);
  std::erase_if(m_running, [](const auto& running) { return running.expired(); });
  m_running.push_back(process);
  return std::make_unique<Win32ChildProcess>(std::move(process));
}

std::unique_ptr<platform::ChildProcess> Win32ProcessLauncher::Start(std::string_view commandLine) {
  STARTUPINFOW startUp = Hidden();
  return Keep(StartProcess(commandLine, startUp, CREATE_NO_WINDOW));
}

platform::PipedChild Win32ProcessLauncher::StartPiped(std::string_view commandLine) {
  Pipe input = MakePipe(PipeDirection::ToChild);
  Pipe output = MakePipe(PipeDirection::FromChild);
  Pipe error = MakePipe(PipeDirection::FromChild);
  if (!input.ours || !output.ours || !error.ours) return {};
  STARTUPINFOW startUp = Hidden();
  startUp.dwFlags |= STARTF_USESTDHANDLES;
  startUp.hStdInput = input.childs.Get();
  startUp.hStdOutput = output.childs.Get();
  startUp.hStdError = error.childs.Get();
  const auto process = StartProcess(commandLine, startUp, CREATE_NO_WINDOW);
  if (!process) return {};
  platform::PipedChild child;
  child.process = Keep(process);
  child.input = std::make_unique<PipeOutput>(std::move(input.ours), process);
  child.output = std::make_unique<PipeInput>(std::move(output.ours));
  child.error = std::make_unique<PipeInput>(std::move(error.ours));
  return child;
}

void Win32ProcessLauncher::TerminateRunning() {
  std::vector<std::shared_ptr<RunningProcess>> running;
  {
    const std::lock_guard lock(m_mutex);
    for (const auto& process : m_running) {
      if (auto held = process.lock()) running.push_back(std::move(held));
    }
  }
  for (const auto& process : running) {
    if (!process->HasEnded()) process->Terminate();
  }
}

}  // namespace hearthmake::win32
