#include "adapters/sqlite/SqliteWorkspace.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <set>

#include "adapters/sqlite/BuildSchema.hpp"
#include "platform/DatabaseConformance.hpp"
#include "support/SqliteTestFolder.hpp"

namespace hearthmake {
namespace {

using platform::Database;
using platform::RecordsetType;
using sqlite::CreateBuildDatabase;
using sqlite::SqliteWorkspace;
using test::ErrorOf;
using test::RawSql;
using test::ReadBytes;
using test::SqliteTestFolder;
using test::WriteBytes;

std::string SamePath(std::string_view path) { return std::string(path); }

}  // namespace

namespace platform {

DatabaseStore SqliteStore() {
  const auto folder = std::make_shared<SqliteTestFolder>();
  return {"sqlite", [] { return std::make_unique<SqliteWorkspace>(SamePath); },
          [folder] {
            static int made = 0;
            const std::string path = *folder / ("Build" + std::to_string(++made) + ".mdb");
            CreateBuildDatabase(path);
            return path;
          }};
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseConformance, testing::Values(SqliteStore()));

}  // namespace platform

namespace {

class SqliteWorkspaceTest : public testing::Test {
 protected:
  SqliteWorkspaceTest() : m_path(m_folder / "Build.mdb") { CreateBuildDatabase(m_path); }

  static void AddBuild(Database& database, const std::string& name) {
    database.Execute("INSERT INTO Build(Name) VALUES ('" + name + "')");
  }
  static std::int32_t Count(Database& database, const std::string& from = "Build") {
    return database.OpenRecordset("SELECT COUNT(*) FROM " + from, RecordsetType::Dynaset)
        ->GetLong("Expr1000");
  }
  // What is in the file, seen by a new workspace.
  std::int32_t CountAnew(const std::string& from = "Build") {
    SqliteWorkspace workspace(SamePath);
    return Count(*workspace.OpenDatabase(m_path), from);
  }
  int OpenError(const std::string& path, std::string* description = nullptr) {
    return ErrorOf([&] { m_workspace.OpenDatabase(path); }, description);
  }
  // Runs the call in a child process; true when it ended well.
  template <typename Call>
  static bool InChild(Call call) {
    const pid_t child = fork();
    if (child == 0) {
      int result = 1;
      try {
        result = call() ? 0 : 1;
      } catch (const automation::Error& error) {
        fprintf(stderr, "child: %d %s\n", error.Number(), error.what());
      }
      _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

  SqliteTestFolder m_folder;
  std::string m_path;
  SqliteWorkspace m_workspace{SamePath, std::chrono::milliseconds(50)};
};

// --- opening ---

TEST_F(SqliteWorkspaceTest, MapsThePathAndNamesTheOriginalInErrors) {
  SqliteWorkspace workspace([this](std::string_view path) { return m_folder / std::string(path.substr(3)); });
  EXPECT_EQ(Count(*workspace.OpenDatabase("C:\\Build.mdb")), 0);
  std::string description;
  std::string source;
  EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase("C:\\None.mdb"); }, &description, &source), 3024);
  EXPECT_EQ(description, "Could not find file 'C:\\None.mdb'.");
  EXPECT_EQ(source, "DAO.Workspace");
}

TEST_F(SqliteWorkspaceTest, RefusesWhatIsNoDatabase) {
  const std::string path = m_folder / "other";
  EXPECT_EQ(OpenError(m_folder.Path()), 3051);
  WriteBytes(path, "");
  EXPECT_EQ(OpenError(path), 3343);
  WriteBytes(path, "MZ");
  EXPECT_EQ(OpenError(path), 3343);
  WriteBytes(path, std::string(100000, '\x5A'));
  std::string description;
  EXPECT_EQ(OpenError(path, &description), 3343);
  EXPECT_EQ(description, "Unrecognized database format '" + path + "'.");
  EXPECT_EQ(OpenError(path + "/below"), 3024);
}

TEST_F(SqliteWorkspaceTest, NeverTouchesAJetFile) {
  const std::string path = m_folder / "Jet.mdb";
  for (const std::string name : {"Standard Jet DB", "Standard ACE DB"}) {
    std::string bytes(4096, '\0');
    bytes[1] = 1;
    bytes.replace(4, name.size(), name);
    WriteBytes(path, bytes);
    const auto before = std::filesystem::last_write_time(path);
    std::string description;
    EXPECT_EQ(OpenError(path, &description), 3343);
    EXPECT_NE(description.find("Jet"), std::string::npos) << description;
    EXPECT_EQ(ReadBytes(path), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}), 2);
}

