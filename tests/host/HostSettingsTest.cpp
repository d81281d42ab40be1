#include "host/HostSettings.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostError.hpp"
#include "host/posix/HostDrives.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

using support::EnvironmentOverride;
using support::PosixFolder;
using testing::HasSubstr;

HostOptions WithData(const std::string& folder) {
  HostOptions options;
  options.dataFolder = folder;
  return options;
}

TEST(HostSettings, TakesTheDataFolderFromOptionThenEnvironmentThenDefault) {
  const EnvironmentOverride home("HOME", "/home/me");
  const EnvironmentOverride xdg("XDG_DATA_HOME", std::nullopt);
  const EnvironmentOverride none("HEARTHMAKE_DATA", std::nullopt);
  EXPECT_EQ(HostSettings({}).DataFolder(), "/home/me/.local/share/hearthmake");
  const EnvironmentOverride relative("XDG_DATA_HOME", "share");
  EXPECT_EQ(HostSettings({}).DataFolder(), "/home/me/.local/share/hearthmake");
  const EnvironmentOverride absolute("XDG_DATA_HOME", "/share");
  EXPECT_EQ(HostSettings({}).DataFolder(), "/share/hearthmake");
  const EnvironmentOverride variable("HEARTHMAKE_DATA", "/data/");
  EXPECT_EQ(HostSettings({}).DataFolder(), "/data");
  EXPECT_EQ(HostSettings(WithData("/given/../other")).DataFolder(), "/other");
}

TEST(HostSettings, NeedsAPlaceForTheData) {
  const EnvironmentOverride home("HOME", std::nullopt);
  const EnvironmentOverride xdg("XDG_DATA_HOME", std::nullopt);
  const EnvironmentOverride none("HEARTHMAKE_DATA", std::nullopt);
  EXPECT_THROW(HostSettings({}), HostError);
}

TEST(HostSettings, TakesThePrefixFromOptionThenEnvironmentThenStore) {
  const PosixFolder folder;
  const EnvironmentOverride none("HEARTHMAKE_WINE_PREFIX", std::nullopt);
  EXPECT_EQ(HostSettings(WithData(folder.Path())).WinePrefix(), "");
  HostSettings(WithData(folder.Path())).Store("WinePrefix", "/stored");
  EXPECT_EQ(HostSettings(WithData(folder.Path())).WinePrefix(), "/stored");
  const EnvironmentOverride variable("HEARTHMAKE_WINE_PREFIX", "/variable");
  EXPECT_EQ(HostSettings(WithData(folder.Path())).WinePrefix(), "/variable");
  HostOptions options = WithData(folder.Path());
  options.winePrefix = "/option";
  EXPECT_EQ(HostSettings(options).WinePrefix(), "/option");
  options.winePrefix = "";
  EXPECT_EQ(HostSettings(options).WinePrefix(), "");
}

TEST(HostSettings, AddsDrivesToTheBuiltInOnesTheOptionsLast) {
  const PosixFolder folder;
  const EnvironmentOverride none("HEARTHMAKE_WINE_PREFIX", std::nullopt);
  HostOptions options = WithData(folder.Path());
  options.drives = {"e:=/option"};
  HostSettings settings(options);
  settings.Store("D:", "/stored");
  settings.Store("E:", "/stored/too");
  const posix::DriveMap drives = DrivesOf(settings);
  EXPECT_EQ(drives.Drive('C'), folder.Path() + "/drive_c");
  EXPECT_EQ(drives.Drive('D'), "/stored");
  EXPECT_EQ(drives.Drive('E'), "/option");
  EXPECT_EQ(drives.Drive('Z'), "/");
}

TEST(HostSettings, RefusesWhatIsNoDrive) {
  const PosixFolder folder;
  for (const char* drive : {"D", "D:", "D:=", "=/x", "DD:=/x", "1:=/x"}) {
    HostOptions options = WithData(folder.Path());
    options.drives = {drive};
    EXPECT_THROW(DrivesOf(HostSettings(options)), HostError) << drive;
  }
}

TEST(HostSettings, TakesTheDrivesOfThePrefix) {
  const PosixFolder folder;
  folder.MakeFolder("prefix/dosdevices");
  folder.MakeFolder("prefix/drive_c");
  std::filesystem::create_directory_symlink("../drive_c", folder.Path("prefix/dosdevices/c:"));
  HostOptions options = WithData(folder.Path());
  options.winePrefix = folder.Path("prefix");
  EXPECT_EQ(DrivesOf(HostSettings(options)).ToPosix("C:\\x"), folder.Path("prefix/drive_c/x"));
  options.winePrefix = folder.Path("nowhere");
  try {
    DrivesOf(HostSettings(options));
    FAIL() << "no error";
  } catch (const HostError& error) {
    EXPECT_THAT(error.what(), HasSubstr(folder.Path("nowhere") + " is no Wine prefix"));
    EXPECT_THAT(error.Advice(), HasSubstr("wineboot"));
  }
}

}  // namespace
}  // namespace hearthmake::host
