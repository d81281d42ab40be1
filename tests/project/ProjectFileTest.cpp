// Reading a project file and bringing it up to date.

#include <gtest/gtest.h>

#include <array>

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

std::string CrLf(const std::string& text) { return automation::ReplaceAll(text, "\n", "\r\n"); }

class ProjectFile : public testing::Test {
 protected:
  Project& Dll(const std::string& name, const std::string& moreRows = {}) {
    return bench.AddDll("C:\\src\\" + name + ".vbp", name, moreRows);
  }
  Project& Program(const std::string& rows) {
    return bench.Add("C:\\src\\App.vbp", "Type=Exe\n" + rows + "Name=\"App\"\n");
  }
  static List Refs(const Project& project) { return ProjectBench::References(project); }
  static std::string To(const Project& project) { return ProjectBench::To(project); }
  // The file after an update of the project.
  std::string Updated(Project& project) {
    project.UpdateVBP();
    return bench.Read(project.ProjectPath());
  }

  ProjectBench bench;
};

// --- reading settings

TEST_F(ProjectFile, ReadsSettingsAsTheFileHasThem) {
  Project& project = bench.Add(
      "C:\\src\\Lib.vbp",
      "Type=OleDll\nClass=One; One.cls\nStartup=\"Sub Main\"\nHelpFile=\"h.hlp\"\nTitle=\"T\"\n"
      "ExeName32=\"X.dll\"\nPath32=\"..\\bin\"\nCommand32=\"/a\"\nName=\"Lib\"\nHelpContextID=\"5\"\n"
      "CompatibleMode=\"2\"\nCompatibleEXE32=\"old.dll\"\nMajorVer=3\nMinorVer=4\nRevisionVer=5\n"
      "AutoIncrementVer=1\nServerSupportFiles=1\nVersionCompanyName=\"Co\"\nCompilationType=-1\n"
      "OptimizationType=2\nFavorPentiumPro(tm)=-1\nMaxNumberOfThreads=8\nDllBaseAddress=&H20000\n"
      "CondComp=\"A = 1\"\nNoControlUpgrade=1\nThreadingModel=1\n");
  EXPECT_EQ(project.Startup(), "Sub Main");
  EXPECT_EQ(project.HelpFile(), "h.hlp");
  EXPECT_EQ(project.Title(), "T");
  EXPECT_EQ(project.ExeName32(), "X.dll");
  EXPECT_EQ(project.Path32(), "..\\bin");
  EXPECT_EQ(project.Command32(), "/a");
  EXPECT_EQ(project.HelpContextID(), "5");
  EXPECT_EQ(project.CompatibleMode(), CompatibleModes::BinaryCompatibility);
  EXPECT_EQ(project.CompatibleEXE32(), "old.dll");
  EXPECT_EQ(project.MajorVer(), 3);
  EXPECT_EQ(project.MinorVer(), 4);
  EXPECT_EQ(project.RevisionVer(), 5);
  EXPECT_TRUE(project.AutoIncrementVer());
  EXPECT_TRUE(project.RemoteServerFiles());
  EXPECT_EQ(project.VersionCompanyName(), "Co");
  EXPECT_EQ(project.CompilationType(), CompilationTypes::PCode);
  EXPECT_EQ(project.OptimizationType(), OptimizationTypes::NoOptimization);
  EXPECT_TRUE(project.FavorPentiumPro());
  EXPECT_EQ(project.MaxNumberOfThreads(), 8);
  EXPECT_EQ(project.DllBaseAddress(), 0x20000);
  EXPECT_EQ(project.CondComp(), "A = 1");
  EXPECT_FALSE(project.UpgradeActiveXControls());
  EXPECT_EQ(project.ThreadingModel(), ThreadingModels::ApartmentThreaded);
}

TEST_F(ProjectFile, TakesTheFileDescriptionForTheDescriptionWhenItComesFirst) {
  Project& project = Dll("Lib", "VersionFileDescription=\"File\"\nDescription=\"Own\"\n");
  EXPECT_EQ(project.VersionFileDescription(), "File");
  EXPECT_EQ(project.Description(), "File");
  Project& other = Dll("Other", "Description=\"Own\"\nVersionFileDescription=\"File\"\n");
  EXPECT_EQ(other.Description(), "Own");
}

TEST_F(ProjectFile, TakesTheCompanyForTheNameWhenItComesFirst) {
  EXPECT_EQ(bench.Add("C:\\src\\A.vbp", "Type=Exe\nVersionCompanyName=\"Co\"\nName=\"A\"\n").Name(), "Co");
}

