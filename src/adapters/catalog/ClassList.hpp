#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/catalog/EntryList.hpp"
#include "adapters/catalog/OpenCatalog.hpp"

namespace hearthmake::catalog {

// The classes of the components of a package, as the real catalogs list them: one object a class, with its
// ProgID as name. They come by installing a component only. ProgID, CLSID and DLL can't be changed.
class ClassList final : public EntryList {
 public:
  ClassList(std::shared_ptr<OpenCatalog> catalog, std::string packageKey)
      : m_catalog(std::move(catalog)), m_packageKey(std::move(packageKey)) {}

  const char* NameProperty() const override { return "ProgID"; }
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
