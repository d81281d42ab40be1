#include "host/commands/CompileOrder.hpp"

#include <fmt/format.h>

#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

namespace {

std::string CycleText(const ProjectList& cycle) {
  std::string text;
  for (const auto& project : cycle) text += project->Name() + " -> ";
  return cycle.empty() ? text : text + cycle.front()->Name();
}

}  // namespace

void SetCompileOrder(Build& build) {
  try {
    build.Projects().SetCompileOrder();
  } catch (const automation::Error& error) {
    if (error.Number() != static_cast<std::int32_t>(automation::BuildErrors::beCyclicReferences)) throw;
    const ProjectList cycle = ProjectGraph(AllProjects(build)).FindCycle();
    throw HostError(fmt::format("{} {}", error.Description(), CycleText(cycle)),
                    fmt::format("Take one of these references out: hearthmake refs '{}' --drop PROJECT INDEX",
                                build.Name()),
                    ExitStatus::Failed);
  }
}

}  // namespace hearthmake::host
