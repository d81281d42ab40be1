// Project: registration, distribution, check-in, opening for editing.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/ErrorExpect.hpp"
#include "support/ProjectBench.hpp"
#include "support/SourceScene.hpp"

namespace hearthmake {
namespace {

using platform::WindowState;
using support::Failure;
using support::FailureOf;
using support::NoticeSink;
using support::ProjectBench;
using support::SourceScene;

using Texts = std::vector<std::string>;

constexpr const char* kSucceed = "echo \"Build of '$PROJECT' succeeded.\" > \"$LOG\"";

TEST(ProjectRegister, StartsRegsvr32ForWhatIsInProcess) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\a b\\Lib.vbp", "Lib");
  Project& control = bench.Add("C:\\src\\Ctl.vbp", ProjectBench::ProjectText("Control", "Ctl"));
  bench.MakeBinary("C:\\src\\a b\\Lib.dll", 1);
  bench.MakeBinary("C:\\src\\Ctl.ocx", 2);
  library.Register();
  control.UnRegister();
  EXPECT_EQ(bench.shell->commands,
            (Texts{"regsvr32.exe /S \"C:\\src\\a b\\Lib.dll\"", "regsvr32.exe /S /U \"C:\\src\\Ctl.ocx\""}));
  EXPECT_EQ(bench.shell->windows, (std::vector{WindowState::MinimizedFocus, WindowState::MinimizedFocus}));
}

TEST(ProjectRegister, AnActiveXExeRegistersItselfAndNeverThroughRegsvr32) {
  ProjectBench bench;
  Project& server = bench.Add("C:\\src\\Srv.vbp", ProjectBench::ProjectText("OleExe", "Srv"));
  bench.MakeBinary("C:\\src\\Srv.exe", 1);
  server.Register();
  server.UnRegister();
  EXPECT_EQ(bench.shell->commands,
            (Texts{"\"C:\\src\\Srv.exe\" /RegServer", "\"C:\\src\\Srv.exe\" /UnregServer"}));
}

TEST(ProjectRegister, NothingHappensWithoutBinaryOrForAStandardExe) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  Project& program = bench.Add("C:\\src\\App.vbp", ProjectBench::ProjectText("Exe", "App"));
  bench.WriteBytes("C:\\src\\App.exe", "MZ");
  for (Project* project : {&library, &program}) {
    project->Register();
    project->UnRegister();
  }
  EXPECT_TRUE(bench.shell->commands.empty());
}

TEST(ProjectRegister, ACompileRegistersAnActiveXBinary) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.MakeBinary("C:\\src\\Lib.dll", 1);
  bench.SetCompiler(kSucceed);
  EXPECT_TRUE(library.Compile());
  EXPECT_EQ(bench.shell->commands, Texts{"regsvr32.exe /S \"C:\\src\\Lib.dll\""});
}

TEST(ProjectRegister, WhatIsRegisteredCanBeReferenced) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.MakeBinary("C:\\src\\Lib.dll", 1, 2, 3, "My library");
  library.Register();
  const auto value = bench.registry->Query(platform::RegistryRoot::ClassesRoot,
                                           "Typelib\\" + ProjectBench::LibraryId(1) + "\\2.3", "");
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(value->data, "My library");
  library.UnRegister();
  EXPECT_FALSE(bench.registry->KeyExists(platform::RegistryRoot::ClassesRoot,
                                         "Typelib\\" + ProjectBench::LibraryId(1)));
}

TEST(ProjectRunInVB, StartsTheDevelopmentEnvironmentInANormalWindow) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\my lib\\Lib.vbp", "Lib");
  bench.SetCompiler("exit 0");
  library.RunProjectInVB();
  EXPECT_EQ(bench.shell->commands, Texts{"C:\\vb6.exe \"C:\\src\\my lib\\Lib.vbp\""});
  EXPECT_EQ(bench.shell->windows, std::vector{WindowState::Normal});
}

TEST(ProjectRunInVB, AProgramThatIsMissingIsNamed) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.SetOption("VBExe", "C:\\no\\vb6.exe");
  EXPECT_EQ(FailureOf([&] { library.RunProjectInVB(); }),
            Failure(53, "Shell", "File not found: C:\\no\\vb6.exe"));
}