TEST_F(ProjectFile, ReadsAccentsOfWindows1252) {
  bench.WriteBytes("C:\\src\\A.vbp", "Type=Exe\r\nName=\"A\"\r\nTitle=\"Caf\xE9 \x80\x81\"\r\n");
  EXPECT_EQ(bench.build->Projects().Add("C:\\src\\A.vbp")->Title(), "Caf\xC3\xA9 \xE2\x82\xAC\xC2\x81");
}

TEST_F(ProjectFile, ReadsNoSettingFromALastRowWithoutLineEnd) {
  Project& project = bench.Add("C:\\src\\A.vbp", "Type=Exe\nName=\"A\"\nTitle=\"T\"");
  EXPECT_EQ(project.Title(), "");
}

TEST_F(ProjectFile, LoadsAnotherFileInPlace) {
  Project& project = Dll("Lib", "HelpFile=\"h.hlp\"\n");
  bench.Write("C:\\src\\New.vbp", "Type=Control\nName=\"New\"\n");
  project.LoadFromFile("C:\\src\\New.vbp");
  EXPECT_EQ(project.Name(), "New");
  EXPECT_EQ(project.HelpFile(), "");
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\New.vbp");
  EXPECT_EQ(project.ProjectType(), ProjectTypes::UserControl);
  EXPECT_EQ(bench.build->Projects().GetByName("New").Get(), &project);
}

// --- files that are none

TEST_F(ProjectFile, RefusesANameThatDoesNotEndInVbp) {
  const auto project = automation::Make<Project>();
  EXPECT_EQ(FailureOf([&] { project->LoadFromFile("C:\\src\\Lib.vbg"); }),
            Failure(45, "Project.LoadFromFile", "File is not a vbp file"));
  EXPECT_EQ(FailureOf([&] { project->LoadFromFile(""); }).text, "File is not a vbp file");
}

TEST_F(ProjectFile, AcceptsVbpInCapitals) {
  bench.Write("C:\\src\\LIB.VBP", "Type=Exe\nName=\"A\"\n");
  EXPECT_EQ(bench.build->Projects().Add("C:\\src\\LIB.VBP")->Name(), "A");
}

TEST_F(ProjectFile, RefusesAMissingFileAndLeavesNone) {
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().Add("C:\\src\\None.vbp"); }),
            Failure(53, "Project.LoadFromFile", "File not found: C:\\src\\None.vbp"));
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\None.vbp"));
  Project& project = Dll("Lib");
  EXPECT_EQ(FailureOf([&] { project.LoadFromFile("C:\\src\\None.vbp"); }).number, 53);
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\Lib.vbp");
  EXPECT_EQ(project.Name(), "Lib");
}

TEST_F(ProjectFile, RefusesAFolder) {
  bench.files->CreateFolders("C:\\src\\Folder.vbp");
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().Add("C:\\src\\Folder.vbp"); }).number, 53);
}

TEST_F(ProjectFile, RefusesFilesWithoutAKnownType) {
  const Failure expected(45, "Project.ProjectType", "Unknown project type");
  const auto add = [&](const std::string& bytes) {
    bench.WriteBytes("C:\\src\\Bad.vbp", bytes);
    return FailureOf([&] { bench.build->Projects().Add("C:\\src\\Bad.vbp"); });
  };
  EXPECT_EQ(add(""), expected) << "empty";
  EXPECT_EQ(add(std::string("MZ\0\x01\xFF\r\n\0Type\0=", 14)), expected) << "binary";
  EXPECT_EQ(add("Type=Exe\nName=\"A\"\n"), expected) << "LF only: one row without end";
  EXPECT_EQ(add("Type=Exe"), expected) << "no line end at all";
  EXPECT_EQ(add("Type=Library\r\nName=\"A\"\r\n"), expected);
  EXPECT_EQ(bench.build->Projects().Count(), 0);
  EXPECT_EQ(ProjectBench::CountRows("Project"), 0);
}

TEST_F(ProjectFile, KeepsNothingOpenOfAFileThatWasRefused) {
  Project& project = Dll("Lib");
  bench.Write("C:\\src\\Bad.vbp", "Type=Library\nName=\"Lib\"\n");
  EXPECT_NE(FailureOf([&] { project.LoadFromFile("C:\\src\\Bad.vbp"); }), kNoFailure);
  bench.Write("C:\\src\\Bad.vbp", "Type=OleDll\nName=\"Lib\"\nForm=written since.frm\n");
  project.UpdateVBP();
  EXPECT_NE(bench.Read("C:\\src\\Bad.vbp").find("Form=written since.frm"), std::string::npos);
}

