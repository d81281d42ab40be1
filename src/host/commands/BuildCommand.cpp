#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>

#include "foundation/Apartment.hpp"
#include "foundation/Settings.hpp"
#include "host/commands/Commands.hpp"
#include "host/commands/CompileOrder.hpp"
#include "host/display/JsonDisplay.hpp"
#include "host/display/TextDisplay.hpp"
#include "host/dryrun/DryRun.hpp"
#include "host/reports/RunReports.hpp"
#include "host/run/ChangeFinder.hpp"
#include "host/run/PlanText.hpp"
#include "host/run/PlannedRun.hpp"
#include "host/run/RewrittenFiles.hpp"
#include "host/run/RunJournal.hpp"
#include "host/run/RunPlanners.hpp"
#include "host/run/SinkGuard.hpp"
#include "host/sources/LatestSources.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

void RefuseNonsense(const BuildArguments& arguments) {
  if (!arguments.only.empty() && !arguments.from.empty()) {
    throw HostError("--only and --from both say which projects are compiled.", "Use one of them.");
  }
  if (arguments.dryRun && arguments.sources) {
    throw HostError("--dry-run touches nothing, so that it can't take the latest sources.",
                    "Leave --sources out, or take them first with: hearthmake sources BUILD");
  }
}

// Wrong names are told before anything is begun.
void RequireKnownProjects(Build& build, const BuildArguments& arguments) {
  for (const std::string& name : arguments.only) FindProject(build, name);
  if (!arguments.from.empty()) FindProject(build, arguments.from);
}

bool IsNarrowed(const BuildArguments& arguments) {
  return arguments.changed || !arguments.only.empty() || !arguments.from.empty();
}

std::string JournalPath(Session& session, const Build& build) {
  return session.Settings().DataFolder() + "/" + RunJournal::FileName(build.Id());
}

std::vector<std::int32_t> ProjectIds(Build& build) {
  std::vector<std::int32_t> ids;
  for (const auto& project : AllProjects(build)) ids.push_back(project->Id());
  return ids;
}

RewrittenFiles OpenRewrittenFiles(Session& session, const Build& build) {
  const std::string path = session.Settings().DataFolder() + "/" + RewrittenFiles::FileName(build.Id());
  return {*Ports().files, session.DosPath(path)};
}

// Whether the run goes on with the last one.
bool Resumes(Session& session, const RunJournal* journal, bool isWanted) {
  if (!isWanted) return false;
  if (journal != nullptr && journal->IsOfThisBuild()) return true;
  session.Out().Note(journal != nullptr && journal->IsOutdated()
                         ? "The build's projects have changed since its last run: all are compiled."
                         : "There is no stopped run to go on with: all projects are compiled anew.");
  return false;
}

// resumed is the journal of the run that this one goes on with; null for none.
RunPlan MakePlan(Session& session, Build& build, const BuildArguments& arguments, const RunJournal* resumed,
                 const RewrittenFiles& rewritten) {
  const ProjectList projects = AllProjects(build);
  RunPlan plan(projects);
  if (resumed != nullptr) LeaveOutDone(plan, *resumed);
  if (!arguments.only.empty()) LeaveOutAllBut(plan, build, arguments.only);
  if (!arguments.from.empty()) LeaveOutBefore(plan, build, arguments.from);
  if (arguments.changed) {
    ChangeFinder finder(*Ports().files, rewritten,
                        [&session](const std::string& path) { return session.PosixPath(path); });
    finder.LeaveOutUpToDate(plan, projects, ProjectGraph(projects));
  }
  plan.SetKeepsGoing(arguments.keepGoing);
  return plan;
}

void BeginJournal(RunJournal& journal, const RunPlan& plan, bool resumes, bool isNarrowed) {
  if (resumes) {
    journal.Continue();
  } else {
    journal.StartFresh();
  }
  if (isNarrowed) journal.AskFor(plan.RunningIds());
}

// A project that is asked for by its name is expected to be compiled.
void TellOfSwitchedOff(Session& session, Build& build, const RunPlan& plan, const BuildArguments& arguments) {
  for (const std::string& name : arguments.only) {
    const PlannedProject* planned = plan.Find(FindProject(build, name)->Id());
    if (planned == nullptr || planned->choice != RunChoice::SwitchedOff) continue;
    session.Out().Note(
        fmt::format("{} is switched off and is not compiled. Switch it on with: hearthmake set "
                    "'{}' '{}' CompileMe true",
                    planned->name, build.Name(), planned->name));
  }
}

void TellPlan(const Console& console, const Build& build, const RunPlan& plan,
              const BuildArguments& arguments) {
  if (arguments.json) return;
  const std::size_t compiled = plan.Count(RunChoice::CompiledAlready);
  const bool hasChoice = IsNarrowed(arguments) || plan.Count(RunChoice::NotAskedFor) > 0;
  if (compiled > 0)
    console.Out(fmt::format("Going on with {}: {} compiled already.\n", Printable(build.Name()), compiled));
  const std::string leftOut = LeftOutCounts(plan);
  if (hasChoice && !leftOut.empty()) console.Out(fmt::format("Left out: {}.\n", leftOut));
  if (arguments.why) console.Out(WhyLines(plan));
}

