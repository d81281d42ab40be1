#include "adapters/posix/DriveMap.hpp"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "adapters/posix/FileName.hpp"
#include "adapters/posix/FolderListings.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

namespace {

using automation::RuntimeError;

constexpr const char* kSource = "DriveMap";
// How Wine names POSIX paths that no drive reaches.
constexpr std::string_view kUnixName = "unix";

int DriveIndex(char letter) {
  if (letter >= 'a' && letter <= 'z') return letter - 'a';
  if (letter >= 'A' && letter <= 'Z') return letter - 'A';
  return -1;
}

bool IsSlash(char c) { return c == '\\' || c == '/'; }

// Takes the next name off the front of a path; "" at the end.
template <class Separator>
std::string_view TakeName(std::string_view& path, Separator isSeparator) {
  while (!path.empty() && isSeparator(path.front())) path.remove_prefix(1);
  std::size_t length = 0;
  while (length < path.size() && !isSeparator(path[length])) ++length;
  const std::string_view name = path.substr(0, length);
  path.remove_prefix(length);
  return name;
}

std::string_view TakePosixName(std::string_view& path) {
  return TakeName(path, [](char c) { return c == '/'; });
}

std::string_view TakeDosName(std::string_view& path) { return TakeName(path, IsSlash); }

// Puts the names of a DOS path behind a folder in one go, which is all that most paths need. False, with
// nothing done, when one of them is empty or begins with a full stop, as `.` and `..` do. The loops are kept
// free of branches so that the compiler takes many characters at a time.
bool AppendWhole(std::string& folder, std::string_view names) {
  while (!names.empty() && IsSlash(names.back())) names.remove_suffix(1);
  if (names.empty()) return true;
  if (!IsSlash(names.front())) return false;
  const std::size_t begin = folder.size();
  folder.append(names);
  char* const text = folder.data() + begin;
  for (std::size_t i = 0; i < names.size(); ++i) text[i] = text[i] == '\\' ? '/' : text[i];
  unsigned char isSpecial = 0;
  for (std::size_t i = 1; i < names.size(); ++i) {
    isSpecial |= static_cast<unsigned char>((text[i - 1] == '/') & ((text[i] == '/') | (text[i] == '.')));
  }
  if (isSpecial != 0) folder.resize(begin);
  return isSpecial == 0;
}

// Inside this file a folder has no slash at its end, so that names can be put behind it; "" is `/`.
const char* SystemPath(const std::string& path) { return path.empty() ? "/" : path.c_str(); }

std::string RootAsSlash(std::string path) { return path.empty() ? "/" : std::move(path); }

// Nothing when it has been removed or can't be reached.
std::optional<std::string> CurrentFolder() {
  std::array<char, PATH_MAX> folder{};
  if (getcwd(folder.data(), folder.size()) == nullptr || folder[0] != '/') return std::nullopt;
  return folder[1] == '\0' ? "" : folder.data();
}

// The path with the links in it resolved, as far as it exists.
std::string WithLinksResolved(const std::string& path) {
  std::error_code error;
  std::string resolved = std::filesystem::weakly_canonical(SystemPath(path), error).string();
  if (error) return path;
  while (!resolved.empty() && resolved.back() == '/') resolved.pop_back();
  return resolved;
}

// Drops the last name; what lies above `root` characters stays.
void GoUp(std::string& path, std::size_t root) {
  if (path.size() > root) path.resize(path.rfind('/'));
}

// An absolute POSIX path with no `.`, `..` or doubled slash in it. Behind a link `..` means the folder
// above the link's target, so links in front of it are resolved.
std::string AbsolutePosix(std::string_view path) {
  std::string absolute = path.starts_with('/') ? "" : CurrentFolder().value_or("");
  while (!path.empty()) {
    const std::string_view name = TakePosixName(path);
    if (name.empty() || name == ".") continue;
    if (name == "..") {
      absolute = WithLinksResolved(absolute);
      GoUp(absolute, 0);
    } else {
      absolute.append("/").append(name);
    }
  }
  return absolute;
}

bool LiesIn(std::string_view path, std::string_view folder) {
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

bool Look(const std::string& path, struct stat& status) { return stat(SystemPath(path), &status) == 0; }

bool IsThere(const std::string& path) {
  struct stat status {};
  return lstat(SystemPath(path), &status) == 0;
}

// The name under which a folder has this DOS name. The last attempt is for folders that can't be read
// but looked into, and those that don't list all they hold.
std::optional<std::string> FindName(FolderListings& listings, const std::string& folder,
                                    const struct stat& status, std::string_view name) {
  if (auto found = listings.Find(SystemPath(folder), status, name)) return found;
  const std::string_view shorter = WithoutTrailingDots(name);
  if (shorter.size() != name.size()) {
    if (auto found = listings.Find(SystemPath(folder), status, shorter)) return found;
  }
  if (IsThere(folder + "/" + std::string(name))) return std::string(name);
  return std::nullopt;
}

// The folder behind a drive's link in `dosdevices`. `../drive_c` is taken as it stands where it can be,
// so that the drive matches paths that spell the prefix as the user does, links in it and all.
std::string WineDriveFolder(const std::string& prefix, const std::string& device) {
  std::string link = prefix + "/dosdevices/" + device;
  std::error_code error;
  std::string target = std::filesystem::read_symlink(link, error).string();
  if (error) return link;  // a folder in place of a link will do
  if (target.starts_with('/')) return target;
  if (target.starts_with("../")) {
    std::string plain = prefix + target.substr(2);
    if (WithLinksResolved(plain) == WithLinksResolved(link)) return plain;
  }
  return prefix + "/dosdevices/" + target;
}

bool NeedsEscape(char c) { return c == '%' || c == ';' || static_cast<unsigned char>(c) < 0x20; }

std::string Escape(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : path) {
    if (NeedsEscape(c)) {
      text += {'%', kDigits[static_cast<unsigned char>(c) >> 4U], kDigits[c & 0x0F]};
    } else {
      text += c;
    }
  }
  return text;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// Nothing when a `%` is not followed by two digits, or stands for a zero byte.
std::optional<std::string> Unescape(std::string_view text) {
  std::string path;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      path += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const int high = HexDigit(text[i + 1]);
    const int low = HexDigit(text[i + 2]);
    if (high < 0 || low < 0 || high + low == 0) return std::nullopt;
    path += static_cast<char>(high << 4 | low);
    i += 2;
  }
  return path;
}

[[noreturn]] void RaiseBadText(std::string_view piece) {
  automation::Raise(RuntimeError::InvalidProcedureCall, kSource,
                    "\"" + std::string(piece) + "\" is no drive; expected X:=/folder");
}

}  // namespace

