#include <fmt/format.h>

#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

// The command that takes the reference of the one project to the other away.
std::string DropCommand(const ExaminedBuild& examined, const Project& project, const Project& target) {
  std::size_t position = 0;
  for (const auto& reference : AllReferences(project)) {
    ++position;
    if (reference->IsExternal() || reference->ReferencedProject() != target.Id()) continue;
    return fmt::format("hearthmake refs {} --drop {} {}", examined.name, ShellQuote(project.Name()),
                       position);
  }
  return {};
}

}  // namespace

void CheckCycles(Session& session, const ExaminedBuild& examined, Findings& findings) {
  const ProjectList cycle = ProjectGraph(examined.projects).FindCycle();
  if (cycle.empty()) return;
  std::string text;
  for (const auto& project : cycle) text += project->Name() + " -> ";
  findings.Fail(fmt::format("The references run in a circle: {}{}.", text, cycle.front()->Name()),
                session.PosixPath(cycle.front()->ProjectPath()),
                DropCommand(examined, *cycle.front(), *cycle[1 % cycle.size()]));
}

}  // namespace hearthmake::host
