#include "adapters/dao/JetFile.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/JetHeader.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::dao {
namespace {

TEST(JetFile, TellsTheFormatsApart) {
  const support::Win32Folder folder;
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("97.mdb", support::JetHeader(0))), JetFormat::Jet3);
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("2000.mdb", support::JetHeader(1))), JetFormat::Jet4);
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("2007.accdb", support::JetHeader(2, "ACE"))), JetFormat::Ace);
}

TEST(JetFile, IsNothingElse) {
  const support::Win32Folder folder;
  EXPECT_EQ(ReadJetFormat(folder.Path("none.mdb")), std::nullopt);
  EXPECT_EQ(ReadJetFormat(folder.MakeFolder("folder.mdb")), std::nullopt);
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("empty.mdb")), std::nullopt);
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("cut.mdb", support::JetHeader(0).substr(0, 20))), std::nullopt);
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("sqlite.mdb", "SQLite format 3" + std::string(100, '\0'))),
            std::nullopt);
}

TEST(JetFile, ReadsFilesOfAnyName) {
  const support::Win32Folder folder;
  EXPECT_EQ(ReadJetFormat(folder.MakeFile("Prüf é.mdb", support::JetHeader(1))), JetFormat::Jet4);
}

}  // namespace
}  // namespace hearthmake::dao
