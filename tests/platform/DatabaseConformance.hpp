#pragma once

// What every adapter of the Workspace port must do. An adapter's test includes this header and calls
//   INSTANTIATE_TEST_SUITE_P(Name, DatabaseConformance, testing::Values(store));

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "platform/Database.hpp"

namespace hearthmake::platform {

// One kind of store: how to make a workspace, and how to make a new build database with all its tables
// (the result is its DOS path; it stays there until the test has ended).
struct DatabaseStore {
  std::string name;
  std::function<std::unique_ptr<Workspace>()> makeWorkspace;
  std::function<std::string()> makeDatabase;
};

inline void PrintTo(const DatabaseStore& store, std::ostream* out) { *out << store.name; }

class DatabaseConformance : public testing::TestWithParam<DatabaseStore> {
 protected:
  DatabaseConformance()
      : m_path(GetParam().makeDatabase()),
        m_workspace(GetParam().makeWorkspace()),
        m_database(m_workspace->OpenDatabase(m_path)) {}

  std::unique_ptr<Recordset> Open(const std::string& sql) {
    return m_database->OpenRecordset(sql, RecordsetType::Dynaset);
  }
  std::int32_t Count(const std::string& from) {
    return Open("SELECT COUNT(*) FROM " + from)->GetLong("Expr1000");
  }
  std::int32_t AddBuild(const std::string& name) {
    const auto rows = Open("SELECT * FROM BUild WHERE id = 0");
    rows->AddNew();
    rows->SetText("Name", name);
    const std::int32_t id = rows->GetLong("Id");
    rows->Update();
    return id;
  }
  std::string BuildName(std::int32_t id) {
    const auto rows = Open("SELECT * FROM Build WHERE id = " + std::to_string(id));
    return rows->AtEnd() ? "(none)" : rows->GetText("Name");
  }
  void ExpectError(int number, const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no error where " << number << " was due";
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), number) << error.Description();
      EXPECT_TRUE(error.Source().starts_with("DAO.")) << error.Source();
      EXPECT_FALSE(error.Description().empty());
    }
  }
  void ExpectExecuteError(int number, const std::string& sql) {
    SCOPED_TRACE(sql);
    ExpectError(number, [&] { m_database->Execute(sql); });
  }

  std::string m_path;
  std::unique_ptr<Workspace> m_workspace;
  std::shared_ptr<Database> m_database;
};

// --- the statements of the persisting classes ---

TEST_P(DatabaseConformance, NamesTablesAndColumnsWithoutRegardToCase) {
  const std::int32_t id = AddBuild("Suite");
  const auto rows = Open("SELECT * FROM BUild WHERE id = " + std::to_string(id));
  ASSERT_FALSE(rows->AtEnd());
  EXPECT_EQ(rows->GetLong("Id"), id);
  EXPECT_EQ(rows->GetLong("id"), id);
  EXPECT_EQ(rows->GetText("NAME"), "Suite");
}

TEST_P(DatabaseConformance, KeepsReferencesBetweenProjects) {
  m_database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (7,8)");
  m_database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (7,9)");
  EXPECT_EQ(Count("References WHERE idReferenced = 8"), 1);
  const auto rows = Open("SELECT idReferenced FROM References WHERE  idReferencing = 7");
  std::multiset<std::int32_t> referenced;
  for (; !rows->AtEnd(); rows->MoveNext()) referenced.insert(rows->GetLong("idreferenced"));
  EXPECT_EQ(referenced, (std::multiset<std::int32_t>{8, 9}));
  m_database->Execute("DELETE FROM References WHERE idREferencing = 7");
  EXPECT_EQ(Count("References"), 0);
}

