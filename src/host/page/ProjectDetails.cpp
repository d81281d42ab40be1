#include "host/page/ProjectDetails.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "automation/Utf.hpp"
#include "host/page/Html.hpp"
#include "host/page/PageWords.hpp"
#include "host/page/ProjectTable.hpp"

namespace hearthmake::host {

namespace {

// Of one log, and of all together: a page must stay small enough to be sent about.
constexpr std::size_t kMostLog = std::size_t{16} * 1024;
constexpr std::size_t kMostLogs = std::size_t{512} * 1024;
constexpr std::size_t kLeastLog = 512;

// Steps back to the start of a character.
std::size_t CharacterStart(const std::string& text, std::size_t at) {
  for (int i = 0; i < 3 && at > 0 && at < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) break;
    --at;
  }
  return at;
}

std::string ExcerptText(const PageError& error) {
  if (error.excerpt.lines.empty()) return {};
  std::string text = "<pre class=\"source\"><code>";
  for (const SourceExcerpt::Line& line : error.excerpt.lines) {
    const bool isIt = line.number == error.error.line;
    text += fmt::format("<{0}><i>{1}</i>{2}\n</{0}>", isIt ? "mark" : "span", line.number, Html(line.text));
  }
  return text + "</code></pre>";
}

std::string ErrorText(const PageError& error) {
  return fmt::format(
      "<div class=\"error\"><p class=\"what\">{}</p><p class=\"where\">{}, line {}</p>{}</div>",
      Html(error.error.text), Html(error.error.file), error.error.line, ExcerptText(error));
}

struct Fact {
  const char* name;
  std::string before;
  std::string after;
};

std::string FactRow(const Fact& fact) {
  const bool isSame = fact.before == fact.after;
  if (isSame && fact.before.empty()) return {};
  if (isSame)
    return fmt::format("<tr><th scope=\"row\">{}</th><td colspan=\"2\">{}</td></tr>", fact.name,
                       Html(fact.after));
  const auto shown = [](const std::string& text) { return text.empty() ? std::string("–") : Html(text); };
  return fmt::format("<tr class=\"differs\"><th scope=\"row\">{}</th><td>{}</td><td>{}</td></tr>", fact.name,
                     shown(fact.before), shown(fact.after));
}

std::string FactsTable(const RunFacts::Pair& facts) {
  const ProjectFacts& before = facts.before;
  const ProjectFacts& after = facts.after;
  const auto size = [](std::int64_t bytes) {
    return bytes < 0 ? std::string("not there") : fmt::format("{} ({} bytes)", BytesWord(bytes), bytes);
  };
  return "<table class=\"facts\"><thead><tr><th></th><th scope=\"col\">Before</th><th "
         "scope=\"col\">After</th>"
         "</tr></thead><tbody>" +
         FactRow({"Version", before.version, after.version}) +
         FactRow({"Size", size(before.size), size(after.size)}) +
         FactRow({"Type library", before.library, after.library}) +
         FactRow({"Library version", before.libraryVersion, after.libraryVersion}) + "</tbody></table>";
}

std::string ChangeRow(const char* name, const std::string& last, const std::string& now) {
  return fmt::format("<tr class=\"differs\"><th scope=\"row\">{}</th><td>{}</td><td>{}</td></tr>", name,
                     Html(last), Html(now));
}

std::string ChangeText(const PageProject& project) {
  if (!project.change || !project.change->IsAny()) return {};
  const ProjectChange& change = *project.change;
  std::string rows;
  if (change.hasNewLibrary)
    rows += ChangeRow("Type library", change.last.facts.library, project.facts.after.library);
  if (change.hasNewLibrary || change.hasNewLibraryVersion)
    rows +=
        ChangeRow("Library version", change.last.facts.libraryVersion, project.facts.after.libraryVersion);
  if (change.hasNewVersion)
    rows += ChangeRow("Version", change.last.facts.version, project.facts.after.version);
  if (change.sizeChange != 0)
    rows += ChangeRow("Size", BytesWord(change.last.facts.size), BytesWord(project.facts.after.size));
  if (change.secondsChange != 0)
    rows += ChangeRow("Time", SecondsWord(change.last.seconds), SecondsWord(project.record.seconds));
  const std::string table = rows.empty()
                                ? ""
                                : "<table class=\"facts\"><thead><tr><th></th><th scope=\"col\">Last run</th>"
                                  "<th scope=\"col\">This run</th></tr></thead><tbody>" +
                                      rows + "</tbody></table>";
  return fmt::format("<h4>Since the last run</h4><p class=\"chips\">{}</p>{}", ChangeChips(project), table);
}

std::string Links(const RunPage& page, const Digraph::Nodes& nodes, const char* title) {
  if (nodes.empty()) return {};
  std::string text = fmt::format("<h4>{} <span>{}</span></h4><p class=\"links\">", title, nodes.size());
  for (const std::size_t node : nodes) {
    const ProjectRecord& record = page.projects[node].record;
    text += fmt::format("<a href=\"#p{}\" class=\"{}\">{}</a> ", record.id, OutcomeStyle(record.outcome),
                        Html(record.name));
  }
  return text + "</p>";
}

class Details {
 public:
  explicit Details(const RunPage& page) : m_page(page), m_users(page.references.Reversed()) {}

