#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// Whether a run compiles a project; if not, which kind of reason it has.
enum class RunChoice {
  Runs,
  SwitchedOff,      // its CompileMe is off
  NotAskedFor,      // others were named, or the stopped run was not asked for it
  CompiledAlready,  // by the stopped run that this one goes on with
  UpToDate,         // its binary is not older than what it is made of
  AfterFailure,     // it depends on a project that failed
};
// The word for programs: "runs", "switchedOff", ...
const char* ChoiceName(RunChoice choice);
// For people, behind a number or a name: "up to date".
const char* ChoiceText(RunChoice choice);

struct PlannedProject {
  std::int32_t id = 0;
  std::string name;
  RunChoice choice = RunChoice::Runs;
  std::string reason;      // for people, in one line; empty when there is nothing particular about it
  std::int32_t cause = 0;  // AfterFailure: the id of the project that failed

  bool Runs() const { return choice == RunChoice::Runs; }
};

// What a run is going to do with each project of its build, in compile order. A value: planners make it, one
// after the other, each only taking projects out or giving reasons; displays and records read it. A run that
// goes on behind failures takes out what depends on them meanwhile.
class RunPlan {
 public:
  RunPlan() = default;
  // Every project runs but those that are switched off.
  explicit RunPlan(const ProjectList& inCompileOrder);

  const std::vector<PlannedProject>& Projects() const { return m_projects; }
  // Null for an unknown id.
  const PlannedProject* Find(std::int32_t id) const;
  bool Runs(std::int32_t id) const;
  std::size_t Count(RunChoice choice) const;
  std::vector<std::int32_t> RunningIds() const;

  // By position. A project that does not run keeps the choice and reason that it has.
  void LeaveOut(std::size_t position, RunChoice choice, std::string reason, std::int32_t cause = 0);
  void GiveReason(std::size_t position, std::string reason);

  // Whether the run goes on behind failures, with what does not depend on them.
  bool KeepsGoing() const { return m_keepsGoing; }
  void SetKeepsGoing(bool value) { m_keepsGoing = value; }

 private:
  std::vector<PlannedProject> m_projects;
  bool m_keepsGoing = false;
};

}  // namespace hearthmake::host
