#pragma once

#include <cstdint>

#include "automation/Object.hpp"
#include "vbscript/objects/DictionaryTable.hpp"

namespace hearthmake::vbscript {

// "Scripting.Dictionary". See DictionaryKey.hpp for when two keys are the same.
class Dictionary final : public automation::Object {
 public:
  // The members that a machine may call without a look at the declaration.
  static constexpr std::int32_t kItemMember = 0;
  static constexpr std::int32_t kExistsMember = 1;
  static constexpr std::int32_t kCountMember = 2;

  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // Error 457 when the key is there.
  void Add(const automation::Variant& key, const automation::Variant& item);
  std::int32_t Count() const { return static_cast<std::int32_t>(m_table.Count()); }
  bool Exists(const automation::Variant& key) const;
  // A key that is not there is added with the item Empty. The reference holds until the dictionary changes.
  automation::Variant& Item(const automation::Variant& key);
  void SetItem(const automation::Variant& key, const automation::Variant& item);
  // All items, and all keys, in the order in which they came: an array from 0.
  automation::Variant Items() const;
  automation::Variant Keys() const;
  // Gives an item another key in the same place. Errors: 32811 "Element not found", 457.
  void SetKey(const automation::Variant& key, const automation::Variant& newKey);
  // Error 32811 "Element not found".
  void Remove(const automation::Variant& key);
  void RemoveAll() { m_table.Clear(); }
  // 0 binary, 1 text (2 and locales are text too). Error 5 when the dictionary has keys, or below 0.
  std::int32_t CompareMode() const { return m_compareMode; }
  void SetCompareMode(std::int32_t mode);
  // A small number of a key, the same for keys that are the same.
  std::int32_t HashVal(const automation::Variant& key) const;
  // The keys in order, those that are added meanwhile too; keys may be removed on the way.
  automation::Ref<automation::Enumerator> NewEnum();

  const DictionaryTable& Table() const { return m_table; }

 private:
  automation::Variant ReadItem(const automation::Variant& key) { return Item(key); }

  DictionaryTable m_table;
  std::int32_t m_compareMode = 0;
};

}  // namespace hearthmake::vbscript
