#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/Chain.hpp"
#include "adapters/posix/NameIndex.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

// Keys of a registry by path, each with some content. Names are matched without regard to case; empty
// names in a path (a doubled or final backslash) do not count. The empty path is the root.
//
// The memory of keys is given back with the whole tree, also that of removed ones: large registries are
// made and dropped in few steps.
template <class Content>
class KeyTree {
 public:
  // As deep as Windows allows; also keeps the walks below from overrunning the stack.
  static constexpr std::size_t kDeepest = 512;

  struct Key : NameIndex::Entry {
    Key* parent = nullptr;
    Key* previous = nullptr;  // beside it
    Key* next = nullptr;
    std::size_t depth = 0;  // levels below the root
    Chain<Key> children;
    Content content{};
  };

  KeyTree() = default;
  KeyTree(const KeyTree&) = delete;
  KeyTree& operator=(const KeyTree&) = delete;

  // Takes the first name off a path; empty when there is none left.
  static std::string_view TakeName(std::string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    const std::string_view name = path.substr(0, path.find('\\'));
    path.remove_prefix(name.size());
    return name;
  }

  Key& Root() { return m_root; }

  // These three are null when there is no such key.
  Key* Find(std::string_view path) { return Below(m_root, path); }
  Key* Below(Key& start, std::string_view path) {
    Key* key = &start;
    for (std::string_view name = TakeName(path); !name.empty() && key != nullptr; name = TakeName(path))
      key = Child(*key, name);
    return key;
  }
  Key* Child(const Key& parent, std::string_view name) const {
    return static_cast<Key*>(m_index.Find({&parent, name}));
  }

  // The keys right below, in the order of their folded names.
  static std::vector<const Key*> Children(const Key& parent) { return InOrderOfNames(parent.children); }

  // Error 5 for a path of more than kDeepest names.
  Key& Make(std::string_view path) { return MakeBelow(m_root, path); }
  // The same for a path below a key.
  Key& MakeBelow(Key& start, std::string_view path) {
    Key* key = &start;
    for (std::string_view name = TakeName(path); !name.empty(); name = TakeName(path))
      key = &MakeChild(*key, name);
    return *key;
  }
  // The same for one name.
  Key& MakeChild(Key& parent, std::string_view name) {
    const NameIndex::Sought sought(&parent, name);
    if (NameIndex::Entry* const known = m_index.Find(sought)) return *static_cast<Key*>(known);
    if (parent.depth == kDeepest)
      automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Registry",
                        "keys lie at most " + std::to_string(kDeepest) + " levels deep");
    Key& key = m_keys.emplace_back();
    m_index.Add(key, sought, Keep(name));
    key.parent = &parent;
    key.depth = parent.depth + 1;
    parent.children.Add(key);
    return key;
  }

  // Removes a key with all below it. False when it was not there; the root stays.
  bool Remove(std::string_view path) {
    Key* const key = Find(path);
    if (key == nullptr || key == &m_root) return false;
    // What lies below can't be reached without it.
    m_index.Remove(*key);
    key->parent->children.Remove(*key);
    return true;
  }

  // A copy that lives as long as the tree.
  std::string_view Keep(std::string_view text) {
    if (text.empty()) return {};
    auto* const place = static_cast<char*>(m_memory.allocate(text.size(), 1));
    std::memcpy(place, text.data(), text.size());
    return {place, text.size()};
  }

 private:
  std::pmr::monotonic_buffer_resource m_memory;
  std::pmr::deque<Key> m_keys{&m_memory};
  NameIndex m_index;
  Key m_root;
};

}  // namespace hearthmake::posix
