#include "com/Registration.hpp"

#include <string>
#include <vector>

#include "adapters/win32/WideText.hpp"
#include "com/Module.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::com {

namespace {

using automation::Interface;

constexpr const wchar_t* kClasses = L"Software\\Classes\\";
// The system's own marshallers: dual interfaces by their type library, source interfaces as IDispatch.
constexpr const char* kTypeLibraryMarshaller = "{00020424-0000-0000-C000-000000000046}";
constexpr const char* kDispatchMarshaller = "{00020420-0000-0000-C000-000000000046}";
constexpr const wchar_t* kPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";

struct Value {
  std::wstring key;  // below the classes
  std::wstring name;
  std::wstring text;
};

HKEY RootOf(Scope scope) { return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring LibraryVersion() {
  const Library& library = PublicLibrary();
  return std::to_wstring(library.majorVersion) + L"." + std::to_wstring(library.minorVersion);
}

std::wstring LibraryKey() { return L"TypeLib\\" + win32::ToWide(PublicLibrary().id); }
std::wstring ClassKey(const Interface& declared) { return L"CLSID\\" + win32::ToWide(declared.ClassId()); }
std::wstring InterfaceKey(const Interface& declared) {
  return L"Interface\\" + win32::ToWide(declared.InterfaceId());
}
std::wstring ProgIdOf(const Interface& declared) {
  return win32::ToWide(std::string(PublicLibrary().name) + "." + declared.Name());
}

void AppendClass(std::vector<Value>& values, const Interface& declared) {
  const std::wstring key = ClassKey(declared);
  const std::wstring progId = ProgIdOf(declared);
  values.push_back({key, L"", progId});
  values.push_back({key + L"\\InprocServer32", L"", ModulePath()});
  values.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
  values.push_back({key + L"\\ProgID", L"", progId});
  values.push_back({key + L"\\Programmable", L"", L""});
  values.push_back({key + L"\\TypeLib", L"", win32::ToWide(PublicLibrary().id)});
  values.push_back({key + L"\\Version", L"", LibraryVersion()});
  values.push_back({progId, L"", progId});
  values.push_back({progId + L"\\CLSID", L"", win32::ToWide(declared.ClassId())});
}

void AppendInterface(std::vector<Value>& values, const Interface& declared, const char* marshaller) {
  const std::wstring key = InterfaceKey(declared);
  values.push_back({key, L"", win32::ToWide(declared.InterfaceName())});
  values.push_back({key + L"\\ProxyStubClsid32", L"", win32::ToWide(marshaller)});
  values.push_back({key + L"\\TypeLib", L"", win32::ToWide(PublicLibrary().id)});
  values.push_back({key + L"\\TypeLib", L"Version", LibraryVersion()});
}

void AppendLibrary(std::vector<Value>& values) {
  const std::wstring path = ModulePath();
  const std::wstring key = LibraryKey() + L"\\" + LibraryVersion();
  values.push_back({key, L"", win32::ToWide(PublicLibrary().title)});
  values.push_back({key + L"\\0\\" + kPlatform, L"", path});
  values.push_back({key + L"\\FLAGS", L"", L"0"});
  values.push_back({key + L"\\HELPDIR", L"", path.substr(0, path.find_last_of(L'\\'))});
}

std::vector<Value> AllValues() {
  std::vector<Value> values;
  for (const PublicClass& entry : PublicClasses()) {
    const Interface& declared = entry.describe();
    if (entry.create != nullptr) AppendClass(values, declared);
    AppendInterface(values, declared, kTypeLibraryMarshaller);
    if (declared.Source() != nullptr) AppendInterface(values, *declared.Source(), kDispatchMarshaller);
  }
  AppendLibrary(values);
  return values;
}

LSTATUS Write(HKEY root, const Value& value) {
  return RegSetKeyValueW(root, (kClasses + value.key).c_str(),
                         value.name.empty() ? nullptr : value.name.c_str(), REG_SZ, value.text.c_str(),
                         static_cast<DWORD>((value.text.size() + 1) * sizeof(wchar_t)));
}

// A key that is not there needs no removal.
LSTATUS RemoveTree(HKEY root, const std::wstring& key) {
  const LSTATUS removed = RegDeleteTreeW(root, (kClasses + key).c_str());
  return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
}

bool HasSubkeys(HKEY root, const std::wstring& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(root, (kClasses + key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  DWORD count = 0;
  RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr);
  RegCloseKey(opened);
  return count != 0;
}

// Both word sizes share these keys.
LSTATUS RemoveLibrary(HKEY root) {
  const std::wstring version = LibraryKey() + L"\\" + LibraryVersion();
  LSTATUS failed = RemoveTree(root, version + L"\\0\\" + kPlatform);
  if (!HasSubkeys(root, version + L"\\0")) failed = failed != 0 ? failed : RemoveTree(root, version);
  if (!HasSubkeys(root, LibraryKey())) failed = failed != 0 ? failed : RemoveTree(root, LibraryKey());
  return failed;
}

// A user who never registered anything has none of these, and had none before.
void RemoveEmptyParents(HKEY root) {
  for (const wchar_t* parent : {L"CLSID", L"Interface", L"TypeLib"}) {
    if (!HasSubkeys(root, parent)) RemoveTree(root, parent);
  }
}

}  // namespace

HRESULT Register(Scope scope) {
  for (const Value& value : AllValues()) {
    const LSTATUS failed = Write(RootOf(scope), value);
    if (failed == ERROR_SUCCESS) continue;
    Unregister(scope);
    return HRESULT_FROM_WIN32(static_cast<DWORD>(failed));
  }
  return S_OK;
}

HRESULT Unregister(Scope scope) {
  HKEY root = RootOf(scope);
  LSTATUS failed = RemoveLibrary(root);
  const auto remove = [&](const std::wstring& key) {
    const LSTATUS removed = RemoveTree(root, key);
    if (failed == ERROR_SUCCESS) failed = removed;
  };
  for (const PublicClass& entry : PublicClasses()) {
    const Interface& declared = entry.describe();
    if (entry.create != nullptr) {
      remove(ClassKey(declared));
      remove(ProgIdOf(declared));
    }
    remove(InterfaceKey(declared));
    if (declared.Source() != nullptr) remove(InterfaceKey(*declared.Source()));
  }
  if (scope == Scope::User) RemoveEmptyParents(root);
  return failed == ERROR_SUCCESS ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(failed));
}

}  // namespace hearthmake::com
