#pragma once

#include "adapters/win32/ComHeaders.hpp"
#include "automation/Object.hpp"

namespace hearthmake::win32 {

// Where objects cross between the library and COM: which of ours stands behind which of COM's is known to
// whoever gives ours a COM face.
class ObjectBorder {
 public:
  ObjectBorder() = default;
  ObjectBorder(const ObjectBorder&) = delete;
  ObjectBorder& operator=(const ObjectBorder&) = delete;
  virtual ~ObjectBorder() = default;

  // An interface of the object, the declared one or IDispatch, for the caller, who owns the reference. Error
  // 13 when the object does not have it.
  virtual IUnknown* Give(automation::Object& object, const automation::Interface* declared) = 0;
  virtual automation::Ref<automation::Object> Take(IUnknown& pointer) = 0;
};

// For calls that have values only: any object is error 13.
ObjectBorder& NoObjects();

}  // namespace hearthmake::win32
