#include "host/reports/JUnitReport.hpp"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/mSettings.hpp"
#include "host/Version.hpp"
#include "host/reports/XmlText.hpp"
#include "host/run/RunProblem.hpp"

namespace hearthmake::host {

namespace {

std::string Attribute(std::string_view name, std::string_view value) {
  return fmt::format(" {}=\"{}\"", name, XmlAttribute(value));
}

std::string Seconds(double seconds) { return fmt::format("{:.3f}", seconds); }

// The usual servers split the name of the class at its full stops.
std::string ClassName(const RunRecord& record) {
  return "hearthmake." + automation::ReplaceAll(record.BuildName(), ".", "_");
}

std::string PlaceText(const RunProblem& problem, const SourceRoot& root) {
  if (problem.file.empty()) return "";
  const std::string file = root.Relative(problem.file);
  return problem.line == 0 ? file + ": " : fmt::format("{}:{}: ", file, problem.line);
}

std::string ResultText(RunResult result) {
  switch (result) {
    case RunResult::Complete: return "complete";
    case RunResult::Failed: return "failed";
    case RunResult::Cancelled: return "cancelled";
  }
  return "";
}

// Where a run stopped, for those behind.
std::string StopText(const RunRecord& record) {
  for (const ProjectRecord& project : record.Projects()) {
    if (project.outcome == ProjectOutcome::Failed) return "the run stopped at " + project.name;
    if (project.outcome == ProjectOutcome::Cancelled) return "the run was cancelled at " + project.name;
  }
  return record.Result() == RunResult::Cancelled ? "the run was cancelled" : "the run stopped before it";
}

std::string Skipped(std::string_view why, const ProjectRecord& project) {
  const std::string reason = project.reason.empty() ? "" : ": " + project.reason;
  return "      <skipped" + Attribute("message", std::string(why) + reason) + "/>\n";
}

class Report {
 public:
  Report(Session& session, const RunRecord& record, const SourceRoot& root)
      : m_session(session), m_record(record), m_root(root) {}

  std::string Text() {
    for (const ProjectRecord& project : m_record.Projects()) AddCase(project);
    for (const std::string& failure : m_record.Failures()) AddFailure(failure);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"hearthmake\"" + Counts() +
           Attribute("time", Seconds(m_record.Seconds())) + ">\n" + SuiteBegin() + Properties() + m_cases +
           Messages() + "  </testsuite>\n</testsuites>\n";
  }

 private:
  std::string Counts() const {
    return fmt::format(" tests=\"{}\" failures=\"{}\" errors=\"{}\"", m_tests, m_failures, m_errors);
  }

  std::string SuiteBegin() const {
    const auto began = std::chrono::time_point_cast<std::chrono::seconds>(m_record.Began());
    return "  <testsuite" + Attribute("name", m_record.BuildName()) + Counts() +
           fmt::format(" skipped=\"{}\"", m_skipped) + Attribute("time", Seconds(m_record.Seconds())) +
           Attribute("timestamp", fmt::format("{:%Y-%m-%dT%H:%M:%S}", fmt::gmtime(began))) + ">\n";
  }

  static std::string Property(std::string_view name, std::string_view value) {
    return "      <property" + Attribute("name", name) + Attribute("value", value) + "/>\n";
  }

  std::string Properties() const {
    std::string compiler;
    try {
      compiler = mSettings::VBExe();
    } catch (const automation::Error& error) {
      compiler = error.Description();  // junk in the settings, which the run has told of
    }
    return "    <properties>\n" + Property("hearthmake.version", Version()) +
           Property("build.id", automation::Decimal(m_record.BuildId())) +
           Property("build.result", ResultText(m_record.Result())) + Property("compiler", compiler) +
           "    </properties>\n";
  }

  void Case(std::string_view name, double seconds, const std::string& content) {
    ++m_tests;
    m_cases += "    <testcase" + Attribute("name", name) + Attribute("classname", ClassName(m_record)) +
               Attribute("time", Seconds(seconds)) + ">\n" + content + "    </testcase>\n";
  }

  void AddCase(const ProjectRecord& project) {
    std::string content = Outcome(project);
    if (!project.log.empty()) {
      content += "      <system-out>" + XmlContent(Printable(project.log)) + "</system-out>\n";
    }
    Case(project.name, project.seconds, content);
  }

  void AddFailure(const std::string& failure) {
    ++m_errors;
    Case("(build)", 0, Stopped("error", "BuildError", Printable(failure), Printable(failure)));
  }

  static std::string Stopped(std::string_view element, std::string_view type, std::string_view message,
                             std::string_view text) {
    return fmt::format("      <{0}{1}{2}>{3}</{0}>\n", element, Attribute("message", message),
                       Attribute("type", type), XmlContent(text));
  }

  std::string Outcome(const ProjectRecord& project) {
    switch (project.outcome) {
      case ProjectOutcome::Compiled: return "";
      case ProjectOutcome::Failed: return Failed(project);
      case ProjectOutcome::Cancelled:
        ++m_errors;
        return Stopped("error", "Cancelled", "The run was cancelled.", project.message);
      default: break;
    }
    ++m_skipped;
    switch (project.outcome) {
      case ProjectOutcome::UpToDate: return Skipped("up to date", project);
      case ProjectOutcome::Blocked: return Skipped("blocked", project);
      case ProjectOutcome::Earlier: return Skipped("compiled earlier", project);
      case ProjectOutcome::NotWanted: return Skipped("not to be compiled", project);
      default: return Skipped("not reached: " + StopText(m_record), project);
    }
  }

  std::string Failed(const ProjectRecord& project) {
    ++(project.isCompileError ? m_failures : m_errors);
    const std::vector<RunProblem> problems = ProblemsOf(m_session, project);
    std::string text = m_session.PosixPath(project.path) + "\n";
    for (const RunProblem& problem : problems) text += PlaceText(problem, m_root) + problem.text + "\n";
    const RunProblem& first = problems.front();
    return Stopped(project.isCompileError ? "failure" : "error",
                   project.isCompileError ? "CompileError" : "BuildError",
                   PlaceText(first, m_root) + first.text, text);
  }

  std::string Messages() const {
    std::string text;
    for (const RunMessage& message : m_record.Messages()) text += Printable(message.text) + "\n";
    if (m_record.LostMessages() > 0) text += fmt::format("({} more)\n", m_record.LostMessages());
    return text.empty() ? "" : "    <system-out>" + XmlContent(text) + "</system-out>\n";
  }

  Session& m_session;
  const RunRecord& m_record;
  const SourceRoot& m_root;
  std::string m_cases;
  std::size_t m_tests = 0;
  std::size_t m_failures = 0;
  std::size_t m_errors = 0;
  std::size_t m_skipped = 0;
};

}  // namespace

std::string JUnitReport(Session& session, const RunRecord& record, const SourceRoot& root) {
  return Report(session, record, root).Text();
}

}  // namespace hearthmake::host