TEST_F(SqliteWorkspaceTest, TellsWhenThePermissionIsMissing) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to become someone else in a child";
  chmod(m_path.c_str(), 0600);
  EXPECT_TRUE(InChild([&] {
    if (setresuid(65534, 65534, 65534) != 0) return false;
    return OpenError(m_path) == 3051;
  }));
}

TEST_F(SqliteWorkspaceTest, ReadsFromAReadOnlyFolder) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to become someone else in a child";
  // Closed for good, so that no WAL lies beside the file.
  AddBuild(*SqliteWorkspace(SamePath).OpenDatabase(m_path), "a");
  ASSERT_FALSE(std::filesystem::exists(m_path + "-shm"));
  chmod(m_folder.Path().c_str(), 0755);
  chmod(m_path.c_str(), 0444);
  EXPECT_TRUE(InChild([&] {
    if (setresuid(65534, 65534, 65534) != 0) return false;
    SqliteWorkspace workspace(SamePath);
    const auto database = workspace.OpenDatabase(m_path);
    if (Count(*database) != 1) return false;
    if (ErrorOf([&] { AddBuild(*database, "b"); }) != 3027) return false;
    workspace.BeginTrans();
    if (Count(*database) != 1) return false;
    workspace.CommitTrans();
    return true;
  }));
}

TEST_F(SqliteWorkspaceTest, WorksWhereTheFileKeepsARollbackJournal) {
  RawSql(m_path, "PRAGMA journal_mode=DELETE");
  AddBuild(*m_workspace.OpenDatabase(m_path), "a");
  EXPECT_EQ(CountAnew(), 1);
}

