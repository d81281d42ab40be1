#include <fmt/format.h>

#include "automation/Error.hpp"
#include "host/BinaryState.hpp"
#include "host/Json.hpp"
#include "host/Numbers.hpp"
#include "host/Packages.hpp"
#include "host/Properties.hpp"
#include "host/ReferenceText.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

namespace {

using automation::Member;
using automation::ValueKind;
using nlohmann::ordered_json;

// A property that can't be read says why; the others are shown all the same.
std::string TextOf(Project& project, const Member& property) {
  try {
    return Printable(ValueText(property, project.Get(property.name)));
  } catch (const automation::Error& error) {
    return fmt::format("({})", error.Description());
  }
}

ordered_json JsonOf(Project& project, const Member& property) {
  try {
    const automation::Variant value = project.Get(property.name);
    switch (property.value.kind) {
      case ValueKind::Boolean: return automation::ToBoolean(value);
      case ValueKind::Integer:
      case ValueKind::Long: return automation::ToLong(value);
      case ValueKind::Date:
        if (automation::ToDate(value) == 0) return nullptr;
        [[fallthrough]];
      default: return ValueText(property, value);
    }
  } catch (const automation::Error&) {
    return nullptr;
  }
}

std::string TypeOf(Project& project) {
  return TextOf(project, FindReadable(Project::Describe(), "ProjectType"));
}

void ShowBuild(Session& session, Build& build, bool asJson) {
  auto projects = ordered_json::array();
  std::string text =
      fmt::format("{}  (id {}, base addresses from {})\n{}\n", Printable(build.Name()), build.Id(),
                  AddressText(build.StartDllBaseAddress()), session.Database().Path());
  for (const auto& project : AllProjects(build)) {
    projects.push_back({{"id", project->Id()},
                        {"name", project->Name()},
                        {"type", TypeOf(*project)},
                        {"compileMe", project->CompileMe()},
                        {"path", project->ProjectPath()}});
    if (asJson) continue;
    text += fmt::format("{:>4}  {:<24} {:<11}{} {}\n", project->Id(), Printable(project->Name()),
                        TypeOf(*project), project->CompileMe() ? "" : " (not compiled)",
                        Printable(project->ProjectPath()));
  }
  if (projects.empty()) text += "No projects yet. Add some with: hearthmake add BUILD FILE...\n";
  auto packages = ordered_json::array();
  for (const Package& package : AllPackages(build)) {
    packages.push_back({{"id", package->Id()}, {"name", package->Name()}});
    text += fmt::format("{}{:>4}  {:<24} {}\n", packages.size() == 1 ? "Packages\n" : "", package->Id(),
                        Printable(package->Name()), Printable(NamesOf(ProjectsOf(build, *package))));
  }
  const ordered_json json = {{"id", build.Id()},
                             {"name", build.Name()},
                             {"startDllBaseAddress", build.StartDllBaseAddress()},
                             {"projects", std::move(projects)},
                             {"packages", std::move(packages)}};
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
}

void ShowProject(Session& session, Build& build, Project& project, bool asJson) {
  ordered_json json = ordered_json::object();
  std::string text;
  for (const Member* property : ReadableProperties(Project::Describe())) {
    if (asJson) {
      json[property->name] = JsonOf(project, *property);
    } else {
      text += fmt::format("{:<24} {}\n", property->name, TextOf(project, *property));
    }
  }
  const BinaryState binary = ReadBinary(project);
  if (asJson) {
    json["Binary"] = BinaryJson(binary);
    json["References"] = ReferencesJson(build, project);
  } else {
    text += BinaryLines(binary) + "References\n" + ReferenceLines(build, project);
  }
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
}

}  // namespace

ExitStatus ShowCommand(Session& session, const ShowArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  if (arguments.project.empty()) {
    ShowBuild(session, *build, arguments.json);
  } else {
    ShowProject(session, *build, *FindProject(*build, arguments.project), arguments.json);
  }
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
