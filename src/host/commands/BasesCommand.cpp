#include <fmt/format.h>

#include "host/builds/EditCycle.hpp"
#include "host/commands/Commands.hpp"
#include "host/commands/CompileOrder.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

// Visual Basic's own default for a new project.
constexpr std::int32_t kDefaultStart = 0x11000000;

std::int32_t ChooseStart(const Build& build, const std::string& typed) {
  if (!typed.empty()) return ParseLong(typed, "START");
  return build.StartDllBaseAddress() == 0 ? kDefaultStart : build.StartDllBaseAddress();
}

}  // namespace

ExitStatus BasesCommand(Session& session, const BasesArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::int32_t start = ChooseStart(*build, arguments.start);
  SetCompileOrder(*build);
  build->GenerateDllBaseAddresses(start);
  if (start != build->StartDllBaseAddress()) {
    EditCycle edit(*build);
    build->SetStartDllBaseAddress(start);
    edit.Apply();
  }
  std::string text;
  for (const auto& project : AllProjects(*build)) {
    if (!project->IsInprocess()) continue;
    text += fmt::format("{:<11}  {}\n", AddressText(project->DllBaseAddress()), Printable(project->Name()));
  }
  session.Out().Out(text.empty() ? "No project of the build needs a base address.\n" : text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
