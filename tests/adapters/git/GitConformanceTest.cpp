#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "platform/SourceControlConformance.hpp"
#include "support/GitScene.hpp"

namespace hearthmake::platform {
namespace {

SourceControlPlayground PlaygroundOver(const std::shared_ptr<support::GitScene>& scene,
                                       const std::string& ini) {
  const auto drives = std::make_shared<posix::DriveMap>();
  drives->SetDrive('D', scene->Path(""));
  scene->Folder().MakeFolder("room");
  return {std::make_shared<git::GitSourceControl>(scene->PathMap()),
          std::make_shared<posix::PosixFileSystem>(drives), ini, "D:\\room", scene};
}

SourceControlPlayground MakeBare(const SeedFiles& seed) {
  return PlaygroundOver(std::make_shared<support::GitScene>(seed), "D:\\db\\srcsafe.ini");
}

SourceControlPlayground MakeWithRemote(const SeedFiles& seed) {
  const auto scene = std::make_shared<support::GitScene>(seed);
  scene->Git("", "clone -q db/repo.git clone");
  scene->WriteIni("[git]\nrepository = clone\nremote = origin\n", "srcsafe.ini");
  return PlaygroundOver(scene, "D:\\srcsafe.ini");
}

SourceControlPlayground MakeWithWorkTree(const SeedFiles& seed) {
  const auto scene = std::make_shared<support::GitScene>(seed);
  scene->WriteIni("", "seed/srcsafe.ini");  // the folder of the ini file is the repository
  return PlaygroundOver(scene, "D:\\seed\\srcsafe.ini");
}

INSTANTIATE_TEST_SUITE_P(Bare, SourceControlConformance, ::testing::Values(MakeBare));
INSTANTIATE_TEST_SUITE_P(Remote, SourceControlConformance, ::testing::Values(MakeWithRemote));
INSTANTIATE_TEST_SUITE_P(WorkTree, SourceControlConformance, ::testing::Values(MakeWithWorkTree));

}  // namespace
}  // namespace hearthmake::platform
