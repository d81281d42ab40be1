#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SettingsStore.hpp"

namespace hearthmake::host {

// The options that stand before or behind any command, as they were typed.
struct HostOptions {
  std::string dataFolder;
  std::optional<std::string> winePrefix;  // given and empty: none
  std::vector<std::string> drives;        // X:=DIR
  bool noColour = false;
};

// What belongs to the host and not to the library: where data lies, and what the machine looks like to the
// library. In the order option, environment, `host.ini` in the data folder, default.
class HostSettings {
 public:
  static constexpr const char* kDataVariable = "HEARTHMAKE_DATA";
  static constexpr const char* kWinePrefixVariable = "HEARTHMAKE_WINE_PREFIX";

  static constexpr const char* kWinePrefixKey = "WinePrefix";
  static constexpr const char* kWineProgramKey = "WineProgram";
  static constexpr const char* kOsVersionKey = "OSVersion";
  static constexpr const char* kTemporaryFolderKey = "TemporaryFolder";
  static constexpr const char* kScriptEngineKey = "ScriptEngine";

  // One that can be stored.
  struct Key {
    const char* name;
    const char* meaning;
  };

  explicit HostSettings(HostOptions options);

  // The system's paths, absolute; the folders need not exist. An empty prefix is none.
  const std::string& DataFolder() const { return m_dataFolder; }
  std::string WinePrefix() const;
  // Where temporary files go; empty leaves the choice to the system.
  std::string TemporaryFolder() const;
  // The program that runs Windows programs.
  std::string WineProgram() const;
  // Nothing when it is not overridden.
  std::optional<std::int32_t> OsVersion() const;
  // Drives that were added by options, as they were typed.
  const std::vector<std::string>& AddedDrives() const { return m_options.drives; }

  // Whether this system's drives and Wine prefix are a matter of settings and options.
  static bool ChoosesDrives();

  // The stored settings, by key; an empty value takes one out. HostError for an unknown key (it lists the
  // keys, drive letters are keys too) or a value that can't be.
  std::vector<std::pair<std::string, std::string>> Stored() const;
  std::string StoredValue(std::string_view key) const;
  void Store(const std::string& key, const std::string& value);
  static const std::vector<Key>& Keys();  // of this system
  // The key as it is stored. HostError for an unknown one.
  static std::string KnownKey(const std::string& key);
  // Whether a key is the letter of a drive.
  static bool IsDriveKey(std::string_view key);

 private:
  HostOptions m_options;
  std::string m_dataFolder;
  std::unique_ptr<platform::SettingsStore> m_store;  // reads its file when first asked
};

}  // namespace hearthmake::host
