#include <fmt/format.h>

#include "host/commands/Commands.hpp"

namespace hearthmake::host {

namespace {

// A start-up project that is left out of the group would be none.
automation::Ref<Project> FindStartUp(Build& build, const std::string& name) {
  if (name.empty()) return nullptr;
  auto project = FindProject(build, name);
  if (!project->CompileMe()) {
    throw HostError(
        fmt::format("{} can't be the start-up project: a group leaves out what is not compiled.",
                    project->Name()),
        fmt::format("Switch it on: hearthmake set '{}' '{}' CompileMe true", build.Name(), project->Name()));
  }
  return project;
}

std::size_t CountCompiled(Build& build) {
  std::size_t count = 0;
  for (const auto& project : AllProjects(build)) count += project->CompileMe() ? 1 : 0;
  return count;
}

}  // namespace

ExitStatus GroupCommand(Session& session, const GroupArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const auto startUp = FindStartUp(*build, arguments.startUp);
  const std::string file = session.DosPath(arguments.file);
  // In list order: the group is also where a developer repairs a cycle of references.
  build->CreateProjectGroupFile(file, startUp.Get());
  session.Out().Out(
      fmt::format("Wrote {}: {} projects{}.\n", session.PosixPath(file), CountCompiled(*build),
                  startUp ? fmt::format(", {} starts", Printable(startUp->Name())) : std::string()));
  if (!arguments.fix) return ExitStatus::Done;
  build->FixReferencesInProjectGroup();
  session.Out().Out("The references between them name project files now; the next build names libraries.\n");
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
