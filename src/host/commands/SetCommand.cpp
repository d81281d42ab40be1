#include <fmt/format.h>

#include "host/builds/EditCycle.hpp"
#include "host/builds/Properties.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

namespace {

// What is stored may be less than what was typed: texts have a width.
void TellStored(Session& session, const std::string& owner, automation::Object& object,
                const automation::Interface& declaration, const std::string& property) {
  const automation::Member& readable = FindReadable(declaration, property);
  session.Out().Out(fmt::format("{}.{} = {}\n", Printable(owner), property,
                                Printable(ValueText(readable, object.Get(property)))));
}

void SetOfProject(Session& session, Project& project, const std::string& name, const std::string& value) {
  const automation::Member& property = FindSettable(Project::Describe(), name);
  EditCycle edit(project);
  project.Let(property.name, {ParseValue(property, session.PropertyValue(property.name, value))});
  edit.Apply();
  TellStored(session, project.Name(), project, Project::Describe(), property.name);
}

void SetOfBuild(Session& session, Build& build, const std::string& name, const std::string& value) {
  const automation::Member& property = FindSettable(Build::Describe(), name);
  const std::string owner = build.Name();
  EditCycle edit(build);
  build.Let(property.name, {ParseValue(property, value)});
  if (property.name == "Name") session.RequireFreeName(build, value);
  edit.Apply();
  TellStored(session, owner, build, Build::Describe(), property.name);
}

}  // namespace

ExitStatus SetCommand(Session& session, const SetArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::vector<std::string>& words = arguments.words;
  if (words.size() == 2) {
    SetOfBuild(session, *build, words[0], words[1]);
  } else {
    SetOfProject(session, *FindProject(*build, words[0]), words[1], words[2]);
  }
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