TEST_P(DatabaseConformance, KeepsExternalReferencesAsTheirTextsStand) {
  const std::string guid = "{00020430-0000-0000-C000-000000000046}";
  const std::string description = "a -- b; \"c\" References /* d */ [e] #1/1/2000# ? :x";
  m_database->Execute(
      "INSERT INTO ExternalReferences(TypeLibGUID, BinaryVersion,Description,Path,ProjectID, Type) VALUES "
      "('" +
      guid + "','2.0','" + description + "', 'C:\\WINDOWS\\System32\\stdole2.tlb', 5, 'R')");
  const auto rows = Open("SELECT * FROM ExternalReferences WHERE ProjectId=5");
  ASSERT_FALSE(rows->AtEnd());
  EXPECT_EQ(rows->GetText("TypeLibGUID"), guid);
  EXPECT_EQ(rows->GetText("BinaryVersion"), "2.0");
  EXPECT_EQ(rows->GetText("Description"), description);
  EXPECT_EQ(rows->GetText("Path"), "C:\\WINDOWS\\System32\\stdole2.tlb");
  EXPECT_EQ(rows->GetText("Type"), "R");
  rows->MoveNext();
  EXPECT_TRUE(rows->AtEnd());
}

TEST_P(DatabaseConformance, CountsWithoutABlankBehindTheBracket) {
  const auto rows = Open("SELECT * FROM Project WHERE ID = 0");
  for (int i = 0; i < 3; ++i) {
    rows->AddNew();
    rows->SetLong("MTSPackage", i == 0 ? 1 : 4);
    rows->Update();
  }
  EXPECT_EQ(Open("SELECT COUNT(MTSPackage)FROM Project WHERE MTSPackage = 4")->GetLong("Expr1000"), 2);
}

TEST_P(DatabaseConformance, DeletesWithoutABlankBehindTheEqualsSign) {
  const auto rows = Open("SELECT * FROM Scripts WHERE BUildID = 5");
  rows->AddNew();
  rows->SetLong("BuildID", 5);
  rows->SetText("BeforeCompile", "a[||]b[||]c");
  rows->Update();
  EXPECT_EQ(Count("Scripts"), 1);
  m_database->Execute("DELETE FROM Scripts WHERE BuildID =5");
  EXPECT_EQ(Count("Scripts"), 0);
}

// --- the dialect ---

TEST_P(DatabaseConformance, ReadsTextLiteralsInEitherQuotes) {
  m_database->Execute("INSERT INTO Build(Name) VALUES ('it''s')");
  m_database->Execute("INSERT INTO Build(Name) VALUES (\"say \"\"hi\"\"\")");
  EXPECT_EQ(Count("Build WHERE Name = \"it's\""), 1);
  EXPECT_EQ(Count("Build WHERE Name = 'say \"hi\"'"), 1);
}

TEST_P(DatabaseConformance, ComparesTextsWithoutRegardToCase) {
  AddBuild("Suite");
  EXPECT_EQ(Count("Build WHERE Name = 'SUITE'"), 1);
}

TEST_P(DatabaseConformance, KnowsTrueFalseAndDates) {
  m_database->Execute(
      "INSERT INTO Project (Name, Compile, LastCompiled) VALUES ('a', True, #11/21/2026 6:00:00 PM#)");
  m_database->Execute("INSERT INTO Project (Name, Compile, LastCompiled) VALUES ('b', FALSE, #2026-11-20#)");
  const auto rows = Open("SELECT * FROM Project WHERE Compile = True");
  ASSERT_FALSE(rows->AtEnd());
  EXPECT_EQ(rows->GetText("Name"), "a");
  EXPECT_DOUBLE_EQ(rows->GetDate("LastCompiled"), 46347.75);
  EXPECT_EQ(Count("Project WHERE LastCompiled < #11/21/2026#"), 1);
}

TEST_P(DatabaseConformance, AcceptsBracketedNames) {
  m_database->Execute("INSERT INTO [References] ([idReferencing], [idReferenced]) VALUES (1, 2)");
  const auto rows = Open("SELECT [References].[idReferenced] FROM [References]");
  EXPECT_EQ(rows->GetLong("idReferenced"), 2);
}

