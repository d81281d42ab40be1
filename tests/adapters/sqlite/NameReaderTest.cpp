#include "adapters/sqlite/NameReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "adapters/sqlite/BuildSchema.hpp"
#include "support/SqliteTestFolder.hpp"

namespace hearthmake::sqlite {
namespace {

using test::RawSql;
using test::ReadBytes;
using test::SqliteTestFolder;
using test::WriteBytes;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> NamesOf(const std::vector<NameReader::Entry>& entries) {
  std::vector<std::string> names;
  for (const auto& entry : entries) names.push_back(entry.name);
  return names;
}

class NameReaderTest : public testing::Test {
 protected:
  NameReaderTest() {
    CreateBuildDatabase(path);
    RawSql(path,
           "INSERT INTO Build(Id, Name) VALUES (1, 'Shop'), (7, 'Bank'), (8, NULL);"
           "INSERT INTO Project(idBuild, Name) VALUES (1, '\"Lib\"'), (7, '\"Other\"'), (1, '\"App\"');"
           "INSERT INTO MTSPackages(idBuild, Name) VALUES (1, 'Orders');"
           "INSERT INTO SSProjects(idBuild, Project) VALUES (1, '$/Shop')");
  }

  std::ptrdiff_t CountFiles() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }

  SqliteTestFolder folder;
  std::string path = folder / "Build 100%25?#.mdb";
};

TEST_F(NameReaderTest, ReadsTheNamesOfABuild) {
  const NameReader reader(path);
  const auto builds = reader.Builds();
  EXPECT_THAT(NamesOf(builds), ElementsAre("Shop", "Bank"));
  EXPECT_EQ(builds[1].id, 7);
  EXPECT_THAT(NamesOf(reader.Projects(1)), ElementsAre("Lib", "App"));
  EXPECT_THAT(NamesOf(reader.Packages(1)), ElementsAre("Orders"));
  EXPECT_THAT(NamesOf(reader.SourceProjects(1)), ElementsAre("$/Shop"));
  EXPECT_THAT(reader.Projects(3), IsEmpty());
}

TEST_F(NameReaderTest, LeavesNothingBehind) {
  const std::string before = ReadBytes(path);
  NamesOf(NameReader(path).Builds());
  EXPECT_EQ(CountFiles(), 1);
  EXPECT_EQ(ReadBytes(path), before);
}

TEST_F(NameReaderTest, SeesWhatAnotherProcessHasJustStored) {
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &writer), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(writer, "INSERT INTO Build(Name) VALUES ('New')", nullptr, nullptr, nullptr),
            SQLITE_OK);
  // It is in the log yet, and the writer goes on without a commit.
  ASSERT_EQ(sqlite3_exec(writer, "BEGIN IMMEDIATE; DELETE FROM Build", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_THAT(NamesOf(NameReader(path).Builds()), ElementsAre("Shop", "Bank", "New"));
  sqlite3_close(writer);
}

TEST_F(NameReaderTest, HasNoNamesWhereThereIsNoDatabase) {
  EXPECT_THAT(NameReader(folder / "none.mdb").Builds(), IsEmpty());
  EXPECT_THAT(NameReader(folder.Path()).Builds(), IsEmpty());
  WriteBytes(folder / "junk.mdb", std::string(5000, 'x'));
  EXPECT_THAT(NameReader(folder / "junk.mdb").Builds(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder / "none.mdb"));
}

}  // namespace
}  // namespace hearthmake::sqlite
