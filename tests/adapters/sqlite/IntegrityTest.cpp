#include "adapters/sqlite/Integrity.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "adapters/sqlite/BuildSchema.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::sqlite {
namespace {

TEST(Integrity, FindsNothingWrongWithAFreshDatabase) {
  const support::PosixFolder folder;
  CreateBuildDatabase(folder.Path("Build.mdb"));
  EXPECT_TRUE(IntegrityProblems(folder.Path("Build.mdb")).empty());
}

TEST(Integrity, FindsDamagedPages) {
  const support::PosixFolder folder;
  const std::string path = folder.Path("Build.mdb");
  CreateBuildDatabase(path);
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(4096);
  file << std::string(4096, '\xAA');
  file.close();
  EXPECT_FALSE(IntegrityProblems(path).empty());
}

TEST(Integrity, TakesAMissingFileForWrongAndMakesNone) {
  const support::PosixFolder folder;
  EXPECT_EQ(IntegrityProblems(folder.Path("gone.mdb")).size(), 1U);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("gone.mdb")));
}

}  // namespace
}  // namespace hearthmake::sqlite
