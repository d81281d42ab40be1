#include "host/page/Timeline.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/page/Html.hpp"
#include "host/page/PageWords.hpp"

namespace hearthmake::host {

namespace {

// What can be seen, in per cent.
constexpr double kLeastWidth = 0.15;

bool WasAtWork(const PageProject& project) {
  const ProjectOutcome outcome = project.record.outcome;
  return outcome == ProjectOutcome::Compiled || outcome == ProjectOutcome::Failed ||
         (outcome == ProjectOutcome::Cancelled && project.record.seconds > 0);
}

double TotalOf(const RunPage& page) {
  double total = page.seconds;
  for (const PageProject& project : page.projects)
    total = std::max(total, project.record.start + project.record.seconds);
  return std::max(total, 1e-6);
}

std::string Place(const ProjectRecord& record, double total) {
  const double left = std::clamp(100 * record.start / total, 0.0, 100 - kLeastWidth);
  const double width = std::clamp(100 * record.seconds / total, kLeastWidth, 100 - left);
  return fmt::format("left:{:.2f}%;width:{:.2f}%", left, width);
}

std::string StripPart(const ProjectRecord& record, double total) {
  return fmt::format(
      "<a href=\"#p{0}\" tabindex=\"-1\" class=\"bar {1}\" style=\"{2}\" title=\"{3} – {4}\"></a>", record.id,
      OutcomeStyle(record.outcome), Place(record, total), Html(record.name), SecondsWord(record.seconds));
}

std::string Row(const ProjectRecord& record, double total) {
  return fmt::format(
      "<li data-p=\"{0}\"><a href=\"#p{0}\"><span class=\"name\">{1}</span><span class=\"track\">"
      "<span class=\"bar {2}\" style=\"{3}\"></span></span><span class=\"secs\">{4}</span></a></li>\n",
      record.id, Html(record.name), OutcomeStyle(record.outcome), Place(record, total),
      SecondsWord(record.seconds));
}

// A round number of seconds that parts the whole into a few.
double StepOf(double total) {
  const double rough = total / 5;
  const double power = std::pow(10, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= rough) return factor * power;
  }
  return 10 * power;
}

std::string Axis(double total) {
  std::string text = "<div class=\"axis\" aria-hidden=\"true\"><span></span><span class=\"track\">";
  const double step = StepOf(total);
  for (int i = 0; i * step <= total * 0.97; ++i)
    text += fmt::format("<i style=\"left:{:.2f}%\">{:.6g} s</i>", 100 * i * step / total, i * step);
  return text + "</span><span></span></div>";
}

}  // namespace

std::string TimelineSection(const RunPage& page) {
  const double total = TotalOf(page);
  std::string strip;
  std::string rows;
  for (const PageProject& project : page.projects) {
    if (!WasAtWork(project)) continue;
    strip += StripPart(project.record, total);
    rows += Row(project.record, total);
  }
  if (rows.empty()) return {};
  return fmt::format(
      "<section id=\"timeline\" aria-labelledby=\"timeline-h\"><h2 id=\"timeline-h\">Timeline</h2>\n"
      "<div class=\"strip\" aria-hidden=\"true\">{}</div>\n<div class=\"scroll\" tabindex=\"0\" "
      "role=\"group\" aria-label=\"Projects by start\">{}<ol class=\"bars\">\n{}</ol></div></section>\n",
      strip, Axis(total), rows);
}

}  // namespace hearthmake::host
