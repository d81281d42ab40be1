#include "adapters/win32/Win32Registry.hpp"

#include <windows.h>

#include "adapters/win32/RegistryKey.hpp"
#include "platform/RegistryConformance.hpp"

namespace hearthmake::platform {
namespace {

constexpr const char* kPlace = "Software\\HearthmakeTest";

// The two roots of this process, led to keys of the user for as long as the object lives.
class RedirectedRoots {
 public:
  RedirectedRoots() {
    win32::RegistryKey::Remove(HKEY_CURRENT_USER, kPlace, 0);
    m_user = Make("\\User");
    m_machine = Make("\\Machine");
    RegOverridePredefKey(HKEY_CURRENT_USER, m_user);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_machine);
  }
  RedirectedRoots(const RedirectedRoots&) = delete;
  RedirectedRoots& operator=(const RedirectedRoots&) = delete;
  ~RedirectedRoots() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(m_user);
    RegCloseKey(m_machine);
    win32::RegistryKey::Remove(HKEY_CURRENT_USER, kPlace, 0);
  }

 private:
  static HKEY Make(const char* name) {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, (std::string(kPlace) + name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                    nullptr, &key, nullptr);
    return key;
  }

  HKEY m_user = nullptr;
  HKEY m_machine = nullptr;
};

RegistryPlayground MakePlayground() {
  auto roots = std::make_shared<RedirectedRoots>();
  const auto open = [] { return std::make_shared<win32::Win32Registry>(); };
  return {open(), open, roots};
}

INSTANTIATE_TEST_SUITE_P(Win32, RegistryConformance, ::testing::Values(MakePlayground));

}  // namespace
}  // namespace hearthmake::platform
