// The row of a project in the database, and its edit cycle.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "project/Project.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Decimal;
using automation::Variant;
using support::Failure;
using support::FailureOf;
using support::kNoFailure;
using support::ProjectBench;

constexpr const char* kApostrophe = "Reference=*\\G{N}#1.0#0#C:\\x.dll#Somebody's library";
constexpr const char* kLibrary = "Reference=*\\G{G}#5.0#0#C:\\x\\y.dll#My Lib";

class ProjectEdit : public testing::Test {
 protected:
  Project& Dll(const std::string& name = "Lib", const std::string& moreRows = {}) {
    return bench.AddDll("C:\\src\\" + name + ".vbp", name, moreRows);
  }
  static void Execute(const std::string& sql) { modDatabase::GetDatabase()->Execute(sql); }
  // What the library itself never sends.
  void ExecuteBehindItsBack(const std::string& sql) const {
    modDatabase::CloseDatabase();
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(bench.root.Path("drive_c/data/Build.mdb").c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
  }
  static void Refer(Project& from, Project& to) {
    from.BeginEdit();
    from.ReferenceList().AddInternalReference(to);
    from.ApplyEdit();
  }
  static int Rows(const std::string& table) { return ProjectBench::CountRows(table); }

  ProjectBench bench;
};

// --- loading

TEST_F(ProjectEdit, LoadsWhatWasSaved) {
  Project& project = Dll("Lib", "Path32=\"..\\bin\"\nDllBaseAddress=&H1AFE0000\n");
  project.BeginEdit();
  project.SetCopyPath("C:\\copies");
  project.SetCompileMe(false);
  project.SetMtsPackageId(17);
  project.SetPreserveBinary(true);
  project.SetCheckInBinaryFile(true);
  project.SetCheckInVBPFile(true);
  project.SetDescription(
      "Gr\xC3\xB6\xC3\x9F"
      "e");
  project.ApplyEdit();

  const auto build = bench.Reload();
  const auto loaded = build->Projects().GetByName("Lib");
  EXPECT_EQ(loaded->Id(), project.Id());
  EXPECT_EQ(loaded->ProjectPath(), "C:\\src\\Lib.vbp");
  EXPECT_EQ(loaded->CopyPath(), "C:\\copies");
  EXPECT_FALSE(loaded->CompileMe());
  EXPECT_EQ(loaded->MtsPackageId(), 17);
  EXPECT_TRUE(loaded->PreserveBinary());
  EXPECT_TRUE(loaded->CheckInBinaryFile());
  EXPECT_TRUE(loaded->CheckInVBPFile());
  EXPECT_EQ(loaded->Path32(), "..\\bin");
  EXPECT_EQ(loaded->DllBaseAddress(), 0x1AFE0000);
  EXPECT_EQ(loaded->Description(),
            "Gr\xC3\xB6\xC3\x9F"
            "e");
  EXPECT_EQ(loaded->ProjectType(), ProjectTypes::ActiveXDll);
  EXPECT_EQ(loaded->LastCompiled().value, 0);
}

TEST_F(ProjectEdit, LoadsNullColumnsAsEmptyTextsAndZero) {
  Execute("INSERT INTO Project(idBuild, ProjectPath, ProjectType) VALUES (" + Decimal(bench.build->Id()) +
          ", 'C:\\src\\N.vbp', 'Exe')");
  const auto build = bench.Reload();
  const auto project = build->Projects().Item(Variant::FromLong(1));
  EXPECT_EQ(project->Name(), "");
  EXPECT_EQ(project->Title(), "");
  EXPECT_EQ(project->CopyPath(), "");
  EXPECT_EQ(project->MtsPackageId(), 0);
  EXPECT_EQ(project->LastCompiled().value, 0);
  EXPECT_TRUE(project->RemoveUnusedControlInfo());
  EXPECT_EQ(project->ExeName32(), "N.exe");
}

TEST_F(ProjectEdit, LoadsALastCompileOnlyWhereThereIsOne) {
  Project& project = Dll();
  Execute("UPDATE Project SET LastCompiled = '2001-03-25 13:05:00' WHERE id = " + Decimal(project.Id()));
  const auto build = bench.Reload();
  EXPECT_EQ(automation::FormatIsoDate(build->Projects().GetByName("Lib")->LastCompiled().value),
            "2001-03-25 13:05:00");
}

// --- saving

TEST_F(ProjectEdit, WritesARowWithEveryColumn) {
  Project& project = Dll();
  EXPECT_NE(project.Id(), 0);
  EXPECT_EQ(ProjectBench::Stored(project, "idBuild"), Decimal(bench.build->Id()));
  EXPECT_EQ(ProjectBench::Stored(project, "ProjectPath"), "C:\\src\\Lib.vbp");
  EXPECT_EQ(ProjectBench::Stored(project, "Name"), "\"Lib\"");
  EXPECT_EQ(ProjectBench::Stored(project, "ProjectType"), "OleDll");
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
  EXPECT_EQ(ProjectBench::Stored(project, "MajorVer"), "1");
  EXPECT_EQ(ProjectBench::Stored(project, "HelpFile"), "");
  const auto row = modDatabase::OpenDynaset("SELECT * FROM Project");
  EXPECT_TRUE(row->GetBoolean("Compile"));
  EXPECT_FALSE(row->GetBoolean("PreserveBinary"));
  EXPECT_TRUE(row->IsNull("LastCompiled"));
}

TEST_F(ProjectEdit, EditsTheRowItHas) {
  Project& project = Dll();
  const std::int32_t id = project.Id();
  project.BeginEdit();
  project.SetTitle("New");
  project.ApplyEdit();
  EXPECT_EQ(project.Id(), id);
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"New\"");
}