TEST_P(DatabaseConformance, UnderstandsConditionsAndOrder) {
  for (const char* name : {"a", "b", "c", "d"}) AddBuild(name);
  m_database->Execute(
      "UPDATE Build SET StartDllBaseAddress = -1 * (2 + 3) WHERE Name IN ('b', 'c') AND NOT Name = 'c'");
  EXPECT_EQ(Open("SELECT * FROM Build WHERE StartDllBaseAddress IS NOT NULL")->GetText("Name"), "b");
  EXPECT_EQ(Open("SELECT * FROM Build WHERE StartDllBaseAddress = -5")->GetText("Name"), "b");
  EXPECT_EQ(Open("SELECT Name FROM Build ORDER BY Name DESC")->GetText("Name"), "d");
  EXPECT_EQ(Count("Build WHERE Name BETWEEN 'b' AND 'd' OR (Name <> 'a' AND Name < 'b')"), 3);
  EXPECT_EQ(Open("SELECT MAX(Name) AS Last, MIN(Name) FROM Build")->GetText("last"), "d");
  EXPECT_EQ(Open("SELECT MAX(Name) AS Last, MIN(Name) FROM Build")->GetText("Expr1001"), "a");
  m_database->Execute("DELETE * FROM Build WHERE Name >= 'c'");
  EXPECT_EQ(Count("Build"), 2);
}

TEST_P(DatabaseConformance, EndsAStatementAtASemicolon) {
  m_database->Execute("INSERT INTO Build(Name) VALUES ('a');");
  m_database->Execute("INSERT INTO Build(Name) VALUES ('b') ; \r\n\t ");
  EXPECT_EQ(Count("Build;"), 2);
}

TEST_P(DatabaseConformance, RefusesASecondStatement) {
  AddBuild("kept");
  ExpectExecuteError(3142, "DELETE FROM Scripts; DELETE FROM Build");
  ExpectExecuteError(3142, "DELETE FROM Scripts;;");
  ExpectExecuteError(3142, "DELETE FROM Scripts; -- DELETE FROM Build");
  ExpectExecuteError(3142, "DELETE FROM Scripts;/**/DELETE FROM Build");
  ExpectExecuteError(3142,
                     "INSERT INTO Scripts(BeforeSSafe) VALUES ('x'); DELETE FROM Build WHERE ('1' = '1')");
  ExpectError(3142, [&] { Open("SELECT * FROM Build; DELETE FROM Build"); });
  EXPECT_EQ(Count("Build"), 1);
  EXPECT_EQ(Count("Scripts"), 0);
}

TEST_P(DatabaseConformance, RefusesWhatIsNoSqlOfItsDialect) {
  AddBuild("kept");
  ExpectExecuteError(3075, "DELETE FROM Build -- all of them");
  ExpectExecuteError(3075, "DELETE FROM Build /* all of them */");
  ExpectExecuteError(3075, "INSERT INTO Build(Name) VALUES ('it's')");
  ExpectExecuteError(3075, "INSERT INTO Build(Name) VALUES ('open");
  ExpectExecuteError(3075, "INSERT INTO Build(Name) VALUES (?)");
  ExpectExecuteError(3075, "INSERT INTO Project(LastCompiled) VALUES (#13/32/2026#)");
  ExpectExecuteError(3075, "DELETE Build WHERE WHERE");
  ExpectExecuteError(3129, "");
  ExpectExecuteError(3129, "HELLO");
  EXPECT_EQ(Count("Build"), 1);
}

TEST_P(DatabaseConformance, ExecutesActionsOnly) {
  ExpectExecuteError(3065, "SELECT * FROM Build");
  ExpectError(3219, [&] { Open("DELETE FROM Build"); });
}

TEST_P(DatabaseConformance, TellsMissingTablesAndColumns) {
  ExpectError(3078, [&] { Open("SELECT * FROM Nowhere"); });
  ExpectExecuteError(3078, "DELETE FROM Nowhere");
  ExpectError(3061, [&] { Open("SELECT * FROM Build WHERE Nothing = 1"); });
  ExpectExecuteError(3127, "INSERT INTO Build(Nothing) VALUES (1)");
  const auto rows = Open("SELECT * FROM Build");
  rows->AddNew();
  ExpectError(3265, [&] { rows->SetText("Nothing", "x"); });
  ExpectError(3265, [&] { static_cast<void>(rows->GetText("Nothing")); });
}

