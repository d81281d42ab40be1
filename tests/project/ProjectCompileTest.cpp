// Compiling a project, and the identity of what came out.

#include <gtest/gtest.h>

#include "automation/Error.hpp"
#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "project/Project.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Variant;
using support::Failure;
using support::FailureOf;
using support::kNoFailure;
using support::ProjectBench;
using List = std::vector<std::string>;

constexpr const char* kGoodLog = "printf 'Build of something succeeded.\\r\\n' >\"$LOG\"";
constexpr const char* kBrokenLog = "printf 'The interface broke compatibility.' >\"$LOG\"";

// What a dry run has in the place of binaries that are yet to be made.
class NoLibraries final : public platform::TypeLibReader {
 public:
  platform::TypeLibInfo Read(std::string_view /*path*/) override {
    automation::Raise(automation::kInvalidValue, "TypeLibReader", "There is none.");
  }
  std::vector<platform::TypeDescription> ReadTypes(std::string_view path) override {
    Read(path);
    return {};
  }
};

class ProjectCompile : public testing::Test {
 protected:
  ProjectCompile() { bench.SetCompiler(kGoodLog); }

  Project& Dll(const std::string& moreRows = {}) { return bench.AddDll("C:\\src\\Lib.vbp", "Lib", moreRows); }
  // The compiler that copies the project file aside for each run (1.vbp, 2.vbp, …) before it goes on.
  void KeepProjectFiles(const std::string& script) const {
    bench.SetCompiler(
        "N=$(cat \"$C/count\" 2>/dev/null || echo 0); N=$((N+1)); echo $N >\"$C/count\"\n"
        "cp \"$PROJECT\" \"$C/$N.vbp\"\n" +
        script);
  }
  std::string Kept(int run) const { return bench.Read("C:\\" + automation::Decimal(run) + ".vbp"); }
  static Failure CompileFailure(const std::string& log) {
    return {BuildErrors::be_FailToCompile, "Project.Compile", "Compile failed: " + log};
  }

  ProjectBench bench;
};

TEST_F(ProjectCompile, DoesNothingWhileTheProjectIsNotToBeCompiled) {
  Project& lib = Dll();
  lib.SetCompileMe(false);
  bench.files->Remove("C:\\src\\Lib.vbp");
  EXPECT_FALSE(lib.Compile());
  EXPECT_EQ(bench.launcher->commands, List());
}

TEST_F(ProjectCompile, RefusesAMissingProjectFile) {
  Project& lib = Dll();
  bench.files->Remove("C:\\src\\Lib.vbp");
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), Failure(45, "Project.Compile", "Projet path is incorrect"));
  EXPECT_EQ(lib.LastErrorMessage(), "Projet path is incorrect");
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\Lib.vbp"));
  EXPECT_EQ(bench.launcher->commands, List());
}

TEST_F(ProjectCompile, MakesDllsAndControlsWithMakedllAndProgramsWithMake) {
  bench.Add("C:\\src\\P.vbp", "Type=Exe\nName=\"P\"\n").Compile();
  bench.Add("C:\\src\\S.vbp", "Type=OleExe\nName=\"S\"\n").Compile();
  bench.Add("C:\\src\\L.vbp", "Type=OleDll\nName=\"L\"\n").Compile();
  bench.Add("C:\\src\\C.vbp", "Type=Control\nName=\"C\"\n").Compile();
  EXPECT_EQ(bench.launcher->commands,
            (List{"C:\\vb6.exe \"C:\\src\\P.vbp\" /make /out C:\\temp\\CR.txt",
                  "C:\\vb6.exe \"C:\\src\\S.vbp\" /make /out C:\\temp\\CR.txt",
                  "C:\\vb6.exe \"C:\\src\\L.vbp\" /makedll /out C:\\temp\\CR.txt",
                  "C:\\vb6.exe \"C:\\src\\C.vbp\" /makedll /out C:\\temp\\CR.txt"}));
}

TEST_F(ProjectCompile, QuotesAProjectPathWithBlanks) {
  Project& app = bench.Add("C:\\my src\\My App.vbp", "Type=Exe\nName=\"A\"\n");
  EXPECT_TRUE(app.Compile());
  EXPECT_EQ(bench.launcher->commands,
            List{"C:\\vb6.exe \"C:\\my src\\My App.vbp\" /make /out C:\\temp\\CR.txt"});
}