TEST_F(ProjectEdit, WritesNothingWhenNothingChanged) {
  Project& project = Dll();
  Execute("UPDATE Project SET CopyPath = 'behind', Title = 'behind'");
  project.BeginEdit();
  project.ApplyEdit();
  EXPECT_EQ(ProjectBench::Stored(project, "CopyPath"), "behind");
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "behind");
}

TEST_F(ProjectEdit, LeavesTheSettingsColumnsWhenOnlyTheProjectsOwnFieldsChanged) {
  Project& project = Dll();
  Execute("UPDATE Project SET Title = 'behind'");
  project.BeginEdit();
  project.SetCopyPath("C:\\copies");
  project.ApplyEdit();
  EXPECT_EQ(ProjectBench::Stored(project, "CopyPath"), "C:\\copies");
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "behind");
}

TEST_F(ProjectEdit, LeavesTheRowWhenOnlyTheReferencesChanged) {
  Project& project = Dll();
  Execute("UPDATE Project SET CopyPath = 'behind'");
  project.BeginEdit();
  project.ReferenceList().AddExternalReference(kLibrary, "");
  project.ApplyEdit();
  EXPECT_EQ(ProjectBench::Stored(project, "CopyPath"), "behind");
  EXPECT_EQ(Rows("ExternalReferences"), 1);
}

TEST_F(ProjectEdit, AddsARowAgainWhenItsOwnIsGone) {
  Project& project = Dll();
  Execute("DELETE FROM Project");
  project.BeginEdit();
  project.SetTitle("New");
  project.ApplyEdit();
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"New\"");
}

TEST_F(ProjectEdit, PassesDatabaseErrorsOnUnchanged) {
  Project& project = Dll();
  ExecuteBehindItsBack(
      "CREATE TRIGGER Locked BEFORE UPDATE ON Project BEGIN SELECT RAISE(ABORT, 'locked'); END");
  project.BeginEdit();
  project.SetTitle("New");
  const Failure failure = FailureOf([&] { project.ApplyEdit(); });
  EXPECT_EQ(failure.source, "DAO.Recordset");
  EXPECT_NE(failure.text.find("locked"), std::string::npos) << failure.text;
}

