#include "host/page/GraphDrawing.hpp"

#include <fmt/format.h>

#include <set>

#include "automation/Text.hpp"
#include "host/graph/LayeredLayout.hpp"
#include "host/page/Html.hpp"
#include "host/page/PageWords.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kLongestName = 28;
// Of the page's font at its size in the drawing, bold and on the safe side.
constexpr double kLetterWidth = 7.8;
constexpr double kNodePadding = 40;
constexpr double kTextLeft = 28;

std::string ShortName(const std::string& name) {
  if (automation::Length(name) <= kLongestName) return name;
  return std::string(automation::Left(name, kLongestName - 1)) + "…";
}

std::vector<double> WidthsOf(const RunPage& page) {
  std::vector<double> widths;
  for (const PageProject& project : page.projects) {
    const auto letters = static_cast<double>(automation::Length(ShortName(project.record.name)));
    widths.push_back(kNodePadding + kLetterWidth * letters);
  }
  return widths;
}

std::string PathOf(const DrawnEdge& edge) {
  std::string path = fmt::format("M{:.0f} {:.0f}", edge.points.front().x, edge.points.front().y);
  for (std::size_t i = 1; i < edge.points.size(); ++i) {
    const DrawnPoint& from = edge.points[i - 1];
    const DrawnPoint& to = edge.points[i];
    const double middle = (from.x + to.x) / 2;
    path += from.y == to.y ? fmt::format("H{:.0f}", to.x)
                           : fmt::format("C{:.0f} {:.0f} {:.0f} {:.0f} {:.0f} {:.0f}", middle, from.y, middle,
                                         to.y, to.x, to.y);
  }
  return path;
}

std::string EdgesText(const RunPage& page, const Drawing& drawing) {
  std::string text;
  for (const DrawnEdge& edge : drawing.edges) {
    text +=
        fmt::format("<path data-f=\"{}\" data-t=\"{}\"{} d=\"{}\"/>\n", page.projects[edge.from].record.id,
                    page.projects[edge.to].record.id, edge.isCyclic ? " class=\"cycle\"" : "", PathOf(edge));
  }
  return text;
}

bool IsChanged(const PageProject& project) { return project.change && project.change->IsAny(); }

std::string NodeText(const PageProject& project, const DrawnNode& node) {
  const ProjectRecord& record = project.record;
  const char* style = OutcomeStyle(record.outcome);
  return fmt::format(
      "<a href=\"#p{0}\" data-p=\"{0}\" class=\"{1}{2}\" transform=\"translate({3:.0f} {4:.0f})\">"
      "<title>{5}: {6}, {7}</title><rect width=\"{8:.0f}\" height=\"{9:.0f}\" rx=\"6\"/>"
      "<path class=\"edge\" d=\"M0 6a6 6 0 0 1 6-6V{9:.0f}a6 6 0 0 1-6-6Z\"/>"
      "<use href=\"#{10}\" x=\"12\" y=\"8\" width=\"10\" height=\"10\"/>"
      "<text x=\"{11:.0f}\" y=\"17.5\">{12}</text></a>\n",
      record.id, style, IsChanged(project) ? " changed" : "", node.left, node.top, Html(record.name),
      TypeWord(record.type), OutcomeWord(record.outcome), node.width, Drawing::kNodeHeight,
      TypeSign(record.type), kTextLeft, Html(ShortName(record.name)));
}

std::string NodesText(const RunPage& page, const Drawing& drawing) {
  std::string text;
  for (std::size_t i = 0; i < page.projects.size(); ++i) text += NodeText(page.projects[i], drawing.nodes[i]);
  return text;
}

std::string Note(const RunPage& page, const Digraph& drawn, const Drawing& drawing) {
  bool hasCycle = false;
  for (const DrawnEdge& edge : drawing.edges) hasCycle |= edge.isCyclic;
  const std::size_t all = page.references.EdgeCount();
  const std::size_t implied = all - drawn.EdgeCount();
  return fmt::format("{}{}. A line leads from a project to one that it needs, on its left.{}",
                     Counted(all, "reference"),
                     implied == 0 ? "" : fmt::format(", {} of them implied by others and not drawn", implied),
                     hasCycle ? " <strong class=\"cycle\">The red lines form a cycle.</strong>" : "");
}

// The signs of the types, and the colours of what became of these projects.
std::string Key(const RunPage& page) {
  std::string text = "<ul class=\"key\" aria-label=\"Legend\">";
  for (const char* type : {"StandardExe", "ActiveXDll", "ActiveXExe", "UserControl"})
    text += fmt::format("<li><svg class=\"sign\" aria-hidden=\"true\"><use href=\"#{}\"/></svg>{}</li>",
                        TypeSign(type), TypeWord(type));
  std::set<ProjectOutcome> outcomes;
  bool hasChanged = false;
  for (const PageProject& project : page.projects) {
    outcomes.insert(project.record.outcome);
    hasChanged |= IsChanged(project);
  }
  for (const ProjectOutcome outcome : outcomes)
    text += fmt::format("<li class=\"o {}\">{}</li>", OutcomeStyle(outcome), OutcomeWord(outcome));
  if (hasChanged) text += "<li><b>Bold</b>: different since the last run</li>";
  return text + "</ul>";
}

}  // namespace

std::string GraphSection(const RunPage& page) {
  if (page.projects.empty()) return {};
  const Digraph drawn = page.references.Reduced();
  const Drawing drawing = LayOut(drawn, WidthsOf(page));
  return fmt::format(
      "<section id=\"graph\" aria-labelledby=\"graph-h\"><div class=\"head\"><h2 "
      "id=\"graph-h\">References</h2>"
      "<div class=\"tools\" role=\"group\" aria-label=\"Size of the drawing\">"
      "<button type=\"button\" data-zoom=\"out\" aria-label=\"Smaller\">−</button>"
      "<button type=\"button\" data-zoom=\"fit\">Fit</button>"
      "<button type=\"button\" data-zoom=\"in\" aria-label=\"Larger\">+</button></div></div>\n"
      "<p class=\"note\">{0}</p>{1}\n"
      "<div class=\"canvas\" tabindex=\"0\" role=\"group\" aria-label=\"Drawing of the references\">"
      "<svg id=\"drawing\" viewBox=\"0 0 {2:.0f} {3:.0f}\" width=\"{2:.0f}\" height=\"{3:.0f}\">"
      "<defs><marker id=\"arrow\" viewBox=\"0 0 8 8\" refX=\"7.5\" refY=\"4\" markerWidth=\"7\" "
      "markerHeight=\"7\" orient=\"auto\"><path d=\"M0 0.5 8 4 0 7.5Z\"/></marker></defs>\n"
      "<g class=\"lines\">\n{4}</g>\n<g class=\"nodes\">\n{5}</g></svg></div></section>\n",
      Note(page, drawn, drawing), Key(page), drawing.width, drawing.height, EdgesText(page, drawing),
      NodesText(page, drawing));
}

}  // namespace hearthmake::host
