#include "host/annotations/AzureFormat.hpp"

#include <fmt/format.h>

#include "automation/Text.hpp"
#include "host/annotations/PercentEscape.hpp"

namespace hearthmake::host {

namespace {

// A percent sign has a code of its own there, so that old agents, which know none, show others as they are.
std::string Escape(std::string_view text, std::string_view characters) {
  return PercentEscape(automation::ReplaceAll(text, "%", "%AZP25"), characters);
}

std::string Data(std::string_view text) { return Escape(text, "\r\n"); }
std::string Property(std::string_view text) { return Escape(text, "\r\n;]"); }

// What is not of a command is one line all the same.
std::string OneLine(std::string_view text) {
  return automation::ReplaceAll(automation::ReplaceAll(text, "\r", " "), "\n", " ");
}

}  // namespace

std::string AzureFormat::Open(const AnnotationGroup& group) {
  return fmt::format("##[group]{}\n", OneLine(group.name));
}

std::string AzureFormat::Close(const AnnotationGroup& /*group*/) { return "##[endgroup]\n"; }

std::string AzureFormat::Problem(const RunProblem& problem, const std::string& /*relative*/) {
  std::string properties = "type=error;";
  if (!problem.file.empty()) properties += fmt::format("sourcepath={};", Property(problem.file));
  if (problem.line > 0) properties += fmt::format("linenumber={};", problem.line);
  const std::string project = problem.project.empty() ? "" : problem.project + ": ";
  return fmt::format("##vso[task.logissue {}]{}\n", properties, Data(project + problem.text));
}

}  // namespace hearthmake::host
