#include "platform/RegistryConformance.hpp"

#include "adapters/posix/RegistryStore.hpp"
#include "adapters/posix/WineRegistry.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::platform {
namespace {

RegistryPlayground MakeStore() {
  auto folder = std::make_shared<support::PosixFolder>();
  const auto open = [path = folder->Path("data/registry.reg")] {
    return std::make_shared<posix::RegistryStore>(path);
  };
  return {open(), open, folder};
}

RegistryPlayground MakePrefix(const std::string& arch) {
  auto folder = std::make_shared<support::PosixFolder>();
  const auto makeHive = [&](const std::string& name, const std::string& base) {
    folder->MakeFile("prefix/" + name, "WINE REGISTRY Version 2\n;; All keys relative to " + base +
                                           "\n\n#arch=" + arch + "\n\n");
  };
  makeHive("system.reg", "\\\\Machine");
  makeHive("user.reg", "\\\\User\\\\S-1-5-21-0-0-0-1000");
  const auto open = [prefix = folder->Path("prefix"), servers = folder->Path("servers")] {
    return std::make_shared<posix::WineRegistry>(prefix, servers);
  };
  return {open(), open, folder};
}

INSTANTIATE_TEST_SUITE_P(Store, RegistryConformance, ::testing::Values(MakeStore));
INSTANTIATE_TEST_SUITE_P(Wine32, RegistryConformance, ::testing::Values([] { return MakePrefix("win32"); }));
INSTANTIATE_TEST_SUITE_P(Wine64, RegistryConformance, ::testing::Values([] { return MakePrefix("win64"); }));

}  // namespace
}  // namespace hearthmake::platform
