#pragma once

#include <string>
#include <vector>

#include "adapters/catalog/CatalogData.hpp"

namespace hearthmake::catalog {

// Where the objects of a collection stand in a catalog, and what may be done to them. Error 45 where an
// object or what it belongs to is not there any more, 70 for what is protected.
class EntryList {
 public:
  EntryList() = default;
  EntryList(const EntryList&) = delete;
  EntryList& operator=(const EntryList&) = delete;
  virtual ~EntryList() = default;

  // The property that an object is called by.
  virtual const char* NameProperty() const { return "Name"; }
  virtual std::vector<Entry> Read(CatalogData& data) const = 0;
  virtual void Append(CatalogData& data, const Entry& entry) const = 0;
  // Gives an object the values that were set.
  virtual void Change(CatalogData& data, const std::string& key, const Properties& values) const = 0;
  // One that is gone already is no error.
  virtual void Remove(CatalogData& data, const std::string& key) const = 0;
};

}  // namespace hearthmake::catalog
