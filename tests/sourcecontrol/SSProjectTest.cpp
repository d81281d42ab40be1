#include "sourcecontrol/SSProject.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "automation/Interface.hpp"
#include "support/ErrorExpect.hpp"
#include "support/SourceScene.hpp"

namespace hearthmake {
namespace {

using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;
using support::MemorySourceControl;
using support::SourceScene;

using Texts = std::vector<std::string>;

TEST(SSProject, ANewOneIsEmpty) {
  const SourceScene scene;
  const auto project = scene.All().Create();
  for (const char* text : {"User", "Project", "WorkingFolder", "Database", "SrcSafeIni", "Password"})
    EXPECT_EQ(automation::ToText(project->Get(text)), "") << text;
  EXPECT_EQ(project->Flags(), 0);
  EXPECT_EQ(project->Id(), 0);
  EXPECT_FALSE(project->Skip());
}

TEST(SSProject, TextsHave255CharactersAndNoOuterBlanks) {
  const SourceScene scene;
  const auto project = scene.All().Create();
  const std::string umlauts = [] {
    std::string text;
    for (int i = 0; i < 300; ++i) text += "\xC3\xA4";
    return text;
  }();
  for (const char* text : {"User", "Project", "WorkingFolder", "Database", "SrcSafeIni", "Password"}) {
    project->Let(text, {Variant::FromText(umlauts)});
    EXPECT_EQ(automation::ToText(project->Get(text)), umlauts.substr(0, 2 * 255)) << text;
    project->Let(text, {Variant::FromText("  a b ")});
    EXPECT_EQ(automation::ToText(project->Get(text)), "a b") << text;
  }
}

TEST(SSProject, IsStoredAndLoadedWithAllItsValues) {
  const SourceScene scene;
  const auto project = scene.All().Create();
  project->BeginEdit();
  project->SetUser("Bob");
  project->SetPassword(std::string(255, 'x'));
  project->SetDatabase("The old server");
  project->SetSrcSafeIni("C:\\vss\\srcsafe.ini");
  project->SetProject("$/Suite");
  project->SetFlags(-5);
  project->SetWorkingFolder("C:\\Src");
  project->SetSkip(true);
  project->ApplyEdit();
  EXPECT_NE(project->Id(), 0);

  const auto build = BuildScene::Loaded(scene.build->Id());
  ASSERT_EQ(build->SSProjects().Count(), 1);
  const auto loaded = build->SSProjects().Item(Variant::FromLong(1));
  EXPECT_EQ(loaded->Id(), project->Id());
  EXPECT_EQ(loaded->User(), "Bob");
  EXPECT_EQ(loaded->Password(), std::string(255, 'x'));
  EXPECT_EQ(loaded->Database(), "The old server");
  EXPECT_EQ(loaded->SrcSafeIni(), "C:\\vss\\srcsafe.ini");
  EXPECT_EQ(loaded->Project(), "$/Suite");
  EXPECT_EQ(loaded->Flags(), -5);
  EXPECT_EQ(loaded->WorkingFolder(), "C:\\Src");
  EXPECT_FALSE(loaded->Skip()) << "which is never stored";
}

TEST(SSProject, EditMembersRaiseTheirErrorsWithTheirSources) {
  const SourceScene scene;
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  ExpectError([&] { project->ApplyEdit(); }, 1004, "SSProject.CancelEdit", "Not in edit mode");
  ExpectError([&] { project->Delete(); }, 1004, "SSProject.CancelEdit", "Not in edit mode");
  ExpectError([&] { project->CancelEdit(); }, 1004, "SSProject.CancelEdit", "Not in edit mode");
  project->BeginEdit();
  ExpectError([&] { project->BeginEdit(); }, 1004, "SSProject.BeginEdit", "Already in edit mode");
  project->CancelEdit();
  project->BeginEdit();
  project->ApplyEdit();
}

TEST(SSProject, ANewOneBecomesAMemberWhenItIsStored) {
  const SourceScene scene;
  const auto project = scene.All().Create();
  EXPECT_EQ(scene.All().Count(), 0);
  project->BeginEdit();
  EXPECT_EQ(scene.All().Count(), 0);
  project->ApplyEdit();
  ASSERT_EQ(scene.All().Count(), 1);
  EXPECT_EQ(scene.All().Item(Variant::FromText(automation::Decimal(project->Id()))), project);
  EXPECT_EQ(BuildScene::CountRows("SSProjects", "idBuild = " + automation::Decimal(scene.build->Id())), 1);
}

TEST(SSProject, CancelEditBringsTheValuesBackButForSkip) {
  const SourceScene scene;
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  project->BeginEdit();
  project->SetProject("$/Other");
  project->SetFlags(9);
  project->SetSkip(true);
  project->CancelEdit();
  EXPECT_EQ(project->Project(), "$/Suite");
  EXPECT_EQ(project->Flags(), 0);
  EXPECT_TRUE(project->Skip());
}

TEST(SSProject, AnEditWithoutChangeStoresNothing) {
  const SourceScene scene;
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  const auto other = BuildScene::Loaded(scene.build->Id());
  const auto twin = other->SSProjects().Item(Variant::FromLong(1));
  twin->BeginEdit();
  twin->SetUser("Eve");
  twin->ApplyEdit();
  project->BeginEdit();
  project->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("SSProjects", "User = 'Eve'"), 1);
  project->BeginEdit();
  project->SetFlags(1);
  project->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("SSProjects", "User = 'Eve'"), 0);
  EXPECT_EQ(BuildScene::CountRows("SSProjects"), 1);
}

