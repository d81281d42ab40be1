#pragma once

#include <cstddef>
#include <vector>

#include "project/Project.hpp"

namespace hearthmake::host {

using ProjectList = std::vector<automation::Ref<Project>>;

// The references among some projects of a build, those to others left out.
class ProjectGraph {
 public:
  explicit ProjectGraph(ProjectList projects);

  // Projects of which each references the next and the last the first, beginning with the lowest id;
  // none when there is no cycle.
  ProjectList FindCycle() const;
  // Every project before those that it references, as far as there is no cycle.
  ProjectList UsersFirst() const;
  // By place in the list, for each project the places of those that it references; one that several
  // references name comes as often.
  const std::vector<std::vector<std::size_t>>& Targets() const { return m_targets; }
  // Those that reference the project.
  ProjectList UsersOf(const Project& project) const;
  // The positions of those that the project at a position references.
  const std::vector<std::size_t>& Targets(std::size_t position) const { return m_targets[position]; }

 private:
  // A walk in depth: the projects in the order in which they were left, up to the first cycle.
  struct Walk {
    std::vector<std::size_t> left;
    std::vector<std::size_t> cycle;
  };
  Walk GoThrough(bool stopAtCycle) const;

  ProjectList m_projects;
  std::vector<std::vector<std::size_t>> m_targets;
};

}  // namespace hearthmake::host
