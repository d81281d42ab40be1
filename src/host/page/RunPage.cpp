#include "host/page/RunPage.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/page/GraphDrawing.hpp"
#include "host/page/Html.hpp"
#include "host/page/PageTexts.hpp"
#include "host/page/PageWords.hpp"
#include "host/page/ProjectDetails.hpp"
#include "host/page/ProjectTable.hpp"
#include "host/page/Timeline.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kMostMessages = 200;
constexpr std::size_t kLongestMessage = 2000;
constexpr std::size_t kMostNamed = 12;

struct ResultWords {
  const char* style;
  const char* word;
};

ResultWords WordsOf(RunResult result) {
  switch (result) {
    case RunResult::Complete: return {"compiled", "Complete"};
    case RunResult::Failed: return {"failed", "Failed"};
    case RunResult::Cancelled: return {"cancelled", "Cancelled"};
  }
  return {"", ""};
}

std::size_t Count(const RunPage& page, std::initializer_list<ProjectOutcome> outcomes) {
  std::size_t count = 0;
  for (const PageProject& project : page.projects)
    count += static_cast<std::size_t>(std::count(outcomes.begin(), outcomes.end(), project.record.outcome));
  return count;
}

// The signs of the types, which the drawing and the table use.
constexpr const char* kSigns =
    "<svg width=\"0\" height=\"0\" class=\"defs\" aria-hidden=\"true\"><defs>"
    "<symbol id=\"t-exe\" viewBox=\"0 0 10 10\"><path d=\"M1 1h8v8H1z\"/></symbol>"
    "<symbol id=\"t-dll\" viewBox=\"0 0 10 10\"><circle cx=\"5\" cy=\"5\" r=\"4.4\"/></symbol>"
    "<symbol id=\"t-server\" viewBox=\"0 0 10 10\"><path d=\"M5 .3 9.6 4.4V9.4H.4V4.4z\"/></symbol>"
    "<symbol id=\"t-control\" viewBox=\"0 0 10 10\"><path d=\"M5 .2 9.8 5 5 9.8.2 5z\"/></symbol>"
    "</defs></svg>\n";

std::string Head(const RunPage& page, const ResultWords& words) {
  return fmt::format(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      // Nothing is ever fetched, whatever the texts of a project hold.
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
      "script-src 'unsafe-inline'; img-src data:\">\n"
      "<meta name=\"color-scheme\" content=\"light dark\">\n<link rel=\"icon\" href=\"data:,\">\n"
      "<title>{}: {} – {}</title>\n<style>\n{}</style>\n</head>\n<body>\n",
      Html(page.buildName), words.word, TimeWord(page.began), kPageStyle);
}

std::string Time(std::int64_t began) {
  return fmt::format("<time datetime=\"{}\">{}</time>", TimeStamp(began), TimeWord(began));
}

std::string Number(const char* name, const std::string& value, const char* style = "") {
  return fmt::format("<div class=\"{}\"><dt>{}</dt><dd>{}</dd></div>", style, name, value);
}

std::string Numbers(const RunPage& page) {
  std::int64_t bytes = 0;
  for (const PageProject& project : page.projects)
    bytes += std::max<std::int64_t>(project.facts.after.size, 0);
  const std::size_t compiled = Count(page, {ProjectOutcome::Compiled});
  const std::size_t failed = Count(page, {ProjectOutcome::Failed});
  const std::size_t left =
      Count(page, {ProjectOutcome::UpToDate, ProjectOutcome::Earlier, ProjectOutcome::NotWanted});
  const std::size_t blocked = Count(page, {ProjectOutcome::Blocked});
  const std::size_t notReached = Count(page, {ProjectOutcome::NotReached, ProjectOutcome::Cancelled});
  std::string text = "<dl class=\"numbers\">";
  text += Number("Compiled", fmt::format("{}<small> of {}</small>", compiled, page.projects.size()), "good");
  if (failed > 0) text += Number("Failed", std::to_string(failed), "bad");
  if (blocked > 0) text += Number("Blocked", std::to_string(blocked), "blocked");
  if (notReached > 0) text += Number("Not reached", std::to_string(notReached));
  if (left > 0) text += Number("Left out", std::to_string(left));
  text += Number("Time", SecondsWord(page.seconds));
  text += Number("Binaries", BytesWord(bytes));
  return text + "</dl>";
}

