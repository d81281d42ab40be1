#include "build/Projects.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "automation/Interface.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;
using support::RecordingEvents;
using Names = std::vector<std::string>;

void Delete(Project& project) {
  project.BeginEdit();
  project.Delete();
  project.ApplyEdit();
}

void Refer(Project& from, Project& to) {
  from.BeginEdit();
  from.ReferenceList().AddInternalReference(to);
  from.ApplyEdit();
}

TEST(Projects, MembersStandInInterfaceOrder) {
  Names names;
  for (const auto& member : Projects::Describe().Members()) names.push_back(member.name);
  EXPECT_EQ(names, (Names{"NewEnum", "Count", "item", "Add", "Build", "SetCompileOrder", "GetByName"}));
}

TEST(Projects, AreReachedByPositionIdAndName) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  auto& projects = scene.build->Projects();
  EXPECT_EQ(projects.Count(), 2);
  EXPECT_EQ(projects.Item(Variant::FromLong(2)), b);
  EXPECT_EQ(projects.Item(Variant::FromText(std::to_string(a->Id()))), a);
  EXPECT_EQ(projects.GetByName("b"), b) << "names compare without regard to case";
}

TEST(Projects, AreReachedByTheDefaultMember) {
  const BuildScene scene;
  scene.Add("A");
  const auto b = scene.Add("B");
  EXPECT_EQ(scene.build->Get("Projects", {Variant::FromLong(2)}).AsObject(), b.Get());
  EXPECT_EQ(scene.build->Get("PROJECTS", {Variant::FromText(std::to_string(b->Id()))}).AsObject(), b.Get());
  EXPECT_EQ(ErrorOf([&] { scene.build->Get("Projects", {Variant::FromLong(3)}); }).Number(), 9);
}

TEST(Projects, AnUnknownPositionIsErrorNineAnUnknownKeyOrNameErrorFive) {
  const BuildScene scene;
  scene.Add("A");
  auto& projects = scene.build->Projects();
  for (const int position : {0, 2, -1}) {
    ExpectError([&] { projects.Item(Variant::FromLong(position)); }, 9, "Projects.item",
                "Subscript out of range");
  }
  ExpectError([&] { projects.Item(Variant::FromText("A")); }, 5, "Projects.item",
              "Invalid procedure call or argument");
  ExpectError([&] { projects.GetByName("B"); }, 5, "Projects.GetByName",
              "Invalid procedure call or argument");
}

TEST(Projects, CanBeWalked) {
  const BuildScene scene;
  scene.Add("A");
  scene.Add("B");
  const auto walk = scene.build->Projects().Enumerate();
  std::string names;
  for (Variant item; walk->Next(item);) names += automation::ToText(item.AsObject()->Get("Name"));
  EXPECT_EQ(names, "AB");
}

TEST(Projects, AddStoresTheProjectAndTellsTheHost) {
  const BuildScene scene;
  RecordingEvents events;
  scene.build->AddSink(events);
  const auto lib = scene.Add("Lib");
  EXPECT_EQ(lib->Name(), "Lib");
  EXPECT_EQ(events.heard, Names{"ProjectAdded Lib"});
  EXPECT_EQ(BuildScene::CountRows("Project", "idBuild = " + std::to_string(scene.build->Id())), 1);
  EXPECT_EQ(lib->Owner(), &scene.build->Projects());
  lib->BeginEdit();
  scene.build->RemoveSink(events);
}

TEST(Projects, TheNewProjectIsInTheListsWhenItsEventIsHeard) {
  const BuildScene scene;
  RecordingEvents events;
  scene.build->AddSink(events);
  bool found = false;
  events.On("ProjectAdded Lib", [&](bool&) { found = bool(scene.build->Projects().GetByName("Lib")); });
  scene.Add("Lib");
  EXPECT_TRUE(found);
}

TEST(Projects, AddRefusesANameThatIsTakenInAnyCase) {
  const BuildScene scene;
  scene.Add("Lib");
  scene.Write("C:\\other\\x.vbp", "Type=Exe\nName=\"LIB\"\n");
  ExpectError([&] { scene.build->Projects().Add("C:\\other\\x.vbp"); }, BuildErrors::beProjectAlreadyInBuild,
              "Projects.Add", "A project with the same name, LIB, is already part of this build");
  EXPECT_EQ(scene.Names(), Names{"Lib"});
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
}

TEST(Projects, TheSameNameMayBeInAnotherBuild) {
  const BuildScene scene;
  scene.Add("Lib");
  const auto other = BuildScene::Stored("Other");
  other->Projects().Add("C:\\src\\Lib.vbp");
  EXPECT_EQ(other->Projects().Count(), 1);
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Projects().Count(), 1);
}