TEST_F(SqliteWorkspaceTest, TellsThatAFileIsInUse) {
  RawSql(m_path, "PRAGMA journal_mode=DELETE");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(m_path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(OpenError(m_path), 3045);
  sqlite3_close(other);
  EXPECT_EQ(OpenError(m_path), 0);
}

TEST_F(SqliteWorkspaceTest, TellsThatAnotherHoldsTheWriteLock) {
  const auto database = m_workspace.OpenDatabase(m_path);
  SqliteWorkspace other(SamePath);
  const auto otherDatabase = other.OpenDatabase(m_path);
  other.BeginTrans();
  AddBuild(*otherDatabase, "theirs");
  EXPECT_EQ(ErrorOf([&] { AddBuild(*database, "mine"); }), 3260);
  EXPECT_EQ(Count(*database), 0);
  m_workspace.BeginTrans();
  EXPECT_EQ(ErrorOf([&] { AddBuild(*database, "mine"); }), 3260);
  m_workspace.Rollback();
  other.CommitTrans();
  AddBuild(*database, "mine");
  EXPECT_EQ(Count(*database), 2);
}

// --- a connection kept for the next open ---

TEST_F(SqliteWorkspaceTest, BringsEverythingIntoTheFileWhenItIsClosed) {
  const auto database = m_workspace.OpenDatabase(m_path);
  AddBuild(*database, "a");
  database->Close();
  const std::string copy = m_folder / "Copy.mdb";
  WriteBytes(copy, ReadBytes(m_path));
  EXPECT_EQ(RawSql(copy, "SELECT Name FROM Build"), "a");
}

TEST_F(SqliteWorkspaceTest, SeesAFileThatTookThePlaceOfAClosedOne) {
  const std::string replacement = m_folder / "New.mdb";
  for (const bool inPlace : {false, true}) {
    AddBuild(*m_workspace.OpenDatabase(m_path), "old");
    CreateBuildDatabase(replacement);
    RawSql(replacement, "INSERT INTO Build(Name) VALUES ('new'),('new'),('new')");
    if (inPlace) {
      WriteBytes(m_path, ReadBytes(replacement));
      std::filesystem::remove(replacement);
    } else {
      std::filesystem::rename(replacement, m_path);
    }
    const auto database = m_workspace.OpenDatabase(m_path);
    EXPECT_EQ(Count(*database, "Build WHERE Name = 'new'"), 3) << inPlace;
    EXPECT_EQ(Count(*database), 3) << inPlace;
    AddBuild(*database, "more");
    database->Close();
    EXPECT_EQ(RawSql(m_path, "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(RawSql(m_path, "SELECT COUNT(*) FROM Build"), "4");
  }
}

TEST_F(SqliteWorkspaceTest, NoticesThatAClosedFileIsGone) {
  m_workspace.OpenDatabase(m_path)->Close();
  std::filesystem::remove(m_path);
  EXPECT_EQ(OpenError(m_path), 3024);
}

TEST_F(SqliteWorkspaceTest, SeesTablesThatOthersChangedInBetween) {
  const auto database = m_workspace.OpenDatabase(m_path);
  AddBuild(*database, "a");
  const auto open = [&] { return database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset); };
  EXPECT_EQ(open()->GetText("Name"), "a");
  RawSql(m_path, "ALTER TABLE Build ADD COLUMN Extra TEXT DEFAULT 'x'");
  const auto rows = open();
  EXPECT_EQ(rows->GetText("Extra"), "x");
  rows->Edit();
  rows->SetText("Extra", "y");
  rows->Update();
  EXPECT_EQ(RawSql(m_path, "SELECT Extra FROM Build"), "y");
  rows->AddNew();
  EXPECT_EQ(rows->GetText("Extra"), "x");
}

TEST_F(SqliteWorkspaceTest, LivesAsLongAsWhatItOpened) {
  auto workspace = std::make_unique<SqliteWorkspace>(SamePath);
  auto database = workspace->OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  database.reset();
  workspace.reset();
  rows->AddNew();
  rows->SetText("Name", "a");
  rows->Update();
  EXPECT_EQ(CountAnew(), 1);
}

TEST_F(SqliteWorkspaceTest, KeepsStatementsApartHoweverManyThereAre) {
  const auto database = m_workspace.OpenDatabase(m_path);
  for (int round = 0; round < 2; ++round) {
    for (int i = 1; i <= 150; ++i) {
      std::string sql = "SELECT COUNT(*) FROM Build WHERE id = 0";
      for (int j = 0; j < i; ++j) sql += " OR id = 0";
      EXPECT_EQ(database->OpenRecordset(sql, RecordsetType::Dynaset)->GetLong("Expr1000"), 0);
    }
  }
}

// --- values ---

TEST_F(SqliteWorkspaceTest, ReadsValuesInWhateverFormTheyAreStored) {
  RawSql(m_path,
         "INSERT INTO Project(Compile, PreserveBinary, CheckInBinary, CheckInVBP, Name, Title, LastCompiled, "
         "MTSPackage) "
         "VALUES (1, 'True', 'no', 0.5, 12, 1.5, '11/21/2026', '33')");
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Project", RecordsetType::Dynaset);
  EXPECT_TRUE(rows->GetBoolean("Compile"));
  EXPECT_TRUE(rows->GetBoolean("PreserveBinary"));
  EXPECT_FALSE(rows->GetBoolean("CheckInBinary"));
  EXPECT_TRUE(rows->GetBoolean("CheckInVBP"));
  EXPECT_EQ(rows->GetText("Name"), "12");
  EXPECT_EQ(rows->GetText("Title"), "1.5");
  EXPECT_EQ(rows->GetLong("Title"), 2);
  EXPECT_EQ(rows->GetDate("LastCompiled"), 46347);
  EXPECT_EQ(rows->GetLong("MTSPackage"), 33);
}

TEST_F(SqliteWorkspaceTest, StoresOneFormOfEveryValue) {
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Project", RecordsetType::Dynaset);
  rows->AddNew();
  rows->SetLong("Compile", 5);
  rows->SetText("PreserveBinary", "True");
  rows->SetNull("CheckInVBP");
  rows->SetText("MTSPackage", " 12 ");
  rows->SetText("LastCompiled", "1/2/2000");
  rows->SetBoolean("Name", true);
  rows->Update();
  EXPECT_EQ(
      RawSql(m_path,
             "SELECT "
             "Compile||','||PreserveBinary||','||CheckInVBP||','||MTSPackage||','||LastCompiled||','||Name "
             "FROM Project"),
      "-1,-1,0,12,36527.0,-1");
}

TEST_F(SqliteWorkspaceTest, GivesKeysOnRequest) {
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  rows->AddNew();
  rows->SetLong("Id", 40);
  rows->Update();
  rows->AddNew();
  EXPECT_EQ(rows->GetLong("Id"), 41);
  rows->Update();
  rows->AddNew();
  rows->SetLong("Id", 41);
  std::string description;
  EXPECT_EQ(ErrorOf([&] { rows->Update(); }, &description), 3022);
  EXPECT_NE(description.find("Build"), std::string::npos);
  const auto existing = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  existing->Edit();
  EXPECT_EQ(ErrorOf([&] { existing->SetLong("Id", 7); }), 3164);
}

TEST_F(SqliteWorkspaceTest, ReadsViewsButDoesNotEditThem) {
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('a'); CREATE VIEW Names AS SELECT Name FROM Build");
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Names WHERE name = 'A'", RecordsetType::Dynaset);
  EXPECT_EQ(rows->GetText("Name"), "a");
  EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), 3027);
}

