#include "host/reports/CodeQualityReport.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "host/run/RunProblem.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

// FNV-1a: it is to tell problems apart and to be the same in the next run, no more.
std::uint64_t HashOf(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  return hash;
}

}  // namespace

std::string CodeQualityReport(Session& session, const RunRecord& record, const SourceRoot& root) {
  auto report = ordered_json::array();
  std::map<std::uint64_t, int> seen;
  for (const RunProblem& problem : ProblemsOf(session, record)) {
    if (problem.file.empty()) continue;
    const std::string file = root.Relative(problem.file);
    // Without the line: a problem that moves with the text around it is the same one.
    const std::uint64_t hash = HashOf(file + '\n' + problem.project + '\n' + problem.text);
    report.push_back(
        {{"description", problem.text},
         {"check_name", problem.isCompileError ? "compile-error" : "build-error"},
         {"fingerprint", fmt::format("{:016x}-{}", hash, ++seen[hash])},
         {"severity", "blocker"},
         {"location", {{"path", file}, {"lines", {{"begin", std::max<std::size_t>(problem.line, 1)}}}}}});
  }
  return JsonText(report, 2) + "\n";
}

}  // namespace hearthmake::host
