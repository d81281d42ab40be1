#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/KeyTrail.hpp"
#include "adapters/posix/RegText.hpp"
#include "adapters/posix/RegistryTree.hpp"
#include "adapters/posix/StoreFile.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::posix {

// The registry of a machine without Wine: one file of `.reg` text, which can be read, edited by hand
// and imported elsewhere.
//
// A change is added to the end of the file before the call returns, under a lock, so that it costs the
// same however much the file holds and no kill loses it; a last line that a kill cut off is dropped.
// Setting what is set already writes nothing. When most of the file is out of date it is written anew
// in one step (comments of others go then). The file is read on first use and again when its stamp
// has changed.
//
// ClassesRoot is `Software\Classes` of the current user, then of the machine. Its new keys are made
// under the machine's, values go to the user's where the user has the key.
//
// Changes raise error 5 for a name with control characters, a key more than 512 levels deep and the
// removal of a root, error 45 for junk in the file, with its line, and the failures of StoreFile.
class RegistryStore : public platform::Registry {
 public:
  // A POSIX path.
  explicit RegistryStore(std::string path);

  bool KeyExists(platform::RegistryRoot root, std::string_view key) override;
  std::optional<platform::RegistryValue> Query(platform::RegistryRoot root, std::string_view key,
                                               std::string_view name) override;
  std::vector<std::string> SubKeys(platform::RegistryRoot root, std::string_view key) override;
  std::vector<std::string> ValueNames(platform::RegistryRoot root, std::string_view key) override;
  void Set(platform::RegistryRoot root, std::string_view key, std::string_view name,
           const platform::RegistryValue& value) override;
  // One addition to the file, all or nothing.
  void SetAll(platform::RegistryRoot root, std::span<const platform::RegistryEntry> entries) override;
  void RemoveValue(platform::RegistryRoot root, std::string_view key, std::string_view name) override;
  void RemoveKey(platform::RegistryRoot root, std::string_view key) override;

  // Takes over a `.reg` text in one step. Errors of RegText::Parse; then nothing has changed.
  void Import(std::string bytes, const std::string& name);

 private:
  using Key = RegistryTree::Key;
  using Value = RegistryTree::Value;
  using Trail = KeyTrail<RegistryTree::Keys>;

  void Load();
  void LoadChanges(std::string bytes);
  bool IsSet(std::vector<Trail>& trails, const platform::RegistryEntry& entry);
  // Loads what is out of date; false when the file can't be read.
  bool IsReadable();
  RegistryTree::Keys& Keys() { return m_tree->AllKeys(); }
  // From the keys that a root stands for, in the order of a look-up.
  std::vector<Trail> Trails(platform::RegistryRoot root);
  // The keys that a root and path stand for.
  std::vector<const Key*> Find(platform::RegistryRoot root, std::string_view key);

  void Change(const std::function<void()>& change);
  // Makes a change in memory and notes it for the file; nothing is noted when it changes nothing.
  void Apply(const RegistryChange& change);
  // Writes the file anew, and makes the tree anew from it.
  void Rewrite();
  void SetValue(const std::string& path, const std::string& name, const platform::RegistryValue& value);
  // With what the value will be once it has been written and read again. False when it was that already.
  bool SetStored(Key& key, const std::string& name, const platform::RegistryValue& value);
  void RemoveValueFrom(const std::string& path, const std::string& name);
  void NoteKey(const std::string& path);

  bool IsDue();
  std::string PrintAll();

  StoreFile m_file;
  std::unique_ptr<RegistryTree> m_tree = std::make_unique<RegistryTree>();
  std::string m_notes;          // what is to be added to the file
  std::string m_openKey;        // the key that the text so far ends in
  std::size_t m_records = 0;    // keys and values in the text
  std::size_t m_nextCount = 0;  // at so many records it is worth counting what is still in force
  bool m_isForeign = true;      // the file is not one of ours that we may add to
};

}  // namespace hearthmake::posix
