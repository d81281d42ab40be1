#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/catalog/EntryList.hpp"
#include "adapters/catalog/OpenCatalog.hpp"

namespace hearthmake::catalog {

// The roles of a package.
class RoleList final : public EntryList {
 public:
  RoleList(std::shared_ptr<OpenCatalog> catalog, std::string packageKey)
      : m_catalog(std::move(catalog)), m_packageKey(std::move(packageKey)) {}

  std::vector<Entry> Read(CatalogData& data) const override;
  void Append(CatalogData& data, const Entry& entry) const override;
  void Change(CatalogData& data, const std::string& key, const Properties& values) const override;
  void Remove(CatalogData& data, const std::string& key) const override;

 private:
  Package& Changeable(CatalogData& data) const;

  std::shared_ptr<OpenCatalog> m_catalog;
  std::string m_packageKey;
};

}  // namespace hearthmake::catalog
