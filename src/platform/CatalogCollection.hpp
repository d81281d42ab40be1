#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/Variant.hpp"

namespace hearthmake::platform {

// One object of a component catalog: a package, an application, a component.
class CatalogObject {
 public:
  CatalogObject() = default;
  CatalogObject(const CatalogObject&) = delete;
  CatalogObject& operator=(const CatalogObject&) = delete;
  virtual ~CatalogObject() = default;

  virtual std::string Name() const = 0;
  // A GUID as text, braces included. An object that was added has its key from the start.
  virtual std::string Key() const = 0;
  // The value of a property, Empty where it was never set.
  virtual automation::Variant Value(std::string_view strName) const = 0;
  // Keeps type and order; seen by others after SaveChanges of its collection.
  virtual void SetValue(std::string_view strName, const automation::Variant& vValue) = 0;
};

// A collection of a component catalog. Additions, changes and removals are pending until SaveChanges.
class CatalogCollection {
 public:
  CatalogCollection() = default;
  CatalogCollection(const CatalogCollection&) = delete;
  CatalogCollection& operator=(const CatalogCollection&) = delete;
  virtual ~CatalogCollection() = default;

  // Reads the present contents; pending changes are dropped. Before the first call the collection is empty.
  virtual void Populate() = 0;
  virtual std::int32_t Count() const = 0;
  // By position from 0; error 9 for another.
  virtual std::shared_ptr<CatalogObject> Item(std::int32_t lngIndex) = 0;
  virtual std::shared_ptr<CatalogObject> Add() = 0;
  // By position from 0; error 9 for another.
  virtual void Remove(std::int32_t lngIndex) = 0;
  virtual void SaveChanges() = 0;
};

}  // namespace hearthmake::platform
