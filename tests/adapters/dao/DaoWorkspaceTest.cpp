#include "adapters/dao/DaoWorkspace.hpp"

#include <gmock/gmock.h>

#include <optional>

#include "platform/DatabaseConformance.hpp"
#include "support/DaoDoublesBench.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::platform {

// The machine of the test that runs.
std::optional<support::DaoDoublesBench>& Machine() {
  static std::optional<support::DaoDoublesBench> machine;
  return machine;
}

// A suite's databases are closed when its test has ended; the next test gets a new machine.
class NewMachine final : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override { Machine().reset(); }
};

DatabaseStore DaoStore() {
  testing::UnitTest::GetInstance()->listeners().Append(new NewMachine);
  static constexpr const char* kEngine = "DAO.DBEngine.36";
  return {"dao", [] { return std::make_unique<dao::DaoWorkspace>(win32::LateObject::Create(kEngine)); },
          [] {
            if (!Machine()) Machine().emplace(kEngine);
            return Machine()->MakeDatabase();
          }};
}

INSTANTIATE_TEST_SUITE_P(Dao, DatabaseConformance, testing::Values(DaoStore()));

}  // namespace hearthmake::platform

namespace hearthmake::dao {
namespace {

using platform::RecordsetType;
using testing::ElementsAre;

class DaoWorkspaceTest : public testing::Test {
 protected:
  std::vector<std::string> TakeCalls() { return std::exchange(m_bench.log->calls, {}); }

  support::DaoDoublesBench m_bench{"DAO.DBEngine.35"};
  std::string m_path = m_bench.MakeDatabase();
  DaoWorkspace m_workspace{win32::LateObject::Create("DAO.DBEngine.35")};
};

TEST_F(DaoWorkspaceTest, OpensDatabasesInTheDefaultWorkspaceByPathAlone) {
  m_workspace.OpenDatabase(m_path)->Close();
  EXPECT_THAT(TakeCalls(), ElementsAre("DBEngine.Workspaces", "Workspaces.Item(0)",
                                       "Workspace.OpenDatabase(\"" + m_path + "\")", "Database.Close"));
}

TEST_F(DaoWorkspaceTest, LooksAFieldUpOnce) {
  const auto database = m_workspace.OpenDatabase(m_path);
  database->Execute("INSERT INTO Build(Name) VALUES ('Suite')");
  TakeCalls();
  const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  EXPECT_FALSE(rows->AtEnd());
  rows->Edit();
  rows->SetText("Name", "Other");
  rows->Update();
  EXPECT_EQ(rows->GetText("Name"), "Other");
  EXPECT_THAT(TakeCalls(), ElementsAre("Database.OpenRecordset(\"SELECT * FROM Build\", 2)", "Recordset.EOF",
                                       "Recordset.Edit", "Recordset.Fields", "Fields.Item(\"Name\")",
                                       "Field.Value=(\"Other\")", "Recordset.Update", "Field.Value"));
}

TEST_F(DaoWorkspaceTest, WritesValuesOfTheirTypes) {
  const auto database = m_workspace.OpenDatabase(m_path);
  const auto rows = database->OpenRecordset("SELECT * FROM Project", RecordsetType::Dynaset);
  rows->AddNew();
  TakeCalls();
  rows->SetLong("MTSPackage", 7);
  rows->SetBoolean("Compile", true);
  rows->SetDate("LastCompiled", 2);
  rows->SetNull("Title");
  std::vector<std::string> values;
  for (const std::string& call : TakeCalls()) {
    if (call.starts_with("Field.Value=")) values.push_back(call);
  }
  EXPECT_THAT(values, ElementsAre("Field.Value=(7)", "Field.Value=(True)",
                                  testing::StartsWith("Field.Value=(Date "), "Field.Value=(Null)"));
}

TEST_F(DaoWorkspaceTest, ClosesWhatIsGivenUp) {
  {
    const auto database = m_workspace.OpenDatabase(m_path);
    const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
    TakeCalls();
  }
  EXPECT_THAT(TakeCalls(), ElementsAre("Recordset.Close", "Database.Close"));
}

TEST_F(DaoWorkspaceTest, TellsWhoHasALaterErrorThanTheEngine) {
  const auto database = m_workspace.OpenDatabase(m_path);
  database->Execute("INSERT INTO Build(Name) VALUES ('abc')");
  const auto rows = database->OpenRecordset("SELECT * FROM Build", RecordsetType::Dynaset);
  support::ExpectError([&] { static_cast<void>(rows->GetLong("Name")); }, 13, "DAO.Recordset",
                       "Type mismatch");
}

}  // namespace
}  // namespace hearthmake::dao
