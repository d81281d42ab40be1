#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "automation/Text.hpp"
#include "host/builds/EditCycle.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/builds/ReferenceText.hpp"
#include "host/commands/Commands.hpp"
#include "host/text/Json.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using automation::Variant;

bool IsRow(std::string_view target) {
  const std::string start = automation::Lower(target.substr(0, 10));
  return start == "reference=" || start.starts_with("object=");
}

automation::Ref<Project> TryFindProject(Build& build, const std::string& name) {
  try {
    return FindProject(build, name);
  } catch (const HostError&) {
    return nullptr;
  }
}

void AddReference(Session& session, Build& build, Project& project, const std::string& target) {
  References& references = project.ReferenceList();
  EditCycle edit(project);
  if (IsRow(target)) {
    if (!references.AddExternalReference(target, "")) {
      throw HostError(fmt::format("The row '{}' names no library.", target),
                      "A row holds the library's id in braces, as in a project file.");
    }
  } else if (const auto library = TryFindProject(build, target)) {
    references.AddInternalReference(*library);
  } else {
    references.AddExternalReference("", target.starts_with('%') ? target : session.DosPath(target));
  }
  edit.Apply();
}

void DropReferences(Project& project, const std::set<std::int32_t>& positions) {
  EditCycle edit(project);
  // From the end, so that the positions in front stay what they were when they were listed.
  for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
    const std::int32_t count = automation::ToLong(project.ReferenceList().Count());
    if (*position < 1 || *position > count) {
      throw HostError(fmt::format("{} has no reference {}.", project.Name(), *position),
                      count == 0 ? "It has none." : fmt::format("It has 1 to {}.", count));
    }
    project.ReferenceList().Remove(Variant::FromLong(*position));
  }
  edit.Apply();
}

// What was changed by hand is listed, and not detected again: that would undo it.
ProjectList Change(Session& session, Build& build, const RefsArguments& arguments) {
  ProjectList changed;
  const auto note = [&](const automation::Ref<Project>& project) {
    if (std::find(changed.begin(), changed.end(), project) == changed.end()) changed.push_back(project);
  };
  std::map<std::int32_t, std::set<std::int32_t>> drops;
  for (const auto& [name, position] : arguments.drop) {
    const auto project = FindProject(build, name);
    drops[project->Id()].insert(ParseLong(position, "INDEX"));
    note(project);
  }
  for (const auto& [id, positions] : drops) {
    DropReferences(*FindProject(build, automation::Decimal(id)), positions);
  }
  for (const auto& [name, target] : arguments.add) {
    const auto project = FindProject(build, name);
    AddReference(session, build, *project, target);
    note(project);
  }
  return changed;
}

ProjectList Detect(Build& build, const std::string& name) {
  if (name.empty()) {
    build.AutoDetectReferences();
    return AllProjects(build);
  }
  const auto project = FindProject(build, name);
  EditCycle edit(*project);
  project->GetReferencesFromVBP();
  edit.Apply();
  return {project};
}

}  // namespace

ExitStatus RefsCommand(Session& session, const RefsArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const bool isByHand = !arguments.add.empty() || !arguments.drop.empty();
  const ProjectList projects =
      isByHand ? Change(session, *build, arguments) : Detect(*build, arguments.project);
  auto json = nlohmann::ordered_json::array();
  std::string text;
  for (const auto& project : projects) {
    if (arguments.json) {
      json.push_back({{"id", project->Id()},
                      {"project", project->Name()},
                      {"references", ReferencesJson(*build, *project)}});
    } else {
      text += Printable(project->Name()) + "\n" + ReferenceLines(*build, *project);
    }
  }
  session.Out().Out(arguments.json ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
