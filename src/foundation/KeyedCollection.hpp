#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Object.hpp"
#include "automation/Text.hpp"

namespace hearthmake {

// An ordered list of objects, each under a key of its own; keys compare without regard to case. The list
// holds its objects as their owner's side does (automation::Held). Look-ups by key are constant in time,
// also after removals.
template <class T>
class KeyedCollection {
 public:
  // The class and member that errors name as their source.
  explicit KeyedCollection(std::string source) : m_source(std::move(source)) {}

  std::size_t Count() const { return m_entries.size(); }
  T& At(std::size_t index) const { return *m_entries[index].object; }

  // False when the key is taken already; the list stays as it is then.
  bool Add(T& object, const std::string& key) {
    const std::string lower = automation::Lower(key);
    if (!m_ordinals.emplace(lower, m_nextOrdinal).second) return false;
    m_entries.push_back({m_nextOrdinal++, lower, automation::Held<T>(&object)});
    return true;
  }

  T* Find(std::string_view key) const {
    const auto ordinal = m_ordinals.find(automation::Lower(key));
    return ordinal == m_ordinals.end() ? nullptr : m_entries[IndexOf(ordinal->second)].object.Get();
  }

  // A number that grows along the list.
  std::size_t OrdinalOf(std::string_view key) const {
    const auto ordinal = m_ordinals.find(automation::Lower(key));
    return ordinal == m_ordinals.end() ? m_nextOrdinal : ordinal->second;
  }

  // By position from 1 or by key. Error 9 for an unknown position, 5 for an unknown key, 13 for what is
  // neither.
  T& Item(const automation::Variant& vIndex) const { return *m_entries[Locate(vIndex)].object; }

  void Remove(const automation::Variant& vIndex) { Erase(Locate(vIndex)); }
  bool RemoveKey(std::string_view key) {
    const auto ordinal = m_ordinals.find(automation::Lower(key));
    if (ordinal == m_ordinals.end()) return false;
    Erase(IndexOf(ordinal->second));
    return true;
  }

  void Clear() {
    m_ordinals.clear();
    // Emptied before the objects go: the last word of one of them may be a question to this list.
    const auto entries = std::exchange(m_entries, {});
  }

  // Gives the list a new order: order[i] is the present index of the object that comes i-th.
  void Reorder(const std::vector<std::uint32_t>& order) {
    std::vector<Entry> entries;
    entries.reserve(order.size());
    for (const std::uint32_t index : order) entries.push_back(std::move(m_entries[index]));
    m_entries = std::move(entries);
    m_nextOrdinal = 0;
    for (Entry& entry : m_entries) {
      entry.ordinal = m_nextOrdinal++;
      m_ordinals[entry.key] = entry.ordinal;
    }
  }

  // The objects as they are now, held for the time of a walk that may change the list.
  std::vector<automation::Ref<T>> Snapshot() const {
    std::vector<automation::Ref<T>> objects;
    objects.reserve(m_entries.size());
    for (const Entry& entry : m_entries) objects.emplace_back(entry.object.Get());
    return objects;
  }

 private:
  struct Entry {
    std::size_t ordinal;
    std::string key;
    automation::Held<T> object;
  };

  std::size_t IndexOf(std::size_t ordinal) const {
    // Until one is removed, the ordinal of each entry is its index.
    if (ordinal < m_entries.size() && m_entries[ordinal].ordinal == ordinal) return ordinal;
    const auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), ordinal,
                                        [](const Entry& e, std::size_t value) { return e.ordinal < value; });
    return static_cast<std::size_t>(entry - m_entries.begin());
  }

  std::size_t Locate(const automation::Variant& vIndex) const {
    const automation::Variant& index = vIndex.Target();
    if (index.Type() == automation::VariantType::String) {
      const auto ordinal = m_ordinals.find(automation::Lower(automation::ToText(index)));
      if (ordinal == m_ordinals.end())
        automation::Raise(automation::RuntimeError::InvalidProcedureCall, m_source);
      return IndexOf(ordinal->second);
    }
    const std::int32_t position = automation::ToLong(index);
    if (position < 1 || static_cast<std::size_t>(position) > m_entries.size()) {
      automation::Raise(automation::RuntimeError::SubscriptOutOfRange, m_source);
    }
    return static_cast<std::size_t>(position) - 1;
  }

  void Erase(std::size_t index) {
    m_ordinals.erase(m_entries[index].key);
    const automation::Held<T> object = std::move(m_entries[index].object);
    m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(index));
  }

  std::string m_source;
  std::vector<Entry> m_entries;  // ordinals ascend
  std::unordered_map<std::string, std::size_t> m_ordinals;
  std::size_t m_nextOrdinal = 0;
};

// Walks a list as it was when the walk began.
template <class T>
class CollectionEnumerator final : public automation::Enumerator {
 public:
  explicit CollectionEnumerator(std::vector<automation::Ref<T>> items) : m_items(std::move(items)) {}
  bool Next(automation::Variant& item) override {
    if (m_next == m_items.size()) return false;
    item = automation::Variant::FromObject(automation::Ref<automation::Object>(m_items[m_next++].Get()));
    return true;
  }

 private:
  std::vector<automation::Ref<T>> m_items;
  std::size_t m_next = 0;
};

}  // namespace hearthmake