TEST_F(ProjectEdit, StoresNothingOfAProjectWhoseReferencesCannotBeSaved) {
  Project& project = Dll();
  project.BeginEdit();
  project.SetTitle("New");
  project.SetCopyPath("C:\\copies");
  project.ReferenceList().AddExternalReference(kApostrophe, "");
  EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }),
            Failure(45, "References.SaveReferences", "Save failed!"));
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
  EXPECT_EQ(ProjectBench::Stored(project, "CopyPath"), "");
  // The edit goes on: mended, all of it is stored.
  project.ReferenceList().Item(Variant::FromLong(1))->SetDescription("mended");
  project.ApplyEdit();
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"New\"");
  EXPECT_EQ(ProjectBench::Stored(project, "CopyPath"), "C:\\copies");
  EXPECT_EQ(Rows("ExternalReferences"), 1);
}

TEST_F(ProjectEdit, LeavesNoTraceOfANewProjectWhoseReferencesCannotBeSaved) {
  bench.Write("C:\\src\\Bad.vbp", "Type=Exe\n" + std::string(kApostrophe) + "\nName=\"Bad\"\n");
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().Add("C:\\src\\Bad.vbp"); }).text, "Save failed!");
  EXPECT_EQ(bench.build->Projects().Count(), 0);
  EXPECT_EQ(Rows("Project"), 0);
  EXPECT_EQ(Rows("ExternalReferences"), 0);
  // Its name is free.
  EXPECT_EQ(FailureOf([&] { bench.Add("C:\\src\\Good.vbp", "Type=Exe\nName=\"Bad\"\n"); }), kNoFailure);
}

TEST_F(ProjectEdit, TakesPartInATransactionAroundIt) {
  Project& project = Dll();
  EXPECT_THROW(modDatabase::InTransaction([&] {
                 project.BeginEdit();
                 project.SetTitle("New");
                 project.ReferenceList().AddExternalReference(kLibrary, "");
                 project.ApplyEdit();
                 EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"New\"");
                 throw automation::Error(1, "test", "rolled back");
               }),
               automation::Error);
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
  EXPECT_EQ(Rows("ExternalReferences"), 0);
}

TEST_F(ProjectEdit, RollsBackItsOwnLevelOfATransactionOnly) {
  Project& project = Dll();
  Project& other = Dll("Other");
  modDatabase::InTransaction([&] {
    other.BeginEdit();
    other.SetTitle("Kept");
    other.ApplyEdit();
    project.BeginEdit();
    project.SetTitle("Lost");
    project.ReferenceList().AddExternalReference(kApostrophe, "");
    EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }).text, "Save failed!");
  });
  EXPECT_EQ(ProjectBench::Stored(other, "Title"), "\"Kept\"");
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
}

// A workspace whose commits of the outermost level can be made to fail, as on a full disk.
class FullDiskWorkspace final : public platform::Workspace {
 public:
  explicit FullDiskWorkspace(std::shared_ptr<platform::Workspace> real) : m_real(std::move(real)) {}
  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override {
    return m_real->OpenDatabase(path);
  }
  void BeginTrans() override {
    m_real->BeginTrans();
    ++m_level;
  }
  void CommitTrans() override {
    if (isFull && m_level == 1) automation::Raise(3026, "DAO.Workspace", "Not enough space on disk.");
    m_real->CommitTrans();
    --m_level;
  }
  void Rollback() override {
    m_real->Rollback();
    --m_level;
  }
  bool isFull = false;

 private:
  std::shared_ptr<platform::Workspace> m_real;
  int m_level = 0;
};

TEST_F(ProjectEdit, GoesOnAfterACommitThatFailed) {
  platform::Platform ports = bench.apartment->Ports();
  const auto workspace = std::make_shared<FullDiskWorkspace>(ports.workspace);
  ports.workspace = workspace;
  const Apartment apartment(ports);
  Project& project = Dll();
  project.BeginEdit();
  project.SetTitle("New");
  project.ReferenceList().AddExternalReference(kLibrary, "");
  workspace->isFull = true;
  EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }).number, 3026);
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
  EXPECT_EQ(Rows("ExternalReferences"), 0);
  workspace->isFull = false;
  EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }), kNoFailure);
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"New\"");
  EXPECT_EQ(Rows("ExternalReferences"), 1);
  bench.build->RemoveSink(bench.sink);
  bench.build = automation::Make<Build>();
}

