#include "foundation/modDatabase.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using support::ErrorOf;
using support::ExpectError;
using support::Workbench;

void AddBuild(const std::string& name) {
  const auto row = modDatabase::OpenRow("SELECT * FROM Build WHERE id = ", 0);
  row->AddNew();
  row->SetText("Name", name);
  row->Update();
  row->Close();
}

std::vector<std::string> BuildNames(platform::Database& database) {
  std::vector<std::string> names;
  const auto rows = database.OpenRecordset("SELECT * FROM Build", platform::RecordsetType::Dynaset);
  for (; !rows->AtEnd(); rows->MoveNext()) names.push_back(rows->GetText("Name"));
  rows->Close();
  return names;
}

std::vector<std::string> BuildNames() { return BuildNames(*modDatabase::GetDatabase()); }

void ExpectUnavailable() {
  ExpectError([] { modDatabase::GetDatabase(); }, BuildErrors::beNoDatabase, "DB",
              "The database is unavailable.");
  EXPECT_FALSE(Apartment::Current().DatabaseSlot()) << "nothing is kept";
}

TEST(modDatabase, TheFileLiesInTheLibrarysOwnFolder) {
  const Workbench bench;
  EXPECT_EQ(modDatabase::DatabasePath(), "C:\\data\\Build.mdb");
}

TEST(modDatabase, OpensAtFirstUseAndKeepsTheConnection) {
  const Workbench bench;
  const auto database = modDatabase::GetDatabase();
  ASSERT_TRUE(database);
  EXPECT_EQ(modDatabase::GetDatabase(), database);
  EXPECT_EQ(Apartment::Current().DatabaseSlot(), database);
}

TEST(modDatabase, AReadOnlyFileIsMadeWriteableFirst) {
  const Workbench bench;
  std::filesystem::permissions(bench.Posix("C:\\data\\Build.mdb"), std::filesystem::perms::owner_read);
  modDatabase::GetDatabase();
  EXPECT_EQ(bench.files->Attributes("C:\\data\\Build.mdb") & platform::kReadOnly, 0U);
  AddBuild("Suite");
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"Suite"});
}

TEST(modDatabase, AMissingFileIsUnavailableAndIsNotMade) {
  const Workbench bench;
  bench.files->Remove("C:\\data\\Build.mdb");
  ExpectUnavailable();
  EXPECT_FALSE(bench.files->FileExists("C:\\data\\Build.mdb"));
}

TEST(modDatabase, AMissingFolderIsUnavailable) {
  const Workbench bench;
  std::filesystem::remove_all(bench.Posix("C:\\data"));
  ExpectUnavailable();
}

TEST(modDatabase, ADamagedFileIsUnavailableAndStaysAsItIs) {
  const Workbench bench;
  bench.WriteBytes("C:\\data\\Build.mdb", "this is no database at all, but long enough to look at");
  ExpectUnavailable();
  EXPECT_EQ(bench.Read("C:\\data\\Build.mdb"), "this is no database at all, but long enough to look at");
}

TEST(modDatabase, AJetFileIsUnavailableAndIsNeverTouched) {
  const Workbench bench;
  const std::string jet = std::string("\0\1\0\0Standard Jet DB\0", 20) + std::string(4096, '\7');
  bench.WriteBytes("C:\\data\\Build.mdb", jet);
  ExpectUnavailable();
  EXPECT_EQ(bench.Read("C:\\data\\Build.mdb"), jet);
}

TEST(modDatabase, AFolderInItsPlaceIsUnavailable) {
  const Workbench bench;
  bench.files->Remove("C:\\data\\Build.mdb");
  bench.files->CreateFolders("C:\\data\\Build.mdb");
  ExpectUnavailable();
}

TEST(modDatabase, IsAvailableAgainWhenTheFileIsBack) {
  const Workbench bench;
  const std::string bytes = bench.Read("C:\\data\\Build.mdb");
  bench.files->Remove("C:\\data\\Build.mdb");
  ExpectUnavailable();
  bench.WriteBytes("C:\\data\\Build.mdb", bytes);
  EXPECT_TRUE(BuildNames().empty());
}

TEST(modDatabase, ClosingEmptiesTheSlotUntilTheNextUse) {
  const Workbench bench;
  AddBuild("Suite");
  modDatabase::CloseDatabase();
  EXPECT_FALSE(Apartment::Current().DatabaseSlot());
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"Suite"});
  EXPECT_TRUE(Apartment::Current().DatabaseSlot());
}

TEST(modDatabase, ClosingWhatIsClosedDoesNothing) {
  const Workbench bench;
  modDatabase::CloseDatabase();
  modDatabase::CloseDatabase();
  EXPECT_FALSE(Apartment::Current().DatabaseSlot());
}

TEST(modDatabase, ASelectionOfAnUnknownIdIsEmpty) {
  const Workbench bench;
  EXPECT_TRUE(modDatabase::OpenRow("SELECT * FROM Build WHERE id = ", 4711)->AtEnd());
  EXPECT_TRUE(modDatabase::OpenRow("SELECT * FROM BUild WHERE id = ", -1)->AtEnd());
}

