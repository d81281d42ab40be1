#include "adapters/posix/ReplacementFile.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

TEST(ReplacementFile, TakesThePlaceOfTheFileOnlyWithCommit) {
  const support::PosixFolder folder;
  const std::string target = folder.MakeFile("a", "old");
  {
    ReplacementFile replacement(target, "C:\\a", 0600);
    replacement.Write("new");
    EXPECT_EQ(folder.Content("a"), "old");
  }
  EXPECT_EQ(folder.Content("a"), "old");
  {
    ReplacementFile replacement(target, "C:\\a", 0600);
    replacement.Write("new");
    replacement.Write("er");
    replacement.Commit();
  }
  EXPECT_EQ(folder.Content("a"), "newer");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(ReplacementFile, GivesANewFileItsMode) {
  const support::PosixFolder folder;
  ReplacementFile replacement(folder.Path("a"), "C:\\a", 0400);
  replacement.Write("new");
  replacement.Commit();
  EXPECT_EQ(folder.Mode("a"), 0400U);
}

TEST(ReplacementFile, CleansUpWhenItsPlaceIsTaken) {
  const support::PosixFolder folder;
  folder.MakeFolder("a");
  try {
    ReplacementFile replacement(folder.Path("a"), "C:\\a", 0600);
    replacement.Commit();
    ADD_FAILURE() << "no failure";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 75);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(ReplacementFile, NeedsAFolder) {
  const support::PosixFolder folder;
  EXPECT_THROW(ReplacementFile(folder.Path("none/a"), "C:\\none\\a", 0600), automation::Error);
}

}  // namespace
}  // namespace hearthmake::posix
