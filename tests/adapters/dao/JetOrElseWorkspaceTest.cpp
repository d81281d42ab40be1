#include "adapters/dao/JetOrElseWorkspace.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "doubles/ClassDouble.hpp"
#include "doubles/DispatchDouble.hpp"
#include "support/ErrorExpect.hpp"
#include "support/JetHeader.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::dao {
namespace {

using support::ErrorOf;
using testing::ElementsAre;

// Writes down under its name what it is asked, and opens nothing.
class NotingWorkspace final : public platform::Workspace {
 public:
  NotingWorkspace(std::string name, std::shared_ptr<doubles::CallLog> log)
      : m_name(std::move(name)), m_log(std::move(log)) {}

  std::shared_ptr<platform::Database> OpenDatabase(const std::string& /*path*/) override {
    Note("opens");
    return nullptr;
  }
  void BeginTrans() override { Note("begins"); }
  void CommitTrans() override {
    if (failsToCommit) automation::Raise(3026, "DAO.Workspace", "disk full");
    Note("commits");
  }
  void Rollback() override { Note("rolls back"); }

  bool failsToCommit = false;

 private:
  void Note(const char* what) { m_log->calls.push_back(m_name + " " + what); }

  std::string m_name;
  std::shared_ptr<doubles::CallLog> m_log;
};

// An engine that only tells that it was used.
class EngineDouble final : public doubles::DispatchDouble {
 public:
  EngineDouble(const std::string& name, const std::shared_ptr<doubles::CallLog>& log)
      : DispatchDouble(name, std::make_shared<doubles::CallLog>()) {
    using doubles::Answer;
    using doubles::CallArguments;
    const auto note = [this, name, log](const char* member, const char* what) {
      Method(member, 0, 1, [name, log, what](CallArguments) {
        log->calls.push_back(name + " " + what);
        return Answer();
      });
    };
    Get("Workspaces", [this] { return automation::Ref<EngineDouble>(this); });
    Get("Item", 1, [this](CallArguments) { return automation::Ref<EngineDouble>(this); });
    Method("OpenDatabase", 1, [this, name, log](CallArguments) {
      log->calls.push_back(name + " opens");
      return automation::Ref<EngineDouble>(this);
    });
    note("BeginTrans", "begins");
    note("CommitTrans", "commits");
    note("Rollback", "rolls back");
    Method("Close", 0, [](CallArguments) { return Answer(); });
  }
};

class JetOrElseWorkspaceTest : public testing::Test {
 protected:
  std::unique_ptr<doubles::ClassDouble> Install(const std::string& version) {
    return std::make_unique<doubles::ClassDouble>(("DAO.DBEngine." + version).c_str(), [this, version] {
      return doubles::MakeDouble<EngineDouble>(version, log);
    });
  }
  std::vector<std::string> TakeCalls() { return std::exchange(log->calls, {}); }

  doubles::ComThread com;
  support::Win32Folder folder;
  std::string jet3 = folder.MakeFile("3.mdb", support::JetHeader(0));
  std::string jet4 = folder.MakeFile("4.mdb", support::JetHeader(1));
  std::string other = folder.MakeFile("other.mdb", "SQLite format 3");
  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();
  std::shared_ptr<NotingWorkspace> sqlite = std::make_shared<NotingWorkspace>("other", log);
  JetOrElseWorkspace workspace{sqlite};
};

TEST_F(JetOrElseWorkspaceTest, OpensJetFilesWithTheEngineOfTheirFormat) {
  const auto old = Install("35");
  const auto newer = Install("36");
  workspace.OpenDatabase(jet3);
  EXPECT_THAT(TakeCalls(), ElementsAre("35 opens"));
  workspace.OpenDatabase(jet4);
  EXPECT_THAT(TakeCalls(), ElementsAre("36 opens"));
}

TEST_F(JetOrElseWorkspaceTest, TakesALaterEngineWhereTheFirstIsMissing) {
  const auto engine = Install("120");
  workspace.OpenDatabase(jet3);
  workspace.OpenDatabase(jet4);
  EXPECT_THAT(TakeCalls(), ElementsAre("120 opens", "120 opens"));
}

TEST_F(JetOrElseWorkspaceTest, LeavesOtherFilesToTheOtherWorkspace) {
  const auto engine = Install("36");
  workspace.OpenDatabase(other);
  workspace.OpenDatabase(folder.Path("missing.mdb"));
  EXPECT_THAT(TakeCalls(), ElementsAre("other opens", "other opens"));
}

TEST_F(JetOrElseWorkspaceTest, LeavesJetFilesToTheOtherWorkspaceWithoutAnEngine) {
  workspace.OpenDatabase(jet3);
  EXPECT_THAT(TakeCalls(), ElementsAre("other opens"));
  const auto tooOld = Install("35");
  workspace.OpenDatabase(jet4);
  EXPECT_THAT(TakeCalls(), ElementsAre("other opens"));
}

TEST_F(JetOrElseWorkspaceTest, SpansTransactionsOverBoth) {
  const auto engine = Install("36");
  workspace.OpenDatabase(jet4);
  workspace.BeginTrans();
  workspace.CommitTrans();
  workspace.BeginTrans();
  workspace.Rollback();
  EXPECT_THAT(TakeCalls(), ElementsAre("36 opens", "other begins", "36 begins", "other commits", "36 commits",
                                       "other begins", "36 begins", "other rolls back", "36 rolls back"));
}

TEST_F(JetOrElseWorkspaceTest, CoversTheEngineThatComesInATransaction) {
  const auto engine = Install("36");
  workspace.BeginTrans();
  workspace.BeginTrans();
  TakeCalls();
  workspace.OpenDatabase(jet4);
  workspace.CommitTrans();
  EXPECT_THAT(TakeCalls(), ElementsAre("36 begins", "36 begins", "36 opens", "other commits", "36 commits"));
}

TEST_F(JetOrElseWorkspaceTest, EndsATransactionThatCannotBeCommitted) {
  const auto engine = Install("36");
  workspace.OpenDatabase(jet4);
  workspace.BeginTrans();
  TakeCalls();
  sqlite->failsToCommit = true;
  EXPECT_EQ(ErrorOf([&] { workspace.CommitTrans(); }).Number(), 3026);
  workspace.Rollback();
  EXPECT_THAT(TakeCalls(), ElementsAre("other rolls back", "36 rolls back"));
}

TEST_F(JetOrElseWorkspaceTest, LeavesTheErrorOfATransactionThatDidNotBeginToTheOtherWorkspace) {
  const auto engine = Install("36");
  workspace.OpenDatabase(jet4);
  TakeCalls();
  workspace.Rollback();
  EXPECT_THAT(TakeCalls(), ElementsAre("other rolls back"));
}

}  // namespace
}  // namespace hearthmake::dao
