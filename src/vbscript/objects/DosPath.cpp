#include "vbscript/objects/DosPath.hpp"

#include <algorithm>
#include <vector>

#include "automation/Text.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::vbscript::dospath {

namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool HasDrive(std::string_view path) { return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':'; }

bool IsShare(std::string_view path) {
  return path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1]);
}

// How many characters of a path name its drive or share.
std::size_t DriveLength(std::string_view path) {
  if (HasDrive(path)) return 2;
  if (!IsShare(path)) return 0;
  const auto nameEnd = [path](std::size_t from) {
    while (from < path.size() && !IsSeparator(path[from])) ++from;
    return from;
  };
  const std::size_t server = nameEnd(2);
  return server < path.size() ? nameEnd(server + 1) : server;
}

std::string_view WithoutSeparators(std::string_view path, std::size_t keep) {
  while (path.size() > keep && IsSeparator(path.back())) path.remove_suffix(1);
  return path;
}

// Where the last name of a path without separators at its end begins.
std::size_t LastNameStart(std::string_view path) {
  std::size_t start = path.size();
  const std::size_t least = DriveLength(path);
  while (start > least && !IsSeparator(path[start - 1])) --start;
  return start;
}

std::string_view LastName(std::string_view path) {
  path = WithoutSeparators(path, DriveLength(path));
  return path.substr(LastNameStart(path));
}

std::string_view WithoutTrailingDots(std::string_view name) {
  std::string_view shorter = name;
  while (!shorter.empty() && (shorter.back() == '.' || shorter.back() == ' ')) shorter.remove_suffix(1);
  return shorter.empty() ? name : shorter;
}

void AppendNames(std::vector<std::string_view>& names, std::string_view path) {
  while (!path.empty()) {
    std::size_t end = 0;
    while (end < path.size() && !IsSeparator(path[end])) ++end;
    const std::string_view name = path.substr(0, end);
    if (name == "..") {
      if (!names.empty()) names.pop_back();
    } else if (!name.empty() && name != ".") {
      names.push_back(WithoutTrailingDots(name));
    }
    path.remove_prefix(std::min(end + 1, path.size()));
  }
}

std::string Backslashes(std::string_view text) { return automation::ReplaceAll(text, "/", "\\"); }

}  // namespace

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::string DriveName(std::string_view path) { return std::string(path.substr(0, DriveLength(path))); }

std::string ParentFolderName(std::string_view path) {
  const std::size_t drive = DriveLength(path);
  path = WithoutSeparators(path, drive);
  const std::size_t start = LastNameStart(path);
  if (start == path.size()) return "";
  const std::string_view above = WithoutSeparators(path.substr(0, start), drive);
  // The root of a drive keeps its separator; that of a share has none.
  if (above.size() == drive && HasDrive(path) && start > drive) return std::string(path.substr(0, drive + 1));
  return HasDrive(path) && above.size() == drive ? "" : std::string(above);
}

std::string FileName(std::string_view path) { return std::string(LastName(path)); }

std::string BaseName(std::string_view path) {
  const std::string_view name = LastName(path);
  return std::string(name.substr(0, name.rfind('.')));
}

std::string ExtensionName(std::string_view path) {
  const std::string_view name = LastName(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? "" : std::string(name.substr(dot + 1));
}

std::string Join(std::string_view path, std::string_view name) {
  if (path.empty()) return std::string(name);
  if (name.empty()) return std::string(path);
  std::string joined(path);
  const bool endsWithSeparator = IsSeparator(joined.back());
  const bool isBareDrive = joined.size() == 2 && HasDrive(joined);
  if (endsWithSeparator && IsSeparator(name.front())) {
    joined.pop_back();
  } else if (!endsWithSeparator && !IsSeparator(name.front()) && !isBareDrive) {
    joined += '\\';
  }
  return joined.append(name);
}

std::string Absolute(std::string_view path, std::string_view currentFolder) {
  const std::size_t drive = DriveLength(path);
  const std::string_view rest = path.substr(drive);
  const std::string_view currentDrive = currentFolder.substr(0, DriveLength(currentFolder));
  std::string root = Backslashes(drive > 0 ? path.substr(0, drive) : currentDrive);
  const bool isRooted = !rest.empty() && IsSeparator(rest.front());
  const bool isOfCurrentDrive = drive == 0 || automation::EqualsIgnoreCaseAscii(root, currentDrive);
  std::vector<std::string_view> names;
  if (!isRooted && isOfCurrentDrive) AppendNames(names, currentFolder.substr(currentDrive.size()));
  AppendNames(names, rest);
  if (names.empty()) return IsShare(root) ? root : root + "\\";
  for (const std::string_view name : names) root.append("\\").append(name);
  return root;
}

bool IsRoot(std::string_view absolutePath) {
  return WithoutSeparators(absolutePath, 0).size() <= DriveLength(absolutePath);
}

bool IsWithin(std::string_view absolutePath, std::string_view absoluteFolder) {
  const std::string path = automation::Lower(WithoutSeparators(absolutePath, 0));
  const std::string folder = automation::Lower(WithoutSeparators(absoluteFolder, 0));
  return path == folder || path.starts_with(folder + "\\");
}

bool HasWildcards(std::string_view path) {
  return path.substr(LastNameStart(path)).find_first_of("*?") != std::string_view::npos;
}

bool Matches(std::string_view name, std::string_view pattern) {
  if (pattern == "*" || pattern == "*.*") return true;
  const std::string text = automation::Lower(name);
  const std::string wanted = automation::Lower(pattern);
  // Only the last star is ever tried again, so that the work is at most the product of the lengths.
  std::size_t at = 0;
  std::size_t next = 0;
  std::size_t star = std::string::npos;
  std::size_t afterStar = 0;
  while (at < text.size()) {
    const std::size_t length = automation::Utf8SequenceLength(std::string_view(text).substr(at));
    if (next < wanted.size() && wanted[next] == '*') {
      star = next++;
      afterStar = at;
    } else if (next < wanted.size() && wanted[next] == '?') {
      at += length;
      ++next;
    } else if (next < wanted.size() && wanted[next] == text[at]) {
      ++at;
      ++next;
    } else if (star != std::string::npos) {
      next = star + 1;
      at = ++afterStar;
    } else {
      return false;
    }
  }
  // A name without extension matches "x*." and "x.*" too.
  while (next < wanted.size() && (wanted[next] == '*' || wanted[next] == '?')) ++next;
  if (std::string_view(wanted).substr(next).find_first_not_of("*") == std::string_view::npos) return true;
  return text.find('.') == std::string::npos && (wanted.substr(next) == ".*" || wanted.substr(next) == ".");
}

}  // namespace hearthmake::vbscript::dospath
