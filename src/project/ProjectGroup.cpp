#include "project/ProjectGroup.hpp"

#include <optional>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Paths.hpp"
#include "foundation/clFile.hpp"

namespace hearthmake {

namespace {

std::string_view TrimSpace(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::optional<std::string_view> ProjectOf(std::string_view row) {
  const std::size_t equals = row.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::string_view key = TrimSpace(row.substr(0, equals));
  const bool isProject = automation::EqualsIgnoreCaseAscii(key, "Project") ||
                         automation::EqualsIgnoreCaseAscii(key, "StartupProject");
  std::string_view value = TrimSpace(row.substr(equals + 1));
  const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  if (isQuoted) value = TrimSpace(value.substr(1, value.size() - 2));
  if (!isProject || value.empty()) return std::nullopt;
  return value;
}

}  // namespace

std::vector<std::string> ReadProjectGroup(const std::string& strFile) {
  clFile file;
  file.SetFile(strFile);
  if (!file.Exists()) automation::Raise(automation::RuntimeError::FileNotFound, "Projects.Add", strFile);
  file.OpenFile();
  const std::string content = file.Content();
  std::vector<std::string> projects;
  std::size_t start = 0;
  while (start < content.size()) {
    const std::size_t end = std::min(content.find('\n', start), content.size());
    const auto project = ProjectOf(std::string_view(content).substr(start, end - start));
    if (project) projects.push_back(AbsolutePath(file.Path(), *project));
    start = end + 1;
  }
  return projects;
}

}  // namespace hearthmake
