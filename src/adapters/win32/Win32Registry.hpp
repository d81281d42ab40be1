#pragma once

#include "platform/Registry.hpp"

namespace hearthmake::win32 {

// The Registry port over the system's registry, as a 32-bit program sees it whatever this one is: Visual
// Basic and its components are. Classes that only 64-bit programs see are found too, behind all others.
//
// The merged view of the classes is made here, so that it is the same for a service without a user's profile.
class Win32Registry final : public platform::Registry {
 public:
  bool KeyExists(platform::RegistryRoot root, std::string_view key) override;
  std::optional<platform::RegistryValue> Query(platform::RegistryRoot root, std::string_view key,
                                               std::string_view name) override;
  std::vector<std::string> SubKeys(platform::RegistryRoot root, std::string_view key) override;
  std::vector<std::string> ValueNames(platform::RegistryRoot root, std::string_view key) override;
  // Error 5 for a name that can't be: one with control characters, one that is no UTF-8.
  void Set(platform::RegistryRoot root, std::string_view key, std::string_view name,
           const platform::RegistryValue& value) override;
  void SetAll(platform::RegistryRoot root, std::span<const platform::RegistryEntry> entries) override;
  void RemoveValue(platform::RegistryRoot root, std::string_view key, std::string_view name) override;
  void RemoveKey(platform::RegistryRoot root, std::string_view key) override;
};

}  // namespace hearthmake::win32
