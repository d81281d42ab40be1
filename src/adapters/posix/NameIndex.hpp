#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/posix/Chain.hpp"
#include "adapters/posix/TextEncoding.hpp"

namespace hearthmake::posix {

// Finds things by what they belong to and by name, without regard to case (in the sense of FoldCase): the
// keys of a registry, and their values. A hash table, so that a look-up touches few places in memory
// however much there is. The links are in the things themselves, which outlive the index.
class NameIndex {
 public:
  struct Entry {
    const void* owner = nullptr;
    std::string_view name;
    std::size_t hash = 0;
    Entry* nextInBucket = nullptr;
  };

  // What is looked for, or is to be added, with its hash worked out once for both.
  struct Sought {
    Sought(const void* owner, std::string_view name);

    const void* owner;
    std::string_view name;
    std::size_t hash;
  };

  NameIndex();

  // Null when there is none.
  Entry* Find(const Sought& sought) const;
  // There must be none of that owner and name. The entry's own text of the name must stay where it is.
  void Add(Entry& entry, const Sought& sought, std::string_view name);
  // It must be there.
  void Remove(const Entry& entry);

 private:
  Entry*& Bucket(std::size_t hash) { return m_buckets[hash & (m_buckets.size() - 1)]; }
  void Grow();

  std::vector<Entry*> m_buckets;  // as many as a power of two
  std::size_t m_count = 0;
};

// Entries in the order of their folded names.
template <class Entry>
std::vector<const Entry*> InOrderOfNames(const Chain<Entry>& entries) {
  std::vector<std::pair<std::string, const Entry*>> byName;
  for (const Entry* entry = entries.first; entry != nullptr; entry = entry->next)
    byName.emplace_back(FoldCase(entry->name), entry);
  std::sort(byName.begin(), byName.end());
  std::vector<const Entry*> result;
  result.reserve(byName.size());
  for (const auto& [folded, entry] : byName) result.push_back(entry);
  return result;
}

}  // namespace hearthmake::posix