TEST(ProjectDistribute, WithoutCopyPathCopiesNothing) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  EXPECT_TRUE(library.DistributeBinaryFile());
  EXPECT_TRUE(bench.sink.notices.empty());
}

TEST(ProjectDistribute, CopiesTheBinaryToAFolderWithOrWithoutFinalBackslash) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "first");
  bench.files->CreateFolders("C:\\out");
  library.SetCopyPath("C:\\out");
  EXPECT_TRUE(library.DistributeBinaryFile());
  EXPECT_EQ(bench.Read("C:\\out\\Lib.dll"), "first");
  bench.WriteBytes("C:\\src\\Lib.dll", "second");
  library.SetCopyPath("C:\\out\\");
  EXPECT_TRUE(library.DistributeBinaryFile());
  EXPECT_EQ(bench.Read("C:\\out\\Lib.dll"), "second");
  EXPECT_EQ(library.CopyPath(), "C:\\out\\");
}

TEST(ProjectDistribute, CopiesTheTypeLibraryOfARemoteServerToo) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "binary");
  bench.WriteBytes("C:\\src\\Lib.tlb", "library");
  bench.files->CreateFolders("C:\\out");
  library.SetCopyPath("C:\\out");
  library.SetRemoteServerFiles(true);
  EXPECT_TRUE(library.DistributeBinaryFile());
  EXPECT_EQ(bench.Read("C:\\out\\Lib.tlb"), "library");
}

TEST(ProjectDistribute, TellsWhatCouldNotBeCopied) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "binary");
  library.SetCopyPath("C:\\nowhere");
  EXPECT_FALSE(library.DistributeBinaryFile());
  ASSERT_EQ(bench.sink.notices.size(), 1U);
  EXPECT_TRUE(
      bench.sink.notices[0].starts_with("Failed to copy C:\\src\\Lib.dll to the following path: "
                                        "\r\nC:\\nowhere\r\nError message: Path not found"))
      << bench.sink.notices[0];
}

TEST(ProjectDistribute, FailsForAMissingBinaryAFileInPlaceOfTheFolderAndAMissingTypeLibrary) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.files->CreateFolders("C:\\out");
  library.SetCopyPath("C:\\out");
  EXPECT_FALSE(library.DistributeBinaryFile());
  bench.WriteBytes("C:\\src\\Lib.dll", "binary");
  bench.WriteBytes("C:\\file", "x");
  library.SetCopyPath("C:\\file");
  EXPECT_FALSE(library.DistributeBinaryFile());
  library.SetCopyPath("C:\\out");
  library.SetRemoteServerFiles(true);
  EXPECT_FALSE(library.DistributeBinaryFile());
  ASSERT_EQ(bench.sink.notices.size(), 3U);
  EXPECT_TRUE(bench.sink.notices[2].starts_with("Failed to copy C:\\src\\Lib.tlb to"))
      << bench.sink.notices[2];
}

TEST(ProjectDistribute, AFailureDoesNotEndTheRun) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  library.SetCopyPath("C:\\nowhere");
  bench.SetCompiler(kSucceed);
  EXPECT_TRUE(bench.build->Projects().Build(false));
  EXPECT_EQ(bench.sink.notices.size(), 1U);
}

// Takes the binary away when it has been compiled.
class Thief final : public BuildEvents {
 public:
  explicit Thief(ProjectBench& bench) : m_bench(bench) { m_bench.build->AddSink(*this); }
  ~Thief() override { m_bench.build->RemoveSink(*this); }
  void ProjectCompiled(Project& objProject) override { m_bench.files->Remove(objProject.FullPath32()); }

 private:
  ProjectBench& m_bench;
};

TEST(ProjectDistribute, ABinaryThatVanishesAfterItsCompileIsReportedAndTheRunGoesOn) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  Project& last = bench.AddDll("C:\\src\\Last.vbp", "Last");
  for (const char* name : {"Lib", "Last"}) {
    bench.MakeBinary(std::string("C:\\src\\") + name + ".dll", 1);
  }
  bench.files->CreateFolders("C:\\out");
  library.SetCopyPath("C:\\out");
  bench.SetCompiler(kSucceed);
  const Thief thief(bench);
  EXPECT_TRUE(bench.build->Projects().Build(false));
  EXPECT_EQ(bench.sink.notices,
            Texts{"Failed to copy C:\\src\\Lib.dll to the following path: \r\nC:\\out\r\nError message: "
                  "File not found: C:\\src\\Lib.dll"});
  EXPECT_TRUE(last.CompiledOK());
  EXPECT_FALSE(bench.files->FileExists("C:\\out\\Lib.dll"));
}

