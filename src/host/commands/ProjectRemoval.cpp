#include "host/commands/ProjectRemoval.hpp"

#include <fmt/format.h>

#include <unordered_map>
#include <unordered_set>

#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/builds/EditCycle.hpp"

namespace hearthmake::host {

namespace {

using automation::Variant;

using Places = std::unordered_map<std::int32_t, std::size_t>;

void RefuseUsedOnes(Build& build, const ProjectList& projects, const std::unordered_set<std::int32_t>& ids) {
  if (ids.size() == static_cast<std::size_t>(build.Projects().Count())) return;
  const ProjectGraph graph(AllProjects(build));
  for (const auto& project : projects) {
    std::string users;
    for (const auto& user : graph.UsersOf(*project)) {
      if (!ids.contains(user->Id())) users += (users.empty() ? "" : ", ") + user->Name();
    }
    if (users.empty()) continue;
    throw HostError(fmt::format("{} can't be removed, these reference it: {}.", project->Name(), users),
                    "Remove them too, or drop their references with: hearthmake refs BUILD --drop");
  }
}

// The references of a project to those that are removed before it: the ones that close a cycle.
void DropReferencesBack(Project& project, std::size_t place, const Places& places) {
  std::vector<std::string> dropped;
  for (const auto& reference : AllReferences(project)) {
    const auto target = places.find(reference->IsExternal() ? 0 : reference->ReferencedProject());
    if (target != places.end() && target->second < place) dropped.push_back(reference->Id());
  }
  if (dropped.empty()) return;
  EditCycle edit(project);
  for (const std::string& key : dropped) project.ReferenceList().Remove(Variant::FromText(key));
  edit.Apply();
}

}  // namespace

void RemoveProjects(Build& build, const ProjectList& projects) {
  std::unordered_set<std::int32_t> ids;
  for (const auto& project : projects) ids.insert(project->Id());
  RefuseUsedOnes(build, projects, ids);
  const ProjectList order = ProjectGraph(projects).UsersFirst();
  Places places;
  for (std::size_t i = 0; i < order.size(); ++i) places.emplace(order[i]->Id(), i);
  for (std::size_t i = 0; i < order.size(); ++i) DropReferencesBack(*order[i], i, places);
  for (const auto& project : order) {
    EditCycle edit(*project);
    project->Delete();
    edit.Apply();
  }
}

}  // namespace hearthmake::host
