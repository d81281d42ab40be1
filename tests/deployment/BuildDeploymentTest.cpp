// Builds with packages and applications: their run, and their end.

#include <gtest/gtest.h>

#include <filesystem>

#include "support/DeployScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Variant;
using support::DeployScene;
using support::EntryNamed;
using support::ExpectError;
using Steps = std::vector<std::string>;

void Delete(Build& build) {
  build.BeginEdit();
  build.Delete();
  build.ApplyEdit();
}

// The commands that stop MTS, which do nothing here.
void MakeStopCommands(const DeployScene& scene) {
  for (const char* name : {"net.exe", "mtxstop.exe"}) {
    const std::string path = std::string("C:\\tools\\") + name;
    scene.WriteBytes(path, "#!/bin/sh\nexit 0\n");
    std::filesystem::permissions(scene.Posix(path), std::filesystem::perms::owner_all);
  }
}

TEST(BuildDeployment, BeforeWindows2000ARunStopsMtsForABuildWithPackages) {
  DeployScene scene(4);
  scene.NewOf<MTSPackage>("Server");
  scene.Add("A", "Exe");
  scene.events.heard.clear();
  MakeStopCommands(scene);
  const support::EnvironmentOverride path("PATH", scene.Posix("C:\\tools") + ":/usr/bin:/bin");
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_EQ(scene.events.heard, (Steps{"BuildStart fresh", "MTSEvent Shutting down MTS", "WillCompile A",
                                       "ProjectCompiled A", "BuildComplete"}));
  ASSERT_EQ(scene.launcher->commands.size(), 4U);
  EXPECT_EQ(Steps(scene.launcher->commands.begin(), scene.launcher->commands.begin() + 3),
            (Steps{"net stop server /Y", "mtxstop", "net stop msdtc"}));
  EXPECT_EQ(scene.clock->slept, std::chrono::milliseconds(7000));
  EXPECT_EQ(scene.log.calls, 0) << "no catalog was asked";
}

TEST(BuildDeployment, CancellingTheStopOfMtsHasNoEffect) {
  DeployScene scene(4);
  scene.NewOf<MTSPackage>("Server");
  MakeStopCommands(scene);
  const support::EnvironmentOverride path("PATH", scene.Posix("C:\\tools") + ":/usr/bin:/bin");
  scene.events.On("MTSEvent Shutting down MTS", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_EQ(scene.launcher->commands.size(), 3U);
}

TEST(BuildDeployment, AResumedRunStopsNothing) {
  for (const int version : {4, 10}) {
    DeployScene scene(version);
    scene.NewOf<MTSPackage>("Server");
    EXPECT_TRUE(scene.build->Projects().Build(true));
    EXPECT_EQ(scene.events.heard, (Steps{"BuildStart resume", "BuildComplete"}));
    EXPECT_TRUE(scene.launcher->commands.empty());
    EXPECT_EQ(scene.log.calls, 0);
  }
}

TEST(BuildDeployment, FromWindows2000OnARunShutsDownEveryApplicationInOrder) {
  DeployScene scene;
  for (const char* name : {"B", "Missing", "A"}) scene.NewOf<MTSPackage>(name);
  scene.comPlus->applications = {EntryNamed("A", "{1}"), EntryNamed("B", "{2}")};
  scene.Add("P", "Exe");
  scene.events.heard.clear();
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_EQ(scene.events.heard, (Steps{"BuildStart fresh", "MTSEvent Shutting down COM+ Applications",
                                       "WillCompile P", "ProjectCompiled P", "BuildComplete"}));
  std::erase(scene.log.steps, "DeliverPending");  // while the compiler runs
  EXPECT_EQ(scene.log.steps,
            (Steps{"MTSEvent Shutting down COM+ Applications", "Create", "ShutdownApplication B", "Create",
                   "ShutdownApplication Missing", "Create", "ShutdownApplication A"}));
  EXPECT_EQ(scene.launcher->commands.size(), 1U) << "MTS is never stopped";
}

TEST(BuildDeployment, ACatalogThatFailsDoesNotHinderARun) {
  DeployScene scene(5);
  scene.NewOf<COMApplication>("A");
  scene.log.failAt = 1;
  EXPECT_TRUE(scene.build->Projects().Build(false));
}

TEST(BuildDeployment, ShutsDownSkippedApplicationsToo) {
  DeployScene scene;
  scene.NewOf<COMApplication>("A")->SetSkip(true);
  scene.build->COMApplications().ShutDownAll();
  EXPECT_EQ(scene.log.steps.back(), "ShutdownApplication A");
}

TEST(BuildDeployment, DeletingABuildDeletesItsPackages) {
  DeployScene scene;
  const auto other = DeployScene::Stored("Other");
  scene.NewIn<MTSPackage>(*other, "Elsewhere");
  const auto package = scene.NewOf<MTSPackage>("A");
  scene.NewOf<MTSPackage>("B");
  scene.AddTo(package->Id(), "Lib");
  Delete(*scene.build);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages", "Name = 'Elsewhere'"), 1);
  EXPECT_EQ(DeployScene::CountRows("Project"), 0);
  EXPECT_EQ(DeployScene::CountRows("Build"), 1);
  EXPECT_EQ(package->ParentOrNull(), nullptr);
}

TEST(BuildDeployment, DeletingABuildDeletesRowsThatCameAsApplications) {
  DeployScene scene;
  EXPECT_EQ(scene.build->MTSPackages().Count(), 0);
  const auto application = scene.NewOf<COMApplication>("A");
  Delete(*scene.build);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 0);
}

TEST(BuildDeployment, ABuildWhosePackagesAnotherOneUsesCanNotBeDeleted) {
  DeployScene scene;
  scene.NewOf<MTSPackage>("Unused");
  const auto package = scene.NewOf<MTSPackage>("Used");
  scene.Add("Own");
  const auto other = DeployScene::Stored("Other");
  const auto user = other->Projects().Add(scene.WriteProject("User"));
  user->BeginEdit();
  user->SetMtsPackageId(package->Id());
  user->ApplyEdit();
  scene.build->BeginEdit();
  scene.build->Delete();
  ExpectError([&] { scene.build->ApplyEdit(); }, BuildErrors::beBuildCanNotDelete, "Build.DeleteBuild",
              "Error occured when deleteing build! This package is used by one or many projects and can't be "
              "deleted!");
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 2);
  EXPECT_EQ(DeployScene::CountRows("Project"), 2);
  EXPECT_EQ(DeployScene::CountRows("Build"), 2);
  EXPECT_EQ(scene.build->MTSPackages().Count(), 2);
  EXPECT_EQ(scene.build->Projects().Count(), 1);
  user->BeginEdit();
  user->SetMtsPackageId(0);
  user->ApplyEdit();
  scene.build->ApplyEdit();
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 0);
  EXPECT_EQ(DeployScene::CountRows("Build"), 1);
}

TEST(BuildDeployment, LoadingAnotherBuildGivesItsPackages) {
  DeployScene scene;
  scene.NewOf<MTSPackage>("A");
  const auto other = DeployScene::Stored("Other");
  const auto build = DeployScene::Loaded(scene.build->Id());
  EXPECT_EQ(build->MTSPackages().Count(), 1);
  build->Load(other->Id());
  EXPECT_EQ(build->MTSPackages().Count(), 0);
  EXPECT_EQ(build->COMApplications().Count(), 0);
}

}  // namespace
}  // namespace hearthmake
