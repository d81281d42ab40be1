#include "build/Build.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "automation/Interface.hpp"
#include "build/Builds.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Make;
using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;
using support::RecordingEvents;
using support::Workbench;
using Names = std::vector<std::string>;

void Apply(Build& build, const std::function<void()>& change) {
  build.BeginEdit();
  change();
  build.ApplyEdit();
}

void Delete(Build& build) {
  Apply(build, [&] { build.Delete(); });
}

// Refuses to commit while told to.
class StubbornWorkspace final : public platform::Workspace {
 public:
  explicit StubbornWorkspace(std::shared_ptr<platform::Workspace> real) : m_real(std::move(real)) {}
  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override {
    return m_real->OpenDatabase(path);
  }
  void BeginTrans() override { m_real->BeginTrans(); }
  void CommitTrans() override {
    if (refuses) automation::Raise(3186, "DAO.Workspace", "Couldn't save; currently locked.");
    m_real->CommitTrans();
  }
  void Rollback() override { m_real->Rollback(); }
  bool refuses = false;

 private:
  std::shared_ptr<platform::Workspace> m_real;
};

TEST(Build, MembersStandInInterfaceOrder) {
  Names names;
  for (const auto& member : Build::Describe().Members()) {
    if (names.empty() || names.back() != member.name) names.push_back(member.name);
  }
  EXPECT_EQ(names, (Names{"Name",
                          "StartDllBaseAddress",
                          "Id",
                          "Projects",
                          "Load",
                          "BeginEdit",
                          "ApplyEdit",
                          "CancelEdit",
                          "Kill",
                          "Delete",
                          "FixReferencesInProjectGroup",
                          "CreateProjectGroupFile",
                          "SSProjects",
                          "AutoDetectReferences",
                          "GenerateDllBaseAddresses",
                          "MTSPackages",
                          "COMApplications",
                          "Scripts",
                          "FailedProject",
                          "CreateBuildFromPath",
                          "GenerateRegisterBATfile",
                          "StopReporting",
                          "CmdExecute"}));
}

TEST(Build, EveryGetterCanBeCalledByNameOnAFreshObject) {
  const Workbench bench;
  const auto build = Make<Build>();
  const std::vector<Ref<automation::Object>> objects = {
      build,
      Make<Builds>(),
      Make<Settings>(),
      Ref<automation::Object>(&build->Projects()),
      Ref<automation::Object>(&build->SSProjects()),
      Ref<automation::Object>(&build->MTSPackages()),
      build->MTSPackages().Create(),
      Ref<automation::Object>(&build->COMApplications()),
      build->COMApplications().Create(),
      Ref<automation::Object>(&build->Scripts()),
      Ref<automation::Object>(&mTypes::GetSettingNames()),
  };
  int called = 0;
  for (const auto& object : objects) {
    for (const auto& member : object->Declaration().Members()) {
      if (member.kind != automation::MemberKind::Get || !member.parameters.empty()) continue;
      EXPECT_NO_THROW(object->Get(member.name)) << object->Declaration().Name() << "." << member.name;
      ++called;
    }
  }
  EXPECT_GT(called, 40);
}

TEST(Build, EveryGetterOfAFreshProjectGivesAValueOrMissesItsType) {
  const Workbench bench;
  const auto project = Make<Project>();
  for (const auto& member : Project::Describe().Members()) {
    if (member.kind != automation::MemberKind::Get || !member.parameters.empty()) continue;
    try {
      project->Get(member.name);
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), 45) << member.name;
      const bool isOfAFailedCompile = member.name == "LastCheckInInfo";
      EXPECT_EQ(error.Description(), isOfAFailedCompile ? "This method can only be used for compile errors!"
                                                        : "Unknown project type")
          << member.name;
    }
  }
}

