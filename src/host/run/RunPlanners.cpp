#include "host/run/RunPlanners.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>

#include "host/Session.hpp"
#include "host/builds/ChosenProjects.hpp"

namespace hearthmake::host {

void LeaveOutAllBut(RunPlan& plan, Build& build, const std::vector<std::string>& names) {
  std::unordered_set<std::int32_t> asked;
  for (const auto& project : ChosenProjects(build, names)) asked.insert(project->Id());
  for (std::size_t i = 0; i < plan.Projects().size(); ++i) {
    if (asked.contains(plan.Projects()[i].id)) {
      plan.GiveReason(i, "it was asked for");
    } else {
      plan.LeaveOut(i, RunChoice::NotAskedFor, ChoiceText(RunChoice::NotAskedFor));
    }
  }
}

void LeaveOutBefore(RunPlan& plan, Build& build, const std::string& name) {
  const auto first = FindProject(build, name);
  bool isBefore = true;
  for (std::size_t i = 0; i < plan.Projects().size(); ++i) {
    if (plan.Projects()[i].id == first->Id()) isBefore = false;
    if (isBefore) {
      plan.LeaveOut(i, RunChoice::NotAskedFor, fmt::format("it comes before {}", first->Name()));
    } else {
      plan.GiveReason(i, plan.Projects()[i].id == first->Id()
                             ? "it was asked for"
                             : fmt::format("it comes behind {}", first->Name()));
    }
  }
}

void LeaveOutDone(RunPlan& plan, const RunJournal& journal) {
  for (std::size_t i = 0; i < plan.Projects().size(); ++i) {
    const std::int32_t id = plan.Projects()[i].id;
    if (journal.HasCompiled(id)) {
      plan.LeaveOut(i, RunChoice::CompiledAlready, "the stopped run has compiled it");
    } else if (!journal.WasAskedFor(id)) {
      plan.LeaveOut(i, RunChoice::NotAskedFor, "the stopped run was not asked for it");
    } else {
      plan.GiveReason(i, "the stopped run has not compiled it");
    }
  }
}

void LeaveOutUsersOf(RunPlan& plan, const ProjectGraph& graph, const Project& failed) {
  const std::int32_t cause = failed.Id();
  std::vector<bool> isTouched(plan.Projects().size());
  for (std::size_t i = 0; i < isTouched.size(); ++i) {
    if (plan.Projects()[i].id == cause) {
      isTouched[i] = true;
      continue;
    }
    const auto& targets = graph.Targets(i);
    isTouched[i] = std::any_of(targets.begin(), targets.end(), [&](std::size_t t) { return isTouched[t]; });
    if (!isTouched[i]) continue;
    plan.LeaveOut(i, RunChoice::AfterFailure, fmt::format("it depends on {}, which failed", failed.Name()),
                  cause);
  }
}

}  // namespace hearthmake::host
