#include "vbscript/objects/DosPath.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vbscript::dospath {
namespace {

TEST(DosPath, NamesTheDrive) {
  EXPECT_EQ(DriveName("c:\\a"), "c:");
  EXPECT_EQ(DriveName("c:a"), "c:");
  EXPECT_EQ(DriveName("\\\\server\\share\\x"), "\\\\server\\share");
  EXPECT_EQ(DriveName("\\a"), "");
  EXPECT_EQ(DriveName(""), "");
}

TEST(DosPath, NamesWhatIsAbove) {
  EXPECT_EQ(ParentFolderName("c:\\a\\b"), "c:\\a");
  EXPECT_EQ(ParentFolderName("c:\\a\\b\\"), "c:\\a");
  EXPECT_EQ(ParentFolderName("c:\\a"), "c:\\");
  EXPECT_EQ(ParentFolderName("c:\\a\\\\"), "c:\\");
  EXPECT_EQ(ParentFolderName("c:\\"), "");
  EXPECT_EQ(ParentFolderName("c:"), "");
  EXPECT_EQ(ParentFolderName("a\\b"), "a");
  EXPECT_EQ(ParentFolderName("a"), "");
  EXPECT_EQ(ParentFolderName("\\a"), "");
  EXPECT_EQ(ParentFolderName("\\\\server\\share\\x"), "\\\\server\\share");
  EXPECT_EQ(ParentFolderName(""), "");
}

TEST(DosPath, TakesTheLastNameApart) {
  EXPECT_EQ(FileName("c:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(FileName("c:\\a\\b\\"), "b");
  EXPECT_EQ(FileName("c:\\"), "");
  EXPECT_EQ(FileName("a/b"), "b");
  EXPECT_EQ(BaseName("c:\\a\\b.tar.gz"), "b.tar");
  EXPECT_EQ(BaseName("c:\\a.b\\c"), "c");
  EXPECT_EQ(BaseName(".txt"), "");
  EXPECT_EQ(ExtensionName("c:\\a\\b.tar.gz"), "gz");
  EXPECT_EQ(ExtensionName("a."), "");
  EXPECT_EQ(ExtensionName("c:\\a.b\\c"), "");
}

TEST(DosPath, JoinsWithOneSeparator) {
  EXPECT_EQ(Join("c:\\a", "b"), "c:\\a\\b");
  EXPECT_EQ(Join("c:\\a\\", "b"), "c:\\a\\b");
  EXPECT_EQ(Join("c:\\a", "\\b"), "c:\\a\\b");
  EXPECT_EQ(Join("c:\\a\\", "\\b"), "c:\\a\\b");
  EXPECT_EQ(Join("c:", "b"), "c:b");
  EXPECT_EQ(Join("", "b"), "b");
}

TEST(DosPath, MakesPathsAbsolute) {
  EXPECT_EQ(Absolute("a", "C:\\x\\y"), "C:\\x\\y\\a");
  EXPECT_EQ(Absolute("..\\a\\.\\b..", "C:\\x\\y"), "C:\\x\\a\\b");
  EXPECT_EQ(Absolute("c:", "C:\\x\\y"), "c:\\x\\y");
  EXPECT_EQ(Absolute("c:..", "C:\\x\\y"), "c:\\x");
  EXPECT_EQ(Absolute("d:a", "C:\\x"), "d:\\a");
  EXPECT_EQ(Absolute("\\a/", "C:\\x"), "C:\\a");
  EXPECT_EQ(Absolute("c:\\..\\..", "C:\\x"), "c:\\");
  EXPECT_EQ(Absolute("", "C:\\x"), "C:\\x");
  EXPECT_EQ(Absolute("\\\\s\\t\\..\\u", "C:\\x"), "\\\\s\\t\\u");
}

TEST(DosPath, KnowsRootsAndWhatIsWithin) {
  EXPECT_TRUE(IsRoot("C:\\"));
  EXPECT_FALSE(IsRoot("C:\\a"));
  EXPECT_TRUE(IsWithin("C:\\A\\b", "c:\\a"));
  EXPECT_TRUE(IsWithin("C:\\a", "C:\\a"));
  EXPECT_FALSE(IsWithin("C:\\ab", "C:\\a"));
}

TEST(DosPath, MatchesWildcards) {
  EXPECT_TRUE(HasWildcards("c:\\a\\*.txt"));
  EXPECT_FALSE(HasWildcards("c:\\a*\\b"));
  EXPECT_TRUE(Matches("Readme.TXT", "*.txt"));
  EXPECT_TRUE(Matches("name", "*.*"));
  EXPECT_TRUE(Matches("name", "na*."));
  EXPECT_TRUE(Matches("über.txt", "?ber.*"));
  EXPECT_TRUE(Matches("aXbXc", "a*b*c"));
  EXPECT_FALSE(Matches("aXbX", "a*b*c"));
  EXPECT_FALSE(Matches("ab", "a"));
  EXPECT_TRUE(Matches("a", "a?"));
  EXPECT_FALSE(Matches(std::string(20'000, 'a'), "*a*a*a*a*b"));
}

}  // namespace
}  // namespace hearthmake::vbscript::dospath
