#include "adapters/git/DatabaseSettings.hpp"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "adapters/git/GitFailure.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

constexpr off_t kLargestIni = 1 << 20;

std::string ReadIni(std::string_view iniPath, const PathMap& toPosix) {
  const std::string path = toPosix(iniPath);
  struct stat status {};
  if (path.empty() || stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
    Fail(Number::kNotFound, "The database's ini file was not found: " + std::string(iniPath));
  std::ifstream file(path, std::ios::binary);
  if (!file || status.st_size > kLargestIni)
    Fail(Number::kPathAccess, "The database's ini file can't be read: " + std::string(iniPath));
  return std::string(std::istreambuf_iterator<char>(file), {});
}

bool IsDrivePath(std::string_view path) {
  const auto letter = static_cast<unsigned char>(path.empty() ? 0 : path.front() | 0x20);
  return path.size() >= 2 && letter >= 'a' && letter <= 'z' && path[1] == ':';
}

bool IsAbsolute(std::string_view path) {
  return IsDrivePath(path) || path.starts_with('/') || path.starts_with('\\');
}

std::string NameOfProcessUser() {
  const passwd* entry = getpwuid(getuid());
  if (entry != nullptr && entry->pw_name != nullptr) return entry->pw_name;
  const char* variable = std::getenv("USER");
  return variable == nullptr ? "" : variable;
}

}  // namespace

DatabaseSettings::DatabaseSettings(std::string_view iniPath, const PathMap& toPosix)
    : m_iniPath(iniPath), m_toPosix(toPosix), m_ini(ReadIni(iniPath, toPosix)) {}

std::string DatabaseSettings::ToDos(const std::string& path) const {
  if (IsAbsolute(path)) return path;
  const std::size_t slash = m_iniPath.find_last_of("/\\:");
  return slash == std::string::npos ? path : m_iniPath.substr(0, slash + 1) + path;
}

std::string DatabaseSettings::ToPosix(const std::string& path) const {
  return path.starts_with('/') ? path : m_toPosix(ToDos(path));
}

std::string DatabaseSettings::RepositoryFolder() const {
  const std::string given = m_ini.Value("git", "repository");
  return ToPosix(given.empty() ? "." : given);
}

Person DatabaseSettings::FindPerson(std::string_view name) const {
  const std::string wanted = name.empty() ? NameOfProcessUser() : std::string(automation::Trim(name));
  if (wanted.empty() || wanted.find_first_of("<>\r\n") != std::string::npos ||
      wanted.find('\0') != wanted.npos)
    Fail(Number::kInvalidArgument, "\"" + wanted + "\" can't be the name of a user");
  for (const auto& [known, mail] : m_ini.Section("users")) {
    if (automation::EqualsIgnoreCase(known, wanted)) return {known, mail};
  }
  return {wanted, wanted + "@localhost"};
}

std::optional<std::string> DatabaseSettings::WorkingFolder(const Person& person, const ItemPath& item) const {
  const auto own = WorkingFolderIn("working folders." + person.name, item);
  return own ? own : WorkingFolderIn("working folders", item);
}

std::optional<std::string> DatabaseSettings::WorkingFolderIn(const std::string& section,
                                                             const ItemPath& item) const {
  const std::string* nearest = nullptr;
  std::size_t depth = 0;
  for (const auto& [spec, folder] : m_ini.Section(section)) {
    const ItemPath path = ItemPath::Parse(spec);
    if (!item.IsAtOrBelow(path) || (nearest != nullptr && path.Names().size() < depth)) continue;
    nearest = &folder;
    depth = path.Names().size();
  }
  if (nearest == nullptr) return std::nullopt;
  std::string folder = ToDos(*nearest);
  // A POSIX path of the ini file has no drive: Wine's name for it.
  if (folder.starts_with('/')) folder = "\\\\?\\unix" + folder;
  for (std::size_t i = depth; i < item.Names().size(); ++i) folder += "\\" + item.Names()[i];
  return folder;
}

}  // namespace hearthmake::git
