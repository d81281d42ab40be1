// What Hearthmake.dll exports.

#include "com/ClassFactory.hpp"
#include "com/Composition.hpp"
#include "com/Failure.hpp"
#include "com/Registration.hpp"

namespace hearthmake::com {

namespace {

const PublicClass* FindClass(REFCLSID id) {
  for (const PublicClass& entry : PublicClasses()) {
    if (entry.create != nullptr && ParseGuid(entry.describe().ClassId()) == id) return &entry;
  }
  return nullptr;
}

}  // namespace

}  // namespace hearthmake::com

using hearthmake::com::Guarded;
using hearthmake::com::Scope;

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return Guarded(IID_IClassFactory, [&] {
    const hearthmake::PublicClass* found = hearthmake::com::FindClass(id);
    if (found == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
    auto* factory = new hearthmake::com::ClassFactory(*found, &hearthmake::com::Compose);
    const HRESULT result = factory->QueryInterface(iid, object);
    factory->Release();
    return result;
  });
}

STDAPI DllCanUnloadNow() { return hearthmake::com::ModuleLock::IsAnyHeld() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
  return Guarded(IID_NULL, [] { return hearthmake::com::Register(Scope::Machine); });
}

STDAPI DllUnregisterServer() {
  return Guarded(IID_NULL, [] { return hearthmake::com::Unregister(Scope::Machine); });
}

// regsvr32 /n /i:user registers for the user who runs it, which asks for no rights.
STDAPI DllInstall(BOOL install, LPCWSTR command) {
  const bool isForUser = command != nullptr && lstrcmpiW(command, L"user") == 0;
  const Scope scope = isForUser ? Scope::User : Scope::Machine;
  return Guarded(IID_NULL, [&] {
    return install != FALSE ? hearthmake::com::Register(scope) : hearthmake::com::Unregister(scope);
  });
}