TEST_F(SqliteWorkspaceTest, WritesAnAssignedValueThatTheRowHadWhenItWasReadAndHasNoMore) {
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('a')");
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto assign = [](platform::Recordset& rows) {
    rows.Edit();
    rows.SetText("Name", "a");
    rows.Update();
  };
  const auto isRestored = [&] { return Count(*database, "Build WHERE Name = 'a'") == 1; };
  const auto open = [&] { return database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset); };

  const auto outside = open();  // others may write as soon as it is read
  RawSql(m_path, "UPDATE Build SET Name = 'b'");
  m_workspace.BeginTrans();
  assign(*outside);
  EXPECT_TRUE(isRestored()) << "changed by another process";

  const auto before = open();
  database->Execute("UPDATE Build SET Name = 'b'");
  assign(*before);
  EXPECT_TRUE(isRestored()) << "changed by another statement";

  database->Execute("UPDATE Build SET Name = 'b'");
  m_workspace.BeginTrans();
  database->Execute("UPDATE Build SET Name = 'a'");
  const auto inner = open();
  m_workspace.Rollback();
  assign(*inner);
  EXPECT_TRUE(isRestored()) << "changed by a rollback";
  m_workspace.CommitTrans();
}

TEST_F(SqliteWorkspaceTest, WritesNothingWhenARowIsAssignedWhatItHas) {
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('a'); PRAGMA wal_checkpoint(TRUNCATE)");
  const auto database = m_workspace.OpenDatabase(m_path);
  m_workspace.BeginTrans();
  const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  rows->Edit();
  rows->SetText("Name", "a");
  rows->Update();
  EXPECT_EQ(rows->GetText("Name"), "a");
  m_workspace.CommitTrans();
  EXPECT_EQ(std::filesystem::file_size(m_path + "-wal"), 0U);
}

// --- editing a row of a list that was read before ---

class KnownRowsTest : public SqliteWorkspaceTest {
 protected:
  KnownRowsTest() {
    RawSql(m_path, "INSERT INTO Build(Name, StartDllBaseAddress) VALUES ('a', 1), ('b', 2), ('c', 3)");
  }

  std::shared_ptr<Database> Opened() { return m_workspace.OpenDatabase(m_path); }
  static void ReadList(Database& database) {
    const auto view = database.HoldView();
    const auto rows = database.OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
    while (!rows->AtEnd()) rows->MoveNext();
  }
  static std::unique_ptr<platform::Recordset> Row(Database& database, int id) {
    return database.OpenRecordset("SELECT * FROM BUild WHERE iD = " + std::to_string(id),
                                  RecordsetType::Dynaset);
  }
  // As the domain saves: the row is opened, every column is assigned.
  static void Save(Database& database, int id, const std::string& name, int address) {
    const auto row = Row(database, id);
    ASSERT_FALSE(row->AtEnd());
    row->Edit();
    row->SetText("Name", name);
    row->SetLong("StartDllBaseAddress", address);
    EXPECT_EQ(row->GetLong("Id"), id);
    row->Update();
  }
  std::string Stored(int id) {
    return RawSql(m_path,
                  "SELECT Name || ' ' || StartDllBaseAddress FROM Build WHERE Id = " + std::to_string(id));
  }
};