TEST_F(ProjectFile, ReadsAndUpdatesAFileOf50Megabytes) {
  std::string bytes = "Type=Exe\r\nName=\"Big\"\r\n";
  while (bytes.size() < 50U * 1024 * 1024)
    bytes += "Form=some form with a long name.frm; and a remark \xE9\r\n";
  bench.WriteBytes("C:\\src\\Big.vbp", bytes + "MajorVer=1\r\n");
  Project& project = *bench.build->Projects().Add("C:\\src\\Big.vbp");
  EXPECT_EQ(project.MajorVer(), 1);
  project.SetMajorVer(2);
  project.ReferenceList().AddExternalReference("Reference=*\\G{G}#1.0#0#x.dll#X", "");
  EXPECT_EQ(Updated(project),
            "Type=Exe\r\nReference=*\\G{G}#1.0#0#x.dll#X\r\n" + bytes.substr(10) + "MajorVer=2\r\n");
}

TEST_F(ProjectFile, RefusesAProjectWhoseNameTheBuildHas) {
  Dll("Lib");
  bench.Write("C:\\other\\x.vbp", "Type=Exe\nName=\"LIB\"\n");
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().Add("C:\\other\\x.vbp"); }),
            Failure(BuildErrors::beProjectAlreadyInBuild, "Projects.Add",
                    "A project with the same name, LIB, is already part of this build"));
  EXPECT_EQ(bench.build->Projects().Count(), 1);
}

TEST_F(ProjectFile, RefusesToBecomeANameThatTheBuildHas) {
  Dll("Lib");
  Project& other = Dll("Other");
  bench.Write("C:\\other\\x.vbp", "Type=Exe\nName=\"Lib\"\n");
  EXPECT_EQ(FailureOf([&] { other.LoadFromFile("C:\\other\\x.vbp"); }).number,
            static_cast<std::int32_t>(BuildErrors::beProjectAlreadyInBuild));
}

TEST_F(ProjectFile, LoadsItsOwnFileAgain) {
  Project& project = Dll("Lib");
  EXPECT_EQ(FailureOf([&] { project.LoadFromFile("C:\\src\\Lib.vbp"); }), kNoFailure);
}

// --- reading references

TEST_F(ProjectFile, ReadsLibrariesThenControlsInFileOrder) {
  const Project& app = Program(
      "Object={O}#1.0#0; one.ocx\nReference=*\\G{A}#1.0#0#a.dll#A\nObject={P}#2.0#0; two.ocx\n"
      "Reference=*\\G{B}#1.0#0#b.dll#B\n");
  EXPECT_EQ(Refs(app), (List{"Reference=*\\G{A}#1.0#0#a.dll#A", "Reference=*\\G{B}#1.0#0#b.dll#B",
                             "Object={O}#1.0#0;one.ocx", "Object={P}#2.0#0;two.ocx"}));
}

TEST_F(ProjectFile, ReadsAReferenceInTheFirstAndInTheLastRow) {
  bench.Write("C:\\src\\App.vbp",
              "Reference=*\\G{A}#1.0#0#a.dll#A\nType=Exe\nName=\"App\"\nReference=*\\G{B}#1.0#0#b.dll#B");
  const auto app = bench.build->Projects().Add("C:\\src\\App.vbp");
  EXPECT_EQ(Refs(*app), (List{"Reference=*\\G{A}#1.0#0#a.dll#A", "Reference=*\\G{B}#1.0#0#b.dll#B"}));
}

TEST_F(ProjectFile, FindsTheProjectWhoseBinaryARowNamesByFullPath) {
  Project& near = bench.AddDll("C:\\src\\near\\Lib.vbp", "Near", "Path32=\"..\\..\\bin\"\n");
  Project& far = bench.AddDll("C:\\far\\Lib.vbp", "Far");
  EXPECT_EQ(Refs(bench.Add("C:\\src\\a\\A.vbp",
                           "Type=Exe\nReference=*\\G{X}#1.0#0#..\\..\\far\\Lib.dll#L\nName=\"A\"\n")),
            List{To(far)});
  EXPECT_EQ(Refs(bench.Add("C:\\src\\b\\B.vbp",
                           "Type=Exe\nReference=*\\G{X}#1.0#0#c:\\BIN\\lib.DLL#L\nName=\"B\"\n")),
            List{To(near)});
  EXPECT_EQ(near.Path32(), "..\\..\\bin");
}