TEST_F(ProjectCompile, WritesReferencesAndSettingsBeforeTheCompilerRuns) {
  KeepProjectFiles(kGoodLog);
  Project& lib = Dll();
  lib.SetMajorVer(42);
  lib.SetDllBaseAddress(0x1AFE0000);
  lib.ReferenceList().AddExternalReference("Reference=*\\G{G}#1.0#0#x.dll#X", "");
  EXPECT_TRUE(lib.Compile());
  EXPECT_EQ(Kept(1),
            "Type=OleDll\r\nReference=*\\G{G}#1.0#0#x.dll#X\r\nStartup=\"(None)\"\r\nName=\"Lib\"\r\n"
            "Title=\"Lib library\"\r\nMajorVer=42\r\nMinorVer=0\r\nRevisionVer=0\r\nAutoIncrementVer=0\r\n"
            "DllBaseAddress=&H1AFE0000\r\n");
}

TEST_F(ProjectCompile, ChangesNoByteOfAFileThatIsUpToDate) {
  KeepProjectFiles(kGoodLog);
  Project& lib = Dll();
  const std::string before = bench.Read("C:\\src\\Lib.vbp");
  lib.Compile();
  lib.Compile();
  EXPECT_EQ(Kept(1), before);
  EXPECT_EQ(bench.Read("C:\\src\\Lib.vbp"), before);
}

TEST_F(ProjectCompile, NeedsTheFolderOfTheBinary) {
  Project& lib = Dll();
  lib.SetPath32("..\\nowhere");
  lib.SetMajorVer(9);
  const std::string before = bench.Read("C:\\src\\Lib.vbp");
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), Failure(45, "Project.CheckPathToBinaryComponent",
                                                       "The path to the binary component does not exist!"));
  EXPECT_EQ(bench.launcher->commands, List());
  EXPECT_EQ(bench.Read("C:\\src\\Lib.vbp"), before);
}

TEST_F(ProjectCompile, WritesReferencesBeforeItLooksForTheFolder) {
  Project& used = bench.AddDll("C:\\src\\Used.vbp", "Used");
  Project& lib = Dll();
  lib.ReferenceList().AddInternalReference(used);
  lib.SetPath32("..\\nowhere");
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }).number, static_cast<std::int32_t>(BuildErrors::beGUIDmissing));
}

// --- compatibility

TEST_F(ProjectCompile, CompilesWithoutCompatibilityWhenTheCompatibleBinaryIsMissing) {
  KeepProjectFiles(kGoodLog);
  Project& lib = Dll("CompatibleMode=\"2\"\nCompatibleEXE32=\"..\\old\\Lib.dll\"\n");
  EXPECT_TRUE(lib.Compile());
  EXPECT_NE(Kept(1).find("CompatibleMode=\"0\"\r\n"), std::string::npos);
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility) << "for this one compile only";
  EXPECT_EQ(bench.sink.notices, List{"The binary compatible file: C:\\old\\Lib.dll was not found. Compatible "
                                     "mode changed to no compatibility.\r\n"});
  EXPECT_EQ(bench.sink.progress, std::vector<std::int32_t>{0});
}

TEST_F(ProjectCompile, KeepsTheModeWhenTheCompatibleBinaryIsThere) {
  KeepProjectFiles(kGoodLog);
  bench.WriteBytes("C:\\old\\Lib.dll", "x");
  Project& lib = Dll("CompatibleMode=\"2\"\nCompatibleEXE32=\"..\\old\\Lib.dll\"\n");
  lib.Compile();
  EXPECT_NE(Kept(1).find("CompatibleMode=\"2\"\r\n"), std::string::npos);
  EXPECT_EQ(bench.sink.notices, List());
}

TEST_F(ProjectCompile, HasNothingToFixUpWithoutACompatibleBinaryOrWithoutActiveX) {
  Project& lib = Dll("CompatibleMode=\"2\"\nCompatibleEXE32=\"\"\n");
  lib.Compile();
  bench.Add("C:\\src\\P.vbp", "Type=Exe\nName=\"P\"\nCompatibleMode=\"1\"\nCompatibleEXE32=\"gone.exe\"\n")
      .Compile();
  EXPECT_EQ(bench.sink.notices, List());
}

TEST_F(ProjectCompile, PutsTheModeBackAlsoWhenTheCompilerCannotBeStarted) {
  bench.SetOption("VBExe", "C:\\none.exe");
  Project& lib = Dll("CompatibleMode=\"2\"\nCompatibleEXE32=\"gone.dll\"\n");
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }),
            Failure(BuildErrors::beNoProcessStarted, "modExecute.CmdExec",
                    "Failed to start the following process: C:\\none.exe \"C:\\src\\Lib.vbp\" /makedll /out "
                    "C:\\temp\\CR.txt"));
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
}