TEST_F(KnownRowsTest, EachRowReadsAsItIs) {
  const auto database = Opened();
  ReadList(*database);
  m_workspace.BeginTrans();
  for (int id = 1; id <= 3; ++id) {
    const auto row = Row(*database, id);
    EXPECT_EQ(row->GetLong("Id"), id);
    EXPECT_EQ(row->GetText("Name"), std::string(1, static_cast<char>('a' + id - 1)));
    row->MoveNext();
    EXPECT_TRUE(row->AtEnd());
  }
  EXPECT_TRUE(Row(*database, 4)->AtEnd());
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, WhatIsSavedIsStoredAndReadAgain) {
  const auto database = Opened();
  ReadList(*database);
  for (int round = 0; round < 3; ++round) {
    m_workspace.BeginTrans();
    Save(*database, 2, "saved", round);
    EXPECT_EQ(Row(*database, 2)->GetLong("StartDllBaseAddress"), round);
    m_workspace.CommitTrans();
    EXPECT_EQ(Stored(2), "saved " + std::to_string(round));
  }
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*database, 1)->GetText("Name"), "a");
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, ARowThatAnotherProcessChangedIsReadAgain) {
  const auto database = Opened();
  ReadList(*database);
  m_workspace.BeginTrans();
  Save(*database, 1, "mine", 1);
  m_workspace.CommitTrans();
  ASSERT_TRUE(InChild([&] { return RawSql(m_path, "UPDATE Build SET Name = 'theirs'").empty(); }));
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*database, 2)->GetText("Name"), "theirs");
  // Assigned what it had when the list was read: it must be written all the same.
  Save(*database, 3, "c", 3);
  m_workspace.CommitTrans();
  EXPECT_EQ(Stored(3), "c 3");
}

TEST_F(KnownRowsTest, ARowThatAnotherProcessDeletedIsGone) {
  const auto database = Opened();
  ReadList(*database);
  ASSERT_TRUE(InChild([&] { return RawSql(m_path, "DELETE FROM Build WHERE Id = 2").empty(); }));
  m_workspace.BeginTrans();
  EXPECT_TRUE(Row(*database, 2)->AtEnd());
  EXPECT_FALSE(Row(*database, 3)->AtEnd());
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, ATableThatAnotherProcessChangedIsReadAgain) {
  const auto database = Opened();
  ReadList(*database);
  ASSERT_TRUE(InChild([&] {
    return RawSql(m_path, "ALTER TABLE Build RENAME COLUMN Name TO Title; ALTER TABLE Build ADD Name TEXT")
        .empty();
  }));
  m_workspace.BeginTrans();
  const auto row = Row(*database, 2);
  EXPECT_EQ(row->GetText("Title"), "b");
  EXPECT_TRUE(row->IsNull("Name"));
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, AChangeByAnotherStatementShows) {
  const auto database = Opened();
  ReadList(*database);
  m_workspace.BeginTrans();
  database->Execute("UPDATE Build SET Name = 'other'");
  EXPECT_EQ(Row(*database, 2)->GetText("Name"), "other");
  m_workspace.Rollback();
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*database, 2)->GetText("Name"), "b");
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, ASaveThatIsRolledBackLeavesTheRowAsItWas) {
  const auto database = Opened();
  ReadList(*database);
  m_workspace.BeginTrans();
  Save(*database, 2, "lost", 9);
  ReadList(*database);  // it shows what may be rolled back
  m_workspace.Rollback();
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*database, 2)->GetText("Name"), "b");
  Save(*database, 2, "lost", 9);
  m_workspace.CommitTrans();
  EXPECT_EQ(Stored(2), "lost 9");
}

