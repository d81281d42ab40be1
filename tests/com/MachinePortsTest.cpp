#include "com/MachinePorts.hpp"

#include <gtest/gtest.h>

namespace hearthmake::com {
namespace {

TEST(MachinePorts, AreAllButThoseThatTheProgramChooses) {
  const platform::Platform ports = MachinePorts();
  EXPECT_NE(ports.workspace, nullptr);
  EXPECT_NE(ports.files, nullptr);
  EXPECT_NE(ports.shell, nullptr);
  EXPECT_NE(ports.settings, nullptr);
  EXPECT_NE(ports.registry, nullptr);
  EXPECT_NE(ports.typeLibs, nullptr);
  EXPECT_NE(ports.sources, nullptr);
  EXPECT_NE(ports.mtsCatalogs, nullptr);
  EXPECT_NE(ports.comPlusCatalogs, nullptr);
  EXPECT_NE(ports.clock, nullptr);
  EXPECT_NE(ports.system, nullptr);
  EXPECT_EQ(ports.processes, nullptr);
  EXPECT_EQ(ports.events, nullptr);
  EXPECT_EQ(ports.scripts, nullptr);
}

TEST(MachinePorts, KeepTheirFilesInTheFolderThatIsGiven) {
  EXPECT_EQ(MachinePorts("C:\\Builds").system->ComponentFolder(), "C:\\Builds");
  EXPECT_FALSE(MachinePorts().system->ComponentFolder().empty());  // the module's own
}

}  // namespace
}  // namespace hearthmake::com
