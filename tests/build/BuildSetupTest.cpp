// Build: the helpers that fill or adjust a build in bulk.

#include <gtest/gtest.h>

#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Ref;
using support::BuildScene;
using support::ErrorOf;
using Names = std::vector<std::string>;

TEST(BuildSetup, LeavesTestProjectsAndDefaultNamesOut) {
  const BuildScene scene;
  for (const char* name : {"MyTest", "Project1", "Core"}) scene.WriteProject(name);
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), Names{"Core"});
}

TEST(BuildSetup, TakesEveryProjectWhenTestProjectsAreWanted) {
  const BuildScene scene;
  for (const char* name : {"MyTest", "Project1", "Core"}) scene.WriteProject(name);
  scene.build->CreateBuildFromPath("C:\\src", true);
  EXPECT_EQ(scene.Names(), (Names{"Core", "MyTest", "Project1"}));
}

TEST(BuildSetup, LooksAtNamesWithoutRegardToCaseAndAtNothingElse) {
  const BuildScene scene;
  for (const char* name : {"LaTESTe", "PROJECTOR", "MyProject"}) scene.WriteProject(name);
  scene.Write("C:\\src\\project test\\Inner.vbp", "Type=Exe\nName=\"Inner\"\n");
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), (Names{"MyProject", "Inner"}));
}

TEST(BuildSetup, AFolderMayEndInABackslash) {
  const BuildScene scene;
  scene.WriteProject("Core");
  scene.build->CreateBuildFromPath("C:\\src\\", false);
  EXPECT_EQ(scene.Names(), Names{"Core"});
}

TEST(BuildSetup, TheListFollowsFilesBeforeFoldersByLowerCasedName) {
  const BuildScene scene;
  for (const char* path :
       {"C:\\src\\b\\One.vbp", "C:\\src\\A\\Two.vbp", "C:\\src\\Zeta.vbp", "C:\\src\\alpha.vbp"}) {
    const std::string name = std::string(path).substr(std::string(path).rfind('\\') + 1);
    scene.Write(path, "Type=Exe\nName=\"" + name.substr(0, name.size() - 4) + "\"\n");
  }
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), (Names{"alpha", "Zeta", "Two", "One"}));
}

TEST(BuildSetup, PassesOverWhatCanNotBeAdded) {
  const BuildScene scene;
  scene.WriteProject("Core");
  scene.Write("C:\\src\\Empty.vbp", "");
  scene.WriteBytes("C:\\src\\Binary.vbp", std::string("\0\1\2\xFF\0", 5));
  scene.Write("C:\\src\\Twin.vbp", "Type=Exe\nName=\"core\"\n");
  scene.Write("C:\\src\\Unknown.vbp", "Type=Nothing\nName=\"Unknown\"\n");
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), Names{"Core"});
}

TEST(BuildSetup, CreatingTwiceAddsNothingTwice) {
  const BuildScene scene;
  scene.WriteProject("Core");
  scene.build->CreateBuildFromPath("C:\\src", false);
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), Names{"Core"});
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
}

TEST(BuildSetup, AListenerThatClosesTheDatabaseLosesNoProject) {
  const BuildScene scene;
  support::RecordingEvents events;
  scene.build->AddSink(events);
  for (const char* name : {"A", "B", "C"}) scene.WriteProject(name, "Exe");
  // Loading a list closes the database.
  events.On("ProjectAdded B", [](bool&) { automation::Make<Builds>()->LoadAll(); });
  scene.build->CreateBuildFromPath("C:\\src", false);
  EXPECT_EQ(scene.Names(), (Names{"A", "B", "C"}));
  EXPECT_EQ(BuildScene::CountRows("Project"), 3);
  scene.build->RemoveSink(events);
}

TEST(BuildSetup, WhatWasStoredBeforeAFailureStays) {
  const BuildScene scene;
  scene.Add("A");
  scene.Add("B");
  scene.WriteBytes("C:\\src\\A.dll", std::string(60000, 'x'));
  ErrorOf([&] { scene.build->GenerateDllBaseAddresses(0x7FFF0000); });
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Projects().GetByName("A")->DllBaseAddress(), 0x7FFF0000);
}

TEST(BuildSetup, AMissingFolderIsAnError) {
  const BuildScene scene;
  EXPECT_EQ(ErrorOf([&] { scene.build->CreateBuildFromPath("C:\\gone", false); }).Number(), 76);
}

TEST(BuildSetup, FindsReferencesToProjectsThatAreListedLater) {
  const BuildScene scene;
  scene.WriteProject("Alpha", "Exe", BuildScene::RowTo("Zeta"));
  scene.WriteProject("Zeta");
  scene.build->CreateBuildFromPath("C:\\src", false);
  const auto alpha = scene.build->Projects().GetByName("Alpha");
  const auto zeta = scene.build->Projects().GetByName("Zeta");
  EXPECT_TRUE(alpha->ReferenceList().IsProjectReferencing(zeta->Id()));
  EXPECT_EQ(BuildScene::CountRows("References", "idReferenced = " + std::to_string(zeta->Id())), 1)
      << "stored";
}

TEST(BuildSetup, DetectsReferencesAnewFromTheFiles) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  const auto user = scene.Add("User", "Exe");
  EXPECT_EQ(automation::ToLong(user->ReferenceList().Count()), 0);
  scene.WriteProject("User", "Exe", BuildScene::RowTo("Lib"));
  scene.build->AutoDetectReferences();
  EXPECT_TRUE(user->ReferenceList().IsProjectReferencing(lib->Id()));
  const auto again = BuildScene::Loaded(scene.build->Id());
  EXPECT_TRUE(again->Projects().GetByName("User")->ReferenceList().IsProjectReferencing(lib->Id()));
}