TEST_F(ProjectFile, FindsTheProjectByTheNameOfItsBinaryWhenNoPathFits) {
  Project& first = bench.AddDll("C:\\1\\Lib.vbp", "First");
  bench.AddDll("C:\\2\\Lib.vbp", "Second");
  EXPECT_EQ(Refs(Program("Reference=*\\G{X}#1.0#0#D:\\elsewhere\\LIB.dll#L\n")), List{To(first)});
}

TEST_F(ProjectFile, FindsTheProjectOfAUncPathByTheNameOfItsBinary) {
  bench.AddDll("C:\\1\\Lib.vbp", "First");
  EXPECT_EQ(Refs(Program("Reference=*\\G{X}#1.0#0#\\\\server\\share\\Lib.dll#L\n")).size(), 1U);
  const Project& owner = bench.Add(
      "C:\\src\\B.vbp", "Type=Exe\nReference=*\\G{X}#1.0#0#\\\\server\\share\\No.dll#L\nName=\"B\"\n");
  EXPECT_EQ(Refs(owner), List{"Reference=*\\G{X}#1.0#0#\\\\server\\share\\No.dll#L"});
}

TEST_F(ProjectFile, PassesOverAResourceIndexBehindTheFile) {
  Project& lib = Dll("Lib");
  EXPECT_EQ(Refs(Program("Reference=*\\G{X}#1.0#0#Lib.dll\\3#L\n")), List{To(lib)});
}

TEST_F(ProjectFile, NeverTakesTheProjectItself) {
  const Project& lib = Dll("Lib", "Reference=*\\G{X}#1.0#0#Lib.dll#L\nReference=*\\ALib.vbp\n");
  EXPECT_EQ(Refs(lib), (List{"Reference=*\\G{X}#1.0#0#Lib.dll#L", "Reference=*\\ALib.vbp"}));
}

TEST_F(ProjectFile, FindsAControlByItsFile) {
  Project& grid = bench.Add("C:\\src\\Grid.vbp", "Type=Control\nName=\"Grid\"\nExeName32=\"My Grid.ocx\"\n");
  EXPECT_EQ(Refs(Program("Object={X}#1.0#0; my grid.OCX\n")), List{To(grid)});
}

TEST_F(ProjectFile, FindsAProjectByItsProjectFile) {
  Project& lib = Dll("Lib");
  EXPECT_EQ(Refs(bench.Add("C:\\src\\sub\\App.vbp", "Type=Exe\nReference=*\\A..\\LIB.vbp\nName=\"App\"\n")),
            List{To(lib)});
  Project& grid = bench.Add("C:\\src\\Grid.vbp", "Type=Control\nName=\"Grid\"\n");
  EXPECT_EQ(Refs(bench.Add("C:\\src\\B.vbp", "Type=Exe\nObject=*\\AC:\\src\\Grid.vbp\nName=\"B\"\n")),
            List{To(grid)});
}

TEST_F(ProjectFile, DoesNotFindAProjectFileByItsNameAlone) {
  Dll("Lib");
  EXPECT_EQ(Refs(Program("Reference=*\\A..\\elsewhere\\Lib.vbp\n")),
            List{"Reference=*\\A..\\elsewhere\\Lib.vbp"});
}

TEST_F(ProjectFile, FollowsAProjectThatMovesItsBinary) {
  Project& lib = Dll("Lib");
  Project& app = Program("Reference=*\\G{X}#1.0#0#C:\\bin\\Other.dll#L\n");
  EXPECT_EQ(Refs(app).size(), 1U);
  EXPECT_NE(Refs(app), List{To(lib)});
  lib.SetExeName32("Other.dll");
  app.GetReferencesFromVBP();
  EXPECT_EQ(Refs(app), List{To(lib)});
}

