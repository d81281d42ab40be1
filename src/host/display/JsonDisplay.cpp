#include "host/display/JsonDisplay.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "automation/Variant.hpp"
#include "host/display/JsonEvent.hpp"
#include "host/run/PlanText.hpp"
#include "project/Project.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

ordered_json Names(Project* project) {
  if (project == nullptr) return {{"project", nullptr}};
  return {{"project", project->Name()}, {"id", project->Id()}, {"path", project->ProjectPath()}};
}

// Where the last script that failed did so.
void AddScript(Build& build, ordered_json& details) {
  const auto& failure = build.Scripts().LastFailure();
  if (!failure) return;
  details["script"] = {{"event", EventName(failure->event)},
                       {"line", failure->fault.line},
                       {"column", failure->fault.column},
                       {"text", failure->fault.text}};
}

}  // namespace

JsonDisplay::JsonDisplay(const Console& console, Build& build, const RunPlan& plan)
    : RunDisplay(plan), m_console(console), m_build(build), m_buildName(build.Name()) {}

void JsonDisplay::Print(const char* event, const ordered_json& details) const {
  PrintEvent(m_console, event, details);
}

void JsonDisplay::BuildStart(bool bResume) {
  Print(
      "BuildStart",
      {{"build", m_buildName}, {"resume", bResume}, {"projects", Total()}, {"leftOut", LeftOutJson(Plan())}});
}

void JsonDisplay::ShowWillCompile(Project& project) {
  ordered_json details = Names(&project);
  details["index"] = Current();
  details["projects"] = Total();
  const PlannedProject* planned = Plan().Find(project.Id());
  if (planned != nullptr && !planned->reason.empty()) details["reason"] = planned->reason;
  Print("WillCompile", details);
}

void JsonDisplay::ShowCompiled(Project& project) {
  ordered_json details = Names(&project);
  details["binary"] = project.FullPath32();
  details["seconds"] = RoundedSeconds(ProjectSeconds());
  Print("ProjectCompiled", details);
}

void JsonDisplay::ShowFailed(Project* project, const std::string& message, bool isCompileError) {
  ordered_json details = Names(project);
  details["message"] = message;
  details["compileError"] = isCompileError;
  if (message.starts_with("Script Error: ")) AddScript(m_build, details);
  details["cancelled"] = Result() == RunResult::Cancelled;
  details["compiled"] = Compiled();
  details["seconds"] = RoundedSeconds(Seconds());
  if (Plan().KeepsGoing())
    details["leftOut"] = PlannedJson(LeftOutBecauseOf(project == nullptr ? 0 : project->Id()));
  Print("BuildFaild", details);
}

void JsonDisplay::ShowCancelled(Project& project) { Print("BuildCancled", Names(&project)); }

void JsonDisplay::ShowComplete() {
  Print("BuildComplete", {{"compiled", Compiled()}, {"seconds", RoundedSeconds(Seconds())}});
}

void JsonDisplay::PrintSummary() const {
  ordered_json leftOut = ordered_json::array();
  for (const PlannedProject* failed : FailedProjects())
    for (const ordered_json& planned : PlannedJson(LeftOutBecauseOf(failed->id))) leftOut.push_back(planned);
  ordered_json failures = ordered_json::array();
  for (const PlannedProject* failed : FailedProjects())
    failures.push_back({{"project", failed->name}, {"id", failed->id}});
  Print("Summary", {{"failed", failures},
                    {"leftOut", leftOut},
                    {"compiled", Compiled()},
                    {"seconds", RoundedSeconds(Seconds())}});
}

void JsonDisplay::Finish() {
  if (Result() == RunResult::Complete) return;
  if (Plan().KeepsGoing()) PrintSummary();
  m_console.Note(fmt::format("{} {}. Go on with: hearthmake build '{}' --resume", m_buildName,
                             Result() == RunResult::Failed ? "failed" : "was cancelled", m_buildName));
}

void JsonDisplay::ShowGetting(SSProject& source) {
  Print("GettingLatestVersion", {{"project", source.Project()},
                                 {"database", source.Database()},
                                 {"workingFolder", source.WorkingFolder()}});
}

void JsonDisplay::ShowFile(const SourceFile& file) {
  if (file.state == SourceFileState::Unchanged) return;
  Print("File", {{"file", file.spec},
                 {"got", file.state == SourceFileState::Got},
                 {"number", file.number},
                 {"count", file.count}});
}

void JsonDisplay::MTSEvent(const std::string& strInfo, bool& /*Cancel*/) {
  Print("MTSEvent", {{"info", strInfo}});
}

void JsonDisplay::Error(const automation::Variant& strMessage) {
  ordered_json details = {{"message", automation::ToText(strMessage)}};
  AddScript(m_build, details);
  Print("Error", details);
}

void JsonDisplay::ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                               std::int32_t Progress) {
  Print("ScriptNotify", {{"message", strMessage}, {"progress", Progress}});
}

}  // namespace hearthmake::host