TEST(BuildSetup, AFailedDetectionCancelsThatProjectsEditAndReachesTheCaller) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  const auto user = scene.Add("User", "Exe", BuildScene::RowTo("Lib"));
  const auto last = scene.Add("Last", "Exe");
  scene.files->Remove("C:\\src\\User.vbp");
  scene.WriteProject("Last", "Exe", BuildScene::RowTo("Lib"));
  EXPECT_EQ(ErrorOf([&] { scene.build->AutoDetectReferences(); }).Number(), 53);
  EXPECT_TRUE(user->ReferenceList().IsProjectReferencing(lib->Id())) << "what was there stays";
  EXPECT_FALSE(last->ReferenceList().IsProjectReferencing(lib->Id())) << "not reached";
  user->BeginEdit();
  user->CancelEdit();
  lib->BeginEdit();
  lib->CancelEdit();
  EXPECT_FALSE(scene.files->FileExists("C:\\src\\User.vbp")) << "and no empty file is left behind";
}

TEST(BuildSetup, DetectionStopsAtAProjectThatIsBeingEdited) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  lib->BeginEdit();
  lib->SetMajorVer(7);
  EXPECT_EQ(ErrorOf([&] { scene.build->AutoDetectReferences(); }).Number(), 1004);
  lib->ApplyEdit();
  EXPECT_EQ(lib->MajorVer(), 7) << "the host's edit is its own";
}

TEST(BuildSetup, EachDllStartsAboveTheOneBefore) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  scene.WriteBytes("C:\\src\\A.dll", std::string(70000, 'x'));
  scene.WriteBytes("C:\\src\\B.dll", std::string(10000, 'x'));
  scene.build->GenerateDllBaseAddresses(0x11000000);
  EXPECT_EQ(a->DllBaseAddress(), 0x11000000);
  EXPECT_EQ(b->DllBaseAddress(), 0x11020000);
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Projects().GetByName("B")->DllBaseAddress(), 0x11020000);
}

TEST(BuildSetup, ADllThatIsNotCompiledYetTakes64Kilobytes) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  scene.build->GenerateDllBaseAddresses(0x11000000);
  EXPECT_EQ(b->DllBaseAddress(), 0x11010000);
}

TEST(BuildSetup, ASizeOfWholeStepsStillMovesUpByAFullOne) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  scene.WriteBytes("C:\\src\\A.dll", std::string(65536, 'x'));
  scene.build->GenerateDllBaseAddresses(0x11000000);
  EXPECT_EQ(b->DllBaseAddress(), 0x11020000);
}

TEST(BuildSetup, OnlyInProcessProjectsGetAddresses) {
  const BuildScene scene;
  const auto exe = scene.Add("Exe", "Exe");
  const auto server = scene.Add("Server", "OleExe");
  const auto control = scene.Add("Ctl", "Control");
  const auto lib = scene.Add("Lib");
  scene.build->GenerateDllBaseAddresses(0x12000000);
  EXPECT_EQ(control->DllBaseAddress(), 0x12000000);
  EXPECT_EQ(lib->DllBaseAddress(), 0x12010000);
  EXPECT_EQ(exe->DllBaseAddress(), 0x11000000) << "the default";
  EXPECT_EQ(server->DllBaseAddress(), 0x11000000);
}

TEST(BuildSetup, ABuildWithoutInProcessProjectsIsLeftUnchanged) {
  const BuildScene scene;
  scene.Add("Exe", "Exe");
  scene.build->GenerateDllBaseAddresses(-5);
  EXPECT_EQ(BuildScene::CountRows("Project", "DllBaseAddress = '' OR DllBaseAddress IS NULL"), 1);
}

TEST(BuildSetup, AnAddressThatProjectsRefuseEndsTheMethodAndItsEdit) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  EXPECT_EQ(ErrorOf([&] { scene.build->GenerateDllBaseAddresses(0x11000001); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beInvalidBaseAddress));
  a->BeginEdit();
  EXPECT_EQ(a->DllBaseAddress(), 0x11000000);
}

TEST(BuildSetup, AnAddressBeyond32BitsIsAnOverflowAndEarlierOnesStay) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  scene.WriteBytes("C:\\src\\A.dll", std::string(60000, 'x'));
  const auto error = ErrorOf([&] { scene.build->GenerateDllBaseAddresses(0x7FFF0000); });
  EXPECT_EQ(error.Number(), 6);
  EXPECT_EQ(error.Description(), "Overflow");
  EXPECT_EQ(a->DllBaseAddress(), 0x7FFF0000);
  EXPECT_EQ(b->DllBaseAddress(), 0x11000000);
  b->BeginEdit();
}

TEST(BuildSetup, AnEndBeyond32BitsIsAnOverflowTooWhenItIsTheLast) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  scene.WriteBytes("C:\\src\\A.dll", std::string(70000, 'x'));
  EXPECT_EQ(ErrorOf([&] { scene.build->GenerateDllBaseAddresses(0x7FFF0000); }).Number(), 6);
  EXPECT_EQ(a->DllBaseAddress(), 0x7FFF0000);
}

}  // namespace
}  // namespace hearthmake