TEST(Build, EveryLetOfAProjectTakesBackWhatItsGetterGives) {
  const BuildScene scene;
  const auto project = scene.Add("Lib");
  for (const auto& member : Project::Describe().Members()) {
    if (member.kind != automation::MemberKind::Let) continue;
    const Variant value = project->Get(member.name);
    EXPECT_NO_THROW(project->Let(member.name, {value})) << member.name;
    EXPECT_EQ(automation::ToText(project->Get(member.name)), automation::ToText(value)) << member.name;
  }
}

TEST(Build, IsNewWithoutIdNameAndAddress) {
  const auto build = Make<Build>();
  EXPECT_EQ(build->Id(), 0);
  EXPECT_EQ(build->Name(), "");
  EXPECT_EQ(build->StartDllBaseAddress(), 0);
  EXPECT_EQ(build->FailedProject(), nullptr);
}

TEST(Build, ANameMayNotBeBlank) {
  const auto build = Make<Build>();
  build->SetName("Suite");
  for (const char* name : {"", " ", "     "}) {
    ExpectError([&] { build->SetName(name); }, 45, "Build.Name", "Invalid name");
  }
  EXPECT_EQ(build->Name(), "Suite");
}

TEST(Build, ANameIsCutAtThirtyCharactersAndStoredSo) {
  const BuildScene scene;
  const auto stored = BuildScene::Stored("1234567890123456789012345678901");
  EXPECT_EQ(stored->Name(), "123456789012345678901234567890");
  EXPECT_EQ(BuildScene::Loaded(stored->Id())->Name(), "123456789012345678901234567890");
}

TEST(Build, ANameIsTrimmedAndMayHaveAnyCharacter) {
  const BuildScene scene;
  const auto stored = BuildScene::Stored("  Müller's \"Suite\"; -- ");
  EXPECT_EQ(BuildScene::Loaded(stored->Id())->Name(), "Müller's \"Suite\"; --");
}

TEST(Build, TheStartAddressMayBeAnyNumber) {
  const BuildScene scene;
  for (const std::int32_t address : {0, -1, 0x11000000, -2147483647 - 1, 2147483647}) {
    Apply(*scene.build, [&] { scene.build->SetStartDllBaseAddress(address); });
    EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->StartDllBaseAddress(), address);
  }
}

TEST(Build, PropertiesAreReachedByNameInAnyCase) {
  const auto build = Make<Build>();
  build->Let("NAME", {Variant::FromText("Suite")});
  build->Let("startdllbaseaddress", {Variant::FromText("&H11000000")});
  EXPECT_EQ(automation::ToText(build->Get("name")), "Suite");
  EXPECT_EQ(automation::ToLong(build->Get("StartDllBaseAddress")), 0x11000000);
  ExpectError([&] { build->Let("Id", {Variant::FromLong(5)}); }, 438, "Build",
              "Object doesn't support this property or method");
}

TEST(Build, LoadReadsItsRow) {
  const BuildScene scene;
  Apply(*scene.build, [&] { scene.build->SetStartDllBaseAddress(5); });
  const auto loaded = Make<Build>();
  loaded->Call("Load", {Variant::FromLong(scene.build->Id())});
  EXPECT_EQ(loaded->Id(), scene.build->Id());
  EXPECT_EQ(loaded->Name(), "Suite");
  EXPECT_EQ(loaded->StartDllBaseAddress(), 5);
}

TEST(Build, LoadOfAnUnknownIdIsAnErrorAndChangesNothing) {
  const BuildScene scene;
  for (const int id : {0, -1, 4711}) {
    ExpectError([&] { scene.build->Load(id); }, BuildErrors::be_BuildNotFound, "Build.Load",
                "Build not found!");
  }
  EXPECT_EQ(scene.build->Name(), "Suite");
}

TEST(Build, LoadWithoutDatabaseIsAnError) {
  const Workbench bench;
  bench.files->Remove("C:\\data\\Build.mdb");
  ExpectError([] { Make<Build>()->Load(1); }, BuildErrors::beNoDatabase, "DB",
              "The database is unavailable.");
}

