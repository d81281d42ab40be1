#pragma once

#include <optional>

#include "adapters/win32/LateObject.hpp"

namespace hearthmake::win32 {

// A walk over the objects of a collection of the machine's.
class LateEnumerator {
 public:
  // Error 438 when the object is no collection.
  explicit LateEnumerator(const LateObject& collection);

  // Nothing at the end.
  std::optional<LateObject> Next();

 private:
  automation::Ref<IEnumVARIANT> m_items;
};

}  // namespace hearthmake::win32
