#include "project/ProjectGroup.hpp"

#include <gtest/gtest.h>

#include "build/Projects.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using support::Failure;
using support::FailureOf;
using List = std::vector<std::string>;

List Listed(const support::Workbench& bench, const std::string& bytes) {
  bench.WriteBytes("C:\\src\\All.vbg", bytes);
  return ReadProjectGroup("C:\\src\\All.vbg");
}

TEST(ProjectGroup, ListsProjectsAndStartupProjectsInFileOrder) {
  const support::Workbench bench;
  EXPECT_EQ(
      Listed(bench, "VBGROUP 5.0\r\nProject=a.vbp\r\nStartupProject=sub\\b.vbp\r\nProject=..\\c.vbp\r\n"),
      (List{"C:\\src\\a.vbp", "C:\\src\\sub\\b.vbp", "C:\\c.vbp"}));
}

TEST(ProjectGroup, ReadsKeysInAnyCaseAndValuesWithAndWithoutQuotes) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench, "PROJECT=\"a b.vbp\"\r\nstartupproject = c.vbp \r\n"),
            (List{"C:\\src\\a b.vbp", "C:\\src\\c.vbp"}));
}

TEST(ProjectGroup, TakesAbsolutePathsAsTheyAre) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench, "Project=D:\\x\\..\\a.vbp\r\nProject=\\\\server\\share\\b.vbp\r\n"),
            (List{"D:\\a.vbp", "\\\\server\\share\\b.vbp"}));
}

TEST(ProjectGroup, PassesOverOtherKeysSectionsAndEmptyValues) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench,
                   "VBGROUP 5.0\r\n[Section]\r\nProjects=x.vbp\r\nOther=y.vbp\r\nProject=\r\n"
                   "Project=\"\"\r\nno key\r\n=z.vbp\r\nProject=a.vbp"),
            List{"C:\\src\\a.vbp"});
}

TEST(ProjectGroup, ReadsLineFeedsAloneAndALastRowWithoutEnd) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench, "Project=a.vbp\nProject=b.vbp"), (List{"C:\\src\\a.vbp", "C:\\src\\b.vbp"}));
}

TEST(ProjectGroup, ReadsAccentsOfWindows1252) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench, "Project=Caf\xE9.vbp\r\n"), List{"C:\\src\\Caf\xC3\xA9.vbp"});
}

TEST(ProjectGroup, FindsNothingInEmptyAndBinaryFiles) {
  const support::Workbench bench;
  EXPECT_EQ(Listed(bench, ""), List());
  EXPECT_EQ(Listed(bench, std::string("MZ\0\xFF\n\0==", 8)), List());
}

TEST(ProjectGroup, RefusesAMissingFileAndLeavesNone) {
  const support::Workbench bench;
  EXPECT_EQ(FailureOf([] { ReadProjectGroup("C:\\src\\None.vbg"); }),
            Failure(53, "Projects.Add", "File not found: C:\\src\\None.vbg"));
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\None.vbg"));
}

TEST(ProjectGroup, ThatListsItselfEndsTheImportAsNoProjectFile) {
  support::ProjectBench bench;
  bench.Write("C:\\src\\a.vbp", "Type=Exe\nName=\"A\"\n");
  bench.Write("C:\\src\\All.vbg", "Project=a.vbp\nProject=All.vbg\n");
  EXPECT_EQ(FailureOf([&] { bench.build->Projects().Add("C:\\src\\All.vbg"); }),
            Failure(45, "Project.LoadFromFile", "File is not a vbp file"));
  EXPECT_EQ(bench.build->Projects().Count(), 1) << "what was added before stays";
}

}  // namespace
}  // namespace hearthmake
