#include <fmt/format.h>

#include "host/commands/Commands.hpp"
#include "host/doctor/Examination.hpp"
#include "host/text/Json.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

ordered_json TextOrNull(const std::string& text) {
  return text.empty() ? ordered_json() : ordered_json(text);
}

ordered_json JsonOf(const Findings& findings, const std::string& build) {
  auto list = ordered_json::array();
  for (const Finding& finding : findings.All()) {
    list.push_back({{"severity", SeverityName(finding.severity)},
                    {"check", finding.check},
                    {"what", finding.what},
                    {"where", TextOrNull(finding.where)},
                    {"mend", TextOrNull(finding.mend)}});
  }
  return {{"format", 1},
          {"build", TextOrNull(build)},
          {"errors", findings.Count(Severity::Error)},
          {"warnings", findings.Count(Severity::Warning)},
          {"notes", findings.Count(Severity::Note)},
          {"findings", std::move(list)}};
}

std::string Painted(const Console& console, Severity severity) {
  const std::string text = fmt::format("{:<9}", SeverityName(severity));
  switch (severity) {
    case Severity::Ok: return console.PaintOut(Colour::Green, text);
    case Severity::Warning: return console.PaintOut(Colour::Yellow, text);
    case Severity::Error: return console.PaintOut(Colour::Red, text);
    case Severity::Note: break;
  }
  return text;
}

std::string Lines(const Console& console, const Finding& finding) {
  constexpr const char* kMore = "{:>24}{}\n";
  std::string text =
      fmt::format("{}{:<15}{}\n", Painted(console, finding.severity), finding.check, Printable(finding.what));
  if (!finding.where.empty()) text += fmt::format(kMore, "", Printable(finding.where));
  if (!finding.mend.empty()) text += fmt::format(kMore, "", "mend: " + Printable(finding.mend));
  return text;
}

}  // namespace

ExitStatus DoctorCommand(Session& session, const DoctorArguments& arguments) {
  const Findings findings = Examine(session, arguments.build);
  const Console& console = session.Out();
  if (arguments.json) {
    console.Out(JsonText(JsonOf(findings, arguments.build), 2) + "\n");
  } else {
    for (const Finding& finding : findings.All()) console.Out(Lines(console, finding));
    console.Out(fmt::format("{}, {}, {}.\n", Counted(findings.Count(Severity::Error), "error"),
                            Counted(findings.Count(Severity::Warning), "warning"),
                            Counted(findings.Count(Severity::Note), "note")));
  }
  return findings.Count(Severity::Error) == 0 ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace hearthmake::host