TEST(ProjectDistribute, ATargetThatIsInUseKeepsItsOldBytesForItsUser) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "new");
  bench.WriteBytes("C:\\out\\Lib.dll", "old");
  library.SetCopyPath("C:\\out");
  const auto user = bench.files->Open("C:\\out\\Lib.dll");
  EXPECT_TRUE(library.DistributeBinaryFile());
  EXPECT_EQ(bench.Read("C:\\out\\Lib.dll"), "new");
  std::string bytes(3, '\0');
  EXPECT_EQ(user->Read(0, bytes.data(), bytes.size()), 3U);
  EXPECT_EQ(bytes, "old");
}

TEST(ProjectDistribute, AProgramThatRunsIsReplaced) {
  ProjectBench bench;
  Project& program = bench.Add("C:\\src\\App.vbp", ProjectBench::ProjectText("Exe", "App"));
  std::filesystem::copy("/bin/sleep", bench.Posix("C:\\src") + "/App.exe");
  bench.files->CreateFolders("C:\\out");
  program.SetCopyPath("C:\\out");
  ASSERT_TRUE(program.DistributeBinaryFile());
  const auto running = bench.launcher->Start("C:\\out\\App.exe 60");
  ASSERT_TRUE(running);
  bench.WriteBytes("C:\\src\\App.exe", "new");
  EXPECT_TRUE(program.DistributeBinaryFile());
  EXPECT_EQ(bench.Read("C:\\out\\App.exe"), "new");
  running->Terminate();
}

TEST(ProjectDistribute, AReadOnlyTargetIsReported) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "new");
  bench.WriteBytes("C:\\out\\Lib.dll", "old");
  std::filesystem::permissions(bench.Posix("C:\\out\\Lib.dll"), std::filesystem::perms::owner_read);
  library.SetCopyPath("C:\\out");
  EXPECT_FALSE(library.DistributeBinaryFile());
  ASSERT_EQ(bench.sink.notices.size(), 1U);
  EXPECT_TRUE(bench.sink.notices[0].ends_with("Path/File access error: C:\\out\\Lib.dll"))
      << bench.sink.notices[0];
  EXPECT_EQ(bench.Read("C:\\out\\Lib.dll"), "old");
}

TEST(ProjectDistribute, AReadOnlyFolderIsReported) {
  if (geteuid() == 0) GTEST_SKIP() << "root writes to read-only folders";
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.WriteBytes("C:\\src\\Lib.dll", "new");
  bench.files->CreateFolders("C:\\out");
  std::filesystem::permissions(bench.Posix("C:\\out"),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  library.SetCopyPath("C:\\out");
  EXPECT_FALSE(library.DistributeBinaryFile());
  std::filesystem::permissions(bench.Posix("C:\\out"), std::filesystem::perms::owner_all);
  ASSERT_EQ(bench.sink.notices.size(), 1U);
}

TEST(ProjectCheckIn, AfterACompileReportsWhatCouldNotBeCheckedIn) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  library.SetCheckInVBPFile(true);
  library.SetCheckInBinaryFile(true);
  bench.SetCompiler(kSucceed);
  EXPECT_TRUE(library.Compile());
  EXPECT_EQ(
      bench.sink.notices,
      (Texts{"Failed to check in the VBP file for project Lib. Reason: No matching SourceSafe project found",
             "Failed to check in the binary file for project Lib. Reason: No matching SourceSafe project "
             "found"}));
}

// A build of one library in $/Suite, checked in after its compile.
class CheckedInLibrary : public SourceScene {
 public:
  CheckedInLibrary() : library(Add("Lib")) {
    Base().Change("$/Suite/Lib.vbp", "old project");
    Base().Change("$/Suite/Lib.dll", "old binary");
    AddSource("$/Suite", "C:\\src");
    Write("C:\\src\\Lib.dll", "new binary");
    library->SetCheckInVBPFile(true);
    library->SetCheckInBinaryFile(true);
    build->AddSink(sink);
  }
  ~CheckedInLibrary() { build->RemoveSink(sink); }

