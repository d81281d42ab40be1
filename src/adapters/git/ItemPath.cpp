#include "adapters/git/ItemPath.hpp"

#include "adapters/git/GitFailure.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

// Names that file systems take for ".git": blanks and dots at the end are dropped by some, a stream may be
// named behind a colon, and "git~1" is the short name. (HFS also drops some invisible characters.)
bool IsGitFolder(std::string_view name) {
  const std::size_t end = name.find_last_not_of(" .");
  const std::string_view bare = name.substr(0, end == std::string_view::npos ? 0 : end + 1);
  return automation::EqualsIgnoreCaseAscii(bare, ".git") || automation::EqualsIgnoreCaseAscii(bare, "git~1");
}

}  // namespace

ItemPath ItemPath::Parse(std::string_view spec) {
  const std::string_view whole = spec;
  if (spec.starts_with('$')) spec.remove_prefix(1);
  ItemPath path;
  while (!spec.empty()) {
    const std::size_t end = spec.find_first_of("/\\");
    const std::string_view name = spec.substr(0, end);
    spec.remove_prefix(end == std::string_view::npos ? spec.size() : end + 1);
    if (name.empty()) continue;
    if (!IsSafeName(name))
      Fail(Number::kInvalidArgument,
           "\"" + std::string(name) + "\" can't be part of a path of the database: " + std::string(whole));
    path.m_names.emplace_back(name);
  }
  return path;
}

ItemPath ItemPath::Child(std::string_view name) const {
  ItemPath child = *this;
  child.m_names.emplace_back(name);
  return child;
}

bool ItemPath::IsAtOrBelow(const ItemPath& other) const {
  if (other.m_names.size() > m_names.size()) return false;
  for (std::size_t i = 0; i < other.m_names.size(); ++i) {
    if (!automation::EqualsIgnoreCase(m_names[i], other.m_names[i])) return false;
  }
  return true;
}

std::string ItemPath::Spec() const { return "$/" + TreePath(); }

std::string ItemPath::TreePath() const {
  std::string path;
  for (const std::string& name : m_names) path += (path.empty() ? "" : "/") + name;
  return path;
}

bool IsSafeName(std::string_view name) {
  if (name.empty() || name == "." || name == ".." || IsGitFolder(name)) return false;
  for (const char c : name) {
    if (static_cast<unsigned char>(c) < ' ' || c == '/' || c == '\\' || c == ':') return false;
  }
  return true;
}

}  // namespace hearthmake::git
