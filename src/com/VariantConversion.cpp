#include "com/VariantConversion.hpp"

#include "com/ThreadState.hpp"

namespace hearthmake::com {

namespace {

using automation::Variant;

class ThreadBorder final : public win32::ObjectBorder {
 public:
  IUnknown* Give(automation::Object& object, const automation::Interface* declared) override {
    return ThreadState::Current().Give(&object, declared);
  }
  automation::Ref<automation::Object> Take(IUnknown& pointer) override {
    return ThreadState::Current().Take(&pointer);
  }
};

}  // namespace

win32::ObjectBorder& Border() {
  static ThreadBorder border;
  return border;
}

Variant FromPlace(VARTYPE type, const void* place) { return win32::FromPlace(type, place, Border()); }

Variant FromVariant(const VARIANT& value) { return win32::FromVariant(value, Border()); }

void ToPlace(VARTYPE type, void* place, const Variant& value, const automation::Interface* object) {
  win32::ToPlace(type, place, value, Border(), object);
}

VARIANT ToVariant(const Variant& value) { return win32::ToVariant(value, Border()); }

}  // namespace hearthmake::com