  automation::Ref<Project> library;
  NoticeSink sink;
};

TEST(ProjectCheckIn, AfterACompileTakesProjectFileAndBinary) {
  const CheckedInLibrary scene;
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_EQ(
      scene.TakeCalls(),
      (Texts{
          "Open C:\\vss\\srcsafe.ini as Bob", "Checkout $/Suite/Lib.vbp 'Hearthmake Check out' '' 134217728",
          "Checkin $/Suite/Lib.vbp 'Hearthmake Check in' 'C:\\src\\Lib.vbp' 65536",
          "Open C:\\vss\\srcsafe.ini as Bob", "Checkout $/Suite/Lib.dll 'Hearthmake Check out' '' 134217728",
          "Checkin $/Suite/Lib.dll 'Hearthmake Check in' 'C:\\src\\Lib.dll' 65536"}));
  EXPECT_EQ(scene.Base().Content("$/Suite/Lib.vbp"), scene.Read("C:\\src\\Lib.vbp"));
  EXPECT_EQ(scene.Base().Content("$/Suite/Lib.dll"), "new binary");
  EXPECT_TRUE(scene.sink.notices.empty());
}

TEST(ProjectCheckIn, OfAFileThatSomebodyElseHoldsIsReportedAndTheRunGoesOn) {
  const CheckedInLibrary scene;
  platform::VSSCheckout held;
  held.Username = "Ann";
  scene.Base().checkouts["$/suite/lib.vbp"] = {held};
  EXPECT_TRUE(scene.build->Projects().Build(false));
  EXPECT_TRUE(scene.library->CompiledOK());
  EXPECT_EQ(
      scene.sink.notices.back(),
      "Failed to check in the VBP file for project Lib. Reason: The file Lib.vbp is checked out to Ann");
  EXPECT_EQ(scene.Base().Content("$/Suite/Lib.vbp"), "old project");
  EXPECT_EQ(scene.Base().Content("$/Suite/Lib.dll"), "new binary");
}

TEST(ProjectLastCheckInInfo, TellsWhoChangedTheFileThatBrokeTheCompile) {
  const CheckedInLibrary scene;
  scene.Base().Change("$/Suite/X.cls", "broken", "Ann", "half done", 36975.545138888889);
  scene.SetCompiler("echo \"Compile Error in File 'C:\\src\\X.cls', Line 3 : Syntax error\" > \"$LOG\"");
  EXPECT_FALSE(scene.build->Projects().Build(false));
  EXPECT_EQ(scene.library->LastCheckInInfo(), "Ann 2001-03-25 13:05:00\r\nhalf done");
}

TEST(ProjectLastCheckInInfo, IsForFailedCompilesThatNameAFile) {
  ProjectBench bench;
  Project& library = bench.AddDll("C:\\src\\Lib.vbp", "Lib");
  bench.SetCompiler(kSucceed);
  library.Compile();
  EXPECT_EQ(FailureOf([&] { library.LastCheckInInfo(); }),
            Failure(45, "Project.LastCheckIn", "This method can only be accessed when a build has failed!"));

  Project& broken = bench.AddDll("C:\\src\\Broken.vbp", "Broken");
  bench.SetCompiler("echo 'Out of memory' > \"$LOG\"");
  FailureOf([&] { broken.Compile(); });
  EXPECT_EQ(FailureOf([&] { broken.LastCheckInInfo(); }),
            Failure(45, "Project.LastCheckIn", "This method can only be used for compile errors!"));
  bench.SetCompiler("echo \"Compile Error in File 'C:\\src\\X.cls', Line 3 : Syntax error\" > \"$LOG\"");
  FailureOf([&] { broken.Compile(); });
  EXPECT_EQ(FailureOf([&] { broken.LastCheckInInfo(); }),
            Failure(45, "SSProjects.GetLastModifiedData", "You have no SourceSafe projects configured!"));
}

