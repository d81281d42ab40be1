#include "host/HostSettings.hpp"

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/HostError.hpp"
#include "host/Numbers.hpp"

namespace hearthmake::host {

namespace {

constexpr const char* kApplication = "Host";
constexpr const char* kSection = "Settings";

constexpr const char* kWinePrefix = "WinePrefix";
constexpr const char* kWineProgram = "WineProgram";
constexpr const char* kOsVersion = "OSVersion";
constexpr const char* kTemporaryFolder = "TemporaryFolder";

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string ChooseDataFolder(const HostOptions& options) {
  if (!options.dataFolder.empty()) return options.dataFolder;
  if (std::string folder = Variable(HostSettings::kDataVariable); !folder.empty()) return folder;
  // The XDG rules: a relative path there is to be ignored.
  if (const std::string folder = Variable("XDG_DATA_HOME"); folder.starts_with('/')) {
    return folder + "/hearthmake";
  }
  const std::string home = Variable("HOME");
  if (home.empty()) {
    throw HostError("There is no place for the data: HOME is not set.", "Say where it goes with --data DIR.");
  }
  return home + "/.local/share/hearthmake";
}

bool IsDriveKey(std::string_view key) {
  const char letter = key.empty() ? ' ' : automation::Upper(key.substr(0, 1))[0];
  return key.size() == 2 && key[1] == ':' && letter >= 'A' && letter <= 'Z';
}

void AddDrive(posix::DriveMap& drives, const std::string& text) {
  const std::size_t equals = text.find('=');
  const bool isDrive = equals != std::string::npos && IsDriveKey(text.substr(0, equals));
  if (!isDrive || equals + 1 == text.size()) {
    throw HostError(fmt::format("'{}' is no drive.", text),
                    "A drive is a letter and its folder: --drive D:=/srv/d");
  }
  drives.SetDrive(text[0], AbsolutePosixPath(text.substr(equals + 1)));
}

}  // namespace

std::string AbsolutePosixPath(std::string_view typed) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(typed), error);
  if (error) throw HostError("The current folder can't be found: " + error.message() + ".");
  std::string text = path.lexically_normal().string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

HostSettings::HostSettings(HostOptions options)
    : m_options(std::move(options)),
      m_dataFolder(AbsolutePosixPath(ChooseDataFolder(m_options))),
      m_store(FilePath()) {}

const std::vector<HostSettings::Key>& HostSettings::Keys() {
  static const std::vector<Key> kKeys = {
      {kWinePrefix, "Wine prefix whose drives and registry are used"},
      {kWineProgram, "program that runs Windows programs (wine)"},
      {kOsVersion, "major version of Windows that the library sees (of the prefix, else 10)"},
      {kTemporaryFolder, "folder for temporary files, without blanks ($TMPDIR or /tmp)"}};
  return kKeys;
}

std::string HostSettings::KnownKey(const std::string& key) {
  if (IsDriveKey(key)) return automation::Upper(key);
  std::string names;
  for (const Key& known : Keys()) {
    if (automation::EqualsIgnoreCaseAscii(known.name, key)) return known.name;
    names += fmt::format("{}, ", known.name);
  }
  throw HostError(fmt::format("There is no host setting '{}'.", key),
                  fmt::format("There are: {}and a drive by its letter, as in D:", names));
}

std::vector<std::pair<std::string, std::string>> HostSettings::Stored() const {
  // Before the first build is made there is no data folder; what keeps it from being made is told then.
  std::error_code ignored;
  if (!std::filesystem::is_directory(m_dataFolder, ignored)) return {};
  return m_store.GetAll(kApplication, kSection);
}

std::string HostSettings::StoredValue(std::string_view key) const {
  for (const auto& [name, value] : Stored()) {
    if (automation::EqualsIgnoreCaseAscii(name, key)) return value;
  }
  return {};
}

void HostSettings::Store(const std::string& key, const std::string& value) {
  const std::string known = KnownKey(key);
  if (value.empty()) {
    m_store.Remove(kApplication, kSection, known);
    return;
  }
  if (known == kOsVersion) ParseLong(value, kOsVersion);
  const bool isPath = known == kWinePrefix || known == kTemporaryFolder || IsDriveKey(known);
  m_store.Save(kApplication, kSection, {{known, isPath ? AbsolutePosixPath(value) : value}});
}

std::string HostSettings::WinePrefix() const {
  std::string prefix;
  if (m_options.winePrefix) {
    prefix = *m_options.winePrefix;
  } else {
    prefix = Variable(kWinePrefixVariable);
    if (prefix.empty()) prefix = StoredValue(kWinePrefix);
  }
  return prefix.empty() ? "" : AbsolutePosixPath(prefix);
}

std::string HostSettings::TemporaryFolder() const { return StoredValue(kTemporaryFolder); }

std::string HostSettings::WineProgram() const {
  const std::string program = StoredValue(kWineProgram);
  return program.empty() ? "wine" : program;
}

std::optional<std::int32_t> HostSettings::OsVersion() const {
  const std::string version = StoredValue(kOsVersion);
  if (version.empty()) return std::nullopt;
  return ParseLong(version, fmt::format("{} in {}", kOsVersion, FilePath()));
}

posix::DriveMap HostSettings::Drives() const {
  const std::string prefix = WinePrefix();
  posix::DriveMap drives;
  try {
    drives =
        prefix.empty() ? posix::DriveMap::BuiltIn(m_dataFolder) : posix::DriveMap::FromWinePrefix(prefix);
  } catch (const automation::Error& error) {
    throw HostError(fmt::format("{} is no Wine prefix: {}.", prefix, error.Description()),
                    fmt::format("Make one with: WINEPREFIX='{}' wineboot", prefix));
  }
  for (const auto& [key, folder] : Stored()) {
    if (IsDriveKey(key)) AddDrive(drives, fmt::format("{}={}", key, folder));
  }
  for (const std::string& drive : m_options.drives) AddDrive(drives, drive);
  return drives;
}

}  // namespace hearthmake::host