TEST_F(ProjectFile, KeepsARowWhoseProjectIsRefusedAsAnExternalReference) {
  const Project& program = bench.Add("C:\\src\\Tool.vbp", "Type=Exe\nName=\"Tool\"\n");
  Project& lib = Dll("Lib");
  const std::string refused = "Reference=*\\G{X}#1.0#0#Tool.exe#T";
  const std::string twice = "Reference=*\\G{Y}#1.0#0#D:\\Lib.dll#L";
  EXPECT_EQ(Refs(Program(refused + "\nReference=*\\G{X}#1.0#0#Lib.dll#L\n" + twice + "\n")),
            (List{refused, To(lib), twice}));
  EXPECT_EQ(program.ProjectType(), ProjectTypes::StandardExe);
}

TEST_F(ProjectFile, KeepsACrossReferenceAsAnExternalReference) {
  bench.Write("C:\\src\\B.vbp", "Type=OleDll\nName=\"B\"\n");
  Project& a = Dll("A", "Reference=*\\G{B}#1.0#0#B.dll#B\n");
  const std::string back = "Reference=*\\G{A}#1.0#0#A.dll#A";
  Project& b = Dll("B", back + "\n");
  EXPECT_EQ(Refs(b), List{To(a)});
  a.GetReferencesFromVBP();
  EXPECT_EQ(Refs(a), List{"Reference=*\\G{B}#1.0#0#B.dll#B"});
}

TEST_F(ProjectFile, HoldsRowsThatItCannotTakeApartAsTheyAre) {
  const List rows = {"Reference=*\\A..\\Gone\\Gone.vbp",
                     "Reference=*\\G{A}#1.0",
                     "Reference=*\\G{A}#1.0#0",
                     "Reference=*\\Gno brace#1#2#3#4",
                     "Reference=*\\G{open#1.0#0#p#d",
                     "Reference=",
                     "Object=*\\AGone.vbp",
                     "Object={A}#1.0",
                     "Object=free text"};
  std::string text;
  for (const std::string& row : rows) text += row + "\n";
  Project& app = Program(text);
  EXPECT_EQ(Refs(app), rows);
  for (const auto& reference : app.ReferenceList().Items()) {
    const std::string row = reference->ReferenceString();
    EXPECT_TRUE(reference->IsExternal());
    EXPECT_EQ(reference->GUID(), "");
    EXPECT_EQ(reference->Path(), row.substr(row.find('=') + 1));
    EXPECT_EQ(reference->ReferenceType(),
              row.starts_with("Object") ? ReferenceTypes::RT_OBJECT : ReferenceTypes::RT_REFERENCE);
  }
}

TEST_F(ProjectFile, GivesRawRowsBackFromTheDatabase) {
  const List rows = {"Reference=*\\A..\\Gone\\Gone.vbp", "Reference=*\\G{A}#1.0", "Object=*\\AGone.vbp"};
  Program(rows[0] + "\n" + rows[1] + "\n" + rows[2] + "\n");
  const auto build = bench.Reload();
  const auto app = build->Projects().GetByName("App");
  EXPECT_EQ(Refs(*app), rows);
  app->UpdateVBP();
  EXPECT_EQ(bench.Rows("C:\\src\\App.vbp"), (List{"Type=Exe", rows[2], rows[1], rows[0], "Name=\"App\""}));
}

TEST_F(ProjectFile, RefusesARowThatIsTooLongToBeHeldAndNamesIt) {
  const std::string longest = "Reference=*\\A" + std::string(252, 'x');
  EXPECT_EQ(FailureOf([&] { Program(longest + "\n"); }), kNoFailure);
  const std::string row = "Reference=*\\A" + std::string(253, 'x');
  const Failure failure =
      FailureOf([&] { bench.Add("C:\\src\\B.vbp", "Type=Exe\n" + row + "\nName=\"B\"\n"); });
  EXPECT_EQ(failure.number, static_cast<std::int32_t>(BuildErrors::be_InvalidReferenceString));
  EXPECT_NE(failure.text.find(row), std::string::npos);
}

TEST_F(ProjectFile, LeavesTheReferencesAsTheyWereWhenDetectionFailsInTheMiddle) {
  Project& app = Program("Reference=*\\G{A}#1.0#0#a.dll#A\n");
  const auto before = app.ReferenceList().Item(Variant::FromLong(1));
  bench.Write("C:\\src\\App.vbp", "Type=Exe\nReference=*\\G{B}#1.0#0#b.dll#B\nReference=*\\A" +
                                      std::string(300, 'x') + "\nName=\"App\"\n");
  EXPECT_NE(FailureOf([&] { app.GetReferencesFromVBP(); }), kNoFailure);
  EXPECT_EQ(Refs(app), List{"Reference=*\\G{A}#1.0#0#a.dll#A"});
  EXPECT_EQ(app.ReferenceList().Item(Variant::FromText(before->Id())).Get(), before.Get());
  EXPECT_FALSE(app.ReferenceList().IsDirty());
}