std::string Header(const RunPage& page, const ResultWords& words) {
  return fmt::format(
      "<a class=\"skip\" href=\"#projects\">Skip to the projects</a>\n{}"
      "<header class=\"{}\"><div class=\"top\"><p class=\"brand\">Hearthmake build</p>"
      "<button type=\"button\" id=\"scheme\" hidden>Colours: <b>auto</b></button></div>\n"
      "<h1>{} <span class=\"result\">{}</span></h1>\n<p class=\"when\">Began {}</p>\n{}\n"
      "<nav aria-label=\"Parts of the page\">{}</nav></header>\n<main>\n",
      kSigns, words.style, Html(page.buildName), words.word, Time(page.began), Numbers(page),
      "<a href=\"#changes\">Changes</a><a href=\"#timeline\">Timeline</a><a href=\"#graph\">References</a>"
      "<a href=\"#projects\">Projects</a>");
}

std::string FailedProject(const PageProject& project) {
  return fmt::format("<article class=\"failure\"><h3><a href=\"#p{}\">{}</a></h3>{}</article>\n",
                     project.record.id, Html(project.record.name), FailureText(project));
}

std::string FailuresSection(const RunPage& page) {
  std::string text;
  for (const PageProject& project : page.projects) {
    if (project.record.outcome == ProjectOutcome::Failed) text += FailedProject(project);
  }
  for (const std::string& failure : page.failures) {
    text += "<article class=\"failure\"><h3>The run itself</h3><pre class=\"message\">" +
            LogText(failure, kLongestMessage) + "</pre></article>\n";
  }
  if (text.empty()) return {};
  return "<section id=\"failures\" aria-labelledby=\"failures-h\"><h2 id=\"failures-h\">What failed</h2>\n" +
         text + "</section>\n";
}

std::string NamesWithLinks(const std::vector<const PageProject*>& projects, auto describe) {
  std::string text;
  for (std::size_t i = 0; i < std::min(projects.size(), kMostNamed); ++i) {
    const ProjectRecord& record = projects[i]->record;
    text += fmt::format("<li><a href=\"#p{}\">{}</a>{}</li>", record.id, Html(record.name),
                        describe(*projects[i]));
  }
  if (projects.size() > kMostNamed) text += fmt::format("<li>and {} more</li>", projects.size() - kMostNamed);
  return text;
}

// Wanted gives how much a change matters; 0 for one of another kind. What matters most comes first.
template <class Wanted, class Describe>
std::string ChangeGroup(const RunPage& page, const char* style, const char* title, Wanted wanted,
                        Describe describe) {
  std::vector<const PageProject*> projects;
  for (const PageProject& project : page.projects) {
    if (project.change && wanted(*project.change) > 0) projects.push_back(&project);
  }
  std::stable_sort(projects.begin(), projects.end(), [&](const PageProject* a, const PageProject* b) {
    return wanted(*a->change) > wanted(*b->change);
  });
  if (projects.empty()) return {};
  return fmt::format("<div class=\"group {}\"><h3>{} <span>{}</span></h3><ul>{}</ul></div>\n", style, title,
                     projects.size(), NamesWithLinks(projects, describe));
}

std::string GoneGroup(const RunPage& page) {
  if (page.gone.empty()) return {};
  std::string names;
  for (const std::string& name : page.gone) names += fmt::format("<li>{}</li>", Html(name));
  return fmt::format(
      "<div class=\"group\"><h3>No longer in the build <span>{}</span></h3><ul>{}</ul></div>\n",
      page.gone.size(), names);
}

