#include "adapters/catalog/RoleList.hpp"

#include <algorithm>

#include "automation/Error.hpp"

namespace hearthmake::catalog {

Package& RoleList::Changeable(CatalogData& data) const {
  Package& package = m_catalog->Require(data, m_packageKey);
  m_catalog->RequireChangeable(package);
  return package;
}

std::vector<Entry> RoleList::Read(CatalogData& data) const {
  return m_catalog->Require(data, m_packageKey).roles;
}

void RoleList::Append(CatalogData& data, const Entry& entry) const {
  Changeable(data).roles.push_back(entry);
}

void RoleList::Change(CatalogData& data, const std::string& key, const Properties& values) const {
  for (Entry& role : Changeable(data).roles) {
    if (role.key != key) continue;
    for (const Property& value : values.All()) role.properties.Put(value);
    return;
  }
  automation::Raise(automation::kInvalidValue, "Catalog", "There is no role " + key + " in the catalog.");
}

void RoleList::Remove(CatalogData& data, const std::string& key) const {
  std::erase_if(Changeable(data).roles, [&](const Entry& role) { return role.key == key; });
}

}  // namespace hearthmake::catalog
