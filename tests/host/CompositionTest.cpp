#include "host/Composition.hpp"

#include <gtest/gtest.h>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

TEST(Composition, TellsTheLibraryOfAVersionThatIsNoNumber) {
  const support::PosixFolder folder;
  HostOptions options;
  options.dataFolder = folder.MakeFolder("data");
  options.winePrefix = "";
  folder.MakeFile("data/host.ini", "[Host\\Settings]\nOSVersion=new\n");
  const HostSettings settings(options);
  const Composition composition(settings);
  EXPECT_THROW(Ports().system->MajorVersion(), automation::Error);
}

TEST(Composition, TakesTheHostsVersion) {
  const support::PosixFolder folder;
  HostOptions options;
  options.dataFolder = folder.MakeFolder("data");
  options.winePrefix = "";
  HostSettings settings(options);
  settings.Store("OSVersion", "4");
  const Composition composition(settings);
  EXPECT_EQ(Ports().system->MajorVersion(), 4);
}

}  // namespace
}  // namespace hearthmake::host
