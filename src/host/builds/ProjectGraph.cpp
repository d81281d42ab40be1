#include "host/builds/ProjectGraph.hpp"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "host/Session.hpp"

namespace hearthmake::host {

namespace {

enum class State : unsigned char { New, Open, Left };

}  // namespace

ProjectGraph::ProjectGraph(ProjectList projects)
    : m_projects(std::move(projects)), m_targets(m_projects.size()) {
  std::unordered_map<std::int32_t, std::size_t> indexes;
  for (std::size_t i = 0; i < m_projects.size(); ++i) indexes.emplace(m_projects[i]->Id(), i);
  for (std::size_t i = 0; i < m_projects.size(); ++i) {
    for (const auto& reference : AllReferences(*m_projects[i])) {
      if (reference->IsExternal()) continue;
      const auto target = indexes.find(reference->ReferencedProject());
      if (target != indexes.end()) m_targets[i].push_back(target->second);
    }
  }
}

// Without recursion: a chain of references may be as long as the build.
ProjectGraph::Walk ProjectGraph::GoThrough(bool stopAtCycle) const {
  struct Step {
    std::size_t project;
    std::size_t nextTarget;
  };
  Walk walk;
  std::vector<State> states(m_projects.size(), State::New);
  std::vector<Step> path;
  for (std::size_t start = 0; start < m_projects.size(); ++start) {
    if (states[start] != State::New) continue;
    states[start] = State::Open;
    path.push_back({start, 0});
    while (!path.empty()) {
      Step& step = path.back();
      if (step.nextTarget == m_targets[step.project].size()) {
        states[step.project] = State::Left;
        walk.left.push_back(step.project);
        path.pop_back();
        continue;
      }
      const std::size_t target = m_targets[step.project][step.nextTarget++];
      if (states[target] == State::New) {
        states[target] = State::Open;
        path.push_back({target, 0});
      } else if (states[target] == State::Open && stopAtCycle) {
        const auto first =
            std::find_if(path.begin(), path.end(), [&](const Step& s) { return s.project == target; });
        for (auto at = first; at != path.end(); ++at) walk.cycle.push_back(at->project);
        return walk;
      }
    }
  }
  return walk;
}

ProjectList ProjectGraph::FindCycle() const {
  ProjectList cycle;
  for (const std::size_t index : GoThrough(true).cycle) cycle.push_back(m_projects[index]);
  // Told the same way whatever the order of the list is at the moment.
  const auto oldest = std::min_element(cycle.begin(), cycle.end(),
                                       [](const auto& a, const auto& b) { return a->Id() < b->Id(); });
  std::rotate(cycle.begin(), oldest, cycle.end());
  return cycle;
}

ProjectList ProjectGraph::UsersFirst() const {
  ProjectList order;
  const Walk walk = GoThrough(false);
  for (auto index = walk.left.rbegin(); index != walk.left.rend(); ++index) {
    order.push_back(m_projects[*index]);
  }
  return order;
}

ProjectList ProjectGraph::UsersOf(const Project& project) const {
  ProjectList users;
  for (std::size_t i = 0; i < m_projects.size(); ++i) {
    const bool isUser = std::any_of(m_targets[i].begin(), m_targets[i].end(),
                                    [&](std::size_t target) { return m_projects[target].Get() == &project; });
    if (isUser) users.push_back(m_projects[i]);
  }
  return users;
}

}  // namespace hearthmake::host
