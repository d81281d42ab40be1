#include "host/annotations/GitHubFormat.hpp"

#include <fmt/format.h>

#include "host/annotations/PercentEscape.hpp"

namespace hearthmake::host {

namespace {

std::string Data(std::string_view text) { return PercentEscape(text, "%\r\n"); }
// A value ends at a comma, the properties at a colon.
std::string Property(std::string_view text) { return PercentEscape(text, "%\r\n:,"); }

}  // namespace

std::string GitHubFormat::Open(const AnnotationGroup& group) {
  return fmt::format("::group::{}\n", Data(group.name));
}

std::string GitHubFormat::Close(const AnnotationGroup& /*group*/) { return "::endgroup::\n"; }

std::string GitHubFormat::Problem(const RunProblem& problem, const std::string& relative) {
  std::string properties;
  const auto add = [&properties](std::string_view name, std::string_view value) {
    if (!value.empty())
      properties += fmt::format("{}{}={}", properties.empty() ? " " : ",", name, Property(value));
  };
  add("file", relative);
  if (problem.line > 0) add("line", fmt::format("{}", problem.line));
  add("title", problem.project);
  return fmt::format("::error{}::{}\n", properties, Data(problem.text));
}

}  // namespace hearthmake::host
