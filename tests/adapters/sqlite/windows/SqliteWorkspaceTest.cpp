#include "adapters/sqlite/SqliteWorkspace.hpp"

#include <gtest/gtest.h>

#include "adapters/sqlite/BuildSchema.hpp"
#include "platform/DatabaseConformance.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake {

using sqlite::CreateBuildDatabase;
using sqlite::SqliteWorkspace;
using support::Win32Folder;

namespace {

std::string SamePath(std::string_view path) { return std::string(path); }

}  // namespace

namespace platform {

DatabaseStore SqliteStore() {
  const auto folder = std::make_shared<Win32Folder>();
  return {"sqlite", [] { return std::make_unique<SqliteWorkspace>(SamePath); },
          [folder] {
            static int made = 0;
            const std::string path = folder->Path("Build" + std::to_string(++made) + ".mdb");
            CreateBuildDatabase(path);
            return path;
          }};
}

INSTANTIATE_TEST_SUITE_P(Sqlite, DatabaseConformance, testing::Values(SqliteStore()));

}  // namespace platform

namespace {

int ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const automation::Error& error) {
    return error.Number();
  }
  return 0;
}

TEST(BuildSchema, IsMadeInAFolderOfAnyName) {
  const Win32Folder folder;
  folder.MakeFolder("Größe");
  const std::string path = folder.Path("Größe") + "\\Build.mdb";
  CreateBuildDatabase(path);
  EXPECT_TRUE(sqlite::MissingColumns(path).empty());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(BuildSchema, NeverOverwritesAFile) {
  const Win32Folder folder;
  const std::string path = folder.MakeFile("Build.mdb", "precious");
  EXPECT_EQ(ErrorOf([&] { CreateBuildDatabase(path); }), 58);
  EXPECT_EQ(folder.Content("Build.mdb"), "precious");
  EXPECT_EQ(ErrorOf([&] { CreateBuildDatabase(folder.Path("no") + "\\Build.mdb"); }), 3051);
}

TEST(SqliteWorkspace, TellsWhatIsNoDatabase) {
  const Win32Folder folder;
  SqliteWorkspace workspace(SamePath);
  EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(folder.Path("none.mdb")); }), 3024);
  EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(folder.MakeFile("text.mdb", "no database")); }), 3343);
  EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(folder.Path()); }), 3051);
}

// Nobody can do that to a file that is open, so closing has to close.
TEST(SqliteWorkspace, AClosedDatabaseCanBeReplacedAndRemoved) {
  const Win32Folder folder;
  const std::string path = folder.Path("Build.mdb");
  CreateBuildDatabase(path);
  SqliteWorkspace workspace(SamePath);
  {
    const auto database = workspace.OpenDatabase(path);
    database->Execute("INSERT INTO Build(Name) VALUES ('x')");
    database->Close();
  }
  std::error_code error;
  std::filesystem::remove(path, error);
  EXPECT_FALSE(error) << error.message();
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace hearthmake