TEST_F(ProjectFile, LeavesTheReferencesAsTheyWereWhenTheFileIsGone) {
  Project& app = Program("Reference=*\\G{A}#1.0#0#a.dll#A\n");
  bench.files->Remove("C:\\src\\App.vbp");
  EXPECT_EQ(FailureOf([&] { app.GetReferencesFromVBP(); }).number, 53);
  EXPECT_EQ(Refs(app), List{"Reference=*\\G{A}#1.0#0#a.dll#A"});
}

TEST_F(ProjectFile, DetectionMarksTheReferencesAsChanged) {
  Project& app = Program("");
  EXPECT_FALSE(app.ReferenceList().IsDirty());
  app.GetReferencesFromVBP();
  EXPECT_TRUE(app.ReferenceList().IsDirty());
}

// --- writing references

TEST_F(ProjectFile, WritesReferencesBelowTheTypeInReverseOrder) {
  Project& app = Program("Form=a.frm\nReference=*\\G{A}#1.0#409#a.dll#A\nObject={O}#1.0#0; one.ocx\n");
  app.ReferenceList().AddExternalReference("Reference=*\\G{B}#1.0#0#b.dll#B", "");
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nReference=*\\G{B}#1.0#0#b.dll#B\nObject={O}#1.0#0;one.ocx\n"
                               "Reference=*\\G{A}#1.0#0#a.dll#A\nForm=a.frm\nName=\"App\"\n"));
}

TEST_F(ProjectFile, WritesProjectsOfTheBuildWithTheIdentityOfTheirBinaries) {
  Project& lib = Dll("Lib", "Path32=\"..\\bin\"\n");
  Project& grid = bench.Add("C:\\src\\Grid.vbp",
                            "Type=Control\nName=\"Grid\"\nTitle=\"The Grid\"\nExeName32=\"G.ocx\"\n");
  bench.MakeBinary("C:\\bin\\Lib.dll", 0xAB, 10, 2);
  bench.MakeBinary("C:\\src\\G.ocx", 0xCD, 3, 0);
  Project& app = Program("");
  app.ReferenceList().AddInternalReference(lib);
  app.ReferenceList().AddInternalReference(grid);
  EXPECT_EQ(Updated(app),
            CrLf("Type=Exe\nObject={000000CD-0000-0000-0000-000000000000}#3.0#0; G.ocx\n"
                 "Reference=*\\G{000000AB-0000-0000-0000-000000000000}#A.2#0#C:\\bin\\Lib.dll#Lib library\n"
                 "Name=\"App\"\n"));
}

TEST_F(ProjectFile, LeavesReferenceRowsOfAProjectWithoutReferences) {
  Project& app = Program("");
  bench.Write("C:\\src\\App.vbp",
              "Type=Exe\nReference=*\\G{A}#1.0#0#a.dll#A\nObject={O}#1.0#0; one.ocx\nName=\"App\"\n");
  const std::string before = bench.Read("C:\\src\\App.vbp");
  EXPECT_EQ(Updated(app), before);
}

TEST_F(ProjectFile, ReplacesAReferenceInTheFirstRow) {
  Project& app = bench.Add("C:\\src\\App.vbp", "Reference=*\\G{A}#1.0#0#a.dll#A\nType=Exe\nName=\"App\"\n");
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nReference=*\\G{A}#1.0#0#a.dll#A\nName=\"App\"\n"));
}

TEST_F(ProjectFile, ReplacesAReferenceInTheLastRowWithoutLineEnd) {
  Project& app = bench.Add("C:\\src\\App.vbp", "Type=Exe\nName=\"App\"\nObject={A}#1.0#0; a.ocx");
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nObject={A}#1.0#0;a.ocx\nName=\"App\"\n"));
}

TEST_F(ProjectFile, ReplacesASettingInTheFirstRow) {
  Project& app = bench.Add("C:\\src\\App.vbp", "Name=\"App\"\nType=Exe\nMajorVer=1\n");
  app.SetMajorVer(2);
  EXPECT_EQ(Updated(app), CrLf("Name=\"App\"\nType=Exe\nMajorVer=2\n"));
  Project& other = bench.Add("C:\\src\\B.vbp", "MajorVer=1\nType=Exe\nName=\"B\"\n");
  other.SetMajorVer(2);
  EXPECT_EQ(Updated(other), CrLf("MajorVer=2\nType=Exe\nName=\"B\"\n"));
}

