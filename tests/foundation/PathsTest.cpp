#include "foundation/Paths.hpp"

#include <gtest/gtest.h>

namespace hearthmake {
namespace {

TEST(Paths, ARelativePathLeadsFromTheBasesFolder) {
  EXPECT_EQ(RelativePath("C:\\a\\g.vbg", "C:\\a\\p\\x.vbp"), "p\\x.vbp");
  EXPECT_EQ(RelativePath("C:\\g.vbg", "C:\\x.vbp"), "x.vbp");
}

TEST(Paths, ADeepCommonPathIsClimbedAndDescendedAgain) {
  EXPECT_EQ(RelativePath("C:\\a\\b\\c\\g.vbg", "C:\\a\\b\\c\\f.vbp"), "..\\..\\b\\c\\f.vbp");
  EXPECT_EQ(RelativePath("C:\\a\\g.vbg", "C:\\a\\f.vbp"), "..\\a\\f.vbp");
}

TEST(Paths, ATargetOnAnotherDriveStaysAsItIs) {
  EXPECT_EQ(RelativePath("C:\\a\\g.vbg", "D:\\a\\x.vbp"), "D:\\a\\x.vbp");
  EXPECT_EQ(RelativePath("C:\\a\\g.vbg", "c:\\a\\x.vbp"), "c:\\a\\x.vbp")
      << "segments compare with their case";
}

TEST(Paths, TheBasesLastSegmentCountsAsAFile) {
  EXPECT_EQ(RelativePath("C:\\a", "C:\\a\\p\\x.vbp"), "a\\p\\x.vbp");
  EXPECT_EQ(RelativePath("C:\\a\\", "C:\\a\\p\\x.vbp"), "p\\x.vbp");
}

TEST(Paths, ATargetElsewhereIsReachedByClimbing) {
  EXPECT_EQ(RelativePath("C:\\a\\b\\g.vbg", "C:\\x\\y.vbp"), "..\\..\\x\\y.vbp");
  EXPECT_EQ(RelativePath("C:\\a\\b\\g.vbg", "C:\\y.vbp"), "..\\..\\y.vbp");
}

TEST(Paths, SharesCountByTheirFirstSegment) {
  EXPECT_EQ(RelativePath("\\\\server\\share\\g.vbg", "C:\\x.vbp"), "C:\\x.vbp");
}

TEST(Paths, EmptyTextsAreNoTrouble) {
  EXPECT_EQ(RelativePath("", ""), "");
  EXPECT_EQ(RelativePath("C:\\a", ""), "");
  EXPECT_EQ(RelativePath("", "C:\\a"), "C:\\a");
}

TEST(Paths, APathIsRelativeWithoutADriveAndBackslash) {
  EXPECT_FALSE(IsRelativePath("C:\\a"));
  EXPECT_TRUE(IsRelativePath("..\\a"));
  EXPECT_TRUE(IsRelativePath("C:a"));
  EXPECT_TRUE(IsRelativePath(""));
}

TEST(Paths, AShareCountsAsRelative) { EXPECT_TRUE(IsRelativePath("\\\\server\\share\\a")); }

TEST(Paths, QuotingDropsOuterBlanksInsideTheQuotes) {
  EXPECT_EQ(QuotePath("  C:\\a b\\c  "), "\"C:\\a b\\c\"");
  EXPECT_EQ(QuotePath(""), "\"\"");
}

TEST(Paths, NormalizingResolvesEveryStepUp) {
  EXPECT_EQ(NormalizePath("C:\\a\\b\\..\\c.vbp"), "C:\\a\\c.vbp");
  EXPECT_EQ(NormalizePath("C:\\a\\b\\..\\..\\c.vbp"), "C:\\c.vbp");
  EXPECT_EQ(NormalizePath("C:\\a\\b.vbp"), "C:\\a\\b.vbp");
}

TEST(Paths, NormalizingKeepsWhatHasNothingInFront) {
  EXPECT_EQ(NormalizePath("..\\a"), "..\\a");
  EXPECT_EQ(NormalizePath("a\\..\\b"), "b");
  EXPECT_EQ(NormalizePath("\\..\\a"), "a");
  EXPECT_EQ(NormalizePath("a\\.."), "a\\..") << "no backslash behind it";
}

TEST(Paths, NormalizingClimbsAboveTheDriveLikeTheOthers) { EXPECT_EQ(NormalizePath("C:\\..\\a"), "a"); }

TEST(Paths, NormalizingALongChainEnds) {
  std::string path = "C:\\";
  for (int i = 0; i < 1000; ++i) path += "a\\..\\";
  EXPECT_EQ(NormalizePath(path + "x"), "C:\\x");
}

TEST(Paths, TellsFolderNameAndStem) {
  EXPECT_EQ(FolderPart("C:\\a\\b.c"), "C:\\a\\");
  EXPECT_EQ(FolderPart("b.c"), "");
  EXPECT_EQ(FileNamePart("C:\\a\\b.c"), "b.c");
  EXPECT_EQ(FileNamePart("C:\\a\\"), "");
  EXPECT_EQ(FileStem("C:\\a.x\\b.c.d"), "b.c");
  EXPECT_EQ(FileStem("C:\\a.x\\b"), "b");
}

TEST(Paths, MakesAbsoluteFromAFolder) {
  EXPECT_EQ(AbsolutePath("C:\\a\\b\\", "..\\c\\.\\d.dll"), "C:\\a\\c\\d.dll");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "D:\\x\\..\\y.dll"), "D:\\y.dll");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "b/c.dll"), "C:\\a\\b\\c.dll");
}

