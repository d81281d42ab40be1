#include "adapters/posix/IniSettingsStore.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "automation/Error.hpp"
#include "platform/SettingsStoreConformance.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::platform {

SettingsStorePlayground MakeIniPlayground() {
  auto folder = std::make_shared<support::PosixFolder>();
  const std::string path = folder->Path("config/settings.ini");
  return {std::make_shared<posix::IniSettingsStore>(path),
          [path] { return std::make_shared<posix::IniSettingsStore>(path); }, folder};
}

INSTANTIATE_TEST_SUITE_P(Ini, SettingsStoreConformance, ::testing::Values(MakeIniPlayground));

}  // namespace hearthmake::platform

namespace hearthmake::posix {
namespace {

using platform::SettingPairs;
using support::EnvironmentOverride;
using support::PosixFolder;

std::string ErrorOf(IniSettingsStore& store) {
  try {
    store.GetAll("Hearthmake", "VB");
  } catch (const automation::Error& error) {
    return std::to_string(error.Number()) + " " + error.Description();
  }
  return "(none)";
}

TEST(IniSettingsStore, LiesInTheConfigurationFolderOfTheUser) {
  const EnvironmentOverride home("HOME", "/home/me");
  {
    const EnvironmentOverride config("XDG_CONFIG_HOME", "/cfg");
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/cfg/hearthmake/settings.ini");
  }
  {
    const EnvironmentOverride config("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(IniSettingsStore::DefaultPath(), "/home/me/.config/hearthmake/settings.ini");
  }
  const EnvironmentOverride config("XDG_CONFIG_HOME", std::nullopt);
  EXPECT_EQ(IniSettingsStore::DefaultPath(), "/home/me/.config/hearthmake/settings.ini");
}

TEST(IniSettingsStore, WritesAFileForPeople) {
  const PosixFolder folder;
  IniSettingsStore store(folder.Path("settings.ini"));
  store.Save("Hearthmake", "VB", {{"VBExe", "C:\\VB98\\VB6.EXE"}, {"RunScripts", "-1"}});
  EXPECT_EQ(folder.Content("settings.ini"), "[Hearthmake\\VB]\nVBExe=C:\\VB98\\VB6.EXE\nRunScripts=-1\n");
  EXPECT_EQ(folder.Mode("settings.ini"), 0600U);
}

TEST(IniSettingsStore, WritesNothingWhenNothingChanges) {
  const PosixFolder folder;
  IniSettingsStore store(folder.Path("settings.ini"));
  store.Save("Hearthmake", "VB", {{"a", "1"}});
  const auto time = std::filesystem::last_write_time(folder.Path("settings.ini"));
  const auto old = time - std::chrono::hours(1);
  std::filesystem::last_write_time(folder.Path("settings.ini"), old);
  store.Save("Hearthmake", "VB", {{"a", "1"}});
  store.Remove("Hearthmake", "VB", "b");
  EXPECT_EQ(std::filesystem::last_write_time(folder.Path("settings.ini")), old);
  store.Save("Empty", "S", {});
  EXPECT_EQ(folder.Content("settings.ini"), "[Hearthmake\\VB]\na=1\n");
}

TEST(IniSettingsStore, KeepsTellingOfJunkAndLeavesTheFileAlone) {
  const PosixFolder folder;
  const std::string path = folder.MakeFile("settings.ini", "[Hearthmake\\VB]\nnonsense\n");
  IniSettingsStore store(path);
  const std::string expected = "45 " + path + ", line 2: expected Key=Value, a [section] or a ; comment";
  EXPECT_EQ(ErrorOf(store), expected);
  EXPECT_EQ(ErrorOf(store), expected);
  EXPECT_THROW(store.Save("Hearthmake", "VB", {{"a", "1"}}), automation::Error);
  EXPECT_EQ(ErrorOf(store), expected);
  EXPECT_EQ(folder.Content("settings.ini"), "[Hearthmake\\VB]\nnonsense\n");
}

TEST(IniSettingsStore, RefusesAHugeFileAndAFolder) {
  const PosixFolder folder;
  std::filesystem::resize_file(folder.MakeFile("huge.ini"), 50 << 20);
  IniSettingsStore huge(folder.Path("huge.ini"));
  EXPECT_EQ(ErrorOf(huge).substr(0, 3), "45 ");
  IniSettingsStore inItsPlace(folder.MakeFolder("folder.ini"));
  EXPECT_EQ(ErrorOf(inItsPlace), "75 Path/File access error: " + folder.Path("folder.ini"));
}

TEST(IniSettingsStore, LosesNothingWhenProcessesSaveAtOnce) {
  const PosixFolder folder;
  constexpr int kProcesses = 4;
  constexpr int kKeys = 25;
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      IniSettingsStore store(folder.Path("settings.ini"));
      for (int key = 0; key < kKeys; ++key)
        store.Save("App", "S", {{std::to_string(process) + "." + std::to_string(key), "x"}});
      _exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  IniSettingsStore store(folder.Path("settings.ini"));
  EXPECT_EQ(store.GetAll("App", "S").size(), std::size_t{kProcesses} * kKeys);
}

}  // namespace
}  // namespace hearthmake::posix