// --- what the compiler writes over

TEST_F(ProjectCompile, MakesWhatTheCompilerWritesOverWriteable) {
  bench.SetOption("MakeFilesWriteable", "-1");
  Project& lib = Dll("Path32=\"..\\bin\"\n");
  const List changed = {"a.exe", "B.DLL", "c.ocx", "d.tlb", "e.exp", "f.lib", "g.vbr", "h.obj"};
  const List kept = {"i.txt", "j.dll.bak", "dll"};
  for (const List& names : {changed, kept}) {
    for (const std::string& name : names) {
      bench.WriteBytes("C:\\bin\\" + name, "x");
      bench.files->SetAttributes("C:\\bin\\" + name, platform::kReadOnly);
    }
  }
  lib.Compile();
  const auto isReadOnly = [&](const std::string& name) {
    return (bench.files->Attributes("C:\\bin\\" + name) & platform::kReadOnly) != 0;
  };
  for (const std::string& name : changed) EXPECT_FALSE(isReadOnly(name)) << name;
  for (const std::string& name : kept) EXPECT_TRUE(isReadOnly(name)) << name;
}

TEST_F(ProjectCompile, LeavesBinariesReadOnlyWhenNotTold) {
  bench.SetOption("MakeFilesWriteable", "0");
  Project& lib = Dll();
  bench.WriteBytes("C:\\src\\Lib.dll", "x");
  bench.files->SetAttributes("C:\\src\\Lib.dll", platform::kReadOnly);
  lib.Compile();
  EXPECT_NE(bench.files->Attributes("C:\\src\\Lib.dll") & platform::kReadOnly, 0U);
}

// --- the log

TEST_F(ProjectCompile, DeletesTheLogOfTheRunBefore) {
  bench.Write("C:\\temp\\CR.txt", "Build succeeded.\n");
  bench.SetCompiler("true");
  Project& lib = Dll();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure(""));
  EXPECT_EQ(lib.CompileError(), "");
}

TEST_F(ProjectCompile, SucceedsWhateverElseALogWithSucceededSays) {
  bench.SetCompiler("printf 'error, broken compatibility, failed; succeeded' >\"$LOG\"");
  EXPECT_TRUE(Dll().Compile());
}

TEST_F(ProjectCompile, LooksForSucceededInSmallLetters) {
  bench.SetCompiler("printf 'Succeeded' >\"$LOG\"");
  Project& lib = Dll();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure("Succeeded"));
}

TEST_F(ProjectCompile, ReportsTheWholeLogOfAFailure) {
  bench.SetCompiler(
      "printf 'Compile Error in File c1.cls, Line 12 : Variable not defined\\r\\nBuild failed.\\r\\n' "
      ">\"$LOG\"");
  Project& lib = Dll();
  EXPECT_EQ(
      FailureOf([&] { lib.Compile(); }),
      CompileFailure("Compile Error in File c1.cls, Line 12 : Variable not defined\r\nBuild failed.\r\n"));
  EXPECT_EQ(lib.CompileError(),
            "Compile Error in File c1.cls, Line 12 : Variable not defined Build failed. ");
  EXPECT_FALSE(lib.CompiledOK());
}

TEST_F(ProjectCompile, ReadsTheLogAsWindows1252) {
  bench.SetCompiler("printf 'Variable non d\\351finie' >\"$LOG\"");
  Project& lib = Dll();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure("Variable non d\xC3\xA9"
                                                              "finie"));
  EXPECT_EQ(lib.CompileError(),
            "Variable non d\xC3\xA9"
            "finie");
}

TEST_F(ProjectCompile, JudgesByTheLogAndNotByTheExitStatus) {
  bench.SetCompiler(std::string(kGoodLog) + "\nexit 3");
  EXPECT_TRUE(Dll().Compile());
}

// --- success

TEST_F(ProjectCompile, RemembersAndStoresASuccess) {
  Project& lib = Dll();
  EXPECT_TRUE(lib.Compile());
  EXPECT_TRUE(lib.CompiledOK());
  EXPECT_EQ(lib.LastCompiled().value, bench.clock->now);
  EXPECT_EQ(lib.CompileError(), "Build of something succeeded. ");
  const auto build = bench.Reload();
  EXPECT_EQ(automation::FormatIsoDate(build->Projects().GetByName("Lib")->LastCompiled().value),
            "2001-03-25 13:05:00");
  EXPECT_FALSE(build->Projects().GetByName("Lib")->CompiledOK());
}