std::string ChangeGroups(const RunPage& page) {
  using Kind = ProjectChange::Kind;
  const auto nothing = [](const PageProject&) { return std::string(); };
  const auto isOf = [](Kind kind) {
    return [kind](const ProjectChange& c) { return c.kind == kind ? 1 : 0; };
  };
  return ChangeGroup(page, "bad", "Newly failing", isOf(Kind::NewlyFailing), nothing) +
         ChangeGroup(page, "bad", "Still failing", isOf(Kind::StillFailing), nothing) +
         ChangeGroup(page, "good", "Fixed", isOf(Kind::Fixed), nothing) +
         ChangeGroup(
             page, "bad", "New identities", [](const ProjectChange& c) { return c.hasNewLibrary ? 1 : 0; },
             nothing) +
         ChangeGroup(
             page, "warn", "New library versions",
             [](const ProjectChange& c) { return c.hasNewLibraryVersion ? 1 : 0; },
             [](const PageProject& p) {
               return fmt::format(" <small>{} → {}</small>", Html(p.change->last.facts.libraryVersion),
                                  Html(p.facts.after.libraryVersion));
             }) +
         ChangeGroup(
             page, "", "New sizes", [](const ProjectChange& c) { return std::abs(c.sizeChange); },
             [](const PageProject& p) {
               return fmt::format(" <small>{}</small>", ByteChangeWord(p.change->sizeChange));
             }) +
         ChangeGroup(
             page, "", "Slower or faster", [](const ProjectChange& c) { return std::abs(c.secondsChange); },
             [](const PageProject& p) {
               return fmt::format(" <small>{}</small>", SecondsChangeWord(p.change->secondsChange));
             }) +
         ChangeGroup(page, "", "New in the build", isOf(Kind::NewProject), nothing) + GoneGroup(page);
}

std::string ChangesSection(const RunPage& page) {
  constexpr const char* kStart =
      "<section id=\"changes\" aria-labelledby=\"changes-h\"><h2 id=\"changes-h\">Since the last run</h2>\n";
  if (!page.lastBegan)
    return std::string(kStart) +
           "<p class=\"note\">This is the first run on record. The next page tells what has changed.</p>"
           "</section>\n";
  const std::string groups = ChangeGroups(page);
  return fmt::format(
      "{}<p class=\"note\">Compared with the run of {}.{}</p>\n<div class=\"groups\">\n{}</div></section>\n",
      kStart, Time(*page.lastBegan), groups.empty() ? " Nothing is different." : "", groups);
}

const char* MessageStyle(RunMessage::Kind kind) { return kind == RunMessage::Kind::Error ? "bad" : ""; }

std::string MessagesSection(const RunPage& page) {
  if (page.messages.empty()) return {};
  std::string rows;
  const std::size_t shown = std::min(page.messages.size(), kMostMessages);
  for (std::size_t i = 0; i < shown; ++i) {
    const RunMessage& message = page.messages[i];
    rows += fmt::format("<li class=\"{}\"><span>{}</span><p>{}</p></li>\n", MessageStyle(message.kind),
                        SecondsWord(message.seconds), LogText(message.text, kLongestMessage));
  }
  const std::size_t left = page.messages.size() - shown + page.lostMessages;
  return fmt::format(
      "<section id=\"messages\" aria-labelledby=\"messages-h\"><h2 id=\"messages-h\">Messages</h2>"
      "<ol class=\"messages\">\n{}</ol>{}</section>\n",
      rows, left == 0 ? "" : fmt::format("<p class=\"note\">{} more are left out here.</p>", left));
}

}  // namespace

std::string RunPageText(const RunPage& page) {
  const ResultWords words = WordsOf(page.result);
  return Head(page, words) + Header(page, words) + FailuresSection(page) + ChangesSection(page) +
         TimelineSection(page) + GraphSection(page) + TableSection(page) + MessagesSection(page) +
         DetailsSection(page) +
         fmt::format(
             "</main>\n<footer><p>Written by Hearthmake. This page stands alone and loads nothing.</p>"
             "</footer>\n<script>\n{}</script>\n</body>\n</html>\n",
             kPageScript);
}

}  // namespace hearthmake::host
