#include "host/HostSettings.hpp"

#include <fmt/format.h>

#include <filesystem>

#include "automation/Text.hpp"
#include "host/HostError.hpp"
#include "host/system/Places.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

constexpr const char* kApplication = "Host";
constexpr const char* kSection = "Settings";

constexpr auto kWinePrefix = HostSettings::kWinePrefixKey;
constexpr auto kWineProgram = HostSettings::kWineProgramKey;
constexpr auto kOsVersion = HostSettings::kOsVersionKey;
constexpr auto kTemporaryFolder = HostSettings::kTemporaryFolderKey;

std::string ChooseDataFolder(const HostOptions& options) {
  if (!options.dataFolder.empty()) return options.dataFolder;
  const std::string folder = EnvironmentValue(HostSettings::kDataVariable);
  return folder.empty() ? DefaultDataFolder() : folder;
}

}  // namespace

bool HostSettings::IsDriveKey(std::string_view key) {
  const char letter = key.empty() ? ' ' : automation::Upper(key.substr(0, 1))[0];
  return key.size() == 2 && key[1] == ':' && letter >= 'A' && letter <= 'Z';
}

HostSettings::HostSettings(HostOptions options)
    : m_options(std::move(options)),
      m_dataFolder(AbsoluteSystemPath(ChooseDataFolder(m_options))),
      m_store(OpenHostStore(m_dataFolder)) {}

std::string HostSettings::KnownKey(const std::string& key) {
  if (IsDriveKey(key) && ChoosesDrives()) return automation::Upper(key);
  std::string names;
  for (const Key& known : Keys()) {
    if (automation::EqualsIgnoreCaseAscii(known.name, key)) return known.name;
    names += fmt::format("{}{}", names.empty() ? "" : ", ", known.name);
  }
  throw HostError(
      fmt::format("There is no host setting '{}'.", key),
      fmt::format("There are: {}{}", names, ChoosesDrives() ? ", and a drive by its letter, as in D:" : ""));
}

std::vector<std::pair<std::string, std::string>> HostSettings::Stored() const {
  // Before the first build is made there is no data folder; what keeps it from being made is told then.
  std::error_code ignored;
  if (!std::filesystem::is_directory(m_dataFolder, ignored)) return {};
  return m_store->GetAll(kApplication, kSection);
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
    m_store->Remove(kApplication, kSection, known);
    return;
  }
  if (known == kOsVersion) ParseLong(value, kOsVersion);
  if (known == kScriptEngineKey && value != "control" && value != "own")
    throw HostError(fmt::format("There is no script engine '{}'.", value), "There are: control, own");
  const bool isPath = known == kWinePrefix || known == kTemporaryFolder || IsDriveKey(known);
  m_store->Save(kApplication, kSection, {{known, isPath ? AbsoluteSystemPath(value) : value}});
}

std::string HostSettings::WinePrefix() const {
  std::string prefix;
  if (m_options.winePrefix) {
    prefix = *m_options.winePrefix;
  } else {
    prefix = EnvironmentValue(kWinePrefixVariable);
    if (prefix.empty()) prefix = StoredValue(kWinePrefix);
  }
  return prefix.empty() ? "" : AbsoluteSystemPath(prefix);
}

std::string HostSettings::TemporaryFolder() const { return StoredValue(kTemporaryFolder); }

std::string HostSettings::WineProgram() const {
  const std::string program = StoredValue(kWineProgram);
  return program.empty() ? "wine" : program;
}

std::optional<std::int32_t> HostSettings::OsVersion() const {
  const std::string version = StoredValue(kOsVersion);
  if (version.empty()) return std::nullopt;
  return ParseLong(version, fmt::format("{} in {}", kOsVersion, HostStorePlace(m_dataFolder)));
}

}  // namespace hearthmake::host
