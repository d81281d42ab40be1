#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Registry.hpp"

namespace hearthmake::win32 {

// An open key of the system's registry, or none. What can't be done is error 5 for a name that can't be, 70
// without the right to, 57 otherwise; source "Registry", a text with the key's path.
class RegistryKey {
 public:
  RegistryKey() = default;
  RegistryKey(RegistryKey&& other) noexcept
      : m_key(std::exchange(other.m_key, nullptr)), m_path(std::move(other.m_path)) {}
  RegistryKey& operator=(RegistryKey&& other) noexcept {
    std::swap(m_key, other.m_key);
    std::swap(m_path, other.m_path);
    return *this;
  }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey();

  // A key that is there; none where it is missing or may not be read. The flag chooses a view
  // (KEY_WOW64_32KEY …).
  static RegistryKey Open(HKEY root, std::string_view path, REGSAM access, REGSAM view);
  // Makes the key where it is missing.
  static RegistryKey Create(HKEY root, std::string_view path, REGSAM view);
  // The key and all below it; a missing one is no error.
  static void Remove(HKEY root, std::string_view path, REGSAM view);

  explicit operator bool() const { return m_key != nullptr; }

  std::optional<platform::RegistryValue> Query(std::string_view name) const;
  // Names as the registry keeps them, in its order.
  std::vector<std::string> SubKeys() const;
  std::vector<std::string> ValueNames() const;
  void Set(std::string_view name, const platform::RegistryValue& value) const;
  // A missing value is no error.
  void RemoveValue(std::string_view name) const;

 private:
  RegistryKey(HKEY key, std::string_view path) : m_key(key), m_path(path) {}

  HKEY m_key = nullptr;
  std::string m_path;
};

}  // namespace hearthmake::win32