// --- the edit cycle

TEST_F(ProjectEdit, RefusesToBeginTwice) {
  Project& project = Dll();
  project.BeginEdit();
  EXPECT_EQ(FailureOf([&] { project.BeginEdit(); }),
            Failure(1004, "Project.BeginEdit", "Already in edit mode"));
}

TEST_F(ProjectEdit, RefusesTheOthersOutsideAnEditInTheNameOfCancelEdit) {
  Project& project = Dll();
  const Failure expected(1004, "Project.CancelEdit", "Not in edit mode");
  EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }), expected);
  EXPECT_EQ(FailureOf([&] { project.CancelEdit(); }), expected);
  EXPECT_EQ(FailureOf([&] { project.Delete(); }), expected);
}

TEST_F(ProjectEdit, BeginsAnewAfterApplyAndAfterCancel) {
  Project& project = Dll();
  project.BeginEdit();
  project.ApplyEdit();
  project.BeginEdit();
  project.CancelEdit();
  EXPECT_EQ(FailureOf([&] { project.BeginEdit(); }), kNoFailure);
}

TEST_F(ProjectEdit, CancelRestoresFieldsSettingsPathAndReferences) {
  Project& project = Dll();
  project.BeginEdit();
  project.SetCopyPath("C:\\copies");
  project.SetCompileMe(false);
  project.SetMtsPackageId(3);
  project.SetPreserveBinary(true);
  project.SetCheckInBinaryFile(true);
  project.SetCheckInVBPFile(true);
  project.SetTitle("New");
  project.SetProjectPath("C:\\src\\Other.vbp");
  project.ReferenceList().AddExternalReference(kLibrary, "");
  project.CancelEdit();
  EXPECT_EQ(project.CopyPath(), "");
  EXPECT_TRUE(project.CompileMe());
  EXPECT_EQ(project.MtsPackageId(), 0);
  EXPECT_FALSE(project.PreserveBinary());
  EXPECT_FALSE(project.CheckInBinaryFile());
  EXPECT_FALSE(project.CheckInVBPFile());
  EXPECT_EQ(project.Title(), "Lib library");
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\Lib.vbp");
  EXPECT_EQ(ProjectBench::References(project), std::vector<std::string>());
  EXPECT_EQ(ProjectBench::Stored(project, "Title"), "\"Lib library\"");
}

TEST_F(ProjectEdit, CancelGivesAProjectItsNameBackInTheBuild) {
  Project& project = Dll();
  bench.Write("C:\\src\\New.vbp", "Type=OleDll\nName=\"Renamed\"\n");
  project.BeginEdit();
  project.LoadFromFile("C:\\src\\New.vbp");
  EXPECT_EQ(bench.build->Projects().GetByName("Renamed").Get(), &project);
  project.CancelEdit();
  EXPECT_EQ(project.Name(), "Lib");
  EXPECT_EQ(bench.build->Projects().GetByName("Lib").Get(), &project);
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().GetByName("Renamed"); }).number, 5);
}

TEST_F(ProjectEdit, CancelTakesADeletionBack) {
  Project& project = Dll();
  project.BeginEdit();
  project.Delete();
  project.CancelEdit();
  project.BeginEdit();
  project.ApplyEdit();
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(bench.build->Projects().Count(), 1);
}

// --- deleting

TEST_F(ProjectEdit, DeletesOnlyWithApplyEdit) {
  Project& project = Dll();
  project.BeginEdit();
  project.Delete();
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(bench.build->Projects().Count(), 1);
}

TEST_F(ProjectEdit, DeletesTheProjectWithItsReferenceRows) {
  Project& used = Dll("Used");
  Project& project = Dll("User", std::string(kLibrary) + "\n");
  Refer(project, used);
  EXPECT_EQ(Rows("References"), 1);
  EXPECT_EQ(Rows("ExternalReferences"), 1);
  const automation::Ref<Project> held(&project);
  project.BeginEdit();
  project.Delete();
  project.ApplyEdit();
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(Rows("References"), 0);
  EXPECT_EQ(Rows("ExternalReferences"), 0);
  EXPECT_EQ(bench.build->Projects().Count(), 1);
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().GetByName("User"); }).number, 5);
  EXPECT_EQ(automation::ToLong(held->ReferenceList().Count()), 0);
  EXPECT_EQ(held->ParentOrNull(), nullptr);
}