TEST_F(ProjectCompile, KeepsCompiledOKAfterALaterFailure) {
  Project& lib = Dll();
  lib.Compile();
  const double first = lib.LastCompiled().value;
  bench.clock->now += 1;
  bench.SetCompiler("printf 'failed' >\"$LOG\"");
  EXPECT_NE(FailureOf([&] { lib.Compile(); }), kNoFailure);
  EXPECT_TRUE(lib.CompiledOK());
  EXPECT_EQ(lib.LastCompiled().value, first);
}

TEST_F(ProjectCompile, LeavesNoEditOpenAfterASuccess) {
  Project& lib = Dll();
  lib.Compile();
  EXPECT_EQ(FailureOf([&] { lib.BeginEdit(); }), kNoFailure);
}

// --- breaking compatibility

class BrokenCompatibility : public ProjectCompile {
 protected:
  BrokenCompatibility() {
    bench.SetOption("SetProjectCompatible", "-1");
    bench.WriteBytes("C:\\src\\old.dll", "x");
  }
  Project& BinaryCompatible() { return Dll("CompatibleMode=\"2\"\nCompatibleEXE32=\"old.dll\"\n"); }
  std::size_t Runs() const { return bench.launcher->commands.size(); }
};

TEST_F(BrokenCompatibility, IsBrokenByASecondCompileWithoutCompatibility) {
  KeepProjectFiles("if [ $N = 1 ]; then " + std::string(kBrokenLog) + "; else " + kGoodLog + "; fi");
  Project& lib = BinaryCompatible();
  EXPECT_TRUE(lib.Compile());
  EXPECT_EQ(Runs(), 2U);
  EXPECT_NE(Kept(1).find("CompatibleMode=\"2\"\r\n"), std::string::npos);
  EXPECT_NE(Kept(2).find("CompatibleMode=\"0\"\r\n"), std::string::npos);
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
  EXPECT_EQ(bench.sink.notices, List{"Breaking compatibility for Lib"});
  EXPECT_TRUE(lib.CompiledOK());
}

TEST_F(BrokenCompatibility, LeavesBinaryCompatibilityWhateverWasSetBefore) {
  KeepProjectFiles("if [ $N = 1 ]; then " + std::string(kBrokenLog) + "; else " + kGoodLog + "; fi");
  Project& lib = Dll("CompatibleMode=\"1\"\nCompatibleEXE32=\"old.dll\"\n");
  EXPECT_TRUE(lib.Compile());
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
}

TEST_F(BrokenCompatibility, IsTriedNoThirdTime) {
  KeepProjectFiles("printf 'compatibility problem %s' $N >\"$LOG\"");
  Project& lib = BinaryCompatible();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure("compatibility problem 2"));
  EXPECT_EQ(Runs(), 2U);
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
  EXPECT_FALSE(lib.CompiledOK());
}

TEST_F(BrokenCompatibility, LeavesBinaryCompatibilityWhenTheSecondCompileRaises) {
  bench.SetCompiler(std::string(kBrokenLog) + "\nrm \"$PROJECT\"");
  Project& lib = BinaryCompatible();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }).text, "Projet path is incorrect");
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
}

TEST_F(BrokenCompatibility, IsAPlainFailureWhenTheBinaryIsToBePreserved) {
  bench.SetCompiler(kBrokenLog);
  Project& lib = BinaryCompatible();
  lib.SetPreserveBinary(true);
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure("The interface broke compatibility."));
  EXPECT_EQ(Runs(), 1U);
  EXPECT_EQ(lib.CompatibleMode(), CompatibleModes::BinaryCompatibility);
  EXPECT_EQ(bench.sink.notices, List());
}

TEST_F(BrokenCompatibility, IsAPlainFailureWhenTheUserDoesNotAllowIt) {
  bench.SetOption("SetProjectCompatible", "0");
  bench.SetCompiler(kBrokenLog);
  Project& lib = BinaryCompatible();
  EXPECT_EQ(FailureOf([&] { lib.Compile(); }), CompileFailure("The interface broke compatibility."));
  EXPECT_EQ(Runs(), 1U);
}

TEST_F(BrokenCompatibility, IsSeenOnlyInSmallLetters) {
  bench.SetCompiler("printf 'Compatibility' >\"$LOG\"");
  EXPECT_NE(FailureOf([&] { BinaryCompatible().Compile(); }), kNoFailure);
  EXPECT_EQ(Runs(), 1U);
}