TEST(SSProject, IsDeletedByTheNextApplyEdit) {
  const SourceScene scene;
  const auto first = scene.AddSource("$/A", "C:\\A");
  const auto second = scene.AddSource("$/B", "C:\\B");
  first->BeginEdit();
  first->Delete();
  EXPECT_EQ(scene.All().Count(), 2);
  first->CancelEdit();
  first->BeginEdit();
  first->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("SSProjects"), 2) << "the cancelled deletion is forgotten";
  first->BeginEdit();
  first->Delete();
  first->ApplyEdit();
  EXPECT_EQ(scene.All().Count(), 1);
  EXPECT_EQ(scene.All().Item(Variant::FromLong(1)), second);
  EXPECT_EQ(first->Owner(), nullptr);
  EXPECT_EQ(BuildScene::CountRows("SSProjects"), 1);
}

TEST(SSProject, WithoutCollectionItCanNotBeStored) {
  const SourceScene scene;
  const auto project = scene.All().Create();
  scene.build->Kill();
  project->BeginEdit();
  EXPECT_EQ(ErrorOf([&] { project->ApplyEdit(); }).Number(), 91);
  EXPECT_EQ(BuildScene::CountRows("SSProjects"), 0);
}

TEST(SSProject, AsReportItemIsItsProjectAndDatabase) {
  const SourceScene scene;
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  project->SetDatabase("The old server");
  EXPECT_EQ(project->IReportItem_Name(), "$/Suite");
  EXPECT_EQ(project->IReportItem_Details(), "\tDatabase: The old server");
}

TEST(SSProject, GetLatestTakesTheFilesIntoTheWorkingFolder) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/Lib/a.cls", "old");
  scene.Base().Change("$/Suite/Lib/a.cls", "new");
  scene.Base().Change("$/Suite/b.bas", "b");
  scene.Base().Change("$/Other/c.bas", "c");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  project->SetFlags(0x2003);  // with all below
  EXPECT_TRUE(project->GetLatest());
  EXPECT_EQ(scene.sources->calls,
            (Texts{"Open C:\\vss\\srcsafe.ini as Bob", "VSSItem $/Suite", "Get $/Suite to C:\\Src, 8323"}));
  EXPECT_EQ(scene.Read("C:\\Src\\Lib\\a.cls"), "new");
  EXPECT_EQ(scene.Read("C:\\Src\\b.bas"), "b");
  EXPECT_FALSE(scene.files->FileExists("C:\\Src\\c.bas"));
  EXPECT_EQ(scene.sources->openSessions, 0);
}

TEST(SSProject, WithoutWorkingFolderTheFilesGoWhereTheDatabaseSays) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "a");
  const auto project = scene.AddSource("$/Suite", "");
  EXPECT_TRUE(project->GetLatest());
  EXPECT_EQ(scene.TakeCalls().back(), "Get $/Suite to , 128");
}