TEST(Projects, AddOfAMissingFileNamesItAndLeavesNoFileBehind) {
  const BuildScene scene;
  ExpectError([&] { scene.build->Projects().Add("C:\\src\\gone.vbp"); }, 53, "Project.LoadFromFile",
              "File not found: C:\\src\\gone.vbp");
  EXPECT_FALSE(scene.files->FileExists("C:\\src\\gone.vbp"));
  EXPECT_EQ(scene.build->Projects().Count(), 0);
}

TEST(Projects, AddOfWhatIsNoProjectFileIsRefused) {
  const BuildScene scene;
  for (const char* path : {"C:\\src\\a.txt", "C:\\src\\a", "", "vb"}) {
    ExpectError([&] { scene.build->Projects().Add(path); }, 45, "Project.LoadFromFile",
                "File is not a vbp file");
  }
}

TEST(Projects, AddSurvivesEveryKindOfBadFile) {
  const BuildScene scene;
  scene.WriteBytes("C:\\src\\empty.vbp", "");
  scene.WriteBytes("C:\\src\\binary.vbp", std::string("MZ\0\0\xFF\xFE\r\n\0Type=\0\r\n", 18));
  scene.WriteBytes("C:\\src\\lf.vbp", "Type=Exe\nName=\"Lf\"\n");
  scene.WriteBytes("C:\\src\\endless.vbp", "Type=Exe");
  scene.files->CreateFolders("C:\\src\\folder.vbp");
  for (const char* name : {"empty", "binary", "lf", "endless", "folder"}) {
    const std::string path = std::string("C:\\src\\") + name + ".vbp";
    const auto error = ErrorOf([&] { scene.build->Projects().Add(path); });
    EXPECT_TRUE(error.Number() == 45 || error.Number() == 53) << name << ": " << error.Description();
    EXPECT_FALSE(error.Description().empty());
  }
  EXPECT_EQ(scene.build->Projects().Count(), 0);
  EXPECT_EQ(BuildScene::CountRows("Project"), 0);
}

TEST(Projects, AddTakesALargeFile) {
  const BuildScene scene;
  std::string bytes = "Type=Exe\r\nName=\"Large\"\r\n";
  while (bytes.size() < 50'000'000)
    bytes += "Class=Clazz; source\\in\\a\\folder\\with\\a\\long\\name.cls\r\n";
  scene.WriteBytes("C:\\src\\large.vbp", bytes);
  EXPECT_EQ(scene.build->Projects().Add("C:\\src\\large.vbp")->Name(), "Large");
}

TEST(Projects, AFailedAddLeavesNoProjectHalfAdded) {
  const BuildScene scene;
  const std::string path = scene.WriteProject("Lib");
  scene.build->Projects();
  modDatabase::CloseDatabase();
  const std::string bytes = scene.Read("C:\\data\\Build.mdb");
  scene.WriteBytes("C:\\data\\Build.mdb", "damaged");
  ExpectError([&] { scene.build->Projects().Add(path); }, BuildErrors::beNoDatabase, "DB",
              "The database is unavailable.");
  EXPECT_EQ(scene.build->Projects().Count(), 0);
  scene.WriteBytes("C:\\data\\Build.mdb", bytes);
  EXPECT_EQ(scene.build->Projects().Add(path)->Name(), "Lib");
}

TEST(Projects, AnErrorOfAListenerReachesTheCallerOfAddWhoHasTheProject) {
  const BuildScene scene;
  RecordingEvents events;
  scene.build->AddSink(events);
  events.On("ProjectAdded Lib", [](bool&) { automation::Raise(45, "Host", "no"); });
  ExpectError([&] { scene.Add("Lib"); }, 45, "Host", "no");
  EXPECT_EQ(scene.Names(), Names{"Lib"});
  scene.build->RemoveSink(events);
}

TEST(Projects, AddOfAGroupAddsEveryProjectItLists) {
  const BuildScene scene;
  scene.WriteProject("A");
  scene.WriteProject("B");
  scene.Write("C:\\groups\\all.vbg", "VBGROUP 5.0\nProject=..\\src\\A.vbp\nStartupProject=..\\src\\B.vbp\n");
  const auto last = scene.build->Projects().Add("C:\\groups\\all.vbg");
  EXPECT_EQ(scene.Names(), (Names{"A", "B"}));
  EXPECT_EQ(last->Name(), "B") << "the last of the collection";
  EXPECT_EQ(last->ProjectPath(), "C:\\src\\B.vbp");
}