class GroupReferences : public testing::Test {
 protected:
  GroupReferences()
      : lib(bench.AddDll("C:\\src\\lib\\Lib.vbp", "Lib")),
        app(bench.AddDll("C:\\src\\app\\App.vbp", "App",
                         "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE\n"
                         "Reference=*\\G{00000000-0000-0000-0000-000000000009}#1.0#0#..\\lib\\Lib.dll#old\n"
                         "Command32=\"Lib.dll\"\n")) {}
  std::string Row() const { return bench.Rows("C:\\src\\app\\App.vbp")[2]; }

  ProjectBench bench;
  Project& lib;
  Project& app;
};

TEST_F(GroupReferences, NameAProjectOfTheGroupByItsFile) {
  bench.build->FixReferencesInProjectGroup();
  EXPECT_EQ(Row(), "Reference=*\\A..\\lib\\Lib.vbp");
  EXPECT_EQ(bench.Rows("C:\\src\\app\\App.vbp")[3], "Command32=\"Lib.dll\"");
}

TEST_F(GroupReferences, NameAProjectOutsideTheGroupByItsLibrary) {
  lib.SetCompileMe(false);
  bench.MakeBinary("C:\\src\\lib\\Lib.dll", 7, 1, 2);
  app.FixReferencesInProjectGroup();
  EXPECT_EQ(Row(),
            "Reference=*\\G{00000007-0000-0000-0000-000000000000}#1.2#0#C:\\src\\lib\\Lib.dll#Lib library");
}

TEST_F(GroupReferences, StayWhereABinaryCanNotBeRead) {
  lib.SetCompileMe(false);
  const std::string before = bench.Read("C:\\src\\app\\App.vbp");
  app.FixReferencesInProjectGroup();
  EXPECT_EQ(bench.Read("C:\\src\\app\\App.vbp"), before);
}

TEST_F(GroupReferences, OfProjectsThatAreNotCompiledAreLeftAlone) {
  app.SetCompileMe(false);
  const std::string before = bench.Read("C:\\src\\app\\App.vbp");
  bench.build->FixReferencesInProjectGroup();
  EXPECT_EQ(bench.Read("C:\\src\\app\\App.vbp"), before);
}

TEST(GroupReferencesByName, AreThoseOfTheWholeFileNameInAnyCase) {
  ProjectBench bench;
  bench.AddDll("C:\\src\\ShopData.vbp", "ShopData");
  bench.AddDll("C:\\src\\Data.vbp", "Data");
  Project& app =
      bench.AddDll("C:\\src\\App.vbp", "App",
                   "Reference=*\\G{00000000-0000-0000-0000-000000000001}#1.0#0#C:\\bin\\ShopData.dll#Shop\n"
                   "Reference=*\\G{00000000-0000-0000-0000-000000000002}#1.0#0#C:\\bin\\DATA.DLL#Data\n");
  app.FixReferencesInProjectGroup();
  EXPECT_EQ(bench.Rows("C:\\src\\App.vbp")[1], "Reference=*\\A..\\src\\ShopData.vbp");
  EXPECT_EQ(bench.Rows("C:\\src\\App.vbp")[2], "Reference=*\\A..\\src\\Data.vbp");
  const std::string fixed = bench.Read("C:\\src\\App.vbp");
  app.FixReferencesInProjectGroup();
  EXPECT_EQ(bench.Read("C:\\src\\App.vbp"), fixed);
}

TEST(GroupReferencesToAControl, AreObjectRows) {
  ProjectBench bench;
  Project& control = bench.Add("C:\\src\\Ctl.vbp", ProjectBench::ProjectText("Control", "Ctl"));
  Project& app = bench.AddDll("C:\\src\\App.vbp", "App",
                              "Object={00000000-0000-0000-0000-000000000001}#1.0#0; ctl\\Ctl.vbp\n");
  app.BeginEdit();
  app.ReferenceList().AddInternalReference(control);
  app.ApplyEdit();
  bench.MakeBinary("C:\\src\\Ctl.ocx", 3, 1, 0);
  app.FixReferencesInProjectGroup();
  EXPECT_EQ(bench.Rows("C:\\src\\App.vbp")[1],
            "Object={00000003-0000-0000-0000-000000000000}#1.0#0; Ctl.ocx");
}

}  // namespace
}  // namespace hearthmake