// --- recordsets ---

TEST_P(DatabaseConformance, FindsNothingInAnEmptySelection) {
  const auto rows = Open("SELECT * FROM Build WHERE id = 77");
  EXPECT_TRUE(rows->AtEnd());
  ExpectError(3021, [&] { static_cast<void>(rows->GetText("Name")); });
  ExpectError(3021, [&] { rows->MoveNext(); });
  ExpectError(3021, [&] { rows->Edit(); });
}

TEST_P(DatabaseConformance, KeepsEveryTypeOfValue) {
  const auto rows = Open("SELECT * FROM Project WHERE ID = 0");
  rows->AddNew();
  rows->SetText("Name",
                "Gr\xC3\xBC\xC3\x9F"
                "e");
  rows->SetText("Title", std::string_view("a\0b", 3));
  rows->SetText("Startup", "");
  rows->SetText("MajorVer", "007");
  rows->SetBoolean("Compile", true);
  rows->SetBoolean("PreserveBinary", false);
  rows->SetLong("MTSPackage", -2147483647 - 1);
  rows->SetDate("LastCompiled", 45000.125);
  rows->Update();
  const auto read = Open("SELECT * FROM Project");
  EXPECT_EQ(read->GetText("Name"),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_EQ(read->GetText("Title"), std::string("a\0b", 3));
  EXPECT_EQ(read->GetText("Startup"), "");
  EXPECT_EQ(read->GetText("MajorVer"), "007");
  EXPECT_EQ(read->GetLong("MajorVer"), 7);
  EXPECT_TRUE(read->GetBoolean("Compile"));
  EXPECT_EQ(read->GetLong("Compile"), -1);
  EXPECT_FALSE(read->GetBoolean("PreserveBinary"));
  EXPECT_FALSE(read->IsNull("PreserveBinary"));
  EXPECT_EQ(read->GetLong("MTSPackage"), -2147483647 - 1);
  EXPECT_DOUBLE_EQ(read->GetDate("LastCompiled"), 45000.125);
}

TEST_P(DatabaseConformance, ReadsNullAsEmpty) {
  const auto rows = Open("SELECT * FROM Project WHERE ID = 0");
  rows->AddNew();
  rows->SetText("Title", "x");
  rows->SetNull("Title");
  rows->Update();
  const auto read = Open("SELECT * FROM Project");
  for (const char* column : {"LastCompiled", "Title", "MTSPackage"})
    EXPECT_TRUE(read->IsNull(column)) << column;
  EXPECT_EQ(read->GetDate("LastCompiled"), 0);
  EXPECT_EQ(read->GetText("Title"), "");
  EXPECT_EQ(read->GetLong("MTSPackage"), 0);
  EXPECT_FALSE(read->GetBoolean("Compile"));
}

TEST_P(DatabaseConformance, StoresNoWhereNullIsGivenForAYesNo) {
  m_database->Execute("INSERT INTO Project(Name, Compile) VALUES ('a', NULL)");
  EXPECT_FALSE(Open("SELECT * FROM Project")->IsNull("Compile"));
  EXPECT_EQ(Count("Project WHERE Compile = False"), 1);
}

TEST_P(DatabaseConformance, KeepsLongTextsWhole) {
  std::string script(300000, 'x');
  script += "\r\nend";
  const auto rows = Open("SELECT * FROM Scripts");
  rows->AddNew();
  rows->SetText("BeforeSSafe", script);
  rows->Update();
  EXPECT_EQ(Open("SELECT * FROM Scripts")->GetText("BeforeSSafe"), script);
}

TEST_P(DatabaseConformance, RefusesValuesThatATypeCannotHold) {
  m_database->Execute("INSERT INTO Project(Name) VALUES ('99999999999')");
  const auto rows = Open("SELECT * FROM Project");
  try {
    static_cast<void>(rows->GetLong("Name"));
    FAIL() << "no overflow";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 6);
    EXPECT_TRUE(error.Description().starts_with("Overflow")) << error.Description();
  }
  rows->Edit();
  rows->SetText("Name", "abc");
  ExpectError(13, [&] { static_cast<void>(rows->GetLong("Name")); });
  ExpectError(3421, [&] { rows->SetText("MTSPackage", "abc"); });
}

