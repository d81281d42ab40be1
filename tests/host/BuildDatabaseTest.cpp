#include "host/BuildDatabase.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;

class BuildDatabaseTest : public testing::Test {
 protected:
  // Every way to the database: one that makes it where it is missing, and one that does not.
  void ExpectRefused(const std::vector<std::string>& texts) {
    for (const auto& arguments :
         std::vector<HostCommand::Arguments>{{"new", "Shop"}, {"list"}, {"build", "1"}}) {
      const CommandResult result = command.Run(arguments);
      EXPECT_EQ(result.status, 2);
      for (const std::string& text : texts) EXPECT_THAT(result.err, HasSubstr(text));
    }
  }
  void Sql(const std::string& statement) const {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open((command.Data() + "/Build.mdb").c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
  }

  HostCommand command;
};

TEST_F(BuildDatabaseTest, NeverTouchesAJetFileAndSaysWhatToDo) {
  using namespace std::string_literals;
  const std::string bytes = "\0\1\0\0Standard Jet DB\0"s + std::string(4000, '\7');
  command.root.MakeFile("data/Build.mdb", bytes);
  ExpectRefused({"The database is unavailable", "is a Jet database",
                 "hearthmake import '" + command.Data() + "/Build.mdb' --into DIR"});
  EXPECT_EQ(command.root.Content("data/Build.mdb"), bytes);
}

TEST_F(BuildDatabaseTest, RefusesWhatIsNoDatabase) {
  command.root.MakeFile("data/Build.mdb", "");
  ExpectRefused({command.Data() + "/Build.mdb is no build database", "Move it away"});
  command.root.MakeFile("data/Build.mdb", "some text");
  ExpectRefused({"is no build database"});
  EXPECT_EQ(command.root.Content("data/Build.mdb"), "some text");
}

TEST_F(BuildDatabaseTest, RefusesAFolderOfThatName) {
  command.root.MakeFolder("data/Build.mdb");
  ExpectRefused({"is no build database"});
}

TEST_F(BuildDatabaseTest, NamesTablesAndColumnsThatAreMissing) {
  command.Run({"new", "Shop"});
  Sql("DROP TABLE Scripts; ALTER TABLE Project DROP COLUMN CopyPath;");
  ExpectRefused({"lacks: ", "Project.CopyPath", "Scripts"});
}

TEST_F(BuildDatabaseTest, RefusesADamagedOne) {
  command.Run({"new", "Shop"});
  std::string bytes = command.root.Content("data/Build.mdb");
  for (std::size_t i = 100; i < bytes.size(); ++i) bytes[i] = '\x5a';
  command.root.MakeFile("data/Build.mdb", bytes);
  ExpectRefused({"The database is unavailable"});
}

TEST_F(BuildDatabaseTest, FindsAFileInAnotherSpelling) {
  command.Run({"new", "Shop"});
  std::filesystem::rename(command.Data() + "/Build.mdb", command.Data() + "/BUILD.MDB");
  EXPECT_THAT(command.Run({"list"}).out, HasSubstr("Shop"));
}

TEST_F(BuildDatabaseTest, SaysWhichDataFolderCantBeMade) {
  const std::string file = command.root.MakeFile("file", "");
  for (const std::string& folder : {file + "/data", std::string("/proc/hearthmake")}) {
    const CommandResult result = command.RunBare({"--data", folder, "new", "Shop"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("The data folder " + folder + " can't be made"));
    EXPECT_THAT(result.err, HasSubstr("--data DIR"));
  }
}

TEST_F(BuildDatabaseTest, SaysThatTheDataFolderCantBeWritten) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
  command.MakeShop();
  std::filesystem::permissions(command.Data(), std::filesystem::perms(0500));
  const CommandResult result = command.Run({"build", "Shop"});
  std::filesystem::permissions(command.Data(), std::filesystem::perms(0700));
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr(command.Data()));
}

}  // namespace
}  // namespace hearthmake::host