TEST(modDatabase, ErrorsOfLaterCallsAreNotTranslated) {
  const Workbench bench;
  const auto error = ErrorOf([] { modDatabase::OpenDynaset("SELECT nonsense FROM nowhere"); });
  EXPECT_NE(error.Number(), static_cast<std::int32_t>(BuildErrors::beNoDatabase));
  EXPECT_NE(error.Source(), "DB");
}

TEST(modDatabase, ATransactionKeepsItsWork) {
  const Workbench bench;
  modDatabase::InTransaction([] { AddBuild("kept"); });
  modDatabase::CloseDatabase();
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"kept"});
}

TEST(modDatabase, AFailedTransactionLeavesNothingAndPassesItsErrorOn) {
  const Workbench bench;
  ExpectError(
      [] {
        modDatabase::InTransaction([] {
          AddBuild("lost");
          automation::Raise(45, "Here", "failed");
        });
      },
      45, "Here", "failed");
  EXPECT_TRUE(BuildNames().empty());
}

TEST(modDatabase, AFailedInnerTransactionTakesOnlyItsOwnWorkWithIt) {
  const Workbench bench;
  modDatabase::InTransaction([] {
    AddBuild("outer");
    ErrorOf([] {
      modDatabase::InTransaction([] {
        AddBuild("inner");
        automation::Raise(45, "Here", "failed");
      });
    });
  });
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"outer"});
}

TEST(modDatabase, AFailedOuterTransactionTakesTheInnerWithIt) {
  const Workbench bench;
  ErrorOf([] {
    modDatabase::InTransaction([] {
      modDatabase::InTransaction([] { AddBuild("inner"); });
      automation::Raise(45, "Here", "failed");
    });
  });
  EXPECT_TRUE(BuildNames().empty());
}

TEST(modDatabase, ABatchStoresEveryStep) {
  constexpr int kSteps = 600;  // more than one transaction takes
  const Workbench bench;
  modDatabase::Batch batch;
  for (int i = 0; i < kSteps; ++i) {
    AddBuild("step");
    batch.Step();
  }
  batch.Finish();
  modDatabase::CloseDatabase();
  EXPECT_EQ(BuildNames().size(), static_cast<std::size_t>(kSteps));
}

TEST(modDatabase, ABatchThatAnErrorEndsStoresTheStepsBefore) {
  const Workbench bench;
  ExpectError(
      [] {
        modDatabase::Batch batch;
        AddBuild("done");
        batch.Step();
        automation::Raise(45, "Here", "failed");
      },
      45, "Here", "failed");
  modDatabase::CloseDatabase();
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"done"});
}

TEST(modDatabase, ABatchSurvivesTheClosingOfTheDatabase) {
  const Workbench bench;
  modDatabase::Batch batch;
  AddBuild("before");
  batch.Step();
  modDatabase::CloseDatabase();
  AddBuild("after");
  batch.Step();
  batch.Finish();
  EXPECT_EQ(BuildNames(), (std::vector<std::string>{"before", "after"}));
}

TEST(modDatabase, ABatchNeedsTheDatabase) {
  const Workbench bench;
  bench.files->Remove("C:\\data\\Build.mdb");
  ExpectError([] { const modDatabase::Batch batch; }, BuildErrors::beNoDatabase, "DB",
              "The database is unavailable.");
}

TEST(modDatabase, ExecuteRefusesASecondStatement) {
  const Workbench bench;
  AddBuild("Suite");
  EXPECT_EQ(
      ErrorOf([] { modDatabase::GetDatabase()->Execute("DELETE FROM Scripts; DELETE FROM Build"); }).Number(),
      3142);
  EXPECT_EQ(BuildNames(), std::vector<std::string>{"Suite"});
}

TEST(modDatabase, AnotherWorkspaceSeesWhatWasStoredAndTheOtherWayRound) {
  const Workbench bench;
  sqlite::SqliteWorkspace other(
      [&](std::string_view path) { return bench.drives->ToPosix(path).value_or(""); });
  AddBuild("ours");
  const auto database = other.OpenDatabase(modDatabase::DatabasePath());
  EXPECT_EQ(BuildNames(*database), std::vector<std::string>{"ours"});
  database->Execute("INSERT INTO Build(Name) VALUES ('theirs')");
  EXPECT_EQ(BuildNames(), (std::vector<std::string>{"ours", "theirs"}));
}

TEST(modDatabase, TwoProcessesAddRowsWithoutLosingAny) {
  constexpr int kRows = 40;
  const Workbench bench;
  const std::string path = bench.Posix(modDatabase::DatabasePath());
  const pid_t child = fork();
  if (child == 0) {
    // A connection of its own: nothing of the parent's is used.
    int status = 0;
    try {
      sqlite::SqliteWorkspace workspace([&](std::string_view) { return path; });
      const auto database = workspace.OpenDatabase("C:\\data\\Build.mdb");
      for (int i = 0; i < kRows; ++i) database->Execute("INSERT INTO Build(Name) VALUES ('child')");
    } catch (const automation::Error&) {
      status = 1;
    }
    _exit(status);
  }
  for (int i = 0; i < kRows; ++i) AddBuild("parent");
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(BuildNames().size(), 2U * kRows);
}

}  // namespace
}  // namespace hearthmake