TEST_P(DatabaseConformance, WalksAllRowsWhileTheyAreWritten) {
  for (int i = 0; i < 200; ++i) AddBuild("b" + std::to_string(i));
  int seen = 0;
  for (const auto rows = Open("SELECT * FROM Build"); !rows->AtEnd(); rows->MoveNext()) {
    const std::string id = rows->GetText("Id");
    rows->Edit();
    rows->SetText("Name", rows->GetText("Name") + "!");
    rows->Update();
    if (seen++ % 2 == 0) m_database->Execute("DELETE FROM Build WHERE id = " + id);
  }
  EXPECT_EQ(seen, 200);
  EXPECT_EQ(Count("Build"), 100);
  EXPECT_EQ(Open("SELECT * FROM Build")->GetText("Name"), "b1!");
}

TEST_P(DatabaseConformance, WritesInsideAnEditOnly) {
  AddBuild("a");
  const auto rows = Open("SELECT * FROM Build");
  ExpectError(3020, [&] { rows->SetText("Name", "x"); });
  ExpectError(3020, [&] { rows->Update(); });
  rows->Edit();
  rows->SetText("Name", "b");
  EXPECT_EQ(rows->GetText("Name"), "b");
  rows->Update();
  EXPECT_EQ(rows->GetText("Name"), "b");
  ExpectError(3020, [&] { rows->Update(); });
  rows->Edit();
  rows->SetText("Name", "c");
  rows->Edit();  // what was assigned is given up
  EXPECT_EQ(rows->GetText("Name"), "b");
  rows->SetLong("StartDllBaseAddress", 5);
  rows->Update();
  EXPECT_EQ(Open("SELECT * FROM Build")->GetText("Name"), "b");
  EXPECT_EQ(Open("SELECT * FROM Build")->GetLong("StartDllBaseAddress"), 5);
}

TEST_P(DatabaseConformance, WritesAssignedColumnsOnly) {
  const std::int32_t id = AddBuild("a");
  const auto first = Open("SELECT * FROM Build WHERE id = " + std::to_string(id));
  const auto second = Open("SELECT * FROM Build WHERE id = " + std::to_string(id));
  first->Edit();
  first->SetText("Name", "renamed");
  first->Update();
  second->Edit();
  second->SetLong("StartDllBaseAddress", 0x11000000);
  second->Update();
  const auto rows = Open("SELECT * FROM Build");
  EXPECT_EQ(rows->GetText("Name"), "renamed");
  EXPECT_EQ(rows->GetLong("StartDllBaseAddress"), 0x11000000);
}

TEST_P(DatabaseConformance, TellsThatAnEditedRowIsGone) {
  const std::int32_t id = AddBuild("a");
  const auto rows = Open("SELECT * FROM Build");
  rows->Edit();
  m_database->Execute("DELETE FROM Build WHERE id = " + std::to_string(id));
  rows->SetText("Name", "b");
  ExpectError(3167, [&] { rows->Update(); });
}

TEST_P(DatabaseConformance, GivesTheKeyOfANewRowBeforeItIsWritten) {
  std::set<std::int32_t> ids;
  for (int i = 0; i < 5; ++i) {
    const auto rows = Open("SELECT * FROM Build WHERE id = 0");
    rows->AddNew();
    rows->SetText("Name", "b" + std::to_string(i));
    const std::int32_t id = rows->GetLong("Id");
    EXPECT_EQ(rows->GetLong("id"), id);
    rows->Update();
    EXPECT_EQ(BuildName(id), "b" + std::to_string(i));
    ids.insert(id);
  }
  EXPECT_EQ(ids.size(), 5u);
}

