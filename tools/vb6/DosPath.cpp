#include "vb6/DosPath.hpp"

#include <algorithm>
#include <vector>

#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

bool HasDrive(std::string_view path) { return path.size() >= 2 && path[1] == ':'; }

std::string Normalized(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  std::vector<std::string_view> names;
  std::size_t root = 0;  // the names that ".." leaves alone
  const bool unc = path.starts_with("\\\\");
  const std::string_view text = std::string_view(path).substr(unc ? 2 : 0);
  if (unc) root = 2;
  if (HasDrive(text)) root = 1;
  for (const std::string_view name : Split(text, '\\')) {
    if (name == "..") {
      if (names.size() > root) names.pop_back();
    } else if (name != "." && !name.empty()) {
      names.push_back(name);
    }
  }
  std::string result = unc ? "\\\\" : "";
  for (const std::string_view& name : names) {
    if (&name != &names.front()) result += '\\';
    result += name;
  }
  return result;
}

}  // namespace

std::string_view FolderOf(std::string_view path) {
  const std::size_t end = path.find_last_of("\\/");
  return end == std::string_view::npos ? std::string_view() : path.substr(0, end);
}

std::string_view FileNameOf(std::string_view path) {
  const std::size_t end = path.find_last_of("\\/");
  return end == std::string_view::npos ? path : path.substr(end + 1);
}

std::string_view BaseNameOf(std::string_view path) {
  const std::string_view name = FileNameOf(path);
  return name.substr(0, name.rfind('.'));
}

std::string JoinPath(std::string_view folder, std::string_view path) {
  if (HasDrive(path) || path.starts_with("\\\\")) return Normalized(std::string(path));
  if (path.starts_with('\\')) return Normalized(std::string(folder.substr(0, 2)) + std::string(path));
  return Normalized(std::string(folder) + "\\" + std::string(path));
}

}  // namespace hearthmake::vb6
