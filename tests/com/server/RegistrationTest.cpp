// The server registers with COM and leaves no trace when it goes.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "interfaces/PublicClasses.hpp"
#include "support/ComProcess.hpp"
#include "support/ComServer.hpp"
#include "support/ComTypes.hpp"

namespace hearthmake::com {
namespace {

using automation::Ref;

// Every key and value below a key, with its contents.
using Snapshot = std::map<std::wstring, std::wstring>;

void Collect(HKEY root, const std::wstring& path, Snapshot& found) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
  found[path + L"\\"] = L"";
  for (DWORD i = 0;; ++i) {
    wchar_t name[16384];
    DWORD nameSize = static_cast<DWORD>(std::size(name));
    BYTE data[8192];
    DWORD size = sizeof data;
    DWORD type = 0;
    const LSTATUS failed = RegEnumValueW(key, i, name, &nameSize, nullptr, &type, data, &size);
    if (failed != ERROR_SUCCESS && failed != ERROR_MORE_DATA) break;
    const std::wstring contents(reinterpret_cast<wchar_t*>(data), failed == ERROR_SUCCESS ? size / 2 : 0);
    found[path + L"\\=" + name] = std::to_wstring(type) + L":" + std::to_wstring(size) + L":" + contents;
  }
  for (DWORD i = 0;; ++i) {
    wchar_t name[256];
    DWORD nameSize = static_cast<DWORD>(std::size(name));
    if (RegEnumKeyExW(key, i, name, &nameSize, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    Collect(root, path + L"\\" + name, found);
  }
  RegCloseKey(key);
}

Snapshot Take(HKEY root) {
  Snapshot snapshot;
  Collect(root, L"Software\\Classes", snapshot);
  return snapshot;
}

// The machine's without the server. Taken once, because it takes seconds under Wine: each test leaves it so.
const Snapshot& Unregistered() {
  static const Snapshot kSnapshot = Take(HKEY_LOCAL_MACHINE);
  return kSnapshot;
}

// What stands in only one of two; a test prints the first few.
std::string Difference(const Snapshot& before, const Snapshot& after) {
  std::string text;
  for (const auto& [name, value] : before) {
    const auto other = after.find(name);
    if (other == after.end() || other->second != value) text += "- " + win32::ToUtf8(name) + "\n";
  }
  for (const auto& [name, value] : after) {
    if (!before.contains(name)) text += "+ " + win32::ToUtf8(name) + "\n";
  }
  return text.substr(0, 2000);
}

DWORD Regsvr(const std::string& options, const Server& server) {
  return RunProcess(win32::ToWide("regsvr32.exe /s " + options + " \"" + server.Path().string() + "\""))
      .status;
}

// The class as any program finds it.
Ref<_Build> CreateByName(const wchar_t* progId) {
  CLSID id = {};
  if (FAILED(CLSIDFromProgID(progId, &id))) return nullptr;
  void* made = nullptr;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Build), &made))) return nullptr;
  return Ref<_Build>::Adopt(static_cast<_Build*>(made));
}

// Whether the system shows the class where COM looks for it.
bool IsClassSeen() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, L"Hearthmake.Build", 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

class Registration : public testing::Test {
 protected:
  Registration() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    // What a test that was broken off left.
    Regsvr("/u", server);
  }
  ~Registration() override {
    CoFreeUnusedLibraries();
    CoUninitialize();
  }

  Server server;
};

TEST_F(Registration, ForTheMachineLeavesNoTraceHoweverOften) {
  const Snapshot& before = Unregistered();
  ASSERT_GT(before.size(), 100U);
  ASSERT_EQ(Regsvr("", server), 0U);
  EXPECT_TRUE(CreateByName(L"Hearthmake.Build"));
  EXPECT_FALSE(CreateByName(L"Hearthmake.Projects"));
  ITypeLib* library = nullptr;
  EXPECT_EQ(LoadRegTypeLib(ParseGuid(PublicLibrary().id), 1, 0, 0, &library), S_OK);
  if (library != nullptr) library->Release();
  ASSERT_EQ(Regsvr("", server), 0U);
  ASSERT_EQ(Regsvr("/u", server), 0U);
  EXPECT_FALSE(CreateByName(L"Hearthmake.Build"));
  ASSERT_EQ(Regsvr("/u", server), 0U);
  EXPECT_EQ(Difference(before, Take(HKEY_LOCAL_MACHINE)), "");
}

TEST_F(Registration, ForOneUserLeavesNoTrace) {
  // Windows makes it with the user, Wine when somebody needs it.
  HKEY classes = nullptr;
  ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Classes", &classes), ERROR_SUCCESS);
  RegCloseKey(classes);
  const Snapshot& machine = Unregistered();
  const Snapshot user = Take(HKEY_CURRENT_USER);
  ASSERT_EQ(Regsvr("/n /i:user", server), 0U);
  EXPECT_EQ(Difference(machine, Take(HKEY_LOCAL_MACHINE)), "");
  EXPECT_NE(Difference(user, Take(HKEY_CURRENT_USER)), "");
  const bool isSeen = IsClassSeen();
  EXPECT_EQ(static_cast<bool>(CreateByName(L"Hearthmake.Build")), isSeen);
  ASSERT_EQ(Regsvr("/u /n /i:user", server), 0U);
  EXPECT_EQ(Difference(user, Take(HKEY_CURRENT_USER)), "");
  EXPECT_FALSE(CreateByName(L"Hearthmake.Build"));
  if (!isSeen)
    GTEST_SKIP() << "this Wine does not show a user's own classes to COM; the registry was checked";
}

TEST_F(Registration, NamesTheApartmentAndTheTypeLibraryOfEachClass) {
  ASSERT_EQ(Regsvr("", server), 0U);
  const auto value = [](const wchar_t* key, const wchar_t* name) {
    wchar_t text[MAX_PATH] = {};
    DWORD size = sizeof text;
    const std::wstring path = std::wstring(L"CLSID\\{9E03676D-1E0D-45EA-BCBF-F50B645AD350}") + key;
    RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return win32::ToUtf8(text);
  };
  EXPECT_EQ(value(L"\\InprocServer32", L"ThreadingModel"), "Apartment");
  EXPECT_EQ(value(L"\\InprocServer32", nullptr), server.Path().string());
  EXPECT_EQ(value(L"\\ProgID", nullptr), "Hearthmake.Build");
  EXPECT_EQ(value(L"\\TypeLib", nullptr), PublicLibrary().id);
  ASSERT_EQ(Regsvr("/u", server), 0U);
}

}  // namespace
}  // namespace hearthmake::com