TEST(Projects, AGroupIsKnownByItsLastThreeCharactersInAnyCase) {
  const BuildScene scene;
  scene.WriteProject("A");
  for (const char* name : {"C:\\src\\ALL.VBG", "C:\\src\\b.Vbg"}) scene.Write(name, "Project=A.vbp\n");
  EXPECT_TRUE(scene.build->Projects().Add("C:\\src\\ALL.VBG"));
  EXPECT_EQ(scene.Names(), Names{"A"});
}

TEST(Projects, RowsOfAGroupAreReadInEverySpelling) {
  const BuildScene scene;
  for (const char* name : {"A", "B", "C", "D"}) scene.WriteProject(name);
  scene.WriteBytes(
      "C:\\src\\all.vbg",
      "VBGROUP 5.0\r\nPROJECT=\"A.vbp\"\r\nstartupproject = C:\\src\\B.vbp \nProject=sub\\..\\C.vbp\r\n"
      "Other=X.vbp\r\n[Section]\r\nnoise\r\nProject=\r\nProject=D.vbp");
  scene.build->Projects().Add("C:\\src\\all.vbg");
  EXPECT_EQ(scene.Names(), (Names{"A", "B", "C", "D"}));
}

TEST(Projects, AGroupPassesOverNamesThatAreInTheBuild) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  scene.WriteProject("B");
  scene.Write("C:\\src\\all.vbg", "Project=A.vbp\nProject=B.vbp\nProject=B.vbp\n");
  EXPECT_EQ(scene.build->Projects().Add("C:\\src\\all.vbg")->Name(), "B");
  EXPECT_EQ(scene.Names(), (Names{"A", "B"}));
}

TEST(Projects, AGroupThatBringsNothingNewGivesNothing) {
  const BuildScene scene;
  scene.Add("A");
  scene.Write("C:\\src\\all.vbg", "Project=A.vbp\n");
  scene.Write("C:\\src\\none.vbg", "");
  EXPECT_FALSE(scene.build->Projects().Add("C:\\src\\all.vbg"));
  EXPECT_FALSE(scene.build->Projects().Add("C:\\src\\none.vbg"));
  EXPECT_EQ(scene.build->Get("Projects")
                .AsObject()
                ->Call("Add", {Variant::FromText("C:\\src\\none.vbg")})
                .AsObject(),
            nullptr);
}

TEST(Projects, AFailureInAGroupEndsTheImportAndKeepsWhatWasAdded) {
  const BuildScene scene;
  scene.WriteProject("A");
  scene.WriteProject("B");
  scene.Write("C:\\src\\all.vbg", "Project=A.vbp\nProject=gone.vbp\nProject=B.vbp\n");
  ExpectError([&] { scene.build->Projects().Add("C:\\src\\all.vbg"); }, 53, "Project.LoadFromFile",
              "File not found: C:\\src\\gone.vbp");
  EXPECT_EQ(scene.Names(), Names{"A"});
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
}

TEST(Projects, AGroupThatListsItselfIsRefused) {
  const BuildScene scene;
  scene.Write("C:\\src\\all.vbg", "Project=all.vbg\n");
  ExpectError([&] { scene.build->Projects().Add("C:\\src\\all.vbg"); }, 45, "Project.LoadFromFile",
              "File is not a vbp file");
}

TEST(Projects, AMissingGroupNamesItsFileAndLeavesNoneBehind) {
  const BuildScene scene;
  ExpectError([&] { scene.build->Projects().Add("C:\\src\\gone.vbg"); }, 53, "Projects.Add",
              "File not found: C:\\src\\gone.vbg");
  EXPECT_FALSE(scene.files->FileExists("C:\\src\\gone.vbg"));
}

TEST(Projects, RemovalTakesAProjectOutOfBothLists) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  scene.Add("B");
  Delete(*a);
  auto& projects = scene.build->Projects();
  EXPECT_EQ(scene.Names(), Names{"B"});
  EXPECT_EQ(ErrorOf([&] { projects.GetByName("A"); }).Number(), 5);
  EXPECT_EQ(ErrorOf([&] { projects.Item(Variant::FromText(std::to_string(a->Id()))); }).Number(), 5);
  EXPECT_EQ(scene.Add("A")->Name(), "A") << "its name is free again";
}

TEST(Projects, ARemovedProjectStandsAlone) {
  const BuildScene scene;
  const auto a = scene.Add("A", "Exe");
  Delete(*a);
  EXPECT_EQ(a->Owner(), nullptr);
  EXPECT_EQ(a->Name(), "A");
  EXPECT_EQ(ErrorOf([&] { a->Compile(); }).Number(), 91);
}

