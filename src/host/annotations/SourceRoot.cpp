#include "host/annotations/SourceRoot.hpp"

#include <filesystem>

#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

namespace fs = std::filesystem;

// Where GitHub, GitLab, Azure and Jenkins check out to.
constexpr const char* kVariables[] = {"GITHUB_WORKSPACE", "CI_PROJECT_DIR", "BUILD_SOURCESDIRECTORY",
                                      "WORKSPACE"};

bool IsFolder(const fs::path& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

// In a linked work tree or a submodule .git is a file.
bool IsWorkTree(const fs::path& folder) {
  std::error_code ignored;
  return fs::exists(folder / ".git", ignored);
}

// Without links; what is not there keeps its name.
fs::path Real(const fs::path& path) {
  std::error_code error;
  fs::path real = fs::weakly_canonical(path, error);
  return error ? path.lexically_normal() : real;
}

std::string Below(const fs::path& root, const fs::path& path) {
  const fs::path relative = path.lexically_relative(root);
  const bool isBelow = !relative.empty() && *relative.begin() != ".." && relative != ".";
  return isBelow ? relative.generic_string() : std::string();
}

}  // namespace

SourceRoot SourceRoot::Find(const std::string& nearby) {
  for (const char* variable : kVariables) {
    const std::string folder = EnvironmentValue(variable);
    if (!folder.empty() && IsFolder(folder)) return SourceRoot(folder);
  }
  for (fs::path folder = Real(nearby); folder.has_relative_path(); folder = folder.parent_path()) {
    if (IsWorkTree(folder)) return SourceRoot(folder.string());
  }
  return SourceRoot(AbsoluteSystemPath("."));
}

std::string SourceRoot::Relative(const std::string& path) const {
  if (!fs::path(path).is_absolute()) return path;
  std::string relative = Below(fs::path(m_folder).lexically_normal(), fs::path(path).lexically_normal());
  if (relative.empty()) relative = Below(Real(m_folder), Real(path));
  return relative.empty() ? path : relative;
}

}  // namespace hearthmake::host
