// The stub of a DLL or OCX. Nothing can be created from it.

#include <windows.h>

#include <olectl.h>

#include "vb6/windows/stub/Registration.hpp"

STDAPI DllGetClassObject(REFCLSID /*id*/, REFIID /*iid*/, void** object) {
  if (object != nullptr) *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return S_OK; }

STDAPI DllRegisterServer() { return hearthmake::vb6::stub::Register() ? S_OK : SELFREG_E_CLASS; }

STDAPI DllUnregisterServer() { return hearthmake::vb6::stub::Unregister() ? S_OK : SELFREG_E_CLASS; }
