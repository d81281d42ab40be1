#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace hearthmake {

class Project;

// Finds the projects of a list by the files they are made of: the binary's full path, the binary's name,
// the project file. Names compare without regard to case. Where several projects answer, the caller
// chooses among them. Kept up to date project by project, so that a look-up costs the same in a suite of
// any size.
class ProjectFiles {
 public:
  using Candidates = std::vector<Project*>;

  void Add(Project& project);
  void Remove(Project& project);
  // The project's files have new names; looked at again at the next look-up.
  void MarkChanged(Project& project) { m_changed.insert(&project); }

  const Candidates& ByBinaryPath(std::string_view path) { return Find(m_byBinaryPath, path); }
  const Candidates& ByBinaryName(std::string_view name) { return Find(m_byBinaryName, name); }
  const Candidates& ByProjectPath(std::string_view path) { return Find(m_byProjectPath, path); }

 private:
  struct Keys {
    std::string binaryPath;
    std::string binaryName;
    std::string projectPath;
  };
  using Index = std::unordered_map<std::string, Candidates>;

  const Candidates& Find(Index& index, std::string_view name);
  void Refresh();
  void Enter(Project& project);

  std::unordered_map<Project*, Keys> m_keys;
  std::unordered_set<Project*> m_changed;
  Index m_byBinaryPath;
  Index m_byBinaryName;
  Index m_byProjectPath;
};

}  // namespace hearthmake
