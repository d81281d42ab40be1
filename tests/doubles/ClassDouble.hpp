#pragma once

#include <gtest/gtest.h>
#include <objbase.h>

#include <functional>
#include <string>

#include "adapters/win32/ComHeaders.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/RefCounted.hpp"

namespace hearthmake::doubles {

// COM for the thread of a test.
class ComThread {
 public:
  ComThread() { CoInitialize(nullptr); }
  ComThread(const ComThread&) = delete;
  ComThread& operator=(const ComThread&) = delete;
  ~ComThread() { CoUninitialize(); }
};

// A class of this process under somebody's ProgID, for as long as it lives: whoever creates an object of that
// name gets one that the function makes. The ProgID is registered for the user, so the tests belong into a
// Wine prefix of their own.
class ClassDouble final : public IClassFactory {
 public:
  using Maker = std::function<automation::Ref<IDispatch>()>;

  ClassDouble(const char* progId, Maker make) : m_key(L"Software\\Classes\\" + win32::ToWide(progId)), m_make(std::move(make)) {
    GUID id = {};
    CoCreateGuid(&id);
    wchar_t text[39] = {};
    StringFromGUID2(id, text, 39);
    const LSTATUS stored =
        RegSetKeyValueW(HKEY_CURRENT_USER, (m_key + L"\\CLSID").c_str(), nullptr, REG_SZ, text, sizeof(text));
    EXPECT_EQ(stored, ERROR_SUCCESS);
    EXPECT_EQ(CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_registration), S_OK);
  }
  ClassDouble(const ClassDouble&) = delete;
  ClassDouble& operator=(const ClassDouble&) = delete;
  ~ClassDouble() {
    CoRevokeClassObject(m_registration);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_key.c_str());
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  // The test has it.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return m_make()->QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  std::wstring m_key;
  Maker m_make;
  DWORD m_registration = 0;
};

}  // namespace hearthmake::doubles