TEST_P(DatabaseConformance, GivesEveryNewRowAKeyOfItsOwn) {
  const auto other = GetParam().makeWorkspace();
  const auto otherDatabase = other->OpenDatabase(m_path);
  const auto rows = Open("SELECT * FROM Build WHERE id = 0");
  const auto otherRows =
      otherDatabase->OpenRecordset("SELECT * FROM Build WHERE id = 0", RecordsetType::Dynaset);
  rows->AddNew();
  otherRows->AddNew();
  rows->SetText("Name", "mine");
  otherRows->SetText("Name", "theirs");
  const std::int32_t mine = rows->GetLong("Id");
  const std::int32_t theirs = otherRows->GetLong("Id");
  EXPECT_NE(mine, theirs);
  m_database->Execute("INSERT INTO Build(Name) VALUES ('between')");
  otherRows->Update();
  rows->Update();
  EXPECT_EQ(BuildName(mine), "mine");
  EXPECT_EQ(BuildName(theirs), "theirs");
  EXPECT_EQ(Count("Build"), 3);
}

TEST_P(DatabaseConformance, NeverGivesTheKeyOfADeletedRowAgain) {
  const std::int32_t first = AddBuild("a");
  m_database->Execute("DELETE FROM Build");
  EXPECT_GT(AddBuild("b"), first);
}

TEST_P(DatabaseConformance, EditsPlainSelectionsOfOneTableOnly) {
  m_database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (7,8)");
  const auto rows = Open("SELECT idReferenced FROM References WHERE idReferencing = 7");
  ExpectError(3027, [&] { rows->Edit(); });
  ExpectError(3027, [&] { rows->AddNew(); });
  const auto whole = Open("SELECT * FROM References WHERE idReferencing = 7 ORDER BY idReferenced");
  whole->Edit();
  whole->SetLong("idReferenced", 9);
  whole->Update();
  EXPECT_EQ(Count("References WHERE idReferenced = 9"), 1);
}

TEST_P(DatabaseConformance, RefusesClosedObjects) {
  AddBuild("a");
  const auto rows = Open("SELECT * FROM Build");
  const auto closed = Open("SELECT * FROM Build");
  closed->Close();
  closed->Close();
  ExpectError(3420, [&] { static_cast<void>(closed->AtEnd()); });
  ExpectError(3420, [&] { static_cast<void>(closed->GetText("Name")); });
  m_database->Close();
  m_database->Close();
  ExpectError(3420, [&] { m_database->Execute("DELETE FROM Build"); });
  ExpectError(3420, [&] {
    rows->Edit();
    rows->SetText("Name", "x");
    rows->Update();
  });
}

// --- transactions ---

TEST_P(DatabaseConformance, ShowsWhatIsCommittedToOthers) {
  const auto other = GetParam().makeWorkspace();
  const auto otherDatabase = other->OpenDatabase(m_path);
  const auto count = [&] {
    return otherDatabase->OpenRecordset("SELECT COUNT(*) FROM Build", RecordsetType::Dynaset)
        ->GetLong("Expr1000");
  };
  m_workspace->BeginTrans();
  AddBuild("a");
  EXPECT_EQ(count(), 0);
  EXPECT_EQ(Count("Build"), 1);
  m_workspace->CommitTrans();
  EXPECT_EQ(count(), 1);
}

TEST_P(DatabaseConformance, TakesBackWhatIsRolledBack) {
  const std::int32_t id = AddBuild("a");
  m_workspace->BeginTrans();
  AddBuild("b");
  m_database->Execute("DELETE FROM Build WHERE id = " + std::to_string(id));
  m_workspace->Rollback();
  EXPECT_EQ(Count("Build"), 1);
  EXPECT_EQ(BuildName(id), "a");
}

