#include "host/run/FailureAdvice.hpp"

#include <fmt/format.h>

#include <filesystem>

#include "build/Build.hpp"
#include "host/system/SystemTexts.hpp"

namespace hearthmake::host {

namespace {

namespace fs = std::filesystem;

std::string ParentOf(const std::string& path) { return fs::path(path).parent_path().string(); }

bool IsFolder(const std::string& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

bool IsFile(const std::string& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

std::string ForProject(Session& session, Project& project) {
  const std::string file = session.PosixPath(project.ProjectPath());
  if (!IsFile(file)) return fmt::format("The project file is missing: {}", file);
  const std::string binary = project.FullPath32();
  const std::string folder = ParentOf(session.PosixPath(binary));
  if (!IsFolder(folder)) {
    return fmt::format("The folder for {} is missing. Make it with: {}", binary, Texts().makeFolder(folder));
  }
  return {};
}

}  // namespace

std::string ScriptAdvice(Build& build) {
  const auto& failure = build.Scripts().LastFailure();
  if (!failure) return {};
  const std::string event = EventName(failure->event);
  const std::string place = failure->fault.line > 0 ? fmt::format(", line {}, column {}", failure->fault.line,
                                                                  failure->fault.column)
                                                    : "";
  const std::string source =
      failure->fault.text.empty() ? "" : fmt::format(": {}", Printable(failure->fault.text));
  return fmt::format("This was the script \"{}\"{}{}\nCheck it with: hearthmake scripts '{}' --check", event,
                     place, source, build.Name());
}

std::string FailureAdvice(Session& session, Build& build, Project* project, const std::string& message) {
  if (message.starts_with("Script Error: ")) return ScriptAdvice(build);
  constexpr const char* kSettings = "Say where the compiler is with: hearthmake settings VBExe PATH";
  if (message.starts_with("Failed to start the following process")) return kSettings;
  if (message == "Compile failed: ") {
    return fmt::format("The compiler wrote no log. Is it the compiler? {}", kSettings);
  }
  return project == nullptr ? "" : ForProject(session, *project);
}

}  // namespace hearthmake::host
