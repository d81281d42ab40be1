#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The keys and items of a dictionary in the order in which they came: a dense list of entries, and an
// open-addressed index over it. A removed entry leaves a gap; gaps are closed when they are the most.
//
// Keys must not be references. Whatever releases a value does so after the table is whole again, because
// the end of an object may run code that looks into the table.
class DictionaryTable {
 public:
  static constexpr std::size_t kNoPlace = ~std::size_t{0};
  // Entries, gaps included; more are error 7 "Out of memory".
  static constexpr std::size_t kMaximumEntries = std::size_t{1} << 28;

  // A value as the table keeps it: an array whose elements somebody points to goes on changing, so that the
  // table needs one of its own.
  static automation::Variant Kept(const automation::Variant& value);

  std::size_t Count() const { return m_count; }
  bool IgnoresCase() const { return m_ignoresCase; }
  // Only while the table is empty.
  void SetIgnoreCase(bool ignoreCase) { m_ignoresCase = ignoreCase; }

  // The place of a key in the list; kNoPlace for none. Places hold until the next change.
  std::size_t Find(const automation::Variant& key) const;
  // The place of a key, which is added with the item Empty when it is not there.
  std::size_t FindOrInsert(const automation::Variant& key);
  // False when the key is there already; the table stays as it is then.
  bool Insert(const automation::Variant& key, const automation::Variant& item);
  // Gives an entry another key, in the same place of the order. The new key must not be there.
  void Rename(std::size_t place, const automation::Variant& key);
  void Remove(std::size_t place);
  void Clear();

  // The first entry at a place or behind it, kNoPlace when there is none: a walk over the entries in order.
  std::size_t Next(std::size_t place) const;
  const automation::Variant& Key(std::size_t place) const { return m_entries[place].key; }
  automation::Variant& Item(std::size_t place) { return m_entries[place].item; }
  const automation::Variant& Item(std::size_t place) const { return m_entries[place].item; }

  // Grows whenever gaps are closed or everything is removed: places from before are not valid then.
  std::uint64_t Generation() const { return m_generation; }
  // A number that grows along the list and stays with its entry; where an entry with that number or the next
  // larger one is now.
  std::uint64_t Ordinal(std::size_t place) const { return m_entries[place].ordinal; }
  std::size_t PlaceOfOrdinal(std::uint64_t ordinal) const;
  std::uint64_t NextOrdinal() const { return m_nextOrdinal; }

 private:
  struct Entry {
    automation::Variant key;
    automation::Variant item;
    std::uint64_t ordinal = 0;

    // A gap has what is no key: a reference.
    bool IsGap() const { return key.Type() == automation::VariantType::ByReference; }
  };
  // Beside the entry's place its hash, so that other keys are passed over without a look at them.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t entry = kFree;
  };
  static constexpr std::uint32_t kFree = 0xFFFFFFFF;
  static constexpr std::uint32_t kDeleted = 0xFFFFFFFE;

  std::uint32_t Hash(const automation::Variant& key) const;
  // The slot of a key's entry; m_slots.size() when there is none.
  std::size_t FindSlot(const automation::Variant& key, std::uint32_t hash) const;
  std::size_t SlotOfPlace(std::size_t place) const;
  std::size_t Append(const automation::Variant& key, const automation::Variant& item, std::uint32_t hash);
  void Occupy(std::uint32_t hash, std::uint32_t entry);
  void MakeRoom();
  void CloseGaps();
  void Rebuild(std::size_t slots);

  std::vector<Entry> m_entries;
  std::vector<Slot> m_slots;    // a power of two of them
  std::size_t m_usedSlots = 0;  // deleted ones included
  std::size_t m_count = 0;
  std::uint64_t m_nextOrdinal = 0;
  std::uint64_t m_generation = 0;
  bool m_ignoresCase = false;
};

}  // namespace hearthmake::vbscript