TEST(Paths, MakesAbsoluteFromTheDrivesRoot) { EXPECT_EQ(AbsolutePath("D:\\a\\", "\\x.dll"), "D:\\x.dll"); }

TEST(Paths, AShareIsAbsoluteAlready) {
  EXPECT_EQ(AbsolutePath("C:\\a\\", "\\\\server\\share\\x.dll"), "\\\\server\\share\\x.dll");
}

TEST(Paths, NothingLiesAboveARoot) {
  EXPECT_EQ(AbsolutePath("C:\\a\\", "..\\..\\..\\x.vbp"), "C:\\x.vbp");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "\\..\\x.vbp"), "C:\\x.vbp");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "\\\\server\\share\\..\\x.vbp"), "\\\\server\\share\\x.vbp");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "\\\\server\\share\\b\\..\\x.vbp"), "\\\\server\\share\\x.vbp");
  EXPECT_EQ(AbsolutePath("C:\\a\\", "\\\\.\\x\\y.vbp"), "\\\\.\\x\\y.vbp");
}

TEST(Paths, ShareTheirFirstLettersInAnyCase) {
  EXPECT_EQ(CommonLength("C:\\Src\\a.dll", "c:\\SRC"), 6U);
  EXPECT_EQ(CommonLength("C:\\Src", "C:\\Src\\Lib"), 6U);
  EXPECT_EQ(CommonLength("C:\\Library", "C:\\Lib\\x"), 6U);
  EXPECT_EQ(CommonLength("C:\\\xC3\x84x", "C:\\\xC3\xA4y"), 5U);
  EXPECT_EQ(CommonLength("C:\\a", "D:\\a"), 0U);
  EXPECT_EQ(CommonLength("C:\\a", ""), 0U);
  EXPECT_EQ(CommonLength("", "C:\\a"), 0U);
}

TEST(Paths, AResourceIndexIsNoPartOfTheFile) {
  EXPECT_EQ(WithoutResourceIndex("C:\\x\\vbscript.dll\\3"), "C:\\x\\vbscript.dll");
  EXPECT_EQ(WithoutResourceIndex("C:\\x\\vbscript.dll\\3a"), "C:\\x\\vbscript.dll\\3a");
  EXPECT_EQ(WithoutResourceIndex("C:\\x\\"), "C:\\x\\");
  EXPECT_EQ(WithoutResourceIndex("3"), "3");
  EXPECT_EQ(WithoutResourceIndex(""), "");
}

}  // namespace
}  // namespace hearthmake
