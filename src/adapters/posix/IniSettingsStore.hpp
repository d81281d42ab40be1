#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "adapters/posix/IniText.hpp"
#include "adapters/posix/StoreFile.hpp"
#include "platform/SettingsStore.hpp"

namespace hearthmake::posix {

// The settings of a user in one INI file, which people may edit by hand (see IniText for its text). A
// missing file is an empty store. The file is read again when its stamp has changed; every change is
// made under a lock on what the file holds then, so that processes do not lose each other's.
//
// Errors: junk in the file is error 45, source "SettingsStore", with file and line; failures of the
// file system are those of StoreFile.
class IniSettingsStore : public platform::SettingsStore {
 public:
  // A POSIX path.
  explicit IniSettingsStore(std::string path);

  // `hearthmake/settings.ini` in $XDG_CONFIG_HOME, or in ~/.config where that is not set.
  static std::string DefaultPath();

  platform::SettingPairs GetAll(std::string_view application, std::string_view section) override;
  void Save(std::string_view application, std::string_view section,
            const platform::SettingPairs& pairs) override;
  void Remove(std::string_view application, std::string_view section, std::string_view key) override;

 private:
  IniText Load();
  // The change tells whether it changed something.
  void Change(const std::function<bool(IniText&)>& change);

  StoreFile m_file;
  IniText m_text;
};

}  // namespace hearthmake::posix