DriveMap::DriveMap() : m_listings(std::make_shared<FolderListings>()) {}

DriveMap DriveMap::BuiltIn(std::string_view dataFolder) {
  DriveMap map;
  map.SetDrive('C', std::string(dataFolder) + "/drive_c");
  map.SetDrive('Z', "/");
  return map;
}

DriveMap DriveMap::FromWinePrefix(std::string_view prefix) {
  const std::string root = AbsolutePosix(prefix);
  const std::string devices = root + "/dosdevices";
  std::error_code error;
  std::filesystem::directory_iterator entry(devices, error);
  if (error) {
    automation::Raise(RuntimeError::PathNotFound, kSource,
                      devices + " (not a Wine prefix; run wineboot to make one)");
  }
  DriveMap map;
  map.SetDrive('Z', "/");
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    // `d::` is a device and `com1` a port; only a letter with one colon is a drive.
    const std::string name = entry->path().filename().string();
    if (name.size() != 2 || name[1] != ':' || DriveIndex(name[0]) < 0) continue;
    map.SetDrive(name[0], WineDriveFolder(root, name));
  }
  return map;
}

DriveMap DriveMap::Parse(std::string_view text) {
  DriveMap map;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find(';'));
    text.remove_prefix(std::min(piece.size() + 1, text.size()));
    if (piece.size() < 4 || DriveIndex(piece[0]) < 0 || piece.substr(1, 3) != ":=/") RaiseBadText(piece);
    const auto folder = Unescape(piece.substr(3));
    if (!folder) RaiseBadText(piece);
    map.SetDrive(piece[0], *folder);
  }
  return map;
}

std::optional<DriveMap> DriveMap::FromEnvironment() {
  const char* text = std::getenv(kEnvironmentVariable);
  if (text == nullptr || *text == '\0') return std::nullopt;
  return Parse(text);
}

void DriveMap::SetDrive(char letter, std::string_view posixFolder) {
  const int index = DriveIndex(letter);
  if (index < 0 || posixFolder.empty() || posixFolder.find('\0') != std::string_view::npos) {
    RaiseBadText(std::string(1, letter) + ":=" + std::string(posixFolder));
  }
  Root root;
  root.folder = AbsolutePosix(posixFolder);
  root.resolved = WithLinksResolved(root.folder);
  m_drives[static_cast<std::size_t>(index)] = std::move(root);
}

std::optional<std::string> DriveMap::Drive(char letter) const {
  const Root* root = Find(letter);
  if (root == nullptr) return std::nullopt;
  return RootAsSlash(root->folder);
}

std::optional<std::string> DriveMap::ToPosix(std::string_view dosPath) const {
  std::optional<Spelling> spelling = Spell(dosPath);
  if (!spelling) return std::nullopt;
  if (IsThere(spelling->path)) return RootAsSlash(std::move(spelling->path));
  return RootAsSlash(Resolve(*spelling));
}