enum class RunKind {
  Fresh,
  Resumed,
  None,  // where nothing that was asked for is left to compile, services go on and scripts don't run
};

// A resumed run may have stopped behind its last project.
RunKind KindOf(const RunPlan& plan, bool resumes, const BuildArguments& arguments) {
  if (resumes) return RunKind::Resumed;
  return IsNarrowed(arguments) && plan.Count(RunChoice::Runs) == 0 ? RunKind::None : RunKind::Fresh;
}

std::unique_ptr<RunDisplay> MakeDisplay(Session& session, Build& build, const RunPlan& plan, bool asJson) {
  if (asJson) return std::make_unique<JsonDisplay>(session.Out(), build, plan);
  return std::make_unique<TextDisplay>(session, build, plan);
}

// The sinks hear the events in their order; the display is one of them.
RunResult Run(Session& session, Build& build, RunPlan& plan, RunKind kind, RunDisplay& display,
              const std::vector<BuildEvents*>& sinks) {
  const InterruptibleRun interruptible;
  session.Library().OnTick([&] { display.Tick(); });
  PlannedRun run(build, plan, sinks);
  if (kind == RunKind::None) {
    run.StayAway();
  } else {
    run.Go(kind == RunKind::Resumed);
    EndReport(build, display.Result() == RunResult::Complete);
  }
  session.Library().OnTick({});
  return display.Result();
}

ExitStatus StatusOf(RunResult result) {
  switch (result) {
    case RunResult::Complete: return ExitStatus::Done;
    case RunResult::Failed: return ExitStatus::Failed;
    case RunResult::Cancelled: return ExitStatus::Cancelled;
  }
  return ExitStatus::Failed;
}

// A run that goes on where the last one stopped goes on with its sources.
bool TakesSources(Session& session, const BuildArguments& arguments) {
  const bool isSwitchedOn = session.LibrarySettings()->TakeLatestFromVSS();
  return arguments.sources || (isSwitchedOn && !arguments.noSources && !arguments.resume);
}

// The journal is looked at without making one.
ExitStatus DryRun(Session& session, Build& build, const BuildArguments& arguments) {
  if (TakesSources(session, arguments))
    session.Out().Note("The latest sources would be taken first. This is of the sources that are here.");
  SetCompileOrder(build);
  std::optional<RunJournal> journal;
  std::error_code ignored;
  if (arguments.resume && std::filesystem::exists(JournalPath(session, build), ignored))
    journal.emplace(JournalPath(session, build), build.Id(), ProjectIds(build));
  const RunJournal* known = journal ? &*journal : nullptr;
  const bool resumes = Resumes(session, known, arguments.resume);
  const RunPlan plan =
      MakePlan(session, build, arguments, resumes ? known : nullptr, OpenRewrittenFiles(session, build));
  TellOfSwitchedOff(session, build, plan, arguments);
  return ShowDryRun(session, build, plan, {arguments.why, arguments.json});
}

ExitStatus RunAll(Session& session, Build& build, const BuildArguments& arguments, RunReports& reports) {
  // Junk in the settings is told before anything runs.
  if (TakesSources(session, arguments) && !TakeLatestSources(session, build, arguments.json))
    return ExitStatus::Cancelled;
  SetCompileOrder(build);
  RunJournal journal(JournalPath(session, build), build.Id(), ProjectIds(build));
  RewrittenFiles rewritten = OpenRewrittenFiles(session, build);
  const bool resumes = Resumes(session, &journal, arguments.resume);
  RunPlan plan = MakePlan(session, build, arguments, resumes ? &journal : nullptr, rewritten);
  BeginJournal(journal, plan, resumes, IsNarrowed(arguments));
  TellOfSwitchedOff(session, build, plan, arguments);
  TellPlan(session.Out(), build, plan, arguments);
  const auto display = MakeDisplay(session, build, plan, arguments.json);
  // The journal first: what compiled is to be on record before anything else can go wrong.
  std::vector<BuildEvents*> sinks = {&journal, &rewritten};
  for (BuildEvents* sink : reports.Begin(build, plan)) sinks.push_back(sink);
  sinks.push_back(display.get());
  const RunResult result = Run(session, build, plan, KindOf(plan, resumes, arguments), *display, sinks);
  reports.End(plan);
  display->Finish();
  rewritten.Save();
  if (result == RunResult::Complete) journal.Remove();
  return StatusOf(result);
}

}  // namespace

ExitStatus BuildCommand(Session& session, const BuildArguments& arguments) {
  RefuseNonsense(arguments);
  const auto build = session.OpenBuild(arguments.build);
  RequireKnownProjects(*build, arguments);
  if (arguments.dryRun) return DryRun(session, *build, arguments);
  return ReportedRun(session, *build, arguments.reports, arguments.json,
                     [&](RunReports& reports) { return RunAll(session, *build, arguments, reports); });
}

}  // namespace hearthmake::host