TEST(Build, LoadingAnotherBuildLeavesTheMembersOfTheFirst) {
  const BuildScene scene;
  scene.Add("A");
  const auto other = BuildScene::Stored("Other");
  const auto build = BuildScene::Loaded(scene.build->Id());
  EXPECT_EQ(build->Projects().Count(), 1);
  build->Load(other->Id());
  EXPECT_EQ(build->Projects().Count(), 0);
}

TEST(Build, LoadingTheSameBuildKeepsItsMembers) {
  const BuildScene scene;
  const Ref<Projects> projects(&scene.build->Projects());
  scene.build->Load(scene.build->Id());
  EXPECT_EQ(&scene.build->Projects(), projects.Get());
}

TEST(Build, TheFirstApplyEditGivesItsIdLaterOnesUpdateItsRow) {
  const Workbench bench;
  const auto build = Make<Build>();
  Apply(*build, [&] { build->SetName("Suite"); });
  const std::int32_t id = build->Id();
  EXPECT_GT(id, 0);
  Apply(*build, [&] { build->SetName("Renamed"); });
  EXPECT_EQ(build->Id(), id);
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
  EXPECT_EQ(BuildScene::Loaded(id)->Name(), "Renamed");
}

TEST(Build, BeginEditTwiceIsRefusedInTheNameOfAProject) {
  const auto build = Make<Build>();
  build->BeginEdit();
  ExpectError([&] { build->BeginEdit(); }, 1004, "Project.BeginEdit", "Already in edit mode");
}

TEST(Build, ApplyEditAndCancelEditOutsideEditModeAreRefusedInTheNameOfAProject) {
  const auto build = Make<Build>();
  ExpectError([&] { build->ApplyEdit(); }, 1004, "Project.CancelEdit", "Not in edit mode");
  ExpectError([&] { build->CancelEdit(); }, 1004, "Project.CancelEdit", "Not in edit mode");
}

TEST(Build, ApplyEditAndCancelEditLeaveEditMode) {
  const BuildScene scene;
  Apply(*scene.build, [] {});
  scene.build->BeginEdit();
  scene.build->CancelEdit();
  scene.build->BeginEdit();
  scene.build->CancelEdit();
}

TEST(Build, CancelEditRestoresNameAndAddress) {
  const BuildScene scene;
  scene.build->BeginEdit();
  scene.build->SetName("Other");
  scene.build->SetStartDllBaseAddress(7);
  scene.build->CancelEdit();
  EXPECT_EQ(scene.build->Name(), "Suite");
  EXPECT_EQ(scene.build->StartDllBaseAddress(), 0);
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Name(), "Suite");
}

TEST(Build, AFailedApplyEditCanBeTriedAgain) {
  const BuildScene scene;
  modDatabase::CloseDatabase();
  const std::string bytes = scene.Read("C:\\data\\Build.mdb");
  const auto build = Make<Build>();
  build->BeginEdit();
  build->SetName("New");
  scene.WriteBytes("C:\\data\\Build.mdb", "damaged");
  EXPECT_EQ(ErrorOf([&] { build->ApplyEdit(); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beNoDatabase));
  EXPECT_EQ(build->Id(), 0);
  scene.WriteBytes("C:\\data\\Build.mdb", bytes);
  build->ApplyEdit();
  EXPECT_EQ(BuildScene::Loaded(build->Id())->Name(), "New");
}

TEST(Build, StoresIntoADatabaseThatWasReadOnly) {
  const BuildScene scene;
  modDatabase::CloseDatabase();
  std::filesystem::permissions(scene.Posix("C:\\data\\Build.mdb"), std::filesystem::perms::owner_read);
  Apply(*scene.build, [&] { scene.build->SetName("Renamed"); });
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Name(), "Renamed");
}

TEST(Build, TwoHostsMayEditOneBuild) {
  const BuildScene scene;
  const auto second = BuildScene::Loaded(scene.build->Id());
  Apply(*second, [&] { second->SetStartDllBaseAddress(5); });
  Apply(*scene.build, [&] { scene.build->SetName("Renamed"); });
  const auto loaded = BuildScene::Loaded(scene.build->Id());
  EXPECT_EQ(loaded->Name(), "Renamed");
  EXPECT_EQ(loaded->StartDllBaseAddress(), 0) << "a build is stored whole: the last one wins";
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
}

