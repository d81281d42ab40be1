#pragma once

#include <utility>

#include "adapters/win32/LateObject.hpp"
#include "platform/CatalogCollection.hpp"

namespace hearthmake::componentservices {

// A CatalogObject of the administration objects, which MTS and COM+ share.
class AdminObject final : public platform::CatalogObject {
 public:
  explicit AdminObject(win32::LateObject object) : m_object(std::move(object)) {}

  std::string Name() const override;
  std::string Key() const override;
  automation::Variant Value(std::string_view strName) const override;
  void SetValue(std::string_view strName, const automation::Variant& vValue) override;

 private:
  win32::LateObject m_object;
};

}  // namespace hearthmake::componentservices
