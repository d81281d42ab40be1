#include "adapters/win32/RegistrySettingsStore.hpp"

#include <windows.h>

#include "adapters/win32/RegistryKey.hpp"
#include "platform/SettingsStoreConformance.hpp"

namespace hearthmake::platform {
namespace {

constexpr const char* kPlace = "Software\\HearthmakeSettingsTest";

// The user's root of this process, led to a key of its own for as long as the object lives.
class RedirectedUser {
 public:
  RedirectedUser() {
    win32::RegistryKey::Remove(HKEY_CURRENT_USER, kPlace, 0);
    RegCreateKeyExA(HKEY_CURRENT_USER, kPlace, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_user, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, m_user);
  }
  RedirectedUser(const RedirectedUser&) = delete;
  RedirectedUser& operator=(const RedirectedUser&) = delete;
  ~RedirectedUser() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(m_user);
    win32::RegistryKey::Remove(HKEY_CURRENT_USER, kPlace, 0);
  }

 private:
  HKEY m_user = nullptr;
};

SettingsStorePlayground MakePlayground() {
  auto user = std::make_shared<RedirectedUser>();
  const auto open = [] { return std::make_shared<win32::RegistrySettingsStore>(); };
  SettingsStorePlayground playground{open(), open, user};
  playground.keepsOrder = false;  // Wine's registry sorts its values
  playground.keepsStrayBytes = false;
  return playground;
}

INSTANTIATE_TEST_SUITE_P(Registry, SettingsStoreConformance, ::testing::Values(MakePlayground));

}  // namespace
}  // namespace hearthmake::platform

namespace hearthmake::win32 {
namespace {

TEST(RegistrySettingsStore, KeepsThemWhereVisualBasicDoes) {
  RegistrySettingsStore store;
  store.Save("HearthmakeTest", "VB", {{"VBExe", "C:\\VB98\\VB6.EXE"}});
  const auto key =
      RegistryKey::Open(HKEY_CURRENT_USER, "Software\\VB and VBA Program Settings\\HearthmakeTest\\VB",
                        KEY_READ | KEY_WRITE, 0);
  ASSERT_TRUE(key);
  const auto value = key.Query("vbexe");
  ASSERT_TRUE(value);
  EXPECT_EQ(value->type, platform::RegistryType::String);
  EXPECT_EQ(value->data, "C:\\VB98\\VB6.EXE");
  key.Set("number", {platform::RegistryType::DWord, "1234"});
  EXPECT_EQ(store.GetAll("HearthmakeTest", "VB").size(), 1U);
  RegistryKey::Remove(HKEY_CURRENT_USER, "Software\\VB and VBA Program Settings\\HearthmakeTest", 0);
}

}  // namespace
}  // namespace hearthmake::win32