TEST(Build, CollectionsComeToLifeOnceAndKnowTheirBuild) {
  const BuildScene scene;
  auto& build = *scene.build;
  EXPECT_EQ(&build.Projects(), &build.Projects());
  EXPECT_EQ(&build.Projects().ParentBuild(), &build);
  EXPECT_EQ(&build.SSProjects(), &build.SSProjects());
  EXPECT_EQ(build.SSProjects().Parent(), &build);
  EXPECT_EQ(build.MTSPackages().Parent(), &build);
  EXPECT_EQ(build.COMApplications().Parent(), &build);
  EXPECT_EQ(&build.Scripts(), &build.Scripts());
}

TEST(Build, CollectionsWithoutMembersAreEmpty) {
  const BuildScene scene;
  for (const char* name : {"SSProjects", "MTSPackages", "COMApplications"}) {
    const Variant collection = scene.build->Get(name);
    automation::Object& object = *collection.AsObject();
    EXPECT_EQ(automation::ToLong(object.Get("Count")), 0) << name;
    const std::string source = std::string(name) + ".item";
    ExpectError([&] { object.Get("item", {Variant::FromLong(1)}); }, 9, source, "Subscript out of range");
    ExpectError([&] { scene.build->Get(name, {Variant::FromText("1")}); }, 5, source,
                "Invalid procedure call or argument");
    Variant item;
    EXPECT_FALSE(object.Enumerate()->Next(item)) << name;
  }
}

TEST(Build, AllScriptsAreEmpty) {
  const BuildScene scene;
  for (const char* name : {"BeforeSourceSafe", "BeforeComplie", "BeforeProjectComplie", "AfterProjectCompile",
                           "BuildFailed", "CompileComplete", "AfterMTSpackage"}) {
    EXPECT_EQ(automation::ToText(scene.build->Scripts().Get(name)), "") << name;
  }
}

TEST(Build, ReadingTheProjectsClosesTheDatabase) {
  const BuildScene scene;
  modDatabase::GetDatabase();
  scene.build->Projects();
  EXPECT_FALSE(scene.apartment->DatabaseSlot());
}

TEST(Build, AFailedLoadOfTheProjectsIsTriedAgain) {
  const BuildScene scene;
  modDatabase::CloseDatabase();
  const std::string bytes = scene.Read("C:\\data\\Build.mdb");
  scene.WriteBytes("C:\\data\\Build.mdb", "damaged");
  EXPECT_EQ(ErrorOf([&] { scene.build->Projects(); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beNoDatabase));
  scene.WriteBytes("C:\\data\\Build.mdb", bytes);
  EXPECT_EQ(scene.build->Projects().Count(), 0);
}

TEST(Build, DeleteOnlyMarksTheBuild) {
  const BuildScene scene;
  scene.build->BeginEdit();
  scene.build->Delete();
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
  scene.build->CancelEdit();
  Apply(*scene.build, [] {});
  EXPECT_EQ(BuildScene::CountRows("Build"), 1) << "the mark went with the edit";
}

TEST(Build, DeletingOneWithoutProjectsRemovesItsRowAndItsScriptsOnly) {
  const BuildScene scene;
  const auto other = BuildScene::Stored("Other");
  const auto database = modDatabase::GetDatabase();
  for (const auto& build : {scene.build, other}) {
    database->Execute("INSERT INTO Scripts(BuildID) VALUES (" + std::to_string(build->Id()) + ")");
  }
  Delete(*scene.build);
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
  EXPECT_EQ(BuildScene::CountRows("Build", "id = " + std::to_string(other->Id())), 1);
  EXPECT_EQ(BuildScene::CountRows("Scripts"), 1);
  EXPECT_EQ(BuildScene::CountRows("Scripts", "BuildID = " + std::to_string(other->Id())), 1);
}

TEST(Build, DeletingRemovesEverythingThatBelongsToIt) {
  const BuildScene scene;
  scene.Add("User", "Exe", BuildScene::RowTo("Lib") + BuildScene::RowTo("Outside"));
  scene.Add("Lib");
  scene.build->AutoDetectReferences();
  const auto other = BuildScene::Stored("Other");
  other->Projects().Add(scene.WriteProject("Third", "Exe", BuildScene::RowTo("Outside")));
  EXPECT_EQ(BuildScene::CountRows("References"), 1);
  EXPECT_EQ(BuildScene::CountRows("ExternalReferences"), 2);
  Delete(*scene.build);
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
  EXPECT_EQ(BuildScene::CountRows("References"), 0);
  EXPECT_EQ(BuildScene::CountRows("ExternalReferences"), 1);
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
  EXPECT_EQ(BuildScene::Loaded(other->Id())->Projects().Count(), 1);
}

TEST(Build, DeletingClosesTheDatabaseAndReleasesTheCollections) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const Ref<Projects> projects(&scene.build->Projects());
  Delete(*scene.build);
  EXPECT_FALSE(scene.apartment->DatabaseSlot());
  EXPECT_EQ(projects->Count(), 0);
  EXPECT_EQ(a->Owner(), nullptr);
  EXPECT_EQ(ErrorOf([&] { BuildScene::Loaded(scene.build->Id()); }).Number(),
            static_cast<std::int32_t>(BuildErrors::be_BuildNotFound));
}

