#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/Variant.hpp"
#include "platform/Platform.hpp"

namespace hearthmake::vbscript {

// The registry as WScript.Shell shows it: a value is named by root, key and name in one text
// ("HKCU\Software\Shop\Path"), a key's default value by the key and a backslash.
// Errors have the system's result code as number and "WshShell.RegRead" and the like as source.
class ShellRegistry {
 public:
  explicit ShellRegistry(const platform::Platform& ports) : m_ports(ports) {}

  // String, Long, an array of texts or of Bytes; REG_EXPAND_SZ comes expanded.
  automation::Variant Read(const std::string& name);
  // As REG_SZ, REG_EXPAND_SZ, REG_DWORD or REG_BINARY; without a type as REG_DWORD for whole numbers, else
  // as REG_SZ. A name that ends in a backslash makes the key.
  void Write(const std::string& name, const automation::Variant& value,
             const std::optional<std::string>& type);
  // A key must have no keys below it.
  void Delete(const std::string& name);

 private:
  struct Place {
    platform::RegistryRoot root = platform::RegistryRoot::CurrentUser;
    std::string key;
    std::string name;
    bool isKey = false;
  };
  static Place Parse(const std::string& name, const char* source);
  automation::Variant ValueOf(const platform::RegistryValue& value);

  const platform::Platform& m_ports;
};

}  // namespace hearthmake::vbscript