// --- identity

TEST_F(ProjectCompile, GivesTheLibrarysIdWithoutBracesInCapitals) {
  Project& lib = Dll();
  bench.MakeBinary("C:\\src\\Lib.dll", 0xAB, 10, 31);
  EXPECT_EQ(lib.GUID(), "000000AB-0000-0000-0000-000000000000");
  EXPECT_EQ(lib.BinaryVersion(), "A.1F");
}

TEST_F(ProjectCompile, ReadsTheIdentityAnewAfterACompile) {
  Project& lib = Dll();
  bench.MakeBinary("C:\\src\\Lib.dll", 0xAB, 1, 0);
  EXPECT_EQ(lib.BinaryVersion(), "1.0");
  bench.MakeBinary("C:\\src\\Lib.dll", 0xCD, 2, 0);
  EXPECT_EQ(lib.BinaryVersion(), "2.0");
  EXPECT_EQ(lib.GUID(), "000000CD-0000-0000-0000-000000000000");
}

TEST_F(ProjectCompile, ReadsTheIdentityOfWhatTookTheBinarysPlaceOrIsGone) {
  Project& lib = Dll();
  bench.MakeBinary("C:\\src\\Lib.dll", 0xAB, 1, 0);
  bench.MakeBinary("C:\\src\\Other.dll", 0xAB, 3, 0);
  EXPECT_EQ(lib.BinaryVersion(), "1.0");
  Ports().files->Rename("C:\\src\\Lib.dll", "C:\\src\\Old.dll");
  EXPECT_NE(FailureOf([&] { lib.GUID(); }), kNoFailure);
  Ports().files->Rename("C:\\src\\Other.dll", "C:\\src\\Lib.dll");
  EXPECT_EQ(lib.BinaryVersion(), "3.0");
  lib.SetExeName32("Old.dll");
  EXPECT_EQ(lib.BinaryVersion(), "1.0");
}

TEST_F(ProjectCompile, ReadsTheIdentityWithTheReaderOfTheApartment) {
  Project& lib = Dll();
  bench.MakeBinary("C:\\src\\Lib.dll", 0xAB, 1, 0);
  EXPECT_EQ(lib.BinaryVersion(), "1.0");
  {
    platform::Platform ports = Ports();
    ports.typeLibs = std::make_shared<NoLibraries>();
    const Apartment other(ports);
    EXPECT_NE(FailureOf([&] { lib.GUID(); }), kNoFailure);
  }
  EXPECT_EQ(lib.BinaryVersion(), "1.0");
}

TEST_F(ProjectCompile, HasNoIdentityWithoutActiveX) {
  Project& app = bench.Add("C:\\src\\P.vbp", "Type=Exe\nName=\"P\"\n");
  const Failure expected(45, "Project.GUID", "Projet is not ActiveX");
  EXPECT_EQ(FailureOf([&] { app.GUID(); }), expected);
  EXPECT_EQ(FailureOf([&] { app.BinaryVersion(); }), expected);
}

TEST_F(ProjectCompile, HasNoIdentityWithoutReadableLibrary) {
  Project& lib = Dll("Path32=\"C:\\bin\"\n");
  const Failure expected(BuildErrors::beGUIDmissing, "Project.GUID",
                         "A typelib for the file C:\\bin\\Lib.dll could not be found. The file is either "
                         "missing or corrupt.");
  EXPECT_EQ(FailureOf([&] { lib.GUID(); }), expected);
  bench.WriteBytes("C:\\bin\\Lib.dll", "MZ and nothing more");
  EXPECT_EQ(FailureOf([&] { lib.GUID(); }), expected);
  EXPECT_EQ(FailureOf([&] { lib.BinaryVersion(); }), expected);
}

// --- what comes with later steps

TEST_F(ProjectCompile, LeavesRegistrationAndDistributionWithoutEffectForNow) {
  Project& lib = Dll();
  bench.MakeBinary("C:\\src\\Lib.dll", 1);
  bench.files->CreateFolders("C:\\copies");
  lib.SetCopyPath("C:\\copies");
  EXPECT_EQ(FailureOf([&] { lib.Register(); }), kNoFailure);
  EXPECT_TRUE(lib.DistributeBinaryFile());
  EXPECT_EQ(bench.launcher->commands, List());
}

}  // namespace
}  // namespace hearthmake
