#include "foundation/Paths.hpp"

#include <algorithm>
#include <deque>
#include <vector>

#include "automation/Text.hpp"

namespace hearthmake {

namespace {

using Segments = std::deque<std::string_view>;

Segments Split(std::string_view path) {
  Segments segments;
  std::size_t start = 0;
  for (std::size_t hit = path.find('\\'); hit != std::string_view::npos; hit = path.find('\\', start)) {
    segments.push_back(path.substr(start, hit - start));
    start = hit + 1;
  }
  segments.push_back(path.substr(start));
  return segments;
}

std::string Join(const Segments& segments) {
  std::string result;
  for (const std::string_view segment : segments) result.append(segment).push_back('\\');
  result.pop_back();  // a path has a first segment, be it an empty one
  return result;
}

// The length of the drive ("C:") or share ("\\server\share") that a path starts at; 0 when it names neither.
std::size_t RootLength(std::string_view path) {
  if (path.starts_with("\\\\")) {
    const std::size_t share = std::min(path.find('\\', 2), path.size());
    return std::min(path.find('\\', share + 1), path.size());
  }
  const std::size_t drive = path.find(":\\");
  return drive == std::string_view::npos ? 0 : drive + 1;
}

// Like NormalizePath, which however would leave the root behind as if it were a folder.
void ResolveBelowRoot(std::string& path, std::size_t root) {
  constexpr std::string_view kUp = "\\..\\";
  for (std::size_t hit = path.find(kUp, root); hit != std::string::npos; hit = path.find(kUp, root)) {
    const std::size_t slash = hit == root ? root : path.rfind('\\', hit - 1);
    path.erase(slash, hit + kUp.size() - 1 - slash);
  }
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string RelativePath(std::string_view base, std::string_view target) {
  const Segments from = Split(base);
  Segments to = Split(target);
  if (to.front() != from.front()) return std::string(target);
  std::size_t i = 0;
  // The last index of the target's list shrinks while i grows: that is the climbing quirk.
  while (i != to.size() - 1 && i != from.size() - 1 && from[i] == to.front()) {
    to.pop_front();
    ++i;
  }
  for (std::size_t rest = i + 1; rest < from.size(); ++rest) to.push_front("..");
  return Join(to);
}

bool IsRelativePath(std::string_view path) { return path.find(":\\") == std::string_view::npos; }

std::string QuotePath(std::string_view path) { return '"' + std::string(automation::Trim(path)) + '"'; }

std::string NormalizePath(std::string_view path) {
  std::string result(path);
  for (std::size_t hit = result.find("\\..\\"); hit != std::string::npos; hit = result.find("\\..\\")) {
    const std::size_t slash = hit == 0 ? std::string::npos : result.rfind('\\', hit - 1);
    const std::size_t kept = slash == std::string::npos ? 0 : slash + 1;
    result.erase(kept, hit + 4 - kept);
  }
  return result;
}

std::string_view FolderPart(std::string_view path) {
  const std::size_t slash = path.rfind('\\');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

std::string_view FileNamePart(std::string_view path) {
  const std::size_t slash = path.rfind('\\');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view FileStem(std::string_view path) {
  const std::string_view name = FileNamePart(path);
  return name.substr(0, name.rfind('.'));
}

std::string AbsolutePath(std::string_view folder, std::string_view path) {
  std::string result = automation::ReplaceAll(path, "/", "\\");
  const bool isUnc = result.starts_with("\\\\");
  if (IsRelativePath(result) && !isUnc) {
    const bool isOfDriveRoot = result.starts_with('\\') && folder.size() >= 2 && folder[1] == ':';
    result = std::string(isOfDriveRoot ? folder.substr(0, 2) : folder) + result;
  }
  const std::size_t root = RootLength(result);
  constexpr std::string_view kHere = "\\.\\";
  for (std::size_t hit = result.find(kHere, root); hit != std::string::npos; hit = result.find(kHere, root)) {
    result.erase(hit, kHere.size() - 1);
  }
  if (root == 0) return NormalizePath(result);
  ResolveBelowRoot(result, root);
  return result;
}

std::size_t CommonLength(std::string_view path, std::string_view other) {
  std::string_view rest = path;
  while (!rest.empty() && !other.empty()) {
    const std::string_view here = automation::Left(rest, 1);
    const std::string_view there = automation::Left(other, 1);
    if (!automation::EqualsIgnoreCase(here, there)) break;
    rest.remove_prefix(here.size());
    other.remove_prefix(there.size());
  }
  return path.size() - rest.size();
}

std::string_view WithoutResourceIndex(std::string_view path) {
  const std::string_view index = FileNamePart(path);
  if (index.empty() || index.size() == path.size()) return path;
  for (const char c : index) {
    if (!IsDigit(c)) return path;
  }
  return path.substr(0, path.size() - index.size() - 1);
}

}  // namespace hearthmake
