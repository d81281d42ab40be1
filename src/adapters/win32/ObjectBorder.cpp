#include "adapters/win32/ObjectBorder.hpp"

#include "automation/Error.hpp"

namespace hearthmake::win32 {

namespace {

class ClosedBorder final : public ObjectBorder {
 public:
  IUnknown* Give(automation::Object& /*object*/, const automation::Interface* /*declared*/) override {
    automation::Raise(automation::RuntimeError::TypeMismatch, "");
  }
  automation::Ref<automation::Object> Take(IUnknown& /*pointer*/) override {
    automation::Raise(automation::RuntimeError::TypeMismatch, "");
  }
};

}  // namespace

ObjectBorder& NoObjects() {
  static ClosedBorder border;
  return border;
}

}  // namespace hearthmake::win32