TEST_F(ProjectFile, TakesTheThreadsRowForAControlRowAndPutsItBackElsewhere) {
  // "ThreadPerObject=" holds "Object=".
  Project& app = Program("Reference=*\\G{A}#1.0#0#a.dll#A\nThreadPerObject=0\nForm=a.frm\n");
  EXPECT_EQ(Updated(app),
            CrLf("Type=Exe\nReference=*\\G{A}#1.0#0#a.dll#A\nForm=a.frm\nName=\"App\"\nThreadPerObject=0\n"));
  EXPECT_EQ(Refs(app).size(), 1U);
}

// --- writing settings

TEST_F(ProjectFile, AddsAMissingSettingBeforeTheFirstSection) {
  Project& app = Program("Form=a.frm\n");
  bench.Write("C:\\src\\App.vbp",
              "Type=Exe\nForm=a.frm\nName=\"App\"\n\n[MS Transaction Server]\nAutoRefresh=1\n");
  app.SetMajorVer(7);
  EXPECT_EQ(
      Updated(app),
      CrLf("Type=Exe\nForm=a.frm\nName=\"App\"\n\nMajorVer=7\n[MS Transaction Server]\nAutoRefresh=1\n"));
}

TEST_F(ProjectFile, AddsAMissingSettingAtTheEndOfAFileWithoutSections) {
  Project& app = Program("");
  app.SetMajorVer(7);
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nName=\"App\"\nMajorVer=7\n"));
  bench.Write("C:\\src\\App.vbp", "Type=Exe\nName=\"App\"\nForm=a.frm");
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nName=\"App\"\nForm=a.frm\nMajorVer=7"));
}

TEST_F(ProjectFile, LeavesTheRevisionWhileItIsCountedByTheCompiler) {
  Project& lib = Dll("Lib");
  lib.SetRevisionVer(9);
  lib.SetAutoIncrementVer(true);
  bench.Write("C:\\src\\Lib.vbp", "Type=OleDll\nName=\"Lib\"\nRevisionVer=123\n");
  EXPECT_NE(Updated(lib).find("RevisionVer=123\r\n"), std::string::npos);
  lib.SetAutoIncrementVer(false);
  EXPECT_NE(Updated(lib).find("RevisionVer=9\r\n"), std::string::npos);
}

TEST_F(ProjectFile, WritesTheThreadingModelOfInprocessProjectsOnly) {
  Project& app = Program("ThreadingModel=1\n");
  app.SetThreadingModel(ThreadingModels::SingleThreaded);
  EXPECT_NE(Updated(app).find("ThreadingModel=1\r\n"), std::string::npos);
  Project& lib = Dll("Lib", "ThreadingModel=1\n");
  lib.SetThreadingModel(ThreadingModels::SingleThreaded);
  EXPECT_NE(Updated(lib).find("ThreadingModel=0\r\n"), std::string::npos);
}

TEST_F(ProjectFile, NeverRewritesTheType) {
  Project& app = Program("");
  bench.Write("C:\\src\\App.vbp", "Type=exe\nName=\"App\"\n");
  EXPECT_EQ(Updated(app), CrLf("Type=exe\nName=\"App\"\n"));
}

TEST_F(ProjectFile, DoesNotReplaceASettingInALastRowWithoutLineEnd) {
  Project& app = Program("");
  app.SetMajorVer(7);
  bench.Write("C:\\src\\App.vbp", "Type=Exe\nName=\"App\"\nMajorVer=1");
  EXPECT_EQ(Updated(app), CrLf("Type=Exe\nName=\"App\"\nMajorVer=1"));
}

