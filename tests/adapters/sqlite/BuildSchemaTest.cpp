#include "adapters/sqlite/BuildSchema.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "support/SqliteTestFolder.hpp"

namespace hearthmake::sqlite {
namespace {

using test::ErrorOf;
using test::RawSql;
using test::ReadBytes;
using test::SqliteTestFolder;
using test::WriteBytes;

TEST(BuildSchema, MakesAllTablesAndNothingElse) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  CreateBuildDatabase(path);
  EXPECT_TRUE(MissingColumns(path).empty());
  EXPECT_EQ(RawSql(path,
                   "SELECT group_concat(name, ' ') FROM (SELECT name FROM sqlite_master "
                   "WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY name)"),
            "Build ExternalReferences MTSPackages Project References SSProjects Scripts");
  EXPECT_EQ(RawSql(path, "SELECT COUNT(*) FROM pragma_table_info('Project')"), "53");
  EXPECT_EQ(RawSql(path, "PRAGMA application_id"), std::to_string(0x48746D6B));
  EXPECT_EQ(RawSql(path, "PRAGMA user_version"), "1");
  EXPECT_EQ(RawSql(path, "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(RawSql(path, "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(BuildSchema, NeverOverwritesAFile) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  WriteBytes(path, "precious");
  std::string description;
  EXPECT_EQ(ErrorOf([&] { CreateBuildDatabase(path); }, &description), 58);
  EXPECT_NE(description.find(path), std::string::npos) << description;
  EXPECT_EQ(ReadBytes(path), "precious");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(BuildSchema, OneOfManyWhoCreateItAtOnceSucceeds) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  for (int i = 0; i < 6; ++i) {
    if (fork() == 0) _exit(ErrorOf([&] { CreateBuildDatabase(path); }) == 0 ? 0 : 1);
  }
  int made = 0;
  for (int status = 0; wait(&status) > 0;) made += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
  EXPECT_EQ(made, 1);
  EXPECT_TRUE(MissingColumns(path).empty());
}

TEST(BuildSchema, LeavesNothingBehindWhenItFails) {
  const SqliteTestFolder folder;
  EXPECT_EQ(ErrorOf([&] { CreateBuildDatabase(folder / "no/such/folder/Build.mdb"); }), 3051);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(BuildSchema, ForgetsWhatALostDatabaseLeftBehind) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  WriteBytes(path + "-wal", "stale");
  WriteBytes(path + "-journal", "stale");
  CreateBuildDatabase(path);
  EXPECT_FALSE(std::filesystem::exists(path + "-journal"));
  EXPECT_TRUE(MissingColumns(path).empty());
}

TEST(BuildSchema, NamesWhatAFileLacks) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  CreateBuildDatabase(path);
  RawSql(path,
         "DROP TABLE Scripts; ALTER TABLE Project DROP COLUMN CondComp; ALTER TABLE Build RENAME COLUMN Name "
         "TO NAME;");
  EXPECT_EQ(MissingColumns(path), (std::vector<std::string>{"Project.CondComp", "Scripts"}));
}

TEST(BuildSchema, TellsWhatCannotBeLookedAt) {
  const SqliteTestFolder folder;
  EXPECT_EQ(ErrorOf([&] { MissingColumns(folder / "Build.mdb"); }), 3024);
}

TEST(NewBuildDatabase, IsSeenWhenItIsPublishedOnly) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  {
    const NewBuildDatabase dropped(path);
    EXPECT_TRUE(MissingColumns(dropped.Path()).empty());
    EXPECT_FALSE(std::filesystem::exists(path));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  const NewBuildDatabase kept(path);
  RawSql(kept.Path(), "INSERT INTO Build (Name) VALUES ('Shop')");
  kept.Publish();
  EXPECT_EQ(RawSql(path, "SELECT Name FROM Build"), "Shop");
  EXPECT_FALSE(std::filesystem::exists(kept.Path()));
}

TEST(NewBuildDatabase, TakesThePlaceOfAnotherOneWhenItIsTold) {
  const SqliteTestFolder folder;
  const std::string path = folder / "Build.mdb";
  CreateBuildDatabase(path);
  RawSql(path, "INSERT INTO Build (Name) VALUES ('Old')");
  const NewBuildDatabase fresh(path);
  RawSql(fresh.Path(), "INSERT INTO Build (Name) VALUES ('New')");
  EXPECT_EQ(ErrorOf([&] { fresh.Publish(); }), 58);
  EXPECT_EQ(RawSql(path, "SELECT Name FROM Build"), "Old");
  // A log that an ended process has left must not be read as part of the new file.
  WriteBytes(path + "-shm", "x");
  fresh.PublishReplacing();
  EXPECT_EQ(RawSql(path, "SELECT Name FROM Build"), "New");
  EXPECT_EQ(RawSql(path, "PRAGMA integrity_check"), "ok");
}

}  // namespace
}  // namespace hearthmake::sqlite