TEST(Build, DeletingIsRefusedWhileTheFirstProjectIsReferenced) {
  const BuildScene scene;
  scene.Add("Lib");
  scene.Add("User", "Exe", BuildScene::RowTo("Lib"));
  scene.build->BeginEdit();
  scene.build->Delete();
  ExpectError([&] { scene.build->ApplyEdit(); }, BuildErrors::beBuildCanNotDelete, "Build.DeleteBuild",
              "Error occured when deleteing build! Project is referenced by other projects");
  EXPECT_EQ(BuildScene::CountRows("Project"), 2);
  EXPECT_EQ(scene.build->Projects().Count(), 2);
  scene.build->CancelEdit();
}

TEST(Build, ARefusedDeletionPutsBackWhatWasRemovedBefore) {
  const BuildScene scene;
  scene.Add("First", "Exe", BuildScene::RowTo("Outside"));
  scene.Add("Lib");
  scene.Add("User", "Exe", BuildScene::RowTo("Lib"));
  scene.build->BeginEdit();
  scene.build->Delete();
  EXPECT_EQ(ErrorOf([&] { scene.build->ApplyEdit(); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beBuildCanNotDelete));
  EXPECT_EQ(BuildScene::CountRows("Project"), 3);
  EXPECT_EQ(BuildScene::CountRows("ExternalReferences"), 1);
  EXPECT_EQ(scene.build->Projects().Count(), 3);
  EXPECT_EQ(scene.build->Projects().GetByName("First")->Name(), "First");
}

TEST(Build, DeletingWithoutDatabaseNamesTheCause) {
  const BuildScene scene;
  modDatabase::CloseDatabase();
  scene.files->Remove("C:\\data\\Build.mdb");
  ExpectError([&] { Delete(*scene.build); }, BuildErrors::beBuildCanNotDelete, "Build.DeleteBuild",
              "Error occured when deleteing build! The database is unavailable.");
}

TEST(Build, ADeletionThatCanNotBeCommittedRemovesNothing) {
  const BuildScene scene;
  scene.Add("A");
  modDatabase::CloseDatabase();
  auto ports = scene.apartment->Ports();
  const auto workspace = std::make_shared<StubbornWorkspace>(ports.workspace);
  ports.workspace = workspace;
  const Apartment apartment(ports);
  const auto build = BuildScene::Loaded(scene.build->Id());
  build->Projects();
  workspace->refuses = true;
  ExpectError([&] { Delete(*build); }, BuildErrors::beBuildCanNotDelete, "Build.DeleteBuild",
              "Error occured when deleteing build! Project delete failed");
  workspace->refuses = false;
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
  EXPECT_EQ(BuildScene::CountRows("Build"), 1);
  build->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("Build"), 0) << "still marked, and tried again";
}

