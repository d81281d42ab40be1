#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "build/Build.hpp"
#include "build/BuildEvents.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/run/LeftOutProjects.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// Does what a plan says. Where the plan keeps going, a failure is followed by another run of the library, a
// resumed one, without the project that failed and those that depend on it; the plan is told of these before
// the sinks hear of the failure.
//
// The sinks hear all of that as one run: one start, then the events of the projects with a failure for each
// that failed, and a completion only when none did. Neither does the build's own script of completion run
// when one has failed.
class PlannedRun final : private BuildEvents {
 public:
  // Build, plan and sinks stay alive meanwhile. The sinks hear each event in their order.
  PlannedRun(Build& build, RunPlan& plan, std::vector<BuildEvents*> sinks);

  // resumes is what the library is told.
  void Go(bool resumes);
  // Of a plan that compiles nothing, the sinks hear a run that is complete at once; the library does not run.
  void StayAway();

 private:
  void WillCompile(Project& objProject, bool& bCancel) override;
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) override;
  void BuildCancled(Project& objProject) override;
  void GettingLatestVersion(SSProject& objSSProject, bool& bCancel) override;
  void MTSEvent(const std::string& strInfo, bool& Cancel) override;
  void ProjectAdded(Project& NewProject) override;
  void BuildComplete() override;
  void Error(const automation::Variant& strMessage) override;
  void ProjectCompiled(Project& objProject) override;
  void BuildStart(bool bResume) override;
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override;

  void LeaveOutUnplanned();
  bool MayGoOn() const;
  const ProjectGraph& Graph();

  Build& m_build;
  RunPlan& m_plan;
  std::vector<BuildEvents*> m_sinks;
  ProjectList m_projects;
  std::optional<ProjectGraph> m_graph;  // made when a failure asks for it
  LeftOutProjects m_leftOut;
  automation::Ref<Project> m_failed;  // at which the library's run stopped
  bool m_hasStarted = false;
  bool m_hasFailed = false;
};

}  // namespace hearthmake::host
