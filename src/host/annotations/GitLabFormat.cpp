#include "host/annotations/GitLabFormat.hpp"

#include <fmt/format.h>

#include <chrono>

#include "host/Console.hpp"

namespace hearthmake::host {

namespace {

// \e[0Ksection_start:1560896352:name[collapsed=true]\r\e[0KHeader. The name may hold letters, digits, _ . and
// -
std::string Mark(const char* mark, const AnnotationGroup& group, const char* options) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return fmt::format("\x1b[0Ksection_{}:{}:hearthmake_project_{}{}\r\x1b[0K", mark,
                     std::chrono::duration_cast<std::chrono::seconds>(now).count(), group.id, options);
}

}  // namespace

std::string GitLabFormat::Open(const AnnotationGroup& group) {
  return Mark("start", group, "[collapsed=true]") + Printable(group.name) + "\n";
}

std::string GitLabFormat::Close(const AnnotationGroup& group) { return Mark("end", group, "") + "\n"; }

std::string GitLabFormat::Problem(const RunProblem& /*problem*/, const std::string& /*relative*/) {
  return {};
}

}  // namespace hearthmake::host
