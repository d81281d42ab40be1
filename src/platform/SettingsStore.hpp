#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hearthmake::platform {

using SettingPairs = std::vector<std::pair<std::string, std::string>>;

// The per-user store of program settings: text values by application, section and key. Application,
// section and key are matched without regard to case.
class SettingsStore {
 public:
  SettingsStore() = default;
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;
  virtual ~SettingsStore() = default;

  // All pairs of a section in the order in which they were first stored; none when there is no such
  // section. A store that can't be read, or holds what is no setting, throws automation::Error with
  // the file and, for junk, the line.
  virtual SettingPairs GetAll(std::string_view application, std::string_view section) = 0;
  // Stores the pairs in this order, the others of the section stay. All of them or none are written.
  virtual void Save(std::string_view application, std::string_view section, const SettingPairs& pairs) = 0;
  virtual void Remove(std::string_view application, std::string_view section, std::string_view key) = 0;
};

}  // namespace hearthmake::platform
