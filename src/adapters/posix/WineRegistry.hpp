#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/StoreFile.hpp"
#include "adapters/posix/WineHive.hpp"
#include "adapters/posix/WineServerLock.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::posix {

// The registry of a Wine prefix, from its files: `system.reg` (LocalMachine), `user.reg` (CurrentUser)
// and `userdef.reg` (`.Default` of Users). A file is loaded when first needed and again when its stamp
// has changed; Wine's server writes its changes down with a delay.
//
// What a 32-bit program sees comes first in a 64-bit prefix: below `Software` of LocalMachine and
// below the classes, `Wow6432Node` is looked at before the keys that both kinds share. ClassesRoot is
// the user's classes, then the machine's. A new key of ClassesRoot is made in the machine's classes; it
// goes below `Wow6432Node` when its first name is there already or is CLSID or Interface.
//
// A change replaces the file, so it is for the odd value, not for thousands. It is refused (error 70)
// while a Wine server runs in the prefix, because the server would overwrite it. Other errors of
// changes: 5 for names Windows has not, 45 for junk in the file, with its line, 76 when the prefix has
// no such file, and the failures of StoreFile.
class WineRegistry : public platform::Registry {
 public:
  // POSIX paths; the second is where Wine's servers have their sockets.
  explicit WineRegistry(std::string prefix, std::string serverRoot = WineServerLock::DefaultServerRoot());

  bool KeyExists(platform::RegistryRoot root, std::string_view key) override;
  std::optional<platform::RegistryValue> Query(platform::RegistryRoot root, std::string_view key,
                                               std::string_view name) override;
  std::vector<std::string> SubKeys(platform::RegistryRoot root, std::string_view key) override;
  std::vector<std::string> ValueNames(platform::RegistryRoot root, std::string_view key) override;
  void Set(platform::RegistryRoot root, std::string_view key, std::string_view name,
           const platform::RegistryValue& value) override;
  void SetAll(platform::RegistryRoot root, std::span<const platform::RegistryEntry> entries) override;
  void RemoveValue(platform::RegistryRoot root, std::string_view key, std::string_view name) override;
  void RemoveKey(platform::RegistryRoot root, std::string_view key) override;

 private:
  struct HiveFile {
    explicit HiveFile(const std::string& path);
    StoreFile file;
    std::unique_ptr<WineHive> hive;  // null when there is no file
  };
  // One of the places that a key may be in.
  struct View {
    HiveFile* file;
    std::string key;
    bool takesNewKeys;
  };

  // Null when the file is missing. Raises what its reading raises.
  static WineHive* Load(HiveFile& file);
  // Null when it can't be read.
  static WineHive* TryLoad(HiveFile& file);
  bool Is64Bit();

  std::vector<View> Views(platform::RegistryRoot root, std::string_view key);
  std::vector<View> ClassesViews(std::string_view key);
  std::vector<View> MachineViews(std::string_view key);
  std::vector<View> UserViews(std::string_view key);
  std::vector<View> UsersViews(std::string_view key);

  using Lister = std::vector<std::string> (WineHive::*)(std::string_view key);
  std::vector<std::string> List(platform::RegistryRoot root, std::string_view key, Lister lister);
  // The change tells whether it changed something.
  void Change(HiveFile& file, const std::function<bool(WineHive&)>& change);

  std::string m_prefix;
  std::string m_serverRoot;
  HiveFile m_system;
  HiveFile m_user;
  HiveFile m_default;
};

}  // namespace hearthmake::posix
