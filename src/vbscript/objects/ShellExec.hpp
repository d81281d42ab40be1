#pragma once

#include "automation/Object.hpp"
#include "platform/ProcessLauncher.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/TextStream.hpp"

namespace hearthmake::vbscript {

// What WshShell.Exec gives: a child whose standard streams are text streams here. Lines to it end in "\n".
class ShellExec final : public automation::Object {
 public:
  ShellExec(Context& context, platform::PipedChild child);
  const automation::Interface& Declaration() const override;

  // 0 while the child runs, 1 when it has ended.
  std::int32_t Status();
  automation::Ref<TextStream> StdIn() { return m_input; }
  automation::Ref<TextStream> StdOut() { return m_output; }
  automation::Ref<TextStream> StdErr() { return m_error; }
  std::int32_t ProcessID() { return m_process->ProcessId(); }
  // 0 while the child runs.
  std::int32_t ExitCode() { return m_process->ExitCode().value_or(0); }
  void Terminate() { m_process->Terminate(); }

 private:
  std::unique_ptr<platform::ChildProcess> m_process;
  automation::Ref<TextStream> m_input;
  automation::Ref<TextStream> m_output;
  automation::Ref<TextStream> m_error;
};

}  // namespace hearthmake::vbscript
