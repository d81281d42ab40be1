#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "adapters/catalog/PendingEntries.hpp"

namespace hearthmake::catalog {

// A collection of the port, over PendingEntries.
template <class Port>
class FileCollection : public Port {
 public:
  FileCollection(std::shared_ptr<const OpenCatalog> catalog, std::unique_ptr<const EntryList> list)
      : m_entries(std::move(catalog), std::move(list)) {}

  void Populate() override { m_entries.Populate(); }
  std::int32_t Count() const override { return m_entries.Count(); }
  std::shared_ptr<platform::CatalogObject> Item(std::int32_t lngIndex) override {
    return m_entries.Item(lngIndex);
  }
  std::shared_ptr<platform::CatalogObject> Add() override { return m_entries.Add(); }
  void Remove(std::int32_t lngIndex) override { m_entries.Remove(lngIndex); }
  void SaveChanges() override { m_entries.SaveChanges(); }

 private:
  PendingEntries m_entries;
};

}  // namespace hearthmake::catalog
