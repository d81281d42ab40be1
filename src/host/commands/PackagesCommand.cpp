#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "deployment/COMApplications.hpp"
#include "host/builds/EditCycle.hpp"
#include "host/builds/Properties.hpp"
#include "host/commands/Commands.hpp"
#include "host/packages/Packages.hpp"
#include "host/system/PasswordPrompt.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using automation::ValueKind;
using nlohmann::ordered_json;

constexpr std::size_t kLongestPassword = 50;

// --- list and show ---

ExitStatus List(Session& session, Build& build, bool asJson) {
  auto json = ordered_json::array();
  std::string text;
  for (const Package& package : AllPackages(build)) {
    const ProjectList projects = ProjectsOf(build, *package);
    auto names = ordered_json::array();
    for (const auto& project : projects) names.push_back(project->Name());
    json.push_back({{"id", package->Id()}, {"name", package->Name()}, {"projects", std::move(names)}});
    text += fmt::format("{:>4}  {:<24} {}\n", package->Id(), Printable(package->Name()),
                        projects.empty() ? "(no projects)" : Printable(NamesOf(projects)));
  }
  if (text.empty())
    text = fmt::format("No packages yet. Make one with: hearthmake packages '{}' add NAME\n",
                       Printable(build.Name()));
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

std::string TextOf(Build& build, COMApplication& package, const PackageProperty& property) {
  automation::Object& object =
      property.isOfMts ? static_cast<automation::Object&>(*AsMts(build, package)) : package;
  return Printable(ValueText(*property.member, object.Get(property.member->name)));
}

ordered_json JsonOf(Build& build, COMApplication& package, const PackageProperty& property) {
  automation::Object& object =
      property.isOfMts ? static_cast<automation::Object&>(*AsMts(build, package)) : package;
  const automation::Variant value = object.Get(property.member->name);
  switch (property.member->value.kind) {
    case ValueKind::Boolean: return automation::ToBoolean(value);
    case ValueKind::Integer:
    case ValueKind::Long: return automation::ToLong(value);
    default: return ValueText(*property.member, value);
  }
}

ExitStatus Show(Session& session, Build& build, COMApplication& package, bool asJson) {
  ordered_json json = ordered_json::object();
  std::string text;
  for (const PackageProperty& property : ReadablePackageProperties()) {
    if (asJson) json[property.member->name] = JsonOf(build, package, property);
    text += fmt::format("{:<32} {}\n", property.member->name, TextOf(build, package, property));
  }
  const bool hasPassword = !package.Password().empty();
  const ProjectList projects = ProjectsOf(build, package);
  json["PasswordIsSet"] = hasPassword;
  json["Projects"] = ordered_json::array();
  for (const auto& project : projects) json["Projects"].push_back(project->Name());
  text += fmt::format("{:<32} {}\n{:<32} {}\n", "Password", hasPassword ? "(set)" : "", "Projects",
                      Printable(NamesOf(projects)));
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

// --- add and edit ---

std::string TypedPassword(Session& session, const PackagesArguments& arguments, const std::string& name) {
  const std::string password =
      arguments.passwordFromInput
          ? ReadPassword()
          : AskPassword(session.Out(), fmt::format("Password for {}: ", Printable(name)));
  if (automation::Length(password) > kLongestPassword)
    throw HostError(fmt::format("The password is longer than {} characters.", kLongestPassword));
  return password;
}

bool AsksForPassword(const PackagesArguments& arguments) {
  return arguments.password || arguments.passwordFromInput;
}

// Both are the one column that says how callers are checked.
void RefuseContradiction(const PackagesArguments& arguments) {
  const auto has = [&](const char* name) {
    return std::any_of(arguments.values.begin(), arguments.values.end(),
                       [&](const auto& value) { return value.first == name; });
  };
  if (has("Autentication") && has("Authorization"))
    throw HostError("Autentication (COM+) and Authorization (MTS) are the same place in the database.",
                    "Set the one that you deploy to.");
}

// Sets what was typed of one shape of the package.
void SetValues(Session& session, automation::Object& object, const PackagesArguments& arguments,
               bool isOfMts) {
  for (const PackageProperty& property : SettablePackageProperties()) {
    if (property.isOfMts != isOfMts) continue;
    const std::string& name = property.member->name;
    for (const auto& [typedName, typed] : arguments.values) {
      if (typedName == name)
        object.Let(name, {ParseValue(*property.member, session.PropertyValue(name, typed))});
    }
  }
}

bool SetsOfMts(const PackagesArguments& arguments) {
  for (const PackageProperty& property : SettablePackageProperties()) {
    for (const auto& [name, typed] : arguments.values) {
      if (property.isOfMts && name == property.member->name) return true;
    }
  }
  return false;
}

// In a build of its own, which reads the row as the application has left it.
void SetMtsValues(Session& session, Build& build, const COMApplication& package,
                  const PackagesArguments& arguments) {
  const auto again = session.OpenBuild(automation::Decimal(build.Id()));
  const auto mts = AsMts(*again, package);
  EditCycle edit(*mts);
  SetValues(session, *mts, arguments, true);
  edit.Apply();
}

// What is stored may be less than what was typed: texts have a width.
void TellStored(Session& session, Build& build, const COMApplication& package,
                const PackagesArguments& arguments) {
  const auto again = session.OpenBuild(automation::Decimal(build.Id()));
  const Package stored = FindPackage(*again, automation::Decimal(package.Id()));
  std::string text;
  for (const PackageProperty& property : ReadablePackageProperties()) {
    const auto isTyped = [&](const auto& value) { return value.first == property.member->name; };
    if (std::any_of(arguments.values.begin(), arguments.values.end(), isTyped))
      text += fmt::format("{}.{} = {}\n", Printable(stored->Name()), property.member->name,
                          TextOf(*again, *stored, property));
  }
  if (AsksForPassword(arguments))
    text += fmt::format("{}.Password is {}\n", Printable(stored->Name()),
                        stored->Password().empty() ? "empty" : "set");
  session.Out().Out(text);
}

void RefuseTakenName(Build& build, const std::string& name, const COMApplication* self = nullptr) {
  for (const Package& other : AllPackages(build)) {
    if (other.Get() == self || !automation::EqualsIgnoreCase(other->Name(), automation::Trim(name))) continue;
    throw HostError(fmt::format("There is a package '{}' already, its id is {}.", other->Name(), other->Id()),
                    "Choose another name.");
  }
}

// Names tell packages apart in a catalog.
void Rename(Build& build, COMApplication& package, const std::string& name) {
  RefuseTakenName(build, name, &package);
  package.SetName(name);
  if (package.Name() != automation::Trim(name))
    throw HostError(fmt::format("The name '{}' is too long.", name),
                    fmt::format("A package's name has at most 50 characters: '{}'.", package.Name()));
}

// A new name among the values that were typed.
std::optional<std::string> TypedName(const PackagesArguments& arguments) {
  for (const auto& [name, typed] : arguments.values) {
    if (name == "Name") return typed;
  }
  return std::nullopt;
}

void Store(Session& session, Build& build, COMApplication& package, const PackagesArguments& arguments,
           const std::optional<std::string>& newName) {
  RefuseContradiction(arguments);
  const bool asks = AsksForPassword(arguments);
  {
    EditCycle edit(package);
    if (newName) Rename(build, package, *newName);
    SetValues(session, package, arguments, false);
    if (asks) package.SetPassword(TypedPassword(session, arguments, package.Name()));
    edit.Apply();
  }
  if (SetsOfMts(arguments)) SetMtsValues(session, build, package, arguments);
}

ExitStatus Add(Session& session, Build& build, const PackagesArguments& arguments) {
  const Package package = build.COMApplications().Create();
  Store(session, build, *package, arguments, arguments.package);
  session.Out().Out(fmt::format("Added package {} ({}).\n", Printable(package->Name()), package->Id()));
  TellStored(session, build, *package, arguments);
  return ExitStatus::Done;
}

ExitStatus Edit(Session& session, Build& build, const PackagesArguments& arguments) {
  const Package package = FindPackage(build, arguments.package);
  if (arguments.values.empty() && !AsksForPassword(arguments))
    throw HostError("There is nothing to change.",
                    fmt::format("See: hearthmake packages '{}' edit --help", build.Name()));
  Store(session, build, *package, arguments, TypedName(arguments));
  TellStored(session, build, *package, arguments);
  return ExitStatus::Done;
}

// --- assign and remove ---

ExitStatus Assign(Session& session, Build& build, const PackagesArguments& arguments) {
  std::vector<std::string> words = arguments.words;
  Package package;
  if (!arguments.none) {
    package = FindPackage(build, words.front());
    words.erase(words.begin());
  }
  if (words.empty()) throw HostError("Which projects?", "Name them behind the package.");
  ProjectList projects;
  for (const std::string& word : words) {
    projects.push_back(FindProject(build, word));
    if (package && !IsServerComponent(*projects.back()))
      throw HostError(fmt::format("{} is no ActiveX DLL or EXE.", projects.back()->Name()),
                      "Only those go into packages.");
  }
  for (const auto& project : projects) {
    AssignPackage(*project, package ? package->Id() : 0);
    session.Out().Out(fmt::format("{}: {}\n", Printable(project->Name()),
                                  package ? "package " + Printable(package->Name()) : "no package"));
  }
  return ExitStatus::Done;
}

ExitStatus Remove(Session& session, Build& build, const PackagesArguments& arguments) {
  const Package package = FindPackage(build, arguments.package);
  const std::string name = package->Name();
  if (const ProjectList projects = ProjectsOf(build, *package); !projects.empty()) {
    std::string quoted;
    for (const auto& project : projects) quoted += fmt::format(" '{}'", project->Name());
    throw HostError(
        fmt::format("The package '{}' is used by {}.", name, NamesOf(projects)),
        fmt::format("Take them out with: hearthmake packages '{}' assign --none{}", build.Name(), quoted));
  }
  EditCycle edit(*package);
  package->Delete();
  edit.Apply();
  session.Out().Out(
      fmt::format("Removed package {}. A catalog that has it is not touched.\n", Printable(name)));
  return ExitStatus::Done;
}

}  // namespace

ExitStatus PackagesCommand(Session& session, const PackagesArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  switch (arguments.action) {
    case PackagesAction::List: return List(session, *build, arguments.json);
    case PackagesAction::Show:
      return Show(session, *build, *FindPackage(*build, arguments.package), arguments.json);
    case PackagesAction::Add: return Add(session, *build, arguments);
    case PackagesAction::Edit: return Edit(session, *build, arguments);
    case PackagesAction::Assign: return Assign(session, *build, arguments);
    case PackagesAction::Remove: return Remove(session, *build, arguments);
  }
  return ExitStatus::WrongInput;
}

}  // namespace hearthmake::host