TEST(Projects, LoadGivesEveryProjectOfTheBuildAndClosesTheDatabase) {
  const BuildScene scene;
  scene.Add("B");
  scene.Add("A", "Exe", BuildScene::RowTo("B"));
  BuildScene::Stored("Other")->Projects().Add(scene.WriteProject("X"));
  const auto loaded = BuildScene::Loaded(scene.build->Id());
  auto& projects = loaded->Projects();
  EXPECT_FALSE(scene.apartment->DatabaseSlot());
  EXPECT_EQ(projects.Count(), 2);
  EXPECT_EQ(projects.Item(Variant::FromLong(1))->Name(), "B") << "in the order of the table";
  EXPECT_TRUE(projects.GetByName("A")->ReferenceList().IsProjectReferencing(projects.GetByName("B")->Id()));
}

TEST(Projects, TwoHostsHaveListsOfTheirOwn) {
  const BuildScene scene;
  scene.Add("A");
  const auto second = BuildScene::Loaded(scene.build->Id());
  EXPECT_EQ(second->Projects().Count(), 1);
  scene.Add("B");
  EXPECT_EQ(second->Projects().Count(), 1);
  second->Projects().Add(scene.WriteProject("C"));
  EXPECT_EQ(scene.build->Projects().Count(), 2);
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->Projects().Count(), 3) << "nothing was lost";
}

TEST(Projects, AProjectThatAnotherHostRemovedIsStoredAgain) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  Delete(*BuildScene::Loaded(scene.build->Id())->Projects().GetByName("A"));
  EXPECT_EQ(BuildScene::CountRows("Project"), 0);
  a->BeginEdit();
  a->SetMajorVer(3);
  a->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("Project"), 1);
}

TEST(Projects, AReferenceRowNamesTheProjectByTheBinarysPathFirst) {
  const BuildScene scene;
  const auto byName = scene.Add("First", "OleDll");
  byName->SetExeName32("Lib.dll");
  byName->SetPath32("..\\elsewhere");
  const auto byPath = scene.Add("Second");
  byPath->SetExeName32("Lib.dll");
  byPath->SetPath32("..\\bin");
  const auto user = scene.Add("User", "Exe");
  auto& projects = scene.build->Projects();
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\G{1}#1.0#0#..\\BIN\\lib.DLL#x", *user), byPath.Get());
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\G{1}#1.0#0#C:\\bin\\Lib.dll#x", *user), byPath.Get());
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\G{1}#1.0#0#C:\\nowhere\\LIB.dll#x", *user),
            byName.Get())
      << "by the file name otherwise, the first in the list";
}

TEST(Projects, AReferenceRowNeverNamesTheProjectItself) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  EXPECT_EQ(scene.build->Projects().FindByReferenceRow("Reference=*\\G{1}#1.0#0#Lib.dll#x", *lib), nullptr);
}

TEST(Projects, AResourceIndexIsNoPartOfTheNameThatARowGives) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  const auto user = scene.Add("User", "Exe");
  EXPECT_EQ(scene.build->Projects().FindByReferenceRow("Reference=*\\G{1}#1.0#0#Lib.dll\\3#x", *user),
            lib.Get());
}

TEST(Projects, AControlRowNamesTheProjectByItsFile) {
  const BuildScene scene;
  const auto control = scene.Add("Ctl", "Control");
  const auto user = scene.Add("User", "Exe");
  EXPECT_EQ(scene.build->Projects().FindByReferenceRow("Object={1}#1.0#0; CTL.ocx", *user), control.Get());
}

TEST(Projects, AProjectRowNamesTheProjectByItsProjectFile) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  const auto user = scene.Add("User", "Exe");
  auto& projects = scene.build->Projects();
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\A..\\SRC\\lib.vbp", *user), lib.Get());
  EXPECT_EQ(projects.FindByReferenceRow("Object=*\\ALib.vbp", *user), lib.Get());
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\A..\\Lib.vbp", *user), nullptr);
}

TEST(Projects, RowsThatNameNothingFindNothing) {
  const BuildScene scene;
  scene.Add("Lib");
  const auto user = scene.Add("User", "Exe");
  for (const char* row : {"", "Reference=", "Reference=*\\G", "Reference=*\\G{1}#1.0#0##", "Object={",
                          "Object={1}##;", "Reference=Lib.dll", "Object=", "=", "###"}) {
    EXPECT_EQ(scene.build->Projects().FindByReferenceRow(row, *user), nullptr) << row;
  }
}

