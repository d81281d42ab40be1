#include "com/ThreadBorder.hpp"

#include "com/ThreadState.hpp"

namespace hearthmake::com {

namespace {

class Border final : public win32::ObjectBorder {
 public:
  IUnknown* Give(automation::Object& object, const automation::Interface* declared) override {
    return ThreadState::Current().Give(&object, declared);
  }
  automation::Ref<automation::Object> Take(IUnknown& pointer) override {
    return ThreadState::Current().Take(&pointer);
  }
};

}  // namespace

win32::ObjectBorder& ThreadBorder() {
  static Border border;
  return border;
}

}  // namespace hearthmake::com
