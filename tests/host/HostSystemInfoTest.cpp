#include "host/posix/HostSystemInfo.hpp"

#include "host/posix/HostDrives.hpp"

#include <gtest/gtest.h>

#include <memory>

#include "adapters/posix/WineRegistry.hpp"
#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

class HostSystemInfoTest : public testing::Test {
 protected:
  HostSystemInfoTest() : settings(Options()) {}

  HostOptions Options() const {
    HostOptions options;
    options.dataFolder = folder.MakeFolder("data");
    options.winePrefix = "";
    return options;
  }
  HostSystemInfo WithRegistry(const std::string& values) const {
    folder.MakeFile(
        "prefix/system.reg",
        "WINE REGISTRY Version 2\n\n[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion] 1\n" + values);
    return {settings, std::make_shared<posix::DriveMap>(DrivesOf(settings)),
            std::make_shared<posix::WineRegistry>(folder.Path("prefix"), folder.Path("servers")), true};
  }

  support::PosixFolder folder;
  HostSettings settings;
};

TEST_F(HostSystemInfoTest, TakesTheMajorVersionFromThePrefix) {
  EXPECT_EQ(WithRegistry("\"CurrentMajorVersionNumber\"=dword:00000006\n\"CurrentVersion\"=\"6.3\"\n")
                .MajorVersion(),
            6);
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"5.1\"\n").MajorVersion(), 5);
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"new\"\n").MajorVersion(), 10);
  EXPECT_EQ(WithRegistry("").MajorVersion(), 10);
}

TEST_F(HostSystemInfoTest, TheHostsOverrideComesFirst) {
  settings.Store("OSVersion", "4");
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"5.1\"\n").MajorVersion(), 4);
}

TEST_F(HostSystemInfoTest, TellsTheLibraryOfAnOverrideThatIsNoNumber) {
  folder.MakeFile("data/host.ini", "[Host\\Settings]\nOSVersion=new\n");
  EXPECT_THROW(WithRegistry("").MajorVersion(), automation::Error);
}

TEST_F(HostSystemInfoTest, MakesTheTemporaryFolderWhenItIsAskedFor) {
  const std::string parent = folder.MakeFolder("tmp");
  settings.Store("TemporaryFolder", parent);
  {
    HostSystemInfo info = WithRegistry("");
    EXPECT_TRUE(std::filesystem::is_empty(parent));
    const std::string path = info.TemporaryFolder();
    EXPECT_TRUE(path.starts_with("Z:\\") && path.ends_with("\\")) << path;
    EXPECT_FALSE(std::filesystem::is_empty(parent));
    EXPECT_EQ(info.TemporaryFolder(), path);
  }
  EXPECT_TRUE(std::filesystem::is_empty(parent));
}

TEST_F(HostSystemInfoTest, RefusesATemporaryFolderWithBlanks) {
  settings.Store("TemporaryFolder", folder.MakeFolder("with blank"));
  EXPECT_THROW(WithRegistry("").TemporaryFolder(), automation::Error);
}

}  // namespace
}  // namespace hearthmake::host
