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

// A ProgID of the machine, for as long as it lives and no longer than the system runs. One that the machine
// has already is left alone, and the test fails.
class ProgIdDouble {
 public:
  ProgIdDouble(const char* progId, const GUID& id) : m_path(L"Software\\Classes\\" + win32::ToWide(progId)) {
    wchar_t text[39] = {};
    StringFromGUID2(id, text, 39);
    HKEY key = nullptr;
    DWORD disposition = 0;
    // Not for the user alone, as Wine looks for classes at the machine only.
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, m_path.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &key, &disposition),
              ERROR_SUCCESS);
    // A test that was killed leaves its own.
    m_isOurs = disposition == REG_CREATED_NEW_KEY ||
               RegQueryValueExW(key, kMark, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    EXPECT_TRUE(m_isOurs) << "the machine has a class " << progId;
    if (m_isOurs) {
      RegSetValueExW(key, kMark, 0, REG_SZ, nullptr, 0);
      HKEY clsid = nullptr;
      RegCreateKeyExW(key, L"CLSID", 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &clsid,
                      nullptr);
      RegSetValueExW(clsid, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), sizeof(text));
      RegCloseKey(clsid);
    }
    RegCloseKey(key);
  }
  ProgIdDouble(const ProgIdDouble&) = delete;
  ProgIdDouble& operator=(const ProgIdDouble&) = delete;
  ~ProgIdDouble() {
    if (m_isOurs) RegDeleteTreeW(HKEY_LOCAL_MACHINE, m_path.c_str());
  }

 private:
  static constexpr const wchar_t* kMark = L"HearthmakeTest";

  std::wstring m_path;
  bool m_isOurs = false;
};

// A class of this process under somebody's ProgID, for as long as it lives: whoever creates an object of that
// name gets one that the function makes.
class ClassDouble final : public IClassFactory {
 public:
  using Maker = std::function<automation::Ref<IDispatch>()>;

  ClassDouble(const char* progId, Maker make) : m_progId(progId, m_id), m_make(std::move(make)) {
    EXPECT_EQ(CoRegisterClassObject(m_id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_registration),
              S_OK);
  }
  ClassDouble(const ClassDouble&) = delete;
  ClassDouble& operator=(const ClassDouble&) = delete;
  ~ClassDouble() { CoRevokeClassObject(m_registration); }

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
  static GUID NewId() {
    GUID id = {};
    CoCreateGuid(&id);
    return id;
  }

  GUID m_id = NewId();
  ProgIdDouble m_progId;
  Maker m_make;
  DWORD m_registration = 0;
};

}  // namespace hearthmake::doubles
