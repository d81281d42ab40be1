#include "host/Session.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Builds.hpp"
#include "foundation/Settings.hpp"
#include "host/HostError.hpp"
#include "host/builds/Properties.hpp"
#include "host/system/Places.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using automation::Variant;

// Enough to see a misspelt name among; more would hide the message.
constexpr std::size_t kNamesShown = 20;

bool IsDosPath(std::string_view path) {
  const bool hasDrive =
      path.size() >= 2 && path[1] == ':' && ((path[0] | 0x20) >= 'a') && ((path[0] | 0x20) <= 'z');
  return hasDrive || path.starts_with('\\');
}

// The items of a collection of the library, by its enumerator.
template <class T, class Collection>
std::vector<automation::Ref<T>> ItemsOf(Collection& collection) {
  std::vector<automation::Ref<T>> items;
  const auto walk = collection.NewEnum();
  for (Variant item; walk->Next(item);) items.emplace_back(static_cast<T*>(item.AsObject()));
  return items;
}

std::string ListOfNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kNamesShown); ++i) {
    text += (text.empty() ? "" : ", ") + names[i];
  }
  if (names.size() > kNamesShown) text += fmt::format(" and {} more", names.size() - kNamesShown);
  return text;
}

[[noreturn]] void RefuseUnknownBuild(const std::string& idOrName,
                                     const std::vector<automation::Ref<Build>>& builds) {
  std::vector<std::string> names;
  names.reserve(builds.size());
  for (const auto& build : builds) names.push_back(fmt::format("{} ({})", build->Name(), build->Id()));
  throw HostError(fmt::format("There is no build '{}'.", idOrName),
                  names.empty() ? "There are no builds yet. Make one with: hearthmake new NAME"
                                : "There are: " + ListOfNames(names));
}

automation::Ref<Build> Loaded(std::int32_t id) {
  auto build = automation::Make<Build>();
  build->Load(id);
  return build;
}

}  // namespace

Session::Session(const HostOptions& options) : m_console(options.noColour), m_settings(options) {}

Composition& Session::Library() {
  if (!m_library) m_library = std::make_unique<Composition>(m_settings);
  return *m_library;
}

BuildDatabase Session::Database() { return {m_settings.DataFolder(), Library()}; }

std::string Session::DosPath(const std::string& typed) {
  return IsDosPath(typed) ? typed : Library().ToDosPath(typed);
}

std::string Session::PropertyValue(std::string_view property, const std::string& typed) {
  const PathKind kind = PathKindOf(property);
  const bool isPosix = kind != PathKind::None && !IsDosPath(typed) && typed.find('/') != std::string::npos;
  if (!isPosix) return typed;
  if (kind == PathKind::Absolute || typed.starts_with('/')) return DosPath(typed);
  return automation::ReplaceAll(typed, "/", "\\");
}

std::string Session::PosixPath(const std::string& dosPath) {
  return Library().ToSystemPath(dosPath).value_or(dosPath);
}

std::vector<automation::Ref<Build>> Session::ListBuilds() {
  Database().Require();
  const auto builds = automation::Make<Builds>();
  builds->LoadAll();
  return ItemsOf<Build>(*builds);
}

automation::Ref<Build> Session::OpenBuild(const std::string& idOrName) {
  const auto builds = ListBuilds();
  if (IsDigits(idOrName)) {
    for (const auto& build : builds) {
      if (automation::Decimal(build->Id()) == idOrName) return Loaded(build->Id());
    }
  }
  std::vector<std::int32_t> found;
  for (const auto& build : builds) {
    if (automation::EqualsIgnoreCase(build->Name(), automation::Trim(idOrName))) found.push_back(build->Id());
  }
  if (found.empty()) RefuseUnknownBuild(idOrName, builds);
  if (found.size() > 1) {
    throw HostError(fmt::format("There are {} builds '{}'.", found.size(), idOrName),
                    "Say which one by its id: hearthmake list");
  }
  return Loaded(found.front());
}

automation::Ref<Build> Session::NewBuild(const std::string& name) {
  Database().RequireOrMake();
  auto build = automation::Make<Build>();
  build->SetName(name);
  RequireFreeName(*build, name);
  return build;
}

void Session::RequireFreeName(const Build& build, const std::string& typed) {
  if (build.Name() != automation::Trim(typed)) {
    throw HostError(fmt::format("The name '{}' is too long.", typed),
                    fmt::format("A build's name has at most 30 characters: '{}'.", build.Name()));
  }
  for (const auto& other : ListBuilds()) {
    const bool isSame = other->Id() == build.Id();
    if (isSame || !automation::EqualsIgnoreCase(other->Name(), build.Name())) continue;
    throw HostError(fmt::format("There is a build '{}' already, its id is {}.", other->Name(), other->Id()),
                    "Choose another name.");
  }
}

automation::Ref<hearthmake::Settings> Session::LibrarySettings() {
  Library();
  try {
    return automation::Make<hearthmake::Settings>();
  } catch (const automation::Error& error) {
    const std::string path = LibrarySettingsPlace();
    const bool isNamed = error.Description().find(path) != std::string::npos;
    throw HostError(isNamed ? fmt::format("The settings can't be read: {}", error.Description())
                            : fmt::format("The settings can't be read: {}: {}", path, error.Description()),
                    "Correct the line or take it out of the file, section [Hearthmake\\VB].");
  }
}

automation::Ref<Project> FindProject(Build& build, const std::string& nameOrId) {
  Projects& projects = build.Projects();
  try {
    return projects.GetByName(nameOrId);
  } catch (const automation::Error&) {
    // Not a name; perhaps an id.
  }
  try {
    if (IsDigits(nameOrId)) return projects.Item(Variant::FromText(nameOrId));
  } catch (const automation::Error&) {
    // Neither.
  }
  std::vector<std::string> names;
  for (const auto& project : AllProjects(build)) names.push_back(project->Name());
  throw HostError(fmt::format("The build '{}' has no project '{}'.", build.Name(), nameOrId),
                  names.empty() ? "It has no projects yet. Add some with: hearthmake add BUILD FILE..."
                                : "It has: " + ListOfNames(names));
}

std::vector<automation::Ref<Project>> AllProjects(Build& build) { return ItemsOf<Project>(build.Projects()); }

std::vector<automation::Ref<Reference>> AllReferences(const Project& project) {
  return ItemsOf<Reference>(project.ReferenceList());
}

}  // namespace hearthmake::host