TEST(SSProject, FlagsThatOverflowAreError6) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "a");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t flags : {kMost, kMost - 127}) {
    project->SetFlags(flags);
    const auto error = ErrorOf([&] { project->GetLatest(); });
    EXPECT_EQ(error.Number(), 6);
    EXPECT_EQ(error.Description(), "Overflow");
    EXPECT_EQ(scene.TakeCalls().size(), 1U) << "nothing is got";
  }
  project->SetFlags(kMost - 128);
  EXPECT_TRUE(project->GetLatest());
  EXPECT_EQ(scene.TakeCalls().back(), "Get $/Suite to C:\\Src, 2147483647");
}

TEST(SSProject, ErrorsOfSourceControlReachTheCaller) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "a");
  const auto project = scene.AddSource("$/Nowhere", "C:\\Src");
  ExpectError([&] { project->GetLatest(); }, MemorySourceControl::kFailure, "VSSDatabase.VSSItem",
              "There is no $/Nowhere");
  ExpectError([&] { project->GetFromLabel("1.0"); }, MemorySourceControl::kFailure, "VSSDatabase.VSSItem",
              "There is no $/Nowhere");
  ExpectError([&] { project->Label("1.0", ""); }, MemorySourceControl::kFailure, "VSSDatabase.VSSItem",
              "There is no $/Nowhere");
  project->SetPassword("guess");
  ExpectError([&] { project->GetLatest(); }, MemorySourceControl::kFailure, "Open", "Invalid password");
  EXPECT_EQ(scene.sources->openSessions, 0);
}

TEST(SSProject, GetFromLabelTakesTheFilesOfTheNewestVersionWithTheLabel) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "1");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  project->Label("1.0", "first");
  scene.Base().Change("$/Suite/a.cls", "2");
  project->Label("1.0", "again");
  scene.Base().Change("$/Suite/a.cls", "3");
  project->SetFlags(1);
  scene.TakeCalls();
  EXPECT_TRUE(project->GetFromLabel("1.0"));
  EXPECT_EQ(scene.TakeCalls(), (Texts{"Open C:\\vss\\srcsafe.ini as Bob", "Get $/Suite to C:\\Src, 129"}));
  EXPECT_EQ(scene.Read("C:\\Src\\a.cls"), "2");
}

TEST(SSProject, GetFromLabelTakesNothingWithoutTheLabel) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "1");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  project->Label("Beta", "");
  scene.TakeCalls();
  EXPECT_FALSE(project->GetFromLabel("beta")) << "labels are compared exactly";
  EXPECT_FALSE(project->GetFromLabel("1.0"));
  EXPECT_EQ(scene.TakeCalls(), (Texts(2, "Open C:\\vss\\srcsafe.ini as Bob")));
  EXPECT_FALSE(scene.files->FileExists("C:\\Src\\a.cls"));
}

TEST(SSProject, LabelIsPutOnTheProject) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "1");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  EXPECT_TRUE(project->Label("1.0", "the first release"));
  EXPECT_EQ(scene.TakeCalls(),
            (Texts{"Open C:\\vss\\srcsafe.ini as Bob", "Label $/Suite 1.0, 'the first release'"}));
}

TEST(SSProject, KnowsWhoHoldsItsFiles) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/Lib/a.cls", "1");
  scene.Base().Change("$/Other/b.cls", "1");
  const auto project = scene.AddSource("$/Suite", "C:\\Src");
  EXPECT_TRUE(project->Checkouts().empty());
  const auto database = scene.sources->Open(SourceScene::kIni, "Ann", "");
  database->VSSItem("$/Suite/Lib/a.cls", false)->Checkout("mine", "", 0);
  database->VSSItem("$/Other/b.cls", false)->Checkout("mine too", "", 0);
  const auto checkouts = project->Checkouts();
  ASSERT_EQ(checkouts.size(), 1U);
  EXPECT_EQ(checkouts[0].Spec, "$/Suite/Lib/a.cls");
  EXPECT_EQ(checkouts[0].Username, "Ann");
}

}  // namespace
}  // namespace hearthmake
