#include "vbscript/objects/Dictionary.hpp"

#include <array>

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DictionaryEnumerator.hpp"
#include "vbscript/objects/DictionaryKey.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {

using automation::InvokeKind;
using automation::Ref;
using automation::Variant;

namespace {

constexpr std::int32_t kElementNotFound = 32811;
// Scripts see hash values below this prime.
constexpr std::uint32_t kHashValues = 1201;

template <class Value>
Variant ArrayOf(const DictionaryTable& table, Value value) {
  Ref<automation::ArrayBuffer> array(
      new automation::ArrayBuffer({{0, static_cast<std::int32_t>(table.Count())}}));
  auto element = array->Elements().begin();
  for (std::size_t place = table.Next(0); place != DictionaryTable::kNoPlace; place = table.Next(place + 1))
    *element++ = value(place);
  return Variant::FromArray(std::move(array));
}

bool IsRead(InvokeKind kind) { return kind == InvokeKind::Get || kind == InvokeKind::Call; }

}  // namespace

const automation::Interface& Dictionary::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Dictionary", "IDictionary", "")
          .byDefault()
          .get<&Dictionary::ReadItem>("Item", {"Key"})
          .let<&Dictionary::SetItem>("Item", {"Key", "pRetItem"})
          .method<&Dictionary::Exists>("Exists", {"Key"})
          .get<&Dictionary::Count>("Count")
          .method<&Dictionary::Add>("Add", {"Key", "Item"})
          .method<&Dictionary::Items>("Items")
          .let<&Dictionary::SetKey>("Key", {"Key", "NewKey"})
          .method<&Dictionary::Keys>("Keys")
          .method<&Dictionary::Remove>("Remove", {"Key"})
          .method<&Dictionary::RemoveAll>("RemoveAll")
          .let<&Dictionary::SetCompareMode>("CompareMode", {"pcomp"})
          .get<&Dictionary::CompareMode>("CompareMode")
          .newEnum<&Dictionary::NewEnum>()
          .get<&Dictionary::HashVal>("HashVal", {"Key"})
          .build();
  return kInterface;
}

Variant Dictionary::Invoke(std::int32_t member, InvokeKind kind, std::span<Variant> arguments) {
  if (member == kItemMember && arguments.size() == 1 && IsRead(kind)) return Item(arguments[0]);
  if (member == kItemMember && arguments.size() == 2 && !IsRead(kind)) {
    SetItem(arguments[0], arguments[1]);
    return {};
  }
  if (member == kExistsMember && arguments.size() == 1 && IsRead(kind))
    return Variant::FromBoolean(Exists(arguments[0]));
  return Describe().Invoke(*this, member, kind, arguments);
}

void Dictionary::Add(const Variant& key, const Variant& item) {
  if (!m_table.Insert(key.Target(), item.Target())) RaiseRuntime(number::kKeyAlreadyExists);
}

bool Dictionary::Exists(const Variant& key) const {
  return m_table.Find(key.Target()) != DictionaryTable::kNoPlace;
}

Variant& Dictionary::Item(const Variant& key) { return m_table.Item(m_table.FindOrInsert(key.Target())); }

void Dictionary::SetItem(const Variant& key, const Variant& item) {
  Variant value = DictionaryTable::Kept(item.Target());
  // The old item goes when everything is in place: its end may run code that changes the dictionary.
  std::swap(Item(key), value);
}

Variant Dictionary::Items() const {
  return ArrayOf(m_table, [this](std::size_t place) { return m_table.Item(place); });
}

Variant Dictionary::Keys() const {
  return ArrayOf(m_table, [this](std::size_t place) { return m_table.Key(place); });
}

void Dictionary::SetKey(const Variant& key, const Variant& newKey) {
  const std::size_t place = m_table.Find(key.Target());
  if (place == DictionaryTable::kNoPlace) RaiseRuntime(kElementNotFound);
  const std::size_t taken = m_table.Find(newKey.Target());
  if (taken != DictionaryTable::kNoPlace) RaiseRuntime(number::kKeyAlreadyExists);
  m_table.Rename(place, newKey.Target());
}

void Dictionary::Remove(const Variant& key) {
  const std::size_t place = m_table.Find(key.Target());
  if (place == DictionaryTable::kNoPlace) RaiseRuntime(kElementNotFound);
  m_table.Remove(place);
}

void Dictionary::SetCompareMode(std::int32_t mode) {
  if (m_table.Count() != 0 || mode < 0) RaiseRuntime(number::kInvalidProcedureCall);
  m_compareMode = mode;
  m_table.SetIgnoreCase(mode != 0);
}

std::int32_t Dictionary::HashVal(const Variant& key) const {
  return static_cast<std::int32_t>(HashKey(key.Target(), m_table.IgnoresCase()) % kHashValues);
}

Ref<automation::Enumerator> Dictionary::NewEnum() { return automation::Make<DictionaryEnumerator>(this); }

Ref<automation::Object> CreateDictionary(Context&) { return automation::Make<Dictionary>(); }

}  // namespace hearthmake::vbscript
