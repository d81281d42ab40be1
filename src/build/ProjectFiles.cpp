#include "build/ProjectFiles.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Paths.hpp"
#include "project/Project.hpp"

namespace hearthmake {

void ProjectFiles::EraseFrom(Index& index, std::string_view key, Project* project) {
  const auto found = index.find(key);
  if (found == index.end()) return;
  std::erase(found->second, project);
  if (found->second.empty()) index.erase(found);
}

void ProjectFiles::EnterUnder(Index& index, std::string_view key, Project& project) {
  index[std::pmr::string(key, &m_pool)].push_back(&project);
}

void ProjectFiles::Add(Project& project) { Enter(project); }

void ProjectFiles::Enter(Project& project) {
  Keys keys;
  keys.projectPath = automation::Lower(AbsolutePath("", project.ProjectPath()));
  try {
    keys.binaryPath = automation::Lower(AbsolutePath("", project.BinaryPath()));
    keys.binaryName = automation::Lower(project.ExeName32());
  } catch (const automation::Error&) {
    keys.binaryPath.clear();  // a project of no known type has no binary that a reference could name
  }
  EnterUnder(m_byProjectPath, keys.projectPath, project);
  if (!keys.binaryPath.empty()) {
    EnterUnder(m_byBinaryPath, keys.binaryPath, project);
    EnterUnder(m_byBinaryName, keys.binaryName, project);
  }
  m_keys[&project] = std::move(keys);
}

void ProjectFiles::Remove(Project& project) {
  m_changed.erase(&project);
  const auto keys = m_keys.find(&project);
  if (keys == m_keys.end()) return;
  EraseFrom(m_byBinaryPath, keys->second.binaryPath, &project);
  EraseFrom(m_byBinaryName, keys->second.binaryName, &project);
  EraseFrom(m_byProjectPath, keys->second.projectPath, &project);
  m_keys.erase(keys);
}

void ProjectFiles::Refresh() {
  const auto changed = std::exchange(m_changed, {});
  for (Project* project : changed) {
    Remove(*project);
    Enter(*project);
  }
}

const ProjectFiles::Candidates& ProjectFiles::Find(Index& index, std::string_view name) {
  static const Candidates kNone;
  Refresh();
  const auto found = index.find(std::string_view(automation::Lower(name)));
  return found == index.end() ? kNone : found->second;
}

}  // namespace hearthmake
