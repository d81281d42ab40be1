#include <fmt/format.h>

#include "host/EditCycle.hpp"
#include "host/Properties.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

ExitStatus SetCommand(Session& session, const SetArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const auto project = FindProject(*build, arguments.project);
  const automation::Member& property = FindSettable(Project::Describe(), arguments.property);
  EditCycle edit(*project);
  project->Let(property.name, {ParseValue(property, session.PropertyValue(property.name, arguments.value))});
  edit.Apply();
  // What is stored may be less than what was typed: texts have a width.
  const std::string stored =
      ValueText(FindReadable(Project::Describe(), property.name), project->Get(property.name));
  session.Out().Out(
      fmt::format("{}.{} = {}\n", Printable(project->Name()), property.name, Printable(stored)));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
