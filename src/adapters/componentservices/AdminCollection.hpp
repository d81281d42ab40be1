#pragma once

#include <memory>
#include <utility>

#include "adapters/componentservices/AdminErrors.hpp"
#include "adapters/componentservices/AdminObject.hpp"
#include "adapters/win32/LateObject.hpp"
#include "automation/Error.hpp"
#include "platform/CatalogCollection.hpp"

namespace hearthmake::componentservices {

// A CatalogCollection of the administration objects. Base is the port's class.
template <class Base>
class AdminCollection : public Base {
 public:
  explicit AdminCollection(win32::LateObject collection) : m_collection(std::move(collection)) {}

  void Populate() override { m_collection.Call("Populate"); }
  std::int32_t Count() const override { return automation::ToLong(m_collection.Call("Count")); }
  std::shared_ptr<platform::CatalogObject> Item(std::int32_t lngIndex) override {
    RequirePosition(lngIndex);
    return std::make_shared<AdminObject>(m_collection.Object("Item", {lngIndex}));
  }
  std::shared_ptr<platform::CatalogObject> Add() override {
    return std::make_shared<AdminObject>(m_collection.Object("Add"));
  }
  void Remove(std::int32_t lngIndex) override {
    RequirePosition(lngIndex);
    m_collection.Call("Remove", {lngIndex});
  }
  void SaveChanges() override {
    CallExplained([this] { m_collection.Call("SaveChanges"); }, ErrorInfo());
  }

 protected:
  const win32::LateObject& Collection() const { return m_collection; }
  // Where the objects stand that a call refused.
  std::function<win32::LateObject()> ErrorInfo() const {
    return [this] { return m_collection.Object("GetCollection", {"ErrorInfo", ""}); };
  }

 private:
  // The administration objects have several errors for it.
  void RequirePosition(std::int32_t index) const {
    if (index < 0 || index >= Count()) automation::Raise(automation::RuntimeError::SubscriptOutOfRange, "");
  }

  win32::LateObject m_collection;
};

}  // namespace hearthmake::componentservices
