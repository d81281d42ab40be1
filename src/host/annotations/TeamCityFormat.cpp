#include "host/annotations/TeamCityFormat.hpp"

#include <fmt/format.h>

#include "automation/Text.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::host {

namespace {

// What the server takes of a description, in characters.
constexpr std::size_t kDescriptionLimit = 4000;

// Behind a vertical bar: the bar itself, quotes, brackets, line ends, and every character that is not ASCII
// as its code in UTF-16, so that the encoding of the log does not matter.
std::string Escape(std::string_view text) {
  std::string escaped;
  for (const char16_t c : automation::Utf8ToUtf16(text)) {
    switch (c) {
      case u'\n': escaped += "|n"; break;
      case u'\r': escaped += "|r"; break;
      case u'|':
      case u'\'':
      case u'[':
      case u']': escaped += fmt::format("|{}", static_cast<char>(c)); break;
      default:
        if (c < 0x80) {
          escaped += static_cast<char>(c);
        } else {
          escaped += fmt::format("|0x{:04X}", static_cast<unsigned>(c));
        }
    }
  }
  return escaped;
}

std::string Value(std::string_view name, std::string_view value) {
  return fmt::format(" {}='{}'", name, Escape(value));
}

std::string Message(std::string_view name, const std::string& values) {
  return fmt::format("##teamcity[{}{}]\n", name, values);
}

std::string Described(const RunProblem& problem, const std::string& relative) {
  std::string text = problem.project.empty() ? "" : problem.project + ": ";
  text += problem.text;
  if (!relative.empty()) text += " (" + relative;
  if (!relative.empty() && problem.line > 0) text += fmt::format(":{}", problem.line);
  if (!relative.empty()) text += ")";
  return std::string(automation::Left(text, kDescriptionLimit));
}

}  // namespace

std::string TeamCityFormat::Open(const AnnotationGroup& group) {
  return Message("compilationStarted", Value("compiler", group.name));
}

std::string TeamCityFormat::Close(const AnnotationGroup& group) {
  return Message("compilationFinished", Value("compiler", group.name));
}

std::string TeamCityFormat::ProblemInside(const RunProblem& problem) {
  return Message("message", Value("text", problem.text) + Value("status", "ERROR"));
}

std::string TeamCityFormat::Problem(const RunProblem& problem, const std::string& relative) {
  std::string lines;
  if (problem.isCompileError && !relative.empty()) {
    if (!m_hasType) {
      lines += Message("inspectionType", Value("id", "hearthmake.compile") + Value("name", "Compile error") +
                                             Value("description", "What the Visual Basic compiler refused") +
                                             Value("category", "Hearthmake"));
    }
    m_hasType = true;
    lines += Message("inspection", Value("typeId", "hearthmake.compile") + Value("message", problem.text) +
                                       Value("file", relative) +
                                       (problem.line > 0 ? fmt::format(" line='{}'", problem.line) : "") +
                                       Value("SEVERITY", "ERROR"));
  }
  return lines + Message("buildProblem", Value("description", Described(problem, relative)));
}

}  // namespace hearthmake::host
