#include <fmt/format.h>

#include <algorithm>

#include "host/commands/Commands.hpp"
#include "host/commands/ProjectRemoval.hpp"

namespace hearthmake::host {

ExitStatus RemoveCommand(Session& session, const RemoveArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  ProjectList projects;
  for (const std::string& name : arguments.projects) {
    const auto project = FindProject(*build, name);
    if (std::find(projects.begin(), projects.end(), project) == projects.end()) projects.push_back(project);
  }
  std::string text;
  for (const auto& project : projects) text += fmt::format("Removed {}\n", Printable(project->Name()));
  RemoveProjects(*build, projects);
  session.Out().Out(text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
