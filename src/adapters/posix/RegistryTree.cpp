#include "adapters/posix/RegistryTree.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "adapters/posix/TextEncoding.hpp"

namespace hearthmake::posix {

const RegistryTree::Value* RegistryTree::Find(const Key& key, std::string_view name) const {
  // Most keys have one value, and most look-ups are for that.
  const Value* const first = key.content.first;
  if (first == nullptr || first->name == name) return first;
  return static_cast<const Value*>(m_index.Find({&key, name}));
}

std::vector<const RegistryTree::Value*> RegistryTree::Values(const Key& key) {
  return InOrderOfNames(key.content);
}

bool RegistryTree::Set(Key& key, std::string_view name, platform::RegistryType type, std::string_view data) {
  const NameIndex::Sought sought(&key, name);
  auto* value = static_cast<Value*>(m_index.Find(sought));
  if (value != nullptr && value->type == type && value->data == data) return false;
  if (value == nullptr) {
    value = &m_values.emplace_back();
    m_index.Add(*value, sought, m_keys.Keep(name));
    key.content.Add(*value);
  }
  value->type = type;
  value->data = m_keys.Keep(data);
  return true;
}

bool RegistryTree::Remove(Key& key, std::string_view name) {
  auto* const value = static_cast<Value*>(m_index.Find({&key, name}));
  if (value == nullptr) return false;
  m_index.Remove(*value);
  key.content.Remove(*value);
  return true;
}

std::size_t RegistryTree::Count() {
  std::size_t count = 0;
  std::vector<const Key*> pending = {&m_keys.Root()};
  while (!pending.empty()) {
    const Key* const key = pending.back();
    pending.pop_back();
    ++count;
    for (const Value* value = key->content.first; value != nullptr; value = value->next) ++count;
    for (const Key* child = key->children.first; child != nullptr; child = child->next)
      pending.push_back(child);
  }
  return count;
}

}  // namespace hearthmake::posix