TEST_F(KnownRowsTest, ARowThatATriggerChangesIsReadAgain) {
  RawSql(m_path,
         "CREATE TRIGGER Other AFTER UPDATE ON Build WHEN new.Id = 1 "
         "BEGIN UPDATE Build SET Name = 'set off' WHERE Id = 2; END");
  const auto database = Opened();
  ReadList(*database);
  m_workspace.BeginTrans();
  Save(*database, 1, "changed", 1);
  EXPECT_EQ(Row(*database, 2)->GetText("Name"), "set off");
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, ARowThatHasToGoForAnotherIsGone) {
  RawSql(m_path,
         "CREATE TABLE Single(Id INTEGER PRIMARY KEY, Name TEXT UNIQUE ON CONFLICT REPLACE);"
         "INSERT INTO Single(Name) VALUES ('a'), ('b')");
  const auto database = Opened();
  const auto row = [&](int id) {
    return database->OpenRecordset("SELECT * FROM Single WHERE Id = " + std::to_string(id),
                                   RecordsetType::Dynaset);
  };
  database->OpenRecordset("SELECT * FROM Single", RecordsetType::Dynaset);
  m_workspace.BeginTrans();
  const auto first = row(1);
  first->Edit();
  first->SetText("Name", "b");
  first->Update();
  EXPECT_TRUE(row(2)->AtEnd());
  m_workspace.CommitTrans();
}

TEST_F(KnownRowsTest, OutlivesTheDatabaseUnlessTheFileIsAnother) {
  ReadList(*Opened());
  const auto again = Opened();
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*again, 2)->GetText("Name"), "b");
  m_workspace.CommitTrans();
  again->Close();

  std::filesystem::remove(m_path);
  CreateBuildDatabase(m_path);
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('x'), ('y')");
  const auto other = Opened();
  m_workspace.BeginTrans();
  EXPECT_EQ(Row(*other, 2)->GetText("Name"), "y");
  m_workspace.CommitTrans();
}

// --- views ---

TEST_F(SqliteWorkspaceTest, AViewShowsOneStateUntilItEnds) {
  const auto database = m_workspace.OpenDatabase(m_path);
  auto view = database->HoldView();
  EXPECT_EQ(Count(*database), 0);
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('a')");
  EXPECT_EQ(Count(*database), 0);
  view.reset();
  EXPECT_EQ(Count(*database), 1);
}

TEST_F(SqliteWorkspaceTest, AWriteEndsAView) {
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto view = database->HoldView();
  EXPECT_EQ(Count(*database), 0);
  RawSql(m_path, "INSERT INTO Build(Name) VALUES ('a')");
  AddBuild(*database, "b");
  EXPECT_EQ(CountAnew(), 2) << "and it is stored at once";
  const auto second = database->HoldView();
  m_workspace.BeginTrans();
  AddBuild(*database, "c");
  m_workspace.Rollback();
  EXPECT_EQ(Count(*database), 2);
}

TEST_F(SqliteWorkspaceTest, AViewOutlivesItsDatabaseWithoutHarm) {
  auto database = m_workspace.OpenDatabase(m_path);
  const auto view = database->HoldView();
  EXPECT_EQ(Count(*database), 0);
  database->Close();
  EXPECT_EQ(ErrorOf([&] { database->HoldView(); }), 3420);
  database = m_workspace.OpenDatabase(m_path);
  AddBuild(*database, "a");
  EXPECT_EQ(CountAnew(), 1);
}

TEST_F(SqliteWorkspaceTest, ReadsFilesThatHoldUtf16) {
  const std::string path = m_folder / "wide.mdb";
  WriteBytes(path, "");
  RawSql(path,
         "PRAGMA encoding='UTF-16'; CREATE TABLE Build(Id INTEGER PRIMARY KEY, Name TEXT);"
         "INSERT INTO Build(Name) VALUES ('Gr\xC3\xBCn')");
  const auto rows =
      m_workspace.OpenDatabase(path)->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  EXPECT_EQ(rows->GetText("Name"), "Gr\xC3\xBCn");
}

TEST_F(SqliteWorkspaceTest, GivesKeysOfTablesWithoutACounter) {
  RawSql(m_path,
         "CREATE TABLE Plain (Id INTEGER PRIMARY KEY, Name TEXT UNIQUE); INSERT INTO Plain VALUES (7, 'a')");
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM plain", RecordsetType::Dynaset);
  rows->AddNew();
  EXPECT_EQ(rows->GetLong("Id"), 8);
  rows->SetText("Name", "a");
  EXPECT_EQ(ErrorOf([&] { rows->Update(); }), 3022);
  rows->SetText("Name", "b");
  rows->Update();
  EXPECT_EQ(Count(*database, "Plain WHERE Id = 8 AND Name = 'b'"), 1);
}

