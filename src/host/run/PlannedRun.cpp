#include "host/run/PlannedRun.hpp"

#include <optional>
#include <utility>

#include "host/Session.hpp"
#include "host/run/RunPlanners.hpp"
#include "host/run/SinkGuard.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

// Takes the script of completion away for as long as it lives; nothing of it is stored.
class SilentCompletion {
 public:
  explicit SilentCompletion(Scripts& scripts) : m_scripts(&scripts), m_text(scripts.CompileComplete()) {
    scripts.SetCompileComplete("");
  }
  SilentCompletion(const SilentCompletion&) = delete;
  SilentCompletion& operator=(const SilentCompletion&) = delete;
  ~SilentCompletion() { m_scripts->SetCompileComplete(m_text); }

 private:
  automation::Ref<Scripts> m_scripts;
  std::string m_text;
};

}  // namespace

PlannedRun::PlannedRun(Build& build, RunPlan& plan, std::vector<BuildEvents*> sinks)
    : m_build(build), m_plan(plan), m_sinks(std::move(sinks)), m_projects(AllProjects(build)) {}

void PlannedRun::Go(bool resumes) {
  LeaveOutUnplanned();
  std::optional<SilentCompletion> completion;
  const SinkGuard sink(m_build, *this);
  // A build that a script kills would make others when it is asked again.
  const automation::Ref<Projects> projects(&m_build.Projects());
  while (!projects->Build(resumes) && MayGoOn()) {
    if (!completion) completion.emplace(m_build.Scripts());
    m_leftOut.Add(*std::exchange(m_failed, nullptr));
    LeaveOutUnplanned();
    resumes = true;
  }
}

void PlannedRun::StayAway() {
  BuildStart(false);
  BuildComplete();
}

void PlannedRun::LeaveOutUnplanned() {
  for (std::size_t i = 0; i < m_projects.size(); ++i) {
    if (!m_plan.Projects()[i].Runs()) m_leftOut.Add(*m_projects[i]);
  }
}

bool PlannedRun::MayGoOn() const { return m_plan.KeepsGoing() && m_failed && !Interrupt::IsRequested(); }

const ProjectGraph& PlannedRun::Graph() {
  if (!m_graph) m_graph.emplace(m_projects);
  return *m_graph;
}

void PlannedRun::BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) {
  m_hasFailed = true;
  m_failed = automation::Ref<Project>(objProject);
  if (MayGoOn()) LeaveOutUsersOf(m_plan, Graph(), *objProject);
  for (BuildEvents* sink : m_sinks) sink->BuildFaild(objProject, strMessage, bCompileError);
}

void PlannedRun::BuildStart(bool bResume) {
  if (std::exchange(m_hasStarted, true)) return;
  for (BuildEvents* sink : m_sinks) sink->BuildStart(bResume);
}

void PlannedRun::BuildComplete() {
  if (m_hasFailed) return;
  for (BuildEvents* sink : m_sinks) sink->BuildComplete();
}

void PlannedRun::WillCompile(Project& objProject, bool& bCancel) {
  for (BuildEvents* sink : m_sinks) sink->WillCompile(objProject, bCancel);
}

void PlannedRun::BuildCancled(Project& objProject) {
  for (BuildEvents* sink : m_sinks) sink->BuildCancled(objProject);
}

void PlannedRun::GettingLatestVersion(SSProject& objSSProject, bool& bCancel) {
  for (BuildEvents* sink : m_sinks) sink->GettingLatestVersion(objSSProject, bCancel);
}

void PlannedRun::MTSEvent(const std::string& strInfo, bool& Cancel) {
  for (BuildEvents* sink : m_sinks) sink->MTSEvent(strInfo, Cancel);
}

void PlannedRun::ProjectAdded(Project& NewProject) {
  for (BuildEvents* sink : m_sinks) sink->ProjectAdded(NewProject);
}

void PlannedRun::Error(const automation::Variant& strMessage) {
  for (BuildEvents* sink : m_sinks) sink->Error(strMessage);
}

void PlannedRun::ProjectCompiled(Project& objProject) {
  for (BuildEvents* sink : m_sinks) sink->ProjectCompiled(objProject);
}

void PlannedRun::ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                              std::int32_t Progress) {
  for (BuildEvents* sink : m_sinks) sink->ScriptNotify(strMessage, Cancel, Progress);
}

}  // namespace hearthmake::host
