#pragma once

#include <deque>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "adapters/posix/Chain.hpp"
#include "adapters/posix/KeyTree.hpp"
#include "adapters/posix/NameIndex.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::posix {

// A registry in memory: keys with their values. What is removed or overwritten leaves its memory behind
// until the tree goes.
class RegistryTree {
 public:
  struct Value : NameIndex::Entry {
    Value* previous = nullptr;  // of the same key
    Value* next = nullptr;
    platform::RegistryType type = platform::RegistryType::None;
    std::string_view data;
  };
  using Keys = KeyTree<Chain<Value>>;
  using Key = Keys::Key;

  Keys& AllKeys() { return m_keys; }

  // Null when the key has no such value.
  const Value* Find(const Key& key, std::string_view name) const;
  // The values of a key in the order of their folded names.
  static std::vector<const Value*> Values(const Key& key);

  // The value of that name, which keeps the spelling that it was made with. False when it had this
  // content already.
  bool Set(Key& key, std::string_view name, platform::RegistryType type, std::string_view data);
  // False when it was not there.
  bool Remove(Key& key, std::string_view name);

  // How many keys (the root too) and values there are; takes a walk over everything.
  std::size_t Count();

 private:
  Keys m_keys;
  std::pmr::monotonic_buffer_resource m_memory;
  std::pmr::deque<Value> m_values{&m_memory};
  NameIndex m_index;
};

}  // namespace hearthmake::posix