TEST_P(DatabaseConformance, NestsTransactions) {
  m_workspace->BeginTrans();
  AddBuild("outer");
  m_workspace->BeginTrans();
  AddBuild("inner, rolled back");
  m_workspace->Rollback();
  m_workspace->BeginTrans();
  m_workspace->BeginTrans();
  AddBuild("innermost");
  m_workspace->CommitTrans();
  m_workspace->CommitTrans();
  m_workspace->CommitTrans();
  EXPECT_EQ(Count("Build"), 2);
  m_workspace->BeginTrans();
  m_workspace->BeginTrans();
  AddBuild("committed inside what is rolled back");
  m_workspace->CommitTrans();
  m_workspace->Rollback();
  EXPECT_EQ(Count("Build"), 2);
}

TEST_P(DatabaseConformance, CoversDatabasesOpenedInTheTransaction) {
  m_database->Close();
  m_workspace->BeginTrans();
  m_database = m_workspace->OpenDatabase(m_path);
  AddBuild("a");
  m_workspace->Rollback();
  EXPECT_EQ(Count("Build"), 0);
}

TEST_P(DatabaseConformance, SpansTwoDatabasesOnOneFile) {
  const auto second = m_workspace->OpenDatabase(m_path);
  m_workspace->BeginTrans();
  AddBuild("a");
  second->Execute("INSERT INTO Build(Name) VALUES ('b')");
  m_workspace->Rollback();
  EXPECT_EQ(Count("Build"), 0);
}

TEST_P(DatabaseConformance, SpansTwoFiles) {
  const auto second = m_workspace->OpenDatabase(GetParam().makeDatabase());
  const auto count = [&] {
    return second->OpenRecordset("SELECT COUNT(*) FROM Build", RecordsetType::Dynaset)->GetLong("Expr1000");
  };
  m_workspace->BeginTrans();
  AddBuild("a");
  second->Execute("INSERT INTO Build(Name) VALUES ('b')");
  m_workspace->Rollback();
  EXPECT_EQ(Count("Build") + count(), 0);
  m_workspace->BeginTrans();
  AddBuild("a");
  second->Execute("INSERT INTO Build(Name) VALUES ('b')");
  m_workspace->CommitTrans();
  EXPECT_EQ(Count("Build"), 1);
  EXPECT_EQ(count(), 1);
}

TEST_P(DatabaseConformance, RollsBackWhatAClosedDatabaseLeftOpen) {
  m_workspace->BeginTrans();
  AddBuild("a");
  m_database->Close();
  m_database = m_workspace->OpenDatabase(m_path);
  EXPECT_EQ(Count("Build"), 0);
  AddBuild("b");
  m_workspace->CommitTrans();
  EXPECT_EQ(Count("Build"), 1);
}

TEST_P(DatabaseConformance, EndsOnlyTransactionsThatBegan) {
  ExpectError(3034, [&] { m_workspace->CommitTrans(); });
  ExpectError(3034, [&] { m_workspace->Rollback(); });
  m_workspace->BeginTrans();
  m_workspace->CommitTrans();
  ExpectError(3034, [&] { m_workspace->CommitTrans(); });
}

TEST_P(DatabaseConformance, GoesOnWithATransactionAfterAFailedStatement) {
  m_workspace->BeginTrans();
  AddBuild("a");
  ExpectExecuteError(3078, "DELETE FROM Nowhere");
  AddBuild("b");
  m_workspace->CommitTrans();
  EXPECT_EQ(Count("Build"), 2);
}

// --- opening ---

TEST_P(DatabaseConformance, FindsEverythingAgainAfterClosing) {
  const std::int32_t id = AddBuild("a");
  for (int i = 0; i < 20; ++i) {
    m_database->Close();
    m_database = m_workspace->OpenDatabase(m_path);
    EXPECT_EQ(BuildName(id), "a");
  }
  m_workspace = GetParam().makeWorkspace();
  m_database = m_workspace->OpenDatabase(m_path);
  EXPECT_EQ(BuildName(id), "a");
}

TEST_P(DatabaseConformance, NeverMakesAFileByOpeningIt) {
  const std::string missing = m_path + ".missing";
  for (int i = 0; i < 2; ++i) ExpectError(3024, [&] { m_workspace->OpenDatabase(missing); });
}

}  // namespace hearthmake::platform
