#include "adapters/catalog/PackageList.hpp"

#include <algorithm>

#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

bool HasAll(const Properties& stored, const Properties& values) {
  return std::all_of(values.All().begin(), values.All().end(), [&](const Property& value) {
    const Property* known = stored.Find(value.name);
    return known != nullptr && IsSame(*known, value);
  });
}

// Whether the values say that the package may be changed from now on.
bool LiftsProtection(const Properties& values) {
  const Property* changeable = values.Find("Changeable");
  return changeable != nullptr &&
         !automation::EqualsIgnoreCaseAscii(automation::ToText(changeable->value), "N");
}

}  // namespace

std::vector<Entry> PackageList::Read(CatalogData& data) const {
  const std::vector<Package>& packages = data.Of(m_catalog->Kind());
  return {packages.begin(), packages.end()};
}

void PackageList::Append(CatalogData& data, const Entry& entry) const {
  Package package;
  static_cast<Entry&>(package) = entry;
  data.Of(m_catalog->Kind()).push_back(std::move(package));
  m_catalog->NoteAdded(entry.key);
}

void PackageList::Change(CatalogData& data, const std::string& key, const Properties& values) const {
  Package& package = m_catalog->Require(data, key);
  if (HasAll(package.properties, values)) return;
  if (!LiftsProtection(values)) m_catalog->RequireChangeable(package);
  for (const Property& value : values.All()) package.properties.Put(value);
}

void PackageList::Remove(CatalogData& data, const std::string& key) const {
  std::vector<Package>& packages = data.Of(m_catalog->Kind());
  const auto found = std::find_if(packages.begin(), packages.end(),
                                  [&](const Package& package) { return package.key == key; });
  if (found == packages.end()) return;
  m_catalog->RequireDeleteable(*found);
  packages.erase(found);
}

}  // namespace hearthmake::catalog