TEST_F(SqliteWorkspaceTest, NumbersBrokenConstraintsAsDaoDoes) {
  RawSql(m_path, "CREATE TABLE Strict (a INTEGER NOT NULL, b INTEGER UNIQUE, c INTEGER CHECK (c > 0))");
  const auto database = m_workspace.OpenDatabase(m_path);
  database->Execute("INSERT INTO Strict VALUES (1, 1, 1)");
  EXPECT_EQ(ErrorOf([&] { database->Execute("INSERT INTO Strict VALUES (NULL, 2, 1)"); }), 3314);
  EXPECT_EQ(ErrorOf([&] { database->Execute("INSERT INTO Strict VALUES (1, 1, 1)"); }), 3022);
  EXPECT_EQ(ErrorOf([&] { database->Execute("UPDATE Strict SET c = 0"); }), 3317);
  EXPECT_EQ(ErrorOf([&] { database->Execute("INSERT INTO Strict VALUES (1, 1)"); }), 3346);
}

TEST_F(SqliteWorkspaceTest, KeepsSqlAwayFromTheEngineItself) {
  const auto database = m_workspace.OpenDatabase(m_path);
  for (const char* table : {"sqlite_master", "sqlite_sequence", "pragma_table_list"}) {
    EXPECT_NE(ErrorOf([&] { Count(*database, table); }), 0) << table;
    EXPECT_NE(ErrorOf([&] { database->Execute("DELETE FROM " + std::string(table)); }), 0) << table;
  }
  EXPECT_EQ(RawSql(m_path, "SELECT COUNT(*) FROM sqlite_master WHERE name = 'Project'"), "1");
}

// --- several processes ---

TEST_F(SqliteWorkspaceTest, ServesTwoProcessesAtOnce) {
  constexpr int kRows = 150;
  std::set<pid_t> children;
  for (int child = 0; child < 2; ++child) {
    const pid_t pid = fork();
    if (pid == 0) {
      int failures = 0;
      try {
        SqliteWorkspace workspace(SamePath, std::chrono::seconds(30));
        std::shared_ptr<Database> database;
        for (int i = 0; i < kRows; ++i) {
          if (i % 25 == 0) {
            database.reset();
            database = workspace.OpenDatabase(m_path);
          }
          const auto rows =
              database->OpenRecordset("SELECT * FROM Build WHERE id = 0", RecordsetType::Dynaset);
          rows->AddNew();
          const std::string id = rows->GetText("Id");
          rows->SetText("Name", std::to_string(child) + '-' + std::to_string(i));
          rows->Update();
          workspace.BeginTrans();
          const auto mine =
              database->OpenRecordset("SELECT * FROM Build WHERE id = " + id, RecordsetType::Dynaset);
          if (mine->GetText("Name") != std::to_string(child) + '-' + std::to_string(i)) ++failures;
          database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (" + id + ",1)");
          workspace.CommitTrans();
        }
      } catch (const automation::Error& error) {
        fprintf(stderr, "child: %d %s\n", error.Number(), error.what());
        failures = 100;
      }
      _exit(failures);
    }
    children.insert(pid);
  }
  for (const pid_t pid : children) {
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
  }
  EXPECT_EQ(CountAnew(), 2 * kRows);
  EXPECT_EQ(CountAnew("References"), 2 * kRows);
  EXPECT_EQ(RawSql(m_path, "PRAGMA integrity_check"), "ok");
}

