#include "com/MachineClasses.hpp"

#include "adapters/win32/WideText.hpp"
#include "com/Com.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

using automation::Object;
using automation::Ref;

namespace {

// Takes over the reference.
Ref<Object> Taken(void* found) {
  const auto held = Ref<IUnknown>::Adopt(static_cast<IUnknown*>(found));
  return ThreadState::Current().Take(held.Get());
}

}  // namespace

Ref<Object> CreateOfMachine(std::string_view progId) {
  CLSID id = {};
  if (FAILED(CLSIDFromProgID(win32::ToWide(progId).c_str(), &id))) return nullptr;
  void* made = nullptr;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IUnknown, &made))) return nullptr;
  return Taken(made);
}

Ref<Object> GetOfMachine(std::string_view path, std::string_view progId) {
  if (!path.empty()) {
    void* bound = nullptr;
    const HRESULT result = CoGetObject(win32::ToWide(path).c_str(), nullptr, IID_IUnknown, &bound);
    return SUCCEEDED(result) ? Taken(bound) : nullptr;
  }
  CLSID id = {};
  IUnknown* running = nullptr;
  if (FAILED(CLSIDFromProgID(win32::ToWide(progId).c_str(), &id))) return nullptr;
  return SUCCEEDED(GetActiveObject(id, nullptr, &running)) ? Taken(running) : nullptr;
}

}  // namespace hearthmake::com
