// Written with the system's functions alone: every component of a test's build has a copy of it.

#include "vb6/windows/stub/Registration.hpp"

#include <ole2.h>
#include <oleauto.h>

#include <string>

namespace hearthmake::vb6::stub {
namespace {

std::wstring ModulePath() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ModulePath), &module);
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(module, path, MAX_PATH);
  return path;
}

std::wstring FolderOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

bool IsProgram(const std::wstring& path) {
  return path.size() > 4 && lstrcmpiW(path.c_str() + path.size() - 4, L".exe") == 0;
}

std::wstring Text(REFGUID id) {
  wchar_t text[39] = {};
  StringFromGUID2(id, text, 39);
  return text;
}

bool Set(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(), size) == ERROR_SUCCESS;
}

bool Remove(const std::wstring& key) {
  const LSTATUS result = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

// The library of this image, opened.
class Library {
 public:
  explicit Library(const std::wstring& path) {
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &m_library))) return;
    if (SUCCEEDED(m_library->GetLibAttr(&m_attributes))) m_name = NameOf(-1);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (m_attributes != nullptr) m_library->ReleaseTLibAttr(m_attributes);
    if (m_library != nullptr) m_library->Release();
  }

  explicit operator bool() const { return m_attributes != nullptr; }
  ITypeLib* Get() const { return m_library; }
  const TLIBATTR& Attributes() const { return *m_attributes; }
  std::wstring Version() const {
    return std::to_wstring(m_attributes->wMajorVerNum) + L'.' + std::to_wstring(m_attributes->wMinorVerNum);
  }
  std::wstring ProgId(int type) const { return m_name + L'.' + NameOf(type); }

  // Calls for each class that can be created, with its number and attributes.
  template <class F>
  bool ForEachClass(F call) const {
    bool isDone = true;
    const int count = static_cast<int>(m_library->GetTypeInfoCount());
    for (int i = 0; i < count; ++i) {
      ITypeInfo* type = nullptr;
      if (FAILED(m_library->GetTypeInfo(static_cast<UINT>(i), &type))) return false;
      TYPEATTR* attributes = nullptr;
      if (SUCCEEDED(type->GetTypeAttr(&attributes))) {
        const bool isMade = (attributes->wTypeFlags & (TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL)) != 0;
        if (attributes->typekind == TKIND_COCLASS && isMade) isDone = call(i, *attributes) && isDone;
        type->ReleaseTypeAttr(attributes);
      }
      type->Release();
    }
    return isDone;
  }

 private:
  std::wstring NameOf(int type) const {
    BSTR text = nullptr;
    if (FAILED(m_library->GetDocumentation(type, &text, nullptr, nullptr, nullptr))) return {};
    std::wstring name = text;
    SysFreeString(text);
    return name;
  }

  ITypeLib* m_library = nullptr;
  TLIBATTR* m_attributes = nullptr;
  std::wstring m_name;
};

bool RegisterClass(const Library& library, const std::wstring& path, int type, const TYPEATTR& attributes) {
  const std::wstring id = Text(attributes.guid);
  const std::wstring key = L"CLSID\\" + id;
  const std::wstring progId = library.ProgId(type);
  const std::wstring server = key + (IsProgram(path) ? L"\\LocalServer32" : L"\\InprocServer32");
  bool isDone = Set(key, nullptr, progId) && Set(server, nullptr, path);
  if (!IsProgram(path)) isDone = Set(server, L"ThreadingModel", L"Apartment") && isDone;
  if ((attributes.wTypeFlags & TYPEFLAG_FCONTROL) != 0)
    isDone = Set(key + L"\\Control", nullptr, L"") && isDone;
  return Set(key + L"\\ProgID", nullptr, progId) && Set(key + L"\\Programmable", nullptr, L"") &&
         Set(key + L"\\TypeLib", nullptr, Text(library.Attributes().guid)) &&
         Set(key + L"\\VERSION", nullptr, library.Version()) && Set(progId, nullptr, progId) &&
         Set(progId + L"\\Clsid", nullptr, id) && isDone;
}

}  // namespace

bool Register() {
  std::wstring path = ModulePath();
  const Library library(path);
  std::wstring folder = FolderOf(path);
  if (!library || FAILED(RegisterTypeLib(library.Get(), path.data(), folder.data()))) return false;
  return library.ForEachClass(
      [&](int type, const TYPEATTR& attributes) { return RegisterClass(library, path, type, attributes); });
}

bool Unregister() {
  const Library library(ModulePath());
  if (!library) return false;
  const bool isDone = library.ForEachClass([&](int type, const TYPEATTR& attributes) {
    return Remove(library.ProgId(type)) && Remove(L"CLSID\\" + Text(attributes.guid));
  });
  const TLIBATTR& attributes = library.Attributes();
  const HRESULT result = UnRegisterTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                                           attributes.lcid, attributes.syskind);
  return isDone && (SUCCEEDED(result) || result == TYPE_E_REGISTRYACCESS);
}

}  // namespace hearthmake::vb6::stub