  std::string Text(std::size_t place) {
    const PageProject& project = m_page.projects[place];
    const ProjectRecord& record = project.record;
    // The name of the place stands inside, for browsers open what they jump into.
    return fmt::format(
        "<details{1}><summary><span class=\"o {2}\">{3}</span> <strong>{4}</strong> "
        "<small>{5}{6}</small></summary>\n<div class=\"body\" id=\"p{0}\">\n<p "
        "class=\"path\">{7}</p>{8}{9}{10}{11}{12}{13}"
        "{14}</div></details>\n",
        record.id, record.outcome == ProjectOutcome::Failed ? " open" : "", OutcomeStyle(record.outcome),
        OutcomeWord(record.outcome), Html(record.name), TypeWord(record.type),
        record.seconds > 0 ? " · " + SecondsWord(record.seconds) : "", Html(project.path), Reason(record),
        FailureText(project), FactsTable(project.facts), ChangeText(project),
        Links(m_page, m_page.references.Targets(place), "Needs"),
        Links(m_page, m_users.Targets(place), "Needed by"), Log(record));
  }

 private:
  static std::string Reason(const ProjectRecord& record) {
    const bool isLeft = record.outcome == ProjectOutcome::NotReached && record.reason.empty();
    const std::string reason = isLeft ? "the run ended before its turn" : record.reason;
    return reason.empty() ? "" : fmt::format("<p class=\"reason\">{}</p>", Html(reason));
  }

  std::string Log(const ProjectRecord& record) {
    if (record.log.empty()) return {};
    const std::size_t left = kMostLogs - std::min(m_logs, kMostLogs);
    const std::string log = LogText(record.log, std::clamp(left, kLeastLog, kMostLog));
    m_logs += log.size();
    return "<h4>Compiler log</h4><pre class=\"log\">" + log + "</pre>";
  }

  const RunPage& m_page;
  Digraph m_users;
  std::size_t m_logs = 0;
};

}  // namespace

std::string FailureText(const PageProject& project) {
  std::string text;
  for (const PageError& error : project.errors) text += ErrorText(error);
  const ProjectRecord& record = project.record;
  const bool hasLog = record.isCompileError && !record.log.empty();
  if (text.empty() && !record.message.empty()) {
    const std::string& said = hasLog ? record.log : record.message;
    text = "<pre class=\"message\">" + LogText(said, kMostLog / 4) + "</pre>";
  }
  if (!project.advice.empty()) text += "<p class=\"advice\">" + Html(project.advice) + "</p>";
  return text;
}

std::string LogText(const std::string& log, std::size_t most) {
  if (log.size() <= most) return Html(log);
  // The beginning names the first error, the end what came of it.
  const std::size_t head = CharacterStart(log, most * 3 / 4);
  const std::size_t tail = CharacterStart(log, log.size() - most / 4);
  return fmt::format("{}\n<em class=\"cut\">[… {} left out here …]</em>\n{}", Html(log.substr(0, head)),
                     BytesWord(static_cast<std::int64_t>(tail - head)), Html(log.substr(tail)));
}

std::string DetailsSection(const RunPage& page) {
  Details details(page);
  std::string text;
  for (std::size_t place = 0; place < page.projects.size(); ++place) text += details.Text(place);
  return "<section id=\"details\" aria-labelledby=\"details-h\" tabindex=\"-1\"><div class=\"head\">"
         "<h2 id=\"details-h\">Each project</h2>"
         "<button type=\"button\" class=\"close\" aria-label=\"Close\">✕</button></div>\n" +
         text + "</section>\n";
}

}  // namespace hearthmake::host
