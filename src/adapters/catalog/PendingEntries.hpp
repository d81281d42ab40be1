#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/catalog/EntryList.hpp"
#include "adapters/catalog/OpenCatalog.hpp"
#include "platform/CatalogCollection.hpp"

namespace hearthmake::catalog {

// The objects of a collection with what was done to them since the last Populate or SaveChanges. What is
// saved is applied to the contents that the catalog has then, all of it or nothing: nobody's changes get
// lost. Two that set the same property of the same object: the later one stays.
class PendingEntries {
 public:
  PendingEntries(std::shared_ptr<const OpenCatalog> catalog, std::unique_ptr<const EntryList> list)
      : m_catalog(std::move(catalog)), m_list(std::move(list)) {}

  void Populate();
  std::int32_t Count() const { return static_cast<std::int32_t>(m_objects.size()); }
  std::shared_ptr<platform::CatalogObject> Item(std::int32_t lngIndex) const;
  std::shared_ptr<platform::CatalogObject> Add();
  void Remove(std::int32_t lngIndex);
  void SaveChanges();

 private:
  class Object;

  std::size_t PositionOf(std::int32_t lngIndex) const;
  bool IsAnythingPending() const;

  std::shared_ptr<const OpenCatalog> m_catalog;
  std::unique_ptr<const EntryList> m_list;
  std::vector<std::shared_ptr<Object>> m_objects;
  std::vector<std::string> m_removed;  // keys
};

}  // namespace hearthmake::catalog
