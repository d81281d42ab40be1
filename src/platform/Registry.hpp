#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::platform {

enum class RegistryRoot : std::uint32_t {
  ClassesRoot = 0x80000000,
  CurrentUser = 0x80000001,
  LocalMachine = 0x80000002,
  Users = 0x80000003,
};

enum class RegistryType : std::uint32_t {
  None = 0,
  String = 1,
  ExpandString = 2,
  Binary = 3,
  DWord = 4,
  MultiString = 7,
  QWord = 11,
};

// A value as the registry stores it. Texts are UTF-8 here without their final zero (MultiString: the
// parts, each followed by one zero byte); numbers are little-endian bytes.
struct RegistryValue {
  RegistryType type = RegistryType::None;
  std::string data;
};

struct RegistryEntry {
  std::string key;
  std::string name;
  RegistryValue value;
};

// Keys by root and path (`Software\Hearthmake`), names without regard to case; the empty value name
// is a key's default value. A 32-bit program's view: ClassesRoot is the merged view of the user's and
// the machine's classes, the user's first.
class Registry {
 public:
  Registry() = default;
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;
  virtual ~Registry() = default;

  virtual bool KeyExists(RegistryRoot root, std::string_view key) = 0;
  // Nothing when the key or the value is missing, or the store can't be read.
  virtual std::optional<RegistryValue> Query(RegistryRoot root, std::string_view key,
                                             std::string_view name) = 0;
  virtual std::vector<std::string> SubKeys(RegistryRoot root, std::string_view key) = 0;
  virtual std::vector<std::string> ValueNames(RegistryRoot root, std::string_view key) = 0;
  // Makes the key where it is missing.
  virtual void Set(RegistryRoot root, std::string_view key, std::string_view name,
                   const RegistryValue& value) = 0;
  // Set for each in turn, which a store may make one change.
  virtual void SetAll(RegistryRoot root, std::span<const RegistryEntry> entries) = 0;
  virtual void RemoveValue(RegistryRoot root, std::string_view key, std::string_view name) = 0;
  // Removes the key and all below it; a missing key is no error.
  virtual void RemoveKey(RegistryRoot root, std::string_view key) = 0;
};

}  // namespace hearthmake::platform
