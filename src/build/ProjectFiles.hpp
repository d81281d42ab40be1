#pragma once

#include <cstdint>
#include <functional>
#include <memory_resource>
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
  using Candidates = std::pmr::vector<Project*>;

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
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  using Index = std::pmr::unordered_map<std::pmr::string, Candidates, Hash, std::equal_to<>>;

  const Candidates& Find(Index& index, std::string_view name);
  void Refresh();
  void Enter(Project& project);

  void EnterUnder(Index& index, std::string_view key, Project& project);
  static void EraseFrom(Index& index, std::string_view key, Project* project);

  // The indexes lie close together: among the projects of a large suite each look-up would miss the
  // processor's caches several times.
  std::pmr::unsynchronized_pool_resource m_pool;
  std::unordered_map<Project*, Keys> m_keys;
  std::unordered_set<Project*> m_changed;
  Index m_byBinaryPath{&m_pool};
  Index m_byBinaryName{&m_pool};
  Index m_byProjectPath{&m_pool};
};

}  // namespace hearthmake