TEST_F(SqliteWorkspaceTest, LosesTheTransactionOfAKilledProcessAsAWhole) {
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t child = fork();
  if (child == 0) {
    try {
      SqliteWorkspace workspace(SamePath);
      const auto database = workspace.OpenDatabase(m_path);
      AddBuild(*database, "committed");
      workspace.BeginTrans();
      // More than fits the page cache, so that pages of the transaction are on disk already.
      const std::string big(20000, 'x');
      for (int i = 0; i < 1500; ++i) AddBuild(*database, big);
    } catch (const automation::Error&) {
      _exit(1);
    }
    const char ready = '!';
    if (write(pipe[1], &ready, 1) != 1) _exit(1);
    for (;;) pause();
  }
  close(pipe[1]);
  char ready = 0;
  ASSERT_EQ(read(pipe[0], &ready, 1), 1);
  close(pipe[0]);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);

  const auto database = m_workspace.OpenDatabase(m_path);
  EXPECT_EQ(Count(*database), 1);
  AddBuild(*database, "after");
  database->Close();
  EXPECT_EQ(RawSql(m_path, "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(CountAnew(), 2);
}

// --- damage ---

TEST_F(SqliteWorkspaceTest, TellsThatAFileIsDamaged) {
  {
    SqliteWorkspace workspace(SamePath);
    const auto database = workspace.OpenDatabase(m_path);
    workspace.BeginTrans();
    for (int i = 0; i < 500; ++i) AddBuild(*database, std::string(200, 'a'));
    workspace.CommitTrans();
  }
  const std::string whole = ReadBytes(m_path);
  ASSERT_GT(whole.size(), 20 * 4096u);
  WriteBytes(m_path, whole.substr(0, whole.size() - 10000));
  std::string description;
  EXPECT_EQ(OpenError(m_path, &description), 3343);
  EXPECT_NE(description.find(m_path), std::string::npos) << description;

  std::string flipped = whole;
  for (std::size_t at = 2 * 4096; at < flipped.size(); at += 7)
    flipped[at] = static_cast<char>(flipped[at] ^ 0x55);
  WriteBytes(m_path, flipped);
  // The head is still good; what is read then is not.
  EXPECT_EQ(ErrorOf(
                [&] {
                  const auto database = m_workspace.OpenDatabase(m_path);
                  database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
                },
                &description),
            3343);
  EXPECT_NE(description.find("malformed"), std::string::npos) << description;

  WriteBytes(m_path, whole);
  EXPECT_EQ(Count(*m_workspace.OpenDatabase(m_path)), 500);
}

TEST_F(SqliteWorkspaceTest, SurvivesAnyDamage) {
  AddBuild(*m_workspace.OpenDatabase(m_path), "a");
  const std::string whole = ReadBytes(m_path);
  const std::string path = m_folder / "Damaged.mdb";
  std::uint32_t random = 1;
  for (int i = 0; i < 150; ++i) {
    std::string bytes = whole;
    for (int j = 0; j < 20; ++j) {
      random = random * 1664525 + 1013904223;
      bytes[(random >> 8) % (i % 3 == 0 ? 200 : bytes.size())] = static_cast<char>(random);
    }
    for (const char* suffix : {"-wal", "-shm", "-journal"}) std::filesystem::remove(path + suffix);
    WriteBytes(path, bytes);
    SqliteWorkspace workspace(SamePath, std::chrono::milliseconds(0));
    try {
      const auto database = workspace.OpenDatabase(path);
      const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
      rows->AddNew();
      rows->SetText("Name", rows->GetText("Id"));
      rows->Update();
      Count(*database, "Project WHERE idBuild = 1");
    } catch (const automation::Error& error) {
      EXPECT_NE(error.Number(), 0);
      EXPECT_FALSE(error.Description().empty());
    }
  }
}

TEST_F(SqliteWorkspaceTest, LosesNothingOnAFullDisk) {
  AddBuild(*m_workspace.OpenDatabase(m_path), "before");
  EXPECT_TRUE(InChild([&] {
    SqliteWorkspace workspace(SamePath);
    const auto database = workspace.OpenDatabase(m_path);
    // A file that may not grow further answers as a full disk does.
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1 << 20, 1 << 20};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    const std::string big(40000, 'x');
    workspace.BeginTrans();
    int error = 0;
    for (int i = 0; i < 1000 && error == 0; ++i) error = ErrorOf([&] { AddBuild(*database, big); });
    // A big transaction may meet the limit only when it is committed.
    if (error == 0) error = ErrorOf([&] { workspace.CommitTrans(); });
    if (error != 3026) return false;
    // Nothing of it may be committed alone.
    if (ErrorOf([&] { workspace.CommitTrans(); }) == 0) return false;
    workspace.Rollback();
    if (Count(*database) != 1) return false;
    AddBuild(*database, "after");
    return true;
  }));
  EXPECT_EQ(CountAnew(), 2);
  EXPECT_EQ(RawSql(m_path, "PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace hearthmake