std::optional<std::string> DriveMap::ToPosixAsSpelled(std::string_view dosPath) const {
  std::optional<Spelling> spelling = Spell(dosPath);
  if (!spelling) return std::nullopt;
  return RootAsSlash(std::move(spelling->path));
}

std::string DriveMap::FromPosix(std::string_view posixPath) const {
  const std::string absolute = AbsolutePosix(posixPath);
  const Match match = DriveOf(absolute);
  std::string dosPath = match.drive < 0 ? "\\\\?\\" + std::string(kUnixName)
                                        : std::string{static_cast<char>('A' + match.drive), ':'};
  std::string_view rest = std::string_view(absolute).substr(match.length);
  if (rest.empty()) return dosPath + "\\";
  while (!rest.empty()) dosPath.append("\\").append(FileNameToUtf8(TakePosixName(rest)));
  return dosPath;
}

std::string DriveMap::Serialize() const {
  std::string text;
  for (std::size_t i = 0; i < m_drives.size(); ++i) {
    if (!m_drives[i]) continue;
    if (!text.empty()) text += ';';
    text.append({static_cast<char>('A' + i), ':', '='}).append(Escape(RootAsSlash(m_drives[i]->folder)));
  }
  return text;
}

const DriveMap::Root* DriveMap::Find(char letter) const {
  const int index = DriveIndex(letter);
  if (index < 0) return nullptr;
  const auto& root = m_drives[static_cast<std::size_t>(index)];
  return root ? &*root : nullptr;
}

DriveMap::Match DriveMap::DriveOf(std::string_view posixPath) const {
  Match best;
  for (std::size_t i = 0; i < m_drives.size(); ++i) {
    if (!m_drives[i]) continue;
    for (const std::string* folder : {&m_drives[i]->folder, &m_drives[i]->resolved}) {
      const bool better = best.drive < 0 || folder->size() > best.length;
      if (better && LiesIn(posixPath, *folder)) best = {static_cast<int>(i), folder->size()};
    }
  }
  return best;
}

std::optional<DriveMap::Spelling> DriveMap::Start(std::string_view& dosPath) const {
  if (dosPath.size() >= 2 && IsSlash(dosPath[0]) && IsSlash(dosPath[1])) {
    if (dosPath.size() < 4 || dosPath[2] != '?' || !IsSlash(dosPath[3])) return std::nullopt;
    dosPath.remove_prefix(4);
    std::string_view behindName = dosPath;
    if (FoldedEqual(TakeDosName(behindName), kUnixName)) {
      dosPath = behindName;
      return Spelling{};
    }
    if (dosPath.size() < 2 || dosPath[1] != ':') return std::nullopt;
  }
  if (dosPath.size() >= 2 && dosPath[1] == ':') {
    const Root* root = Find(dosPath[0]);
    if (root == nullptr) return std::nullopt;
    dosPath.remove_prefix(2);
    Spelling spelling{{}, root->folder.size()};
    spelling.path.reserve(root->folder.size() + dosPath.size());  // for the rest too
    spelling.path = root->folder;
    return spelling;
  }
  std::optional<std::string> current = CurrentFolder();
  if (!current) return std::nullopt;
  const std::size_t root = DriveOf(*current).length;
  if (IsSlash(dosPath[0])) current->resize(root);
  return Spelling{std::move(*current), root};
}

std::optional<DriveMap::Spelling> DriveMap::Spell(std::string_view dosPath) const {
  if (dosPath.empty() || dosPath.find('\0') != std::string_view::npos) return std::nullopt;
  std::optional<Spelling> spelling = Start(dosPath);
  if (!spelling || AppendWhole(spelling->path, dosPath)) return spelling;
  while (!dosPath.empty()) {
    const std::string_view name = TakeDosName(dosPath);
    if (name.empty() || name == ".") continue;
    if (name == "..") {
      GoUp(spelling->path, spelling->root);
    } else {
      spelling->path.append("/").append(name);
    }
  }
  return spelling;
}

std::string DriveMap::Resolve(const Spelling& spelling) const {
  const std::string_view path = spelling.path;
  // Down to the deepest folder that is there as spelled nothing has to be searched.
  std::string resolved(path);
  struct stat status {};
  bool isThere = false;
  while (!isThere && resolved.size() > spelling.root) {
    GoUp(resolved, spelling.root);
    isThere = Look(resolved, status);
  }
  std::string_view rest = path.substr(resolved.size());
  while (!rest.empty()) {
    const std::string_view name = TakePosixName(rest);
    std::optional<std::string> found;
    if (isThere) found = FindName(*m_listings, resolved, status, name);
    resolved.append("/").append(found ? *found : WithoutTrailingDots(name));
    isThere = found && !rest.empty() && Look(resolved, status);
  }
  return resolved;
}

}  // namespace hearthmake::posix