TEST_F(ProjectFile, UpdatesAWholeFileByteForByte) {
  const std::string before =
      "Type=OleDll\r\nReference=*\\G{A}#1.0#0#..\\sys\\a.dll#Biblioth\xE8que\r\nClass=One; One.cls\r\n"
      "Module=M; "
      "M.bas\r\nStartup=\"(None)\"\r\nHelpFile=\"\"\r\nTitle=\"Caf\xE9\"\r\nExeName32=\"Lib.dll\"\r\n"
      "Command32=\"\"\r\nName=\"Lib\"\r\nHelpContextID=\"0\"\r\nDescription=\"\x80uro \x81\"\r\n"
      "CompatibleMode=\"1\"\r\nMajorVer=1\r\nMinorVer=0\r\nRevisionVer=0\r\nAutoIncrementVer=0\r\n"
      "ServerSupportFiles=0\r\nVersionCompanyName=\"\xC5\xE4\xF6\"\r\nCompilationType=0\r\n"
      "OptimizationType=0\r\nFavorPentiumPro(tm)=0\r\nCodeViewDebugInfo=0\r\nNoAliasing=0\r\nBoundsCheck="
      "0\r\n"
      "OverflowCheck=0\r\nFlPointCheck=0\r\nFDIVCheck=0\r\nUnroundedFP=0\r\nStartMode=1\r\nUnattended=0\r\n"
      "Retained=0\r\nThreadingModel=1\r\nDebugStartupOption=0\r\n\r\n[MS Transaction Server]\r\n"
      "AutoRefresh=1\r\n\r\n[Tool data]\r\nb=\xFF\x01\r\nno equals sign\r\n\tlast";
  bench.WriteBytes("C:\\src\\Lib.vbp", before);
  Project& lib = *bench.build->Projects().Add("C:\\src\\Lib.vbp");
  EXPECT_EQ(Updated(lib), before) << "nothing to change";
  lib.SetMajorVer(12);
  lib.SetTitle("Caf\xC3\xA9 noir");
  lib.SetCompatibleMode(CompatibleModes::BinaryCompatibility);
  lib.SetDllBaseAddress(0x1AFE0000);
  std::string after = before;
  const auto change = [&](const std::string& from, const std::string& to) {
    after.replace(after.find(from), from.size(), to);
  };
  change("MajorVer=1\r\n", "MajorVer=12\r\n");
  change("\"Caf\xE9\"", "\"Caf\xE9 noir\"");
  change("CompatibleMode=\"1\"", "CompatibleMode=\"2\"");
  change("[MS Trans", "DllBaseAddress=&H1AFE0000\r\n[MS Trans");
  EXPECT_EQ(Updated(lib), after);
  EXPECT_EQ(Updated(lib), after) << "and nothing the second time";
}

TEST_F(ProjectFile, WritesAReadOnlyFile) {
  Project& app = Program("MajorVer=1\n");
  bench.files->SetAttributes("C:\\src\\App.vbp", platform::kReadOnly);
  app.SetMajorVer(2);
  EXPECT_EQ(FailureOf([&] { app.UpdateVBP(); }), kNoFailure);
  EXPECT_EQ(bench.Rows("C:\\src\\App.vbp")[1], "MajorVer=2");
  EXPECT_EQ(bench.files->Attributes("C:\\src\\App.vbp") & platform::kReadOnly, 0U);
}

TEST_F(ProjectFile, NamesTheProjectAndTheCauseWhenAnUpdateFails) {
  Project& lib = Dll("Lib");
  Project& app = Program("");
  app.ReferenceList().AddInternalReference(lib);
  const std::string before = bench.Read("C:\\src\\App.vbp");
  EXPECT_EQ(
      FailureOf([&] { app.UpdateVBP(); }),
      Failure(45, "Project.UpdateVBP",
              "Update failed for project App A typelib for the file C:\\src\\Lib.dll could not be found. "
              "The file is either missing or corrupt."));
  EXPECT_EQ(bench.Read("C:\\src\\App.vbp"), before);
}

TEST_F(ProjectFile, FailsToUpdateAMissingFileAndMakesNone) {
  Project& app = Program("");
  bench.files->Remove("C:\\src\\App.vbp");
  EXPECT_EQ(
      FailureOf([&] { app.UpdateVBP(); }),
      Failure(45, "Project.UpdateVBP", "Update failed for project App File not found: C:\\src\\App.vbp"));
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\App.vbp"));
}

TEST_F(ProjectFile, ReadsTheFileAnewForEveryUpdate) {
  Project& lib = Dll("Lib");
  Project& app = Program("");
  app.ReferenceList().AddInternalReference(lib);
  EXPECT_NE(FailureOf([&] { app.UpdateVBP(); }), kNoFailure);
  bench.MakeBinary("C:\\src\\Lib.dll", 1);
  bench.Write("C:\\src\\App.vbp", "Type=Exe\nName=\"App\"\nForm=since.frm\n");
  EXPECT_NE(Updated(app).find("Form=since.frm"), std::string::npos);
}

}  // namespace
}  // namespace hearthmake
