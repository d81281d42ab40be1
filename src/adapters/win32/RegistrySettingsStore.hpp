#pragma once

#include "platform/SettingsStore.hpp"

namespace hearthmake::win32 {

// The settings where Visual Basic's own programs keep theirs: texts below
// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\APPLICATION\SECTION.
//
// The order of the pairs is the registry's, which is that of their first storing by custom, not by contract.
// Values that are no texts are nobody's settings and are not seen. A Save that fails half-way, which takes a
// full disk or a lost right, leaves the pairs before it stored: the registry knows no transactions here.
class RegistrySettingsStore final : public platform::SettingsStore {
 public:
  platform::SettingPairs GetAll(std::string_view application, std::string_view section) override;
  void Save(std::string_view application, std::string_view section,
            const platform::SettingPairs& pairs) override;
  void Remove(std::string_view application, std::string_view section, std::string_view key) override;
};

}  // namespace hearthmake::win32