TEST(Build, KillReleasesTheCollections) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const Ref<Projects> projects(&scene.build->Projects());
  const Ref<SSProjects> sources(&scene.build->SSProjects());
  scene.build->Kill();
  EXPECT_EQ(projects->Count(), 0);
  EXPECT_EQ(sources->Parent(), nullptr);
  EXPECT_EQ(a->Owner(), nullptr);
  EXPECT_EQ(ErrorOf([&] { a->ParentBuild(); }).Number(), 91);
  EXPECT_EQ(BuildScene::CountRows("Project"), 1) << "nothing is deleted";
}

TEST(Build, AKilledBuildCanBeUsedAgain) {
  const BuildScene scene;
  scene.Add("A");
  scene.build->Kill();
  scene.build->Kill();
  EXPECT_EQ(scene.build->Name(), "Suite");
  EXPECT_EQ(scene.build->Projects().Count(), 1) << "read anew";
}

TEST(Build, CommandsRunToTheirEnd) {
  const BuildScene scene;
  scene.WriteBytes("C:\\tool.exe",
                   "#!/bin/sh\nsleep 0.1\necho $1 > '" + scene.root.Path("drive_c/out.txt") + "'\n");
  std::filesystem::permissions(scene.Posix("C:\\tool.exe"), std::filesystem::perms::owner_all);
  scene.build->Call("CmdExecute", {Variant::FromText("C:\\tool.exe \"a b\"")});
  EXPECT_EQ(scene.Read("C:\\out.txt"), "a b\n");
  ExpectError([&] { scene.build->CmdExecute("gone.exe /x"); }, BuildErrors::beNoProcessStarted,
              "modExecute.CmdExec", "Failed to start the following process: gone.exe /x");
}

TEST(Build, MethodsTakeTheirArgumentsByNumberAndKind) {
  const BuildScene scene;
  EXPECT_EQ(ErrorOf([&] { scene.build->Call("Load"); }).Number(), 449);
  EXPECT_EQ(ErrorOf([&] { scene.build->Call("Load", {Variant::FromText("one")}); }).Number(), 13);
  EXPECT_EQ(ErrorOf([&] {
              scene.build->Call("Load", {Variant::FromLong(1), Variant::FromLong(2)});
            }).Number(),
            450);
  EXPECT_EQ(ErrorOf([&] { scene.build->Call("Unload"); }).Number(), 438);
}

TEST(Build, AnEventReachesEveryListenerInTheOrderTheyCame) {
  const BuildScene scene;
  std::string order;
  RecordingEvents first;
  RecordingEvents second;
  first.On("BuildComplete", [&](bool&) { order += "first "; });
  second.On("BuildComplete", [&](bool&) { order += "second "; });
  scene.build->AddSink(first);
  scene.build->AddSink(second);
  scene.build->RaiseBuildComplete();
  EXPECT_EQ(order, "first second ");
}

TEST(Build, AListenerThatWasRemovedHearsNothing) {
  const BuildScene scene;
  RecordingEvents events;
  scene.build->AddSink(events);
  scene.build->RemoveSink(events);
  scene.build->RemoveSink(events);
  scene.build->RaiseBuildComplete();
  EXPECT_TRUE(events.heard.empty());
}

TEST(Build, AListenerMayEndTheBuildThatItHears) {
  const Workbench bench;
  RecordingEvents events;
  auto build = Make<Build>();
  build->AddSink(events);
  events.On("BuildComplete", [&](bool&) { build = nullptr; });
  build->RaiseBuildComplete();
  EXPECT_FALSE(build);
}

}  // namespace
}  // namespace hearthmake
