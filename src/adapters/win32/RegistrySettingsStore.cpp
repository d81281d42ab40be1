#include "adapters/win32/RegistrySettingsStore.hpp"

#include <windows.h>

#include "adapters/win32/RegistryKey.hpp"

namespace hearthmake::win32 {

using platform::RegistryType;

namespace {

std::string PathOf(std::string_view application, std::string_view section) {
  return "Software\\VB and VBA Program Settings\\" + std::string(application) + '\\' + std::string(section);
}

}  // namespace

platform::SettingPairs RegistrySettingsStore::GetAll(std::string_view application, std::string_view section) {
  const RegistryKey key = RegistryKey::Open(HKEY_CURRENT_USER, PathOf(application, section), KEY_READ, 0);
  platform::SettingPairs pairs;
  if (!key) return pairs;
  for (std::string& name : key.ValueNames()) {
    auto value = key.Query(name);
    if (value && value->type == RegistryType::String)
      pairs.emplace_back(std::move(name), std::move(value->data));
  }
  return pairs;
}

void RegistrySettingsStore::Save(std::string_view application, std::string_view section,
                                 const platform::SettingPairs& pairs) {
  const RegistryKey key = RegistryKey::Create(HKEY_CURRENT_USER, PathOf(application, section), 0);
  for (const auto& [name, text] : pairs) key.Set(name, {RegistryType::String, text});
}

void RegistrySettingsStore::Remove(std::string_view application, std::string_view section,
                                   std::string_view key) {
  const RegistryKey found =
      RegistryKey::Open(HKEY_CURRENT_USER, PathOf(application, section), KEY_READ | KEY_SET_VALUE, 0);
  if (found) found.RemoveValue(key);
}

}  // namespace hearthmake::win32
