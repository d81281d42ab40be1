#include "adapters/catalog/ClassList.hpp"

#include <array>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using automation::Variant;

constexpr std::array<const char*, 3> kFixed = {"ProgID", "CLSID", "DLL"};

Entry Described(const Component& component, const InstalledClass& item) {
  Entry entry{item.key, {}};
  entry.properties.Set("ProgID", Variant::FromText(item.progId));
  entry.properties.Set("CLSID", Variant::FromText(item.key));
  entry.properties.Set("DLL", Variant::FromText(component.dll));
  for (const Property& property : item.properties.All()) entry.properties.Put(property);
  return entry;
}

void RequireFree(const Properties& values) {
  for (const char* name : kFixed) {
    if (values.Find(name) == nullptr) continue;
    automation::Raise(automation::kInvalidValue, "Catalog",
                      std::string(name) + " of a component can't be changed: it comes from its binary.");
  }
}

}  // namespace

Package& ClassList::Changeable(CatalogData& data) const {
  Package& package = m_catalog->Require(data, m_packageKey);
  m_catalog->RequireChangeable(package);
  return package;
}

std::vector<Entry> ClassList::Read(CatalogData& data) const {
  std::vector<Entry> entries;
  for (const Component& component : m_catalog->Require(data, m_packageKey).components) {
    for (const InstalledClass& item : component.classes) entries.push_back(Described(component, item));
  }
  return entries;
}

void ClassList::Append(CatalogData& /*data*/, const Entry& /*entry*/) const {
  automation::Raise(automation::kInvalidValue, "Catalog",
                    "A component can't be added by itself: its binary is installed with InstallComponent.");
}

void ClassList::Change(CatalogData& data, const std::string& key, const Properties& values) const {
  RequireFree(values);
  for (Component& component : Changeable(data).components) {
    for (InstalledClass& item : component.classes) {
      if (item.key != key) continue;
      for (const Property& value : values.All()) item.properties.Put(value);
      return;
    }
  }
  automation::Raise(automation::kInvalidValue, "Catalog",
                    "There is no component " + key + " in the catalog.");
}

// A binary without any of its classes is nothing that is installed.
void ClassList::Remove(CatalogData& data, const std::string& key) const {
  std::vector<Component>& components = Changeable(data).components;
  for (Component& component : components)
    std::erase_if(component.classes, [&](const InstalledClass& item) { return item.key == key; });
  std::erase_if(components, [](const Component& component) { return component.classes.empty(); });
}

}  // namespace hearthmake::catalog
