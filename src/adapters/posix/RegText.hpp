#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Registry.hpp"

namespace hearthmake::posix {

// One step of a registry text.
struct RegistryChange {
  enum class Kind { MakeKey, RemoveKey, SetValue, RemoveValue };
  Kind kind = Kind::MakeKey;
  platform::RegistryRoot root = platform::RegistryRoot::LocalMachine;
  std::string key;  // without the root
  std::string name;
  platform::RegistryValue value;
};

// The text of `.reg` files, "Windows Registry Editor Version 5.00". Its parts are printed one by one
// and can be put behind each other; a later part wins over an earlier one.
class RegText {
 public:
  // Reports every step in the order of the text; a step is there during its report only. Takes UTF-16 and
  // UTF-8 with or without byte order mark and Windows-1252, the older "REGEDIT4" too. Junk is error 45,
  // source "Registry", text "<name>, line <n>: what is wrong"; what came before it has been reported.
  static void Parse(std::string bytes, const std::string& name,
                    const std::function<void(const RegistryChange&)>& report);

  static std::string Header();
  // Values that follow belong to this key, which is made.
  static void AppendKey(std::string& text, std::string_view fullKey);
  static void AppendKeyRemoval(std::string& text, std::string_view fullKey);
  static void AppendValue(std::string& text, std::string_view name, const platform::RegistryValue& value);
  static void AppendValueRemoval(std::string& text, std::string_view name);

  // Whether a key or a value can have this name in the text: UTF-8 without control characters.
  static bool IsName(std::string_view name);
  // "HKEY_LOCAL_MACHINE" …
  static std::string_view RootName(platform::RegistryRoot root);
};

}  // namespace hearthmake::posix
