#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/catalog/EntryList.hpp"
#include "adapters/catalog/OpenCatalog.hpp"

namespace hearthmake::catalog {

// The packages or applications themselves.
class PackageList final : public EntryList {
 public:
  explicit PackageList(std::shared_ptr<OpenCatalog> catalog) : m_catalog(std::move(catalog)) {}

  std::vector<Entry> Read(CatalogData& data) const override;
  void Append(CatalogData& data, const Entry& entry) const override;
  void Change(CatalogData& data, const std::string& key, const Properties& values) const override;
  void Remove(CatalogData& data, const std::string& key) const override;

 private:
  std::shared_ptr<OpenCatalog> m_catalog;
};

}  // namespace hearthmake::catalog
