// Build: its events, and the report entries and scripts that go with them.

#include <algorithm>

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/mSettings.hpp"

namespace hearthmake {

namespace {

constexpr std::int32_t kFullProgress = 100;

}  // namespace

void Build::AddSink(BuildEvents& sink) { m_sinks.push_back(&sink); }

void Build::RemoveSink(BuildEvents& sink) { std::erase(m_sinks, &sink); }

std::uint32_t Build::Advise(std::shared_ptr<automation::EventSink> sink) {
  auto connection = std::make_unique<BuildConnection>(std::move(sink));
  AddSink(*connection);
  m_connections[++m_lastConnection] = std::move(connection);
  return m_lastConnection;
}

void Build::Unadvise(std::uint32_t connection) {
  const auto found = m_connections.find(connection);
  if (found == m_connections.end()) return;
  RemoveSink(*found->second);
  m_connections.erase(found);
}

void Build::Raise(const std::function<void(BuildEvents&)>& event) {
  const automation::Ref<Build> self(this);  // a handler may drop it
  // A handler may add or remove sinks; one that is gone by its turn hears nothing.
  const auto sinks = m_sinks;
  for (BuildEvents* sink : sinks) {
    if (std::find(m_sinks.begin(), m_sinks.end(), sink) != m_sinks.end()) event(*sink);
  }
}

void Build::WillCompile(Project& objProject, bool& bCancel) {
  ReportAction(&objProject, kHeaderEntry, "");
  Raise([&](BuildEvents& sink) { sink.WillCompile(objProject, bCancel); });
  RunScript(BuildScripts::BS_BEFORE_PROJECT_COMPILE, &objProject);
}

void Build::ProjectCompiled(Project& objProject) {
  Raise([&](BuildEvents& sink) { sink.ProjectCompiled(objProject); });
  RunScript(BuildScripts::BS_AFTER_PROJECT_COMPILE, &objProject);
}

void Build::RaiseBuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) {
  try {
    Raise([&](BuildEvents& sink) { sink.BuildFaild(objProject, strMessage, bCompileError); });
  } catch (const automation::Error&) {
    // Whoever fails at hearing of the failure has heard of it.
    return;
  }
}

void Build::BuildFailed(Project* objProject, const std::string& strMessage, bool bCompileError) {
  ReportFailure(objProject, strMessage);
  RaiseBuildFaild(objProject, strMessage, bCompileError);
  m_failedProject = automation::Held<Project>(objProject);
  try {
    RunScript(BuildScripts::BS_BUILDFAILED);
  } catch (const automation::Error& error) {
    RaiseBuildFaild(objProject, error.Description(), false);
  }
}

void Build::RaiseBuildCancled(Project& objProject) {
  Raise([&](BuildEvents& sink) { sink.BuildCancled(objProject); });
}

void Build::RaiseMTSEvent(const std::string& strInfo, bool& Cancel) {
  Raise([&](BuildEvents& sink) { sink.MTSEvent(strInfo, Cancel); });
}

void Build::RaiseProjectAdded(Project& NewProject) {
  Raise([&](BuildEvents& sink) { sink.ProjectAdded(NewProject); });
}

void Build::RaiseError(const std::string& strMessage) {
  const automation::Variant message = automation::Variant::FromText(strMessage);
  Raise([&](BuildEvents& sink) { sink.Error(message); });
}

void Build::RaiseBuildComplete() {
  Raise([](BuildEvents& sink) { sink.BuildComplete(); });
}

void Build::RaiseBuildStart(bool bResume) {
  m_failedProject = {};  // that of the last run, which this one is now
  Raise([&](BuildEvents& sink) { sink.BuildStart(bResume); });
}

void Build::RaiseScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                              std::int32_t Progress) {
  Raise([&](BuildEvents& sink) { sink.ScriptNotify(strMessage, Cancel, std::min(Progress, kFullProgress)); });
}

void Build::ReportAction(const ReportItem* oReportItem, std::int32_t ActionType, const std::string& strInfo) {
  if (!m_report) {
    // One whose start entry can't be written is none: the next entry tries again.
    auto report = std::make_unique<BuildReport>();
    report->SetParent(*this);
    m_report = std::move(report);
  }
  m_report->ReportAction(oReportItem, ActionType, strInfo);
}

// The item's entry does not say what went wrong, so the description follows by itself.
void Build::ReportFailure(const Project* objProject, const std::string& strMessage) {
  try {
    if (objProject != nullptr) ReportAction(objProject, kHeaderEntry, strMessage);
    ReportAction(nullptr, kHeaderEntry, strMessage);
  } catch (const automation::Error&) {
    // A report that can't be written may be what failed the run; its listeners hear of the failure.
  }
}

void Build::StopReporting(bool bSuccess) {
  ReportAction(nullptr, kClosingEntry, bSuccess ? "Build successfully completed\r\n" : "Build Stoped\r\n");
  m_report.reset();
}

void Build::RunScript(BuildScripts event, Project* objProject) {
  if (!mSettings::RunScripts() || Scripts().Text(event).empty()) return;
  const automation::Ref<hearthmake::Scripts> scripts(&Scripts());  // which the script may make the build drop
  scripts->RunEvent(event, objProject);
}

}  // namespace hearthmake
