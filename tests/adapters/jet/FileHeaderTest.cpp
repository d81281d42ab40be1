#include "adapters/jet/FileHeader.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/JetFileWriter.hpp"
#include "support/LegacyDatabase.hpp"

namespace hearthmake::jet {
namespace {

using support::JetFileWriter;
using support::SmallBuilds;

FileHeader HeaderOf(JetFileWriter writer) { return ReadHeader(writer.Write()).value_or(FileHeader{}); }

TEST(FileHeader, TellsTheVersions) {
  EXPECT_EQ(HeaderOf(SmallBuilds(3)).version, Version::Jet3);
  EXPECT_EQ(HeaderOf(SmallBuilds(4)).version, Version::Jet4);
  std::string newer = SmallBuilds(4).Write();
  newer[20] = 2;
  EXPECT_EQ(ReadHeader(newer)->version, Version::Newer);
  newer.replace(4, 15, "Standard ACE DB");
  newer[20] = 1;
  EXPECT_EQ(ReadHeader(newer)->version, Version::Newer);
}

TEST(FileHeader, TellsTheCodePage) {
  JetFileWriter writer = SmallBuilds(3);
  writer.codePage = 1251;
  EXPECT_EQ(HeaderOf(writer).codePage, 1251);
}

TEST(FileHeader, TellsWhatIsEncryptedOrHasAPassword) {
  for (const int version : {3, 4}) {
    JetFileWriter writer = SmallBuilds(version);
    EXPECT_FALSE(HeaderOf(writer).isEncrypted);
    EXPECT_FALSE(HeaderOf(writer).hasPassword);
    writer.password = "x";
    EXPECT_FALSE(HeaderOf(writer).isEncrypted);
    EXPECT_TRUE(HeaderOf(writer).hasPassword);
    writer.password.clear();
    writer.key = 0x12345678;
    EXPECT_TRUE(HeaderOf(writer).isEncrypted);
  }
}

TEST(FileHeader, IsNoneOfAnotherFile) {
  const std::string bytes = SmallBuilds(4).Write();
  EXPECT_FALSE(ReadHeader(""));
  EXPECT_FALSE(ReadHeader(bytes.substr(0, kHeaderSize - 1)));
  EXPECT_TRUE(ReadHeader(bytes.substr(0, kHeaderSize)));
  EXPECT_FALSE(ReadHeader(std::string(4096, 'x')));
  EXPECT_FALSE(ReadHeader("SQLite format 3" + std::string(4096, '\0')));
}

TEST(FileHeader, ReadsThatOfJetItself) {
  const std::string path = support::LegacyDatabase();
  if (path.empty()) GTEST_SKIP() << "no database of Jet is here (HEARTHMAKE_LEGACY)";
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const auto header = ReadHeader(bytes);
  ASSERT_TRUE(header);
  EXPECT_EQ(header->version, Version::Jet4);
  EXPECT_FALSE(header->isEncrypted);
  EXPECT_FALSE(header->hasPassword);
}

}  // namespace
}  // namespace hearthmake::jet
