#include "embedding/EmbeddedSystemInfo.hpp"

#include <gtest/gtest.h>

#include <memory>

#include "adapters/posix/WineRegistry.hpp"
#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::embedding {
namespace {

class EmbeddedSystemInfoTest : public testing::Test {
 protected:
  EmbeddedSystemInfoTest() {
    options.dataFolder = folder.MakeFolder("data");
    options.winePrefix = folder.Path("prefix");
  }

  EmbeddedSystemInfo WithRegistry(const std::string& values) const {
    folder.MakeFile(
        "prefix/system.reg",
        "WINE REGISTRY Version 2\n\n[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion] 1\n" + values);
    return {options, std::make_shared<posix::DriveMap>(posix::DriveMap::BuiltIn(options.dataFolder)),
            std::make_shared<posix::WineRegistry>(folder.Path("prefix"), folder.Path("servers"))};
  }

  support::PosixFolder folder;
  Options options;
};

TEST_F(EmbeddedSystemInfoTest, TakesTheMajorVersionFromThePrefix) {
  EXPECT_EQ(WithRegistry("\"CurrentMajorVersionNumber\"=dword:00000006\n\"CurrentVersion\"=\"6.3\"\n")
                .MajorVersion(),
            6);
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"5.1\"\n").MajorVersion(), 5);
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"new\"\n").MajorVersion(), 10);
  EXPECT_EQ(WithRegistry("").MajorVersion(), 10);
}

TEST_F(EmbeddedSystemInfoTest, TheHostsOverrideComesFirst) {
  options.windowsVersion = [] { return 4; };
  EXPECT_EQ(WithRegistry("\"CurrentVersion\"=\"5.1\"\n").MajorVersion(), 4);
}

TEST_F(EmbeddedSystemInfoTest, MakesTheTemporaryFolderWhenItIsAskedFor) {
  const std::string parent = folder.MakeFolder("tmp");
  std::string told;
  options.temporaryFolder = [&] { return parent; };
  options.onTemporaryFolder = [&](const std::string& path) { told = path; };
  {
    EmbeddedSystemInfo info = WithRegistry("");
    EXPECT_TRUE(std::filesystem::is_empty(parent));
    const std::string path = info.TemporaryFolder();
    EXPECT_TRUE(path.starts_with("Z:\\") && path.ends_with("\\")) << path;
    EXPECT_TRUE(told.starts_with(parent)) << told;
    EXPECT_TRUE(std::filesystem::exists(told));
    EXPECT_EQ(info.TemporaryFolder(), path);
  }
  EXPECT_TRUE(std::filesystem::is_empty(parent));
}

TEST_F(EmbeddedSystemInfoTest, RefusesATemporaryFolderWithBlanks) {
  options.temporaryFolder = [&] { return folder.MakeFolder("with blank"); };
  EXPECT_THROW(WithRegistry("").TemporaryFolder(), automation::Error);
}

}  // namespace
}  // namespace hearthmake::embedding
