#include "host/run/RunRecord.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "host/Session.hpp"
#include "host/builds/Properties.hpp"
#include "host/run/CompilerLog.hpp"
#include "host/system/Interrupt.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

namespace {

// Not in the middle of a character.
std::string Bounded(std::string_view text) {
  if (text.size() <= RunRecord::kTextLimit) return std::string(text);
  std::size_t end = RunRecord::kTextLimit;
  for (int i = 0; i < 3 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80; ++i) --end;
  return std::string(text.substr(0, end)) + "...";
}

std::string TypeOf(Project& project) {
  try {
    const automation::Member& type = FindReadable(Project::Describe(), "ProjectType");
    return ValueText(type, project.Get(type.name));
  } catch (const automation::Error&) {
    return {};
  }
}

ProjectOutcome OutcomeOf(RunChoice choice) {
  switch (choice) {
    case RunChoice::Runs: return ProjectOutcome::NotReached;
    case RunChoice::SwitchedOff:
    case RunChoice::NotAskedFor: return ProjectOutcome::NotWanted;
    case RunChoice::CompiledAlready: return ProjectOutcome::Earlier;
    case RunChoice::UpToDate: return ProjectOutcome::UpToDate;
    case RunChoice::AfterFailure: return ProjectOutcome::Blocked;
  }
  return ProjectOutcome::NotReached;
}

bool IsLeftOut(ProjectOutcome outcome) {
  return outcome == ProjectOutcome::NotReached || outcome == ProjectOutcome::NotWanted;
}

}  // namespace

RunRecord::RunRecord(Build& build) : m_buildName(build.Name()), m_buildId(build.Id()) {
  for (const auto& project : AllProjects(build)) Add(*project);
}

void RunRecord::Add(Project& project) {
  ProjectRecord record;
  record.id = project.Id();
  record.name = project.Name();
  record.type = TypeOf(project);
  record.path = project.ProjectPath();
  record.binary = project.BinaryPath();
  if (!project.CompileMe()) {
    record.outcome = ProjectOutcome::NotWanted;
    record.reason = "its CompileMe is off";
  }
  m_projects.push_back(std::move(record));
}

// One that a script added to the build meanwhile comes last.
ProjectRecord& RunRecord::Of(Project& project) {
  const std::int32_t id = project.Id();
  const auto found =
      std::find_if(m_projects.begin(), m_projects.end(), [&](const auto& record) { return record.id == id; });
  if (found != m_projects.end()) return *found;
  Add(project);
  return m_projects.back();
}

void RunRecord::LeaveOut(std::int32_t idProject, ProjectOutcome outcome, std::string reason) {
  for (ProjectRecord& record : m_projects) {
    if (record.id != idProject || !IsLeftOut(record.outcome)) continue;
    record.outcome = outcome;
    record.reason = std::move(reason);
    return;
  }
}

void RunRecord::LeaveOut(const RunPlan& plan) {
  for (const PlannedProject& project : plan.Projects()) {
    if (project.Runs()) continue;
    const ProjectOutcome outcome = OutcomeOf(project.choice);
    const bool needsWords = project.reason.empty() && outcome == ProjectOutcome::NotWanted;
    LeaveOut(project.id, outcome, needsWords ? ChoiceText(project.choice) : project.reason);
  }
}

void RunRecord::Fail(const std::string& message) {
  AddFailure(message);
  EndNow();
}

std::size_t RunRecord::Count(ProjectOutcome outcome) const {
  return static_cast<std::size_t>(std::count_if(
      m_projects.begin(), m_projects.end(), [&](const auto& record) { return record.outcome == outcome; }));
}

RunResult RunRecord::Result() const {
  if (m_isCancelled) return RunResult::Cancelled;
  if (!m_failures.empty() || Count(ProjectOutcome::Failed) > 0) return RunResult::Failed;
  return m_isComplete ? RunResult::Complete : RunResult::Cancelled;
}

double RunRecord::Now() const { return std::chrono::duration<double>(Clock::now() - m_start).count(); }

void RunRecord::EndNow() {
  m_seconds = m_hasBegun ? Now() : 0;
  m_ended = std::chrono::system_clock::now();
}

void RunRecord::BuildStart(bool /*bResume*/) {
  if (!m_hasBegun) {
    m_began = std::chrono::system_clock::now();
    m_start = Clock::now();
    m_hasBegun = true;
  }
  m_current = 0;
  m_isComplete = false;
  m_isCancelled = false;
}

void RunRecord::WillCompile(Project& objProject, bool& /*bCancel*/) {
  ProjectRecord& record = Of(objProject);
  record.outcome = ProjectOutcome::NotReached;
  record.start = Now();
  record.seconds = 0;
  record.message.clear();
  record.log.clear();
  record.reason.clear();
  record.isCompileError = false;
  m_current = record.id;
}

void RunRecord::ProjectCompiled(Project& objProject) {
  ProjectRecord& record = Of(objProject);
  record.outcome = ProjectOutcome::Compiled;
  record.seconds = Now() - record.start;
  const std::string log = objProject.CompileError();
  record.log = Bounded(automation::Trim(log));
}

void RunRecord::BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) {
  // The compiler did not fail, it was ended.
  m_isCancelled = m_isCancelled || Interrupt::IsRequested();
  if (objProject == nullptr) {
    if (!m_isCancelled) AddFailure(strMessage);
    EndNow();
    return;
  }
  ProjectRecord& record = Of(*objProject);
  if (record.outcome == ProjectOutcome::Failed) {
    AddFailure(strMessage);  // what was to be done about the failure failed too
  } else if (record.outcome != ProjectOutcome::Compiled || !m_isCancelled) {
    if (record.outcome != ProjectOutcome::Compiled) record.seconds = Now() - record.start;
    record.outcome = m_isCancelled ? ProjectOutcome::Cancelled : ProjectOutcome::Failed;
    record.message = Bounded(strMessage);
    record.isCompileError = bCompileError && !m_isCancelled;
    if (bCompileError) record.log = Bounded(CompilerWords(strMessage));
  }
  EndNow();
}

void RunRecord::BuildCancled(Project& objProject) {
  Of(objProject).outcome = ProjectOutcome::Cancelled;
  m_isCancelled = true;
  EndNow();
}

void RunRecord::BuildComplete() {
  m_isComplete = true;
  EndNow();
}

void RunRecord::AddFailure(const std::string& message) {
  if (m_failures.size() < kMessageLimit) m_failures.push_back(Bounded(message));
}

void RunRecord::Tell(RunMessage::Kind kind, const std::string& text) {
  if (m_messages.size() >= kMessageLimit) {
    ++m_lostMessages;
    return;
  }
  m_messages.push_back({kind, Bounded(text), m_hasBegun ? Now() : 0, m_current});
}

void RunRecord::MTSEvent(const std::string& strInfo, bool& /*Cancel*/) {
  Tell(RunMessage::Kind::MTSEvent, strInfo);
}

void RunRecord::Error(const automation::Variant& strMessage) {
  Tell(RunMessage::Kind::Error, automation::ToText(strMessage));
}

void RunRecord::ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                             std::int32_t /*Progress*/) {
  Tell(RunMessage::Kind::ScriptNotify, strMessage);
}

}  // namespace hearthmake::host
