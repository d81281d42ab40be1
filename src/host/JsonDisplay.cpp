#include "host/JsonDisplay.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "automation/Variant.hpp"
#include "host/JsonEvent.hpp"
#include "project/Project.hpp"

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

JsonDisplay::JsonDisplay(const Console& console, Build& build, std::size_t projectsToCompile)
    : RunDisplay(projectsToCompile), m_console(console), m_build(build), m_buildName(build.Name()) {}

void JsonDisplay::Print(const char* event, const ordered_json& details) const {
  PrintEvent(m_console, event, details);
}

void JsonDisplay::BuildStart(bool bResume) {
  Print("BuildStart", {{"build", m_buildName}, {"resume", bResume}, {"projects", Total()}});
}

void JsonDisplay::ShowWillCompile(Project& project) {
  ordered_json details = Names(&project);
  details["index"] = Current();
  details["projects"] = Total();
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
  Print("BuildFaild", details);
}

void JsonDisplay::ShowCancelled(Project& project) { Print("BuildCancled", Names(&project)); }

void JsonDisplay::ShowComplete() {
  Print("BuildComplete", {{"compiled", Compiled()}, {"seconds", RoundedSeconds(Seconds())}});
}

void JsonDisplay::Finish() {
  if (Result() == RunResult::Complete) return;
  m_console.Note(fmt::format("{} {}. Go on with: hearthmake build '{}' --resume", m_buildName,
                             Result() == RunResult::Failed ? "failed" : "was cancelled", m_buildName));
}

void JsonDisplay::GettingLatestVersion(SSProject& /*objSSProject*/, bool& /*bCancel*/) {
  Print("GettingLatestVersion", ordered_json::object());
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
