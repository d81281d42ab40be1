#include "host/page/PageReport.hpp"

#include <fmt/format.h>

#include <chrono>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/page/RunPage.hpp"
#include "host/page/SourceExcerpt.hpp"
#include "host/run/FailureAdvice.hpp"

namespace hearthmake::host {

namespace {

// The compiler stops at its first error; the log of a script's making may tell many.
constexpr std::size_t kMostErrors = 5;

std::int64_t SecondsSince1970(std::chrono::system_clock::time_point time) {
  return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

std::vector<PageError> ErrorsOf(const ProjectRecord& record) {
  std::vector<PageError> errors;
  if (record.outcome != ProjectOutcome::Failed || !record.isCompileError) return errors;
  for (CompilerError& error : CompilerErrors(record.log)) {
    if (errors.size() == kMostErrors) break;
    SourceExcerpt excerpt = ReadExcerpt(error, FolderPart(record.path));
    errors.push_back({std::move(error), std::move(excerpt)});
  }
  return errors;
}

std::string AdviceOn(Session& session, Build& build, const ProjectRecord& record) {
  if (record.outcome != ProjectOutcome::Failed) return {};
  for (const auto& project : AllProjects(build)) {
    if (project->Id() == record.id) return FailureAdvice(session, build, project.Get(), record.message);
  }
  return {};
}

// The references among the projects of a record, by its order.
Digraph ReferencesOf(Build& build, const RunRecord& record) {
  std::map<std::int32_t, std::size_t> places;
  for (const ProjectRecord& project : record.Projects()) places.emplace(project.id, places.size());
  const ProjectList projects = AllProjects(build);
  const ProjectGraph graph(projects);
  std::vector<Digraph::Nodes> targets(record.Projects().size());
  for (std::size_t i = 0; i < projects.size(); ++i) {
    const auto from = places.find(projects[i]->Id());
    if (from == places.end()) continue;
    for (const std::size_t target : graph.Targets()[i]) {
      const auto to = places.find(projects[target]->Id());
      if (to != places.end()) targets[from->second].push_back(to->second);
    }
  }
  return Digraph(std::move(targets));
}

}  // namespace

std::string PageReport::MemoryPath() {
  return m_session.DosPath(m_session.Settings().DataFolder() + "/" + LastRunFileName(m_build.Id()));
}

void PageReport::Expect(const RunPlan& plan) {
  for (const PlannedProject& project : plan.Projects()) {
    if (project.Runs() && !project.reason.empty()) m_reasons.emplace(project.id, project.reason);
  }
}

std::string PageReport::Text(const RunRecord& record) {
  m_facts.Complete(m_build);
  const std::optional<LastRun> last = ReadLastRun(MemoryPath());
  m_run = hearthmake::host::Remember(record, m_facts, last ? &*last : nullptr);
  RunPage page;
  page.buildName = record.BuildName();
  page.result = record.Result();
  page.began = SecondsSince1970(record.Began());
  page.seconds = record.Seconds();
  page.references = ReferencesOf(m_build, record);
  page.failures = record.Failures();
  page.messages = record.Messages();
  page.lostMessages = record.LostMessages();
  if (last) {
    page.lastBegan = last->began;
    page.gone = GoneProjects(*m_run, *last);
  }
  for (const ProjectRecord& project : record.Projects()) {
    PageProject shown{project,           m_session.PosixPath(project.path),    {}, {},
                      ErrorsOf(project), AdviceOn(m_session, m_build, project)};
    const auto reason = m_reasons.find(project.id);
    const bool hasRun = project.outcome != ProjectOutcome::NotReached && project.reason.empty();
    if (reason != m_reasons.end() && hasRun) shown.record.reason = reason->second;
    const auto facts = m_facts.Projects().find(project.id);
    if (facts != m_facts.Projects().end()) shown.facts = facts->second;
    if (last) shown.change = CompareWithLast(*m_run->Find(project.id), project.outcome, *last);
    page.projects.push_back(std::move(shown));
  }
  return RunPageText(page);
}

void PageReport::Remember() {
  if (!m_run) return;
  try {
    Ports().files->Replace(MemoryPath(), LastRunText(*m_run));
  } catch (const automation::Error& error) {
    m_session.Out().Note(
        fmt::format("The run can't be remembered for its next page: {}", Printable(error.Description())));
  }
}

}  // namespace hearthmake::host
