#include <fmt/format.h>

#include <memory>

#include "foundation/Settings.hpp"
#include "host/EditCycle.hpp"
#include "host/Interrupt.hpp"
#include "host/JsonDisplay.hpp"
#include "host/LatestSources.hpp"
#include "host/RunJournal.hpp"
#include "host/RunReports.hpp"
#include "host/SinkGuard.hpp"
#include "host/TextDisplay.hpp"
#include "host/commands/Commands.hpp"
#include "host/commands/CompileOrder.hpp"

namespace hearthmake::host {

namespace {

// What compiled in another process can't be marked as compiled here. It is left out of the run instead:
// not to be compiled, by an edit that is never stored.
class LeftOut {
 public:
  LeftOut(Build& build, const RunJournal& journal) {
    for (const auto& project : AllProjects(build)) {
      if (!project->CompileMe() || !journal.HasCompiled(project->Id())) continue;
      m_edits.push_back(std::make_unique<EditCycle<Project>>(*project));
      project->SetCompileMe(false);
    }
  }
  std::size_t Count() const { return m_edits.size(); }

 private:
  std::vector<std::unique_ptr<EditCycle<Project>>> m_edits;  // cancelled when they go
};

RunJournal OpenJournal(Session& session, Build& build) {
  std::vector<std::int32_t> ids;
  for (const auto& project : AllProjects(build)) ids.push_back(project->Id());
  return {session.Settings().DataFolder() + "/" + RunJournal::FileName(build.Id()), build.Id(),
          std::move(ids)};
}

// Whether the run goes on with the last one.
bool Resumes(Session& session, RunJournal& journal, bool isWanted) {
  if (isWanted && journal.IsOfThisBuild()) {
    journal.Continue();
    return true;
  }
  if (isWanted) {
    session.Out().Note(journal.IsOutdated()
                           ? "The build's projects have changed since its last run: all are compiled."
                           : "There is no stopped run to go on with: all projects are compiled anew.");
  }
  journal.StartFresh();
  return false;
}

std::size_t CountToCompile(Build& build) {
  std::size_t count = 0;
  for (const auto& project : AllProjects(build)) count += project->CompileMe() ? 1 : 0;
  return count;
}

std::unique_ptr<RunDisplay> MakeDisplay(Session& session, Build& build, bool asJson) {
  const std::size_t count = CountToCompile(build);
  if (asJson) return std::make_unique<JsonDisplay>(session.Out(), build, count);
  return std::make_unique<TextDisplay>(session, build, count);
}

RunResult Run(Session& session, Build& build, RunJournal& journal, const BuildArguments& arguments,
              RunReports& reports) {
  const bool resumes = Resumes(session, journal, arguments.resume);
  std::unique_ptr<LeftOut> leftOut;
  if (resumes) leftOut = std::make_unique<LeftOut>(build, journal);
  if (leftOut && leftOut->Count() > 0 && !arguments.json) {
    session.Out().Out(
        fmt::format("Going on with {}: {} compiled already.\n", Printable(build.Name()), leftOut->Count()));
  }
  const auto display = MakeDisplay(session, build, arguments.json);
  // The journal first: what compiled is to be on record before anything else can go wrong.
  const SinkGuard journalSink(build, journal);
  reports.Begin(build);
  const SinkGuard displaySink(build, *display);
  const InterruptibleRun interruptible;
  session.Library().OnTick([&] { display->Tick(); });
  build.Projects().Build(resumes);
  session.Library().OnTick({});
  EndReport(build, display->Result() == RunResult::Complete);
  display->Finish();
  return display->Result();
}

// A run that goes on where the last one stopped goes on with its sources.
bool TakesSources(Session& session, const BuildArguments& arguments) {
  const bool isSwitchedOn = session.LibrarySettings()->TakeLatestFromVSS();
  return arguments.sources || (isSwitchedOn && !arguments.noSources && !arguments.resume);
}

ExitStatus RunAll(Session& session, Build& build, const BuildArguments& arguments, RunReports& reports) {
  // Junk in the settings is told before anything runs.
  if (TakesSources(session, arguments) && !TakeLatestSources(session, build, arguments.json))
    return ExitStatus::Cancelled;
  SetCompileOrder(build);
  RunJournal journal = OpenJournal(session, build);
  switch (Run(session, build, journal, arguments, reports)) {
    case RunResult::Complete: journal.Remove(); return ExitStatus::Done;
    case RunResult::Failed: return ExitStatus::Failed;
    case RunResult::Cancelled: return ExitStatus::Cancelled;
  }
  return ExitStatus::Failed;
}

}  // namespace

ExitStatus BuildCommand(Session& session, const BuildArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  return ReportedRun(session, *build, arguments.reports, arguments.json,
                     [&](RunReports& reports) { return RunAll(session, *build, arguments, reports); });
}

}  // namespace hearthmake::host