TEST(Projects, LookUpsNeverChangeAProject) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib", "OleDll", "Path32=\"C:\\bin\"\n");
  const auto user = scene.Add("User", "Exe");
  EXPECT_EQ(scene.build->Projects().FindByReferenceRow("Reference=*\\G{1}#1.0#0#C:\\bin\\Lib.dll#x", *user),
            lib.Get());
  EXPECT_EQ(lib->Path32(), "C:\\bin");
}

TEST(Projects, SetCompileOrderKeepsAListWithoutReferences) {
  const BuildScene scene;
  for (const char* name : {"C", "A", "B"}) scene.Add(name);
  scene.build->Projects().SetCompileOrder();
  EXPECT_EQ(scene.Names(), (Names{"C", "A", "B"}));
}

TEST(Projects, SetCompileOrderOfAnEmptyBuildIsNoError) {
  const BuildScene scene;
  scene.build->Projects().SetCompileOrder();
  EXPECT_EQ(scene.build->Projects().Count(), 0);
}

TEST(Projects, SetCompileOrderPutsLibrariesBeforeTheirUsers) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  const auto c = scene.Add("C");
  Refer(*a, *b);
  Refer(*b, *c);
  scene.build->Projects().SetCompileOrder();
  EXPECT_EQ(scene.Names(), (Names{"C", "B", "A"}));
  EXPECT_EQ(scene.build->Projects().Item(Variant::FromLong(1)), c);
  EXPECT_EQ(scene.build->Projects().Item(Variant::FromText(std::to_string(a->Id()))), a);
  EXPECT_EQ(scene.build->Projects().GetByName("B"), b) << "names are found as before";
}

TEST(Projects, ExternalReferencesMoveNothing) {
  const BuildScene scene;
  scene.Add("A", "Exe", BuildScene::RowTo("Outside"));
  scene.Add("B");
  EXPECT_EQ(automation::ToLong(scene.build->Projects().GetByName("A")->ReferenceList().Count()), 1);
  scene.build->Projects().SetCompileOrder();
  EXPECT_EQ(scene.Names(), (Names{"A", "B"}));
}

TEST(Projects, TwoProjectsThatReferenceEachOtherHaveNoOrder) {
  const BuildScene scene;
  const std::string a = std::to_string(scene.Add("A")->Id());
  const std::string b = std::to_string(scene.Add("B")->Id());
  const auto database = modDatabase::GetDatabase();
  database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (" + a + "," + b + ")");
  database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (" + b + "," + a + ")");
  const auto loaded = BuildScene::Loaded(scene.build->Id());
  ExpectError([&] { loaded->Projects().SetCompileOrder(); }, BuildErrors::beCyclicReferences,
              "Projects.SetCompileOrder", "Compile order can't be determined because of cyclic references.");
  EXPECT_EQ(loaded->Projects().Item(Variant::FromLong(1))->Name(), "B") << "as the last pass left it";
  EXPECT_EQ(loaded->Projects().Count(), 2);
}

TEST(Projects, ACycleOfThreeHasNoOrderAndCanBeBroken) {
  const BuildScene scene;
  const auto a = scene.Add("A");
  const auto b = scene.Add("B");
  const auto c = scene.Add("C");
  Refer(*a, *b);
  Refer(*b, *c);
  Refer(*c, *a);
  EXPECT_EQ(ErrorOf([&] { scene.build->Projects().SetCompileOrder(); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beCyclicReferences));
  c->BeginEdit();
  c->ReferenceList().Remove(Variant::FromLong(1));
  c->ApplyEdit();
  scene.build->Projects().SetCompileOrder();
  EXPECT_EQ(scene.Names(), (Names{"C", "B", "A"}));
}

TEST(Projects, AReferenceToAProjectThatIsGoneIsPassedOver) {
  const BuildScene scene;
  const std::string a = std::to_string(scene.Add("A")->Id());
  scene.Add("B");
  modDatabase::GetDatabase()->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (" + a +
                                      ",4711)");
  const auto loaded = BuildScene::Loaded(scene.build->Id());
  loaded->Projects().SetCompileOrder();
  EXPECT_EQ(loaded->Projects().Item(Variant::FromLong(1))->Name(), "A");
}

TEST(Projects, AreOnTheirOwnAfterTheirBuildIsGone) {
  const BuildScene scene;
  scene.Add("A");
  const Ref<Projects> projects(&scene.build->Projects());
  scene.build->Kill();
  EXPECT_EQ(projects->Count(), 0);
  EXPECT_EQ(ErrorOf([&] { projects->ParentBuild(); }).Number(), 91);
  EXPECT_EQ(ErrorOf([&] { projects->Add("C:\\src\\A.vbp"); }).Number(), 91);
}

}  // namespace
}  // namespace hearthmake
