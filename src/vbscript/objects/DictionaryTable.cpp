#include "vbscript/objects/DictionaryTable.hpp"

#include <algorithm>
#include <utility>

#include "vbscript/Errors.hpp"
#include "vbscript/objects/DictionaryKey.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

constexpr std::size_t kFewestSlots = 16;
constexpr std::size_t kFewGaps = 32;

}  // namespace

Variant DictionaryTable::Kept(const Variant& value) {
  if (value.Type() == VariantType::Array && value.AsArray()->IsLocked())
    return Variant::FromArray(value.AsArray()->Clone());
  return value;
}

std::uint32_t DictionaryTable::Hash(const Variant& key) const { return HashKey(key, m_ignoresCase); }

std::size_t DictionaryTable::FindSlot(const Variant& key, std::uint32_t hash) const {
  if (m_slots.empty()) return 0;
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = m_slots[at];
    if (slot.entry == kFree) return m_slots.size();
    if (slot.hash == hash && slot.entry != kDeleted &&
        IsSameKey(m_entries[slot.entry].key, key, m_ignoresCase))
      return at;
  }
}

std::size_t DictionaryTable::Find(const Variant& key) const {
  const std::size_t slot = FindSlot(key, Hash(key));
  return slot == m_slots.size() ? kNoPlace : m_slots[slot].entry;
}

std::size_t DictionaryTable::FindOrInsert(const Variant& key) {
  const std::uint32_t hash = Hash(key);
  const std::size_t slot = FindSlot(key, hash);
  return slot == m_slots.size() ? Append(key, {}, hash) : m_slots[slot].entry;
}

bool DictionaryTable::Insert(const Variant& key, const Variant& item) {
  const std::uint32_t hash = Hash(key);
  if (FindSlot(key, hash) != m_slots.size()) return false;
  Append(key, item, hash);
  return true;
}

std::size_t DictionaryTable::Append(const Variant& key, const Variant& item, std::uint32_t hash) {
  // Copied first: they may stand in this very table, whose entries are about to move.
  Entry entry{key, Kept(item), m_nextOrdinal};
  MakeRoom();
  const std::size_t place = m_entries.size();
  m_entries.push_back(std::move(entry));
  ++m_nextOrdinal;
  ++m_count;
  Occupy(hash, static_cast<std::uint32_t>(place));
  return place;
}

void DictionaryTable::Occupy(std::uint32_t hash, std::uint32_t entry) {
  const std::size_t mask = m_slots.size() - 1;
  std::size_t at = hash & mask;
  while (m_slots[at].entry < kDeleted) at = (at + 1) & mask;
  if (m_slots[at].entry == kFree) ++m_usedSlots;
  m_slots[at] = {hash, entry};
}

// For one entry and one slot more.
void DictionaryTable::MakeRoom() {
  if (m_entries.size() >= kMaximumEntries) RaiseRuntime(number::kOutOfMemory);
  if ((m_usedSlots + 1) * 3 > m_slots.size() * 2) {
    std::size_t slots = kFewestSlots;
    while ((m_count + 1) * 2 > slots) slots *= 2;
    Rebuild(slots);
  }
}

void DictionaryTable::CloseGaps() {
  if (m_entries.size() == m_count) return;
  std::vector<std::uint32_t> places(m_entries.size());
  std::uint32_t next = 0;
  for (std::size_t i = 0; i < m_entries.size(); ++i) {
    if (m_entries[i].IsGap()) continue;
    places[i] = next;
    if (next != i) m_entries[next] = std::move(m_entries[i]);
    ++next;
  }
  m_entries.resize(m_count);
  for (Slot& slot : m_slots)
    if (slot.entry < kDeleted) slot.entry = places[slot.entry];
  ++m_generation;
}

void DictionaryTable::Rebuild(std::size_t slots) {
  std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(slots));
  m_usedSlots = 0;
  for (const Slot& slot : old)
    if (slot.entry < kDeleted) Occupy(slot.hash, slot.entry);
}

std::size_t DictionaryTable::SlotOfPlace(std::size_t place) const {
  const std::size_t mask = m_slots.size() - 1;
  std::size_t at = Hash(m_entries[place].key) & mask;
  while (m_slots[at].entry != place) at = (at + 1) & mask;
  return at;
}

void DictionaryTable::Rename(std::size_t place, const Variant& key) {
  const std::uint32_t hash = Hash(key);
  Variant old = key;
  if ((m_usedSlots + 1) * 3 > m_slots.size() * 2) Rebuild(m_slots.size());
  m_slots[SlotOfPlace(place)].entry = kDeleted;
  std::swap(m_entries[place].key, old);
  Occupy(hash, static_cast<std::uint32_t>(place));
}

void DictionaryTable::Remove(std::size_t place) {
  m_slots[SlotOfPlace(place)].entry = kDeleted;
  Entry& entry = m_entries[place];
  const Variant key = std::exchange(entry.key, Variant::ByReference(nullptr));
  const Variant item = std::move(entry.item);
  --m_count;
  // Gaps at the end go at once, so that a table used as a stack never has any.
  bool hasLost = false;
  while (!m_entries.empty() && m_entries.back().IsGap()) {
    m_entries.pop_back();
    hasLost = true;
  }
  if (hasLost) ++m_generation;
  if (m_entries.size() > 2 * m_count + kFewGaps) CloseGaps();
}

void DictionaryTable::Clear() {
  const std::vector<Entry> entries = std::exchange(m_entries, {});
  m_slots.clear();
  m_usedSlots = 0;
  m_count = 0;
  ++m_generation;
}

std::size_t DictionaryTable::Next(std::size_t place) const {
  while (place < m_entries.size() && m_entries[place].IsGap()) ++place;
  return place < m_entries.size() ? place : kNoPlace;
}

std::size_t DictionaryTable::PlaceOfOrdinal(std::uint64_t ordinal) const {
  const auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), ordinal,
                                      [](const Entry& e, std::uint64_t value) { return e.ordinal < value; });
  return static_cast<std::size_t>(entry - m_entries.begin());
}

}  // namespace hearthmake::vbscript