TEST_F(ProjectEdit, RefusesToDeleteAProjectThatAnotherReferences) {
  Project& used = Dll("Used");
  Project& user = Dll("User");
  Refer(user, used);
  used.BeginEdit();
  used.Delete();
  EXPECT_EQ(FailureOf([&] { used.ApplyEdit(); }),
            Failure(BuildErrors::beProjectIsReferenced, "Project.Delete",
                    "Project is referenced by other projects"));
  EXPECT_EQ(Rows("Project"), 2);
  EXPECT_EQ(Rows("References"), 1);
  EXPECT_EQ(bench.build->Projects().Count(), 2);
  EXPECT_EQ(bench.build->Projects().GetByName("Used").Get(), &used);
}

TEST_F(ProjectEdit, DeletesAReferencedProjectOnceNobodyReferencesIt) {
  Project& used = Dll("Used");
  Project& user = Dll("User");
  Refer(user, used);
  used.BeginEdit();
  used.Delete();
  EXPECT_NE(FailureOf([&] { used.ApplyEdit(); }), kNoFailure);
  user.BeginEdit();
  user.ReferenceList().Remove(Variant::FromLong(1));
  user.ApplyEdit();
  EXPECT_EQ(FailureOf([&] { used.ApplyEdit(); }), kNoFailure);
  EXPECT_EQ(Rows("Project"), 1);
}

TEST_F(ProjectEdit, ReportsAnyOtherFailureToDeleteAndDeletesNothing) {
  Project& project = Dll("Lib", std::string(kLibrary) + "\n");
  // A table that refuses to lose rows: the third statement fails after two went well.
  ExecuteBehindItsBack(
      "CREATE TRIGGER Keep BEFORE DELETE ON \"References\" BEGIN SELECT RAISE(ABORT, 'kept'); END");
  Execute("INSERT INTO References(idReferencing, idReferenced) VALUES (" + Decimal(project.Id()) + ", 999)");
  project.BeginEdit();
  project.Delete();
  EXPECT_EQ(FailureOf([&] { project.ApplyEdit(); }),
            Failure(BuildErrors::beCanNotDelete, "Project.Delete", "Project delete failed"));
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(Rows("ExternalReferences"), 1);
  EXPECT_EQ(bench.build->Projects().Count(), 1);
}

TEST_F(ProjectEdit, DeletesAProjectThatWasNeverSaved) {
  const auto project = automation::Make<Project>();
  project->BeginEdit();
  project->Delete();
  EXPECT_EQ(FailureOf([&] { project->ApplyEdit(); }), kNoFailure);
}

// --- two builds

TEST_F(ProjectEdit, KeepsTheProjectsOfTwoBuildsApart) {
  Project& project = Dll();
  const auto other = automation::Make<Build>();
  other->BeginEdit();
  other->SetName("Other");
  other->ApplyEdit();
  bench.Write("C:\\other\\Lib.vbp", ProjectBench::ProjectText("Exe", "Lib"));
  const auto twin = other->Projects().Add("C:\\other\\Lib.vbp");
  EXPECT_NE(twin->Id(), project.Id());
  EXPECT_EQ(ProjectBench::Stored(*twin, "idBuild"), Decimal(other->Id()));

  const auto again = bench.Reload();
  EXPECT_EQ(again->Projects().Count(), 1);
  EXPECT_EQ(again->Projects().GetByName("Lib")->ProjectType(), ProjectTypes::ActiveXDll);
  twin->BeginEdit();
  twin->Delete();
  twin->ApplyEdit();
  EXPECT_EQ(Rows("Project"), 1);
  EXPECT_EQ(bench.build->Projects().Count(), 1);
}

}  // namespace
}  // namespace hearthmake
