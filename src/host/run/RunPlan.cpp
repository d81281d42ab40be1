#include "host/run/RunPlan.hpp"

#include <algorithm>
#include <utility>

namespace hearthmake::host {

const char* ChoiceName(RunChoice choice) {
  switch (choice) {
    case RunChoice::Runs: return "runs";
    case RunChoice::SwitchedOff: return "switchedOff";
    case RunChoice::NotAskedFor: return "notAskedFor";
    case RunChoice::CompiledAlready: return "compiledAlready";
    case RunChoice::UpToDate: return "upToDate";
    case RunChoice::AfterFailure: return "afterFailure";
  }
  return "";
}

const char* ChoiceText(RunChoice choice) {
  switch (choice) {
    case RunChoice::Runs: return "compiled";
    case RunChoice::SwitchedOff: return "switched off";
    case RunChoice::NotAskedFor: return "not asked for";
    case RunChoice::CompiledAlready: return "compiled already";
    case RunChoice::UpToDate: return "up to date";
    case RunChoice::AfterFailure: return "depending on one that failed";
  }
  return "";
}

RunPlan::RunPlan(const ProjectList& inCompileOrder) {
  m_projects.reserve(inCompileOrder.size());
  for (const auto& project : inCompileOrder) {
    PlannedProject planned;
    planned.id = project->Id();
    planned.name = project->Name();
    if (!project->CompileMe()) {
      planned.choice = RunChoice::SwitchedOff;
      planned.reason = "its CompileMe is off";
    }
    m_projects.push_back(std::move(planned));
  }
}

const PlannedProject* RunPlan::Find(std::int32_t id) const {
  const auto found = std::find_if(m_projects.begin(), m_projects.end(),
                                  [id](const auto& planned) { return planned.id == id; });
  return found == m_projects.end() ? nullptr : &*found;
}

bool RunPlan::Runs(std::int32_t id) const {
  const PlannedProject* planned = Find(id);
  return planned != nullptr && planned->Runs();
}

std::size_t RunPlan::Count(RunChoice choice) const {
  return static_cast<std::size_t>(std::count_if(m_projects.begin(), m_projects.end(),
                                                [choice](const auto& p) { return p.choice == choice; }));
}

std::vector<std::int32_t> RunPlan::RunningIds() const {
  std::vector<std::int32_t> ids;
  for (const PlannedProject& planned : m_projects) {
    if (planned.Runs()) ids.push_back(planned.id);
  }
  return ids;
}

void RunPlan::LeaveOut(std::size_t position, RunChoice choice, std::string reason, std::int32_t cause) {
  PlannedProject& planned = m_projects[position];
  if (!planned.Runs()) return;
  planned.choice = choice;
  planned.reason = std::move(reason);
  planned.cause = cause;
}

void RunPlan::GiveReason(std::size_t position, std::string reason) {
  PlannedProject& planned = m_projects[position];
  if (planned.Runs()) planned.reason = std::move(reason);
}

}  // namespace hearthmake::host
