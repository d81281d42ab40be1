#include "host/page/ProjectTable.hpp"

#include <fmt/format.h>

#include <array>

#include "host/page/Html.hpp"
#include "host/page/PageWords.hpp"

namespace hearthmake::host {

namespace {

constexpr std::array kOutcomes = {ProjectOutcome::Failed,    ProjectOutcome::Cancelled,
                                  ProjectOutcome::Compiled,  ProjectOutcome::UpToDate,
                                  ProjectOutcome::Earlier,   ProjectOutcome::Blocked,
                                  ProjectOutcome::NotWanted, ProjectOutcome::NotReached};

std::string Chip(const char* style, const std::string& text) {
  return fmt::format("<span class=\"chip {}\">{}</span>", style, text);
}

std::size_t Count(const RunPage& page, ProjectOutcome outcome) {
  std::size_t count = 0;
  for (const PageProject& project : page.projects) count += project.record.outcome == outcome ? 1 : 0;
  return count;
}

// A choice for each outcome that occurs, when there is more than one.
std::string Choices(const RunPage& page) {
  std::string text;
  std::size_t kinds = 0;
  const auto add = [&](const char* value, const char* word, std::size_t count, bool isChosen) {
    text += fmt::format(
        "<label><input type=\"radio\" name=\"outcome\" value=\"{}\"{}><span>{} <b>{}</b></span></label>",
        value, isChosen ? " checked" : "", word, count);
  };
  add("", "All", page.projects.size(), true);
  for (const ProjectOutcome outcome : kOutcomes) {
    const std::size_t count = Count(page, outcome);
    if (count == 0) continue;
    add(OutcomeStyle(outcome), OutcomeWord(outcome), count, false);
    ++kinds;
  }
  return kinds > 1 ? text : "";
}

bool WasTimed(const ProjectRecord& record) { return record.seconds > 0; }

std::string Row(const PageProject& project, std::size_t number) {
  const ProjectRecord& record = project.record;
  return fmt::format(
      "<tr data-p=\"{0}\" data-o=\"{1}\"><td class=\"num\" data-l=\"No.\">{2}</td>"
      "<th scope=\"row\"><a href=\"#p{0}\">{3}</a></th>"
      "<td data-l=\"Type\"><svg class=\"sign\" aria-hidden=\"true\"><use href=\"#{4}\"/></svg>{5}</td>"
      "<td data-l=\"Result\"><span class=\"o {1}\">{6}</span></td>"
      "<td class=\"num\" data-l=\"Time\" data-s=\"{7:.3f}\">{8}</td>"
      "<td class=\"num\" data-l=\"Size\" data-s=\"{9}\">{10}</td>"
      "<td data-l=\"Version\">{11}</td><td data-l=\"Since last run\" class=\"chips\">{12}</td></tr>\n",
      record.id, OutcomeStyle(record.outcome), number, Html(record.name), TypeSign(record.type),
      TypeWord(record.type), OutcomeWord(record.outcome), WasTimed(record) ? record.seconds : -1,
      WasTimed(record) ? SecondsWord(record.seconds) : "–", project.facts.after.size,
      BytesWord(project.facts.after.size), Html(project.facts.after.version), ChangeChips(project));
}

constexpr const char* kHeads =
    "<thead><tr><th scope=\"col\" data-n class=\"num\">No.</th><th scope=\"col\">Project</th>"
    "<th scope=\"col\">Type</th><th scope=\"col\">Result</th><th scope=\"col\" data-n class=\"num\">Time</th>"
    "<th scope=\"col\" data-n class=\"num\">Size</th><th scope=\"col\">Version</th>"
    "<th scope=\"col\">Since last run</th></tr></thead>";

}  // namespace

std::string ChangeChips(const PageProject& project) {
  if (!project.change) return {};
  const ProjectChange& change = *project.change;
  std::string chips;
  switch (change.kind) {
    case ProjectChange::Kind::None: break;
    case ProjectChange::Kind::NewProject: chips += Chip("new", "new project"); break;
    case ProjectChange::Kind::NewlyFailing: chips += Chip("bad", "newly failing"); break;
    case ProjectChange::Kind::StillFailing: chips += Chip("bad", "still failing"); break;
    case ProjectChange::Kind::Fixed: chips += Chip("good", "fixed"); break;
  }
  if (change.hasNewLibrary) chips += Chip("bad", "new identity");
  if (change.hasNewLibraryVersion) chips += Chip("warn", "new library version");
  if (change.hasNewVersion) chips += Chip("", "new version");
  if (change.sizeChange != 0) chips += Chip("", ByteChangeWord(change.sizeChange));
  if (change.secondsChange != 0)
    chips += Chip(change.secondsChange > 0 ? "warn" : "good", SecondsChangeWord(change.secondsChange));
  return chips;
}

std::string TableSection(const RunPage& page) {
  std::string rows;
  std::size_t number = 0;
  for (const PageProject& project : page.projects) rows += Row(project, ++number);
  return fmt::format(
      "<section id=\"projects\" aria-labelledby=\"projects-h\"><div class=\"head\">"
      "<h2 id=\"projects-h\">Projects</h2><p class=\"count\" role=\"status\"></p></div>\n"
      "<form class=\"filter\" role=\"search\"><input type=\"search\" id=\"find\" placeholder=\"Find a "
      "project\" "
      "aria-label=\"Find a project\" autocomplete=\"off\" spellcheck=\"false\">"
      "<fieldset><legend>Result</legend>{}</fieldset></form>\n"
      "<table id=\"list\"{}><caption>In compile order</caption>{}<tbody>\n{}</tbody></table></section>\n",
      Choices(page), page.lastBegan ? "" : " class=\"first\"", kHeads, rows);
}

}  // namespace hearthmake::host
