#include <fmt/format.h>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/HostError.hpp"
#include "host/builds/BinaryState.hpp"
#include "host/builds/Properties.hpp"
#include "host/builds/ReferenceText.hpp"
#include "host/commands/Commands.hpp"
#include "host/packages/Packages.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/text/Json.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using automation::Member;
using automation::ValueKind;
using nlohmann::ordered_json;

// The items of a collection of texts.
std::vector<std::string> TextsOf(const automation::Variant& collection) {
  std::vector<std::string> texts;
  const auto walk = collection.AsObject()->Enumerate();
  for (automation::Variant item; walk->Next(item);) texts.push_back(automation::ToText(item));
  return texts;
}

bool IsReferences(const Member& property) { return property.name == "References"; }

// An object is told in a few words. The references of a project are listed behind its properties.
std::string Summary(const Member& property, const automation::Variant& object) {
  if (IsReferences(property)) {
    return fmt::format("{} (see below)", automation::ToText(object.AsObject()->Get("Count")));
  }
  const std::vector<std::string> texts = TextsOf(object);
  return fmt::format("{}: {} to {}", texts.size(), texts.front(), texts.back());
}

std::string ValueOrSummary(const Member& property, const automation::Variant& value) {
  return property.value.kind == ValueKind::Object ? Summary(property, value) : ValueText(property, value);
}

// A property that can't be read says why; the others are shown all the same.
std::string TextOf(automation::Object& object, const Member& property) {
  try {
    return Printable(ValueOrSummary(property, object.Get(property.name)));
  } catch (const automation::Error& error) {
    return fmt::format("({})", error.Description());
  }
}

ordered_json JsonOf(automation::Object& object, const Member& property) {
  try {
    const automation::Variant value = object.Get(property.name);
    switch (property.value.kind) {
      case ValueKind::Boolean: return automation::ToBoolean(value);
      case ValueKind::Integer:
      case ValueKind::Long: return automation::ToLong(value);
      case ValueKind::Object: return TextsOf(value);
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
  const std::string sources = SourceLines(session, build);
  if (!sources.empty()) text += "Sources\n" + sources;
  const ordered_json json = {{"id", build.Id()},
                             {"name", build.Name()},
                             {"startDllBaseAddress", build.StartDllBaseAddress()},
                             {"projects", std::move(projects)},
                             {"packages", std::move(packages)},
                             {"sourceProjects", SourcesJson(build)}};
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
}

void ShowProject(Session& session, Build& build, Project& project, bool asJson) {
  ordered_json json = ordered_json::object();
  std::string text;
  for (const Member* property : ShownProperties(Project::Describe())) {
    if (asJson) {
      if (IsReferences(*property)) continue;
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

// One property is printed bare, for scripts; what can't be read is an error here.
void ShowProperty(Session& session, automation::Object& object, const Member& property, bool asJson) {
  const automation::Variant value = object.Get(property.name);
  std::string text;
  if (asJson) {
    text = JsonText(JsonOf(object, property)) + "\n";
  } else if (property.value.kind == ValueKind::Object) {
    for (const std::string& item : TextsOf(value)) text += Printable(item) + "\n";
  } else {
    text = Printable(ValueText(property, value)) + "\n";
  }
  session.Out().Out(text);
}

void ShowProjectProperty(Session& session, Build& build, Project& project, const ShowArguments& arguments) {
  const Member& property = FindShown(Project::Describe(), arguments.property);
  if (!IsReferences(property)) return ShowProperty(session, project, property, arguments.json);
  session.Out().Out(arguments.json ? JsonText(ReferencesJson(build, project), 2) + "\n"
                                   : ReferenceLines(build, project));
}

// A project of that name goes before a property of the build.
void ShowMember(Session& session, Build& build, const ShowArguments& arguments) {
  automation::Ref<Project> project;
  try {
    project = FindProject(build, arguments.project);
  } catch (const HostError& error) {
    for (const Member* property : ReadableProperties(Build::Describe())) {
      if (!automation::EqualsIgnoreCaseAscii(property->name, arguments.project)) continue;
      return ShowProperty(session, build, *property, arguments.json);
    }
    throw HostError(error.what(), error.Advice() + "\nProperties of the build: " +
                                      NamesOf(ReadableProperties(Build::Describe())));
  }
  ShowProject(session, build, *project, arguments.json);
}

}  // namespace

ExitStatus ShowCommand(Session& session, const ShowArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  if (arguments.project.empty()) {
    ShowBuild(session, *build, arguments.json);
  } else if (arguments.property.empty()) {
    ShowMember(session, *build, arguments);
  } else {
    ShowProjectProperty(session, *build, *FindProject(*build, arguments.project), arguments);
  }
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
