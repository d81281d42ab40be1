#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/posix/KeyTree.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::posix {

// One registry file of a Wine prefix ("WINE REGISTRY Version 2"), for reading and changing. The text
// is kept as it is; a change replaces just the lines of the value or key that it is about, and what
// is not understood stays byte for byte. Symbolic links to keys of the same file are followed.
//
// Values are read from the text when they are asked for, so that loading a large file is a walk over
// its lines.
class WineHive {
 public:
  // Text that is no such file, or a key that can't be read, is error 45, source "Registry", with
  // "<name>, line <n>: what is wrong".
  WineHive(std::string text, const std::string& name);
  WineHive(const WineHive&) = delete;  // the keys point into the text
  WineHive& operator=(const WineHive&) = delete;

  // Whether the prefix is a 64-bit one, as far as this file tells.
  bool Is64Bit() const { return m_is64Bit; }
  // What its keys lie under: `Machine`, `User\S-1-5-21-0-0-0-1000`, `User\.Default`; empty when the file
  // does not tell.
  const std::string& Base() const { return m_base; }

  bool KeyExists(std::string_view key) { return Find(key) != nullptr; }
  // A value that can't be understood is not there.
  std::optional<platform::RegistryValue> Query(std::string_view key, std::string_view name);
  std::vector<std::string> SubKeys(std::string_view key);
  std::vector<std::string> ValueNames(std::string_view key);

  // The changes return whether they changed something. Error 5 for a key that lies too deep.
  bool Set(std::string_view key, std::string_view name, const platform::RegistryValue& value);
  bool RemoveValue(std::string_view key, std::string_view name);
  bool RemoveKey(std::string_view key);

  std::string Print() const;

 private:
  // The text of a key from its `[name]` to the next one.
  using Section = std::string_view;
  struct Content {
    std::vector<std::size_t> sections;  // of several ones for a key the last value counts
    bool isLink = false;
  };
  using Tree = KeyTree<Content>;

  // One value, or one other line, of a section.
  struct Entry {
    std::string_view text;            // with its line end and continuations
    std::optional<std::string> name;  // nothing when it is no value
    std::string_view data;
  };
  class EntryReader;

  void Load(const std::string& name);
  void LoadStart(std::string_view line);
  void AddSection(std::size_t start, std::size_t end, bool isLink, std::size_t line, const std::string& name);
  // The path with its links followed; nothing when they lead out of this file or in a circle.
  std::optional<std::string> Resolve(std::string_view key);
  Tree::Key* Find(std::string_view key);
  std::optional<std::string> LinkTarget(const Tree::Key& link) const;
  std::optional<Entry> FindEntry(const Content& content, std::string_view name, std::size_t* section) const;

  static std::optional<platform::RegistryValue> ReadData(std::string_view data);
  static std::string PrintValue(std::string_view name, const platform::RegistryValue& value);
  static std::string PrintKey(std::string_view path);
  void ReplaceText(std::size_t section, std::string text);

  const std::string m_text;
  std::size_t m_startLength = 0;  // what comes before the first key
  bool m_is64Bit = false;
  std::string m_base;
  std::vector<Section> m_sections;
  std::unordered_map<std::size_t, std::string> m_newTexts;  // of changed sections, by their place
  Tree m_tree;
};

}  // namespace hearthmake::posix
