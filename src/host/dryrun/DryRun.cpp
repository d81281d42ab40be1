#include "host/dryrun/DryRun.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "host/display/JsonEvent.hpp"
#include "host/dryrun/CompileRehearsal.hpp"
#include "host/dryrun/UnifiedDiff.hpp"
#include "host/run/FailureAdvice.hpp"
#include "host/run/PlanText.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

std::string Names(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + Printable(name);
  return text;
}

std::string DiffOf(const RehearsedCompile& compile, const std::string& name) {
  return UnifiedDiff(compile.before, compile.after, name, name);
}

std::string Painted(const Console& console, std::string_view line) {
  const std::string text = Printable(line);
  const bool isHeader = line.starts_with("--- ") || line.starts_with("+++ ");
  if (isHeader) return text;
  if (line.starts_with('-')) return console.PaintOut(Colour::Red, text);
  if (line.starts_with('+')) return console.PaintOut(Colour::Green, text);
  return line.starts_with('@') ? console.PaintOut(Colour::Yellow, text) : text;
}

void PrintDiff(const Console& console, std::string_view diff) {
  while (!diff.empty()) {
    const std::size_t end = diff.find('\n');
    console.Out(Painted(console, diff.substr(0, end)) + "\n");
    diff.remove_prefix(end + 1);
  }
}

// What a run would do, for people.
class TextRehearsal {
 public:
  TextRehearsal(Session& session, Build& build, const RunPlan& plan, bool why)
      : m_session(session), m_console(session.Out()), m_build(build), m_plan(plan), m_why(why) {}

  void Begin() const {
    const std::string leftOut = LeftOutCounts(m_plan);
    m_console.Out(fmt::format("Would compile {} of {} projects of {}.{}\n", m_plan.Count(RunChoice::Runs),
                              m_plan.Projects().size(), Printable(m_build.Name()),
                              leftOut.empty() ? "" : " Left out: " + leftOut + "."));
    if (m_why) m_console.Out(LeftOutLines(m_plan));
  }

  void Tell(const RehearsedCompile& compile) {
    const PlannedProject& planned = *compile.planned;
    m_console.Out(fmt::format("[{}/{}] {}{}\n", ++m_number, m_plan.Count(RunChoice::Runs),
                              Printable(planned.name),
                              planned.reason.empty() ? "" : ": " + Printable(planned.reason)));
    for (const std::string& notice : compile.notices) m_console.Out(Printable(notice) + "\n");
    if (!compile.problem.empty()) return TellProblem(compile);
    const std::string path = m_session.PosixPath(compile.path);
    const std::string diff = DiffOf(compile, path);
    if (diff.empty()) m_console.Out(fmt::format("{} stays as it is.\n", Printable(path)));
    PrintDiff(m_console, diff);
    TellIdentities(compile);
  }

 private:
  void TellProblem(const RehearsedCompile& compile) const {
    const auto project = FindProject(m_build, compile.planned->name);
    const std::string advice = FailureAdvice(m_session, m_build, project.Get(), compile.problem);
    m_console.Out(fmt::format("{} {}\n{}", m_console.PaintOut(Colour::Red, "It would fail:"),
                              Printable(compile.problem), advice.empty() ? "" : advice + "\n"));
  }

  void TellIdentities(const RehearsedCompile& compile) const {
    if (!compile.unknown.empty())
      m_console.Out(
          fmt::format("Not built yet, so that their identity is not known: {}\n", Names(compile.unknown)));
    if (!compile.mayChange.empty())
      m_console.Out(
          fmt::format("Compiled before, which may change their identity: {}\n", Names(compile.mayChange)));
  }

  Session& m_session;
  const Console& m_console;
  Build& m_build;
  const RunPlan& m_plan;
  bool m_why;
  std::size_t m_number = 0;
};

// The same for programs.
class JsonRehearsal {
 public:
  JsonRehearsal(const Console& console, Build& build, const RunPlan& plan)
      : m_console(console), m_build(build), m_plan(plan) {}

  void Begin() const {
    PrintEvent(m_console, "DryRun",
               {{"build", m_build.Name()},
                {"projects", m_plan.Count(RunChoice::Runs)},
                {"leftOut", LeftOutJson(m_plan)}});
  }

  void Tell(const RehearsedCompile& compile) {
    const PlannedProject& planned = *compile.planned;
    ordered_json details = {{"project", planned.name},
                            {"id", planned.id},
                            {"path", compile.path},
                            {"index", ++m_number},
                            {"projects", m_plan.Count(RunChoice::Runs)}};
    if (!planned.reason.empty()) details["reason"] = planned.reason;
    details["changes"] = compile.problem.empty() ? DiffOf(compile, compile.path) : "";
    details["notYetKnown"] = compile.unknown;
    details["mayChange"] = compile.mayChange;
    details["notices"] = compile.notices;
    if (!compile.problem.empty()) details["problem"] = compile.problem;
    PrintEvent(m_console, "WouldCompile", details);
  }

 private:
  const Console& m_console;
  Build& m_build;
  const RunPlan& m_plan;
  std::size_t m_number = 0;
};

template <class Display>
ExitStatus Rehearse(Display display, Build& build, const RunPlan& plan) {
  ExitStatus status = ExitStatus::Done;
  display.Begin();
  RehearseCompiles(build, plan, [&](const RehearsedCompile& compile) {
    if (!compile.problem.empty()) status = ExitStatus::Failed;
    display.Tell(compile);
  });
  return status;
}

}  // namespace

ExitStatus ShowDryRun(Session& session, Build& build, const RunPlan& plan, const DryRunOptions& options) {
  if (options.json) return Rehearse(JsonRehearsal(session.Out(), build, plan), build, plan);
  return Rehearse(TextRehearsal(session, build, plan, options.why), build, plan);
}

}  // namespace hearthmake::host
