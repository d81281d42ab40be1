#include "adapters/catalog/PendingEntries.hpp"

#include <algorithm>
#include <utility>

#include "adapters/catalog/NewKey.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

using automation::Variant;

class PendingEntries::Object final : public platform::CatalogObject {
 public:
  Object(Entry entry, const char* nameProperty, bool isNew)
      : m_entry(std::move(entry)), m_nameProperty(nameProperty), m_isNew(isNew) {}

  std::string Name() const override {
    const Variant name = Value(m_nameProperty);
    return name.IsNull() ? std::string() : automation::ToText(name);
  }
  std::string Key() const override { return m_entry.key; }
  Variant Value(std::string_view strName) const override {
    const Properties& source = m_pending.Find(strName) != nullptr ? m_pending : m_entry.properties;
    return source.Value(strName);
  }
  void SetValue(std::string_view strName, const Variant& vValue) override { m_pending.Set(strName, vValue); }

  bool IsPending() const { return m_isNew || !m_pending.IsEmpty(); }
  void Save(const EntryList& list, CatalogData& data) const {
    if (m_isNew) list.Append(data, {m_entry.key, m_pending});
    if (!m_isNew && !m_pending.IsEmpty()) list.Change(data, m_entry.key, m_pending);
  }
  void NoteSaved() {
    for (const Property& property : m_pending.All()) m_entry.properties.Put(property);
    m_pending = {};
    m_isNew = false;
  }
  bool IsNew() const { return m_isNew; }

 private:
  Entry m_entry;
  const char* m_nameProperty;
  bool m_isNew;
  Properties m_pending;
};

void PendingEntries::Populate() {
  CatalogData data = m_catalog->File().Read();
  std::vector<std::shared_ptr<Object>> objects;
  for (Entry& entry : m_list->Read(data))
    objects.push_back(std::make_shared<Object>(std::move(entry), m_list->NameProperty(), false));
  m_objects = std::move(objects);
  m_removed.clear();
}

std::size_t PendingEntries::PositionOf(std::int32_t lngIndex) const {
  if (lngIndex < 0 || lngIndex >= Count())
    automation::Raise(automation::RuntimeError::SubscriptOutOfRange, "Catalog",
                      automation::Decimal(lngIndex));
  return static_cast<std::size_t>(lngIndex);
}

std::shared_ptr<platform::CatalogObject> PendingEntries::Item(std::int32_t lngIndex) const {
  return m_objects[PositionOf(lngIndex)];
}

std::shared_ptr<platform::CatalogObject> PendingEntries::Add() {
  m_objects.push_back(std::make_shared<Object>(Entry{NewKey(), {}}, m_list->NameProperty(), true));
  return m_objects.back();
}

void PendingEntries::Remove(std::int32_t lngIndex) {
  const auto place = m_objects.begin() + static_cast<std::ptrdiff_t>(PositionOf(lngIndex));
  if (!(*place)->IsNew()) m_removed.push_back((*place)->Key());
  m_objects.erase(place);
}

bool PendingEntries::IsAnythingPending() const {
  return !m_removed.empty() || std::any_of(m_objects.begin(), m_objects.end(),
                                           [](const auto& object) { return object->IsPending(); });
}

void PendingEntries::SaveChanges() {
  if (!IsAnythingPending()) return;
  m_catalog->File().Change([&](CatalogData& data) {
    for (const std::string& key : m_removed) m_list->Remove(data, key);
    for (const auto& object : m_objects) object->Save(*m_list, data);
  });
  m_removed.clear();
  for (const auto& object : m_objects) object->NoteSaved();
}

}  // namespace hearthmake::catalog
