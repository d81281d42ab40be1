#include "vbscript/objects/Shell.hpp"

#include "automation/Declare.hpp"
#include "automation/Text.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/EnvironmentText.hpp"
#include "vbscript/objects/ShellRegistry.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/objects/SystemError.hpp"
#include "vbscript/objects/Waiting.hpp"

namespace hearthmake::vbscript {

using automation::Make;
using automation::Ref;
using automation::Variant;

namespace {

[[noreturn]] void RaiseNoFile(const char* source) {
  automation::Raise(kSystemFileNotFound, source, "The system cannot find the file specified.");
}

void WaitForEnd(platform::ChildProcess& child, Budget& budget) {
  try {
    while (!child.Wait(kWaitSlice)) LookAtTime(budget);
  } catch (const Interrupted&) {
    child.Terminate();
    throw;
  }
}

}  // namespace

const automation::Interface& Shell::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("IWshShell3", "IWshShell3", "", "")
          .get<&Shell::SpecialFolders>("SpecialFolders")
          .get<&Shell::Environment>("Environment", {"Type"})
          .method<&Shell::Run>("Run", {"Command", "WindowStyle", "WaitOnReturn"})
          .method<&Shell::Popup>("Popup", {"Text", "SecondsToWait", "Title", "Type"})
          .method<&Shell::CreateShortcut>("CreateShortcut", {"PathLink"})
          .method<&Shell::ExpandEnvironmentStrings>("ExpandEnvironmentStrings", {"Src"})
          .method<&Shell::RegRead>("RegRead", {"Name"})
          .method<&Shell::RegWrite>("RegWrite", {"Name", "Value", "Type"})
          .method<&Shell::RegDelete>("RegDelete", {"Name"})
          .method<&Shell::LogEvent>("LogEvent", {"Type", "Message", "Target"})
          .method<&Shell::AppActivate>("AppActivate", {"App", "Wait"})
          .method<&Shell::SendKeys>("SendKeys", {"Keys", "Wait"})
          .method<&Shell::Exec>("Exec", {"Command"})
          .get<&Shell::CurrentDirectory>("CurrentDirectory")
          .let<&Shell::SetCurrentDirectory>("CurrentDirectory", {"Path"})
          .build();
  return kDeclaration;
}

std::int32_t Shell::Run(const std::string& command, std::optional<std::int32_t> /*windowStyle*/,
                        std::optional<bool> waits) {
  const auto child = m_context.host.Platform().processes->Start(ExpandEnvironmentStrings(command));
  if (!child) RaiseNoFile("WshShell.Run");
  if (!waits.value_or(false)) return 0;
  WaitForEnd(*child, m_context.budget);
  return child->ExitCode().value_or(0);
}

Ref<ShellExec> Shell::Exec(const std::string& command) {
  auto child = m_context.host.Platform().processes->StartPiped(ExpandEnvironmentStrings(command));
  if (!child.process) RaiseNoFile("WshShell.Exec");
  return Make<ShellExec>(m_context, std::move(child));
}

Ref<ShellEnvironment> Shell::Environment(std::optional<std::string> type) {
  const std::string which = type.value_or("SYSTEM");
  for (const char* known : {"PROCESS", "SYSTEM", "USER", "VOLATILE"}) {
    if (!automation::EqualsIgnoreCaseAscii(which, known)) continue;
    return Make<ShellEnvironment>(m_context, automation::EqualsIgnoreCaseAscii(which, "PROCESS"));
  }
  RaiseRuntime(number::kInvalidProcedureCall);
}

std::string Shell::ExpandEnvironmentStrings(const std::string& text) {
  return ExpandEnvironment(*m_context.host.Platform().system, text);
}

std::string Shell::CurrentDirectory() { return m_context.host.Platform().files->CurrentFolder(); }

void Shell::SetCurrentDirectory(const std::string& folder) {
  try {
    m_context.host.Platform().files->SetCurrentFolder(folder);
  } catch (const automation::Error&) {
    RaiseNoFile("WshShell.CurrentDirectory");
  }
}

Ref<SpecialFolders> Shell::SpecialFolders() { return Make<vbscript::SpecialFolders>(m_context); }

Variant Shell::RegRead(const std::string& name) {
  return ShellRegistry(m_context.host.Platform()).Read(name);
}

void Shell::RegWrite(const std::string& name, const Variant& value, std::optional<std::string> type) {
  ShellRegistry(m_context.host.Platform()).Write(name, value, type);
}

void Shell::RegDelete(const std::string& name) { ShellRegistry(m_context.host.Platform()).Delete(name); }

std::int32_t Shell::Popup(const std::string& text, std::optional<Variant> /*seconds*/,
                          std::optional<std::string> title, std::optional<std::int32_t> type) {
  return m_context.host.ShowMessage(text, type.value_or(0), title.value_or("Windows Script Host"));
}

bool Shell::LogEvent(const Variant& /*type*/, const std::string& /*message*/,
                     std::optional<std::string> /*target*/) {
  return false;
}

bool Shell::AppActivate(const Variant& /*title*/, std::optional<Variant> /*waits*/) { return false; }

void Shell::SendKeys(const std::string& /*keys*/, std::optional<Variant> /*waits*/) {
  RaiseRuntime(number::kActionNotSupported);
}

Ref<automation::Object> Shell::CreateShortcut(const std::string& /*path*/) {
  RaiseRuntime(number::kActionNotSupported);
}

Ref<automation::Object> CreateShell(Context& context) {
  const platform::Platform& ports = context.host.Platform();
  if (!ports.processes || !ports.system || !ports.files || !ports.registry) return nullptr;
  return Make<Shell>(context);
}

}  // namespace hearthmake::vbscript
