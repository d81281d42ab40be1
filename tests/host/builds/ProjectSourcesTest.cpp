#include "host/builds/ProjectSources.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFolder = "C:\\src\\Lib\\";

std::vector<std::string> Paths(std::string_view bytes) {
  std::vector<std::string> paths;
  for (const ProjectSource& source : SourcesOf(bytes, kFolder))
    paths.push_back((source.mayBeMissing ? "+" : "") + source.path);
  return paths;
}

TEST(ProjectSources, NamesEachKindOfSourceWithItsCompanions) {
  EXPECT_THAT(
      Paths("Type=OleDll\r\nClass=Money; Money.cls\r\nModule=modCommon; ..\\Common\\modCommon.bas\r\n"
            "Form=frmDesk.frm\r\nUserControl=Grid.ctl\r\nPropertyPage=Columns.pag\r\n"
            "UserDocument=Page.dob\r\nDesigner=Environment.Dsr\r\nResFile32=\"Lib.RES\"\r\n"
            "RelatedDoc=docs\\read me.txt\r\n"),
      ElementsAre("C:\\src\\Lib\\Money.cls", "C:\\src\\Common\\modCommon.bas", "C:\\src\\Lib\\frmDesk.frm",
                  "+C:\\src\\Lib\\frmDesk.frx", "C:\\src\\Lib\\Grid.ctl", "+C:\\src\\Lib\\Grid.ctx",
                  "C:\\src\\Lib\\Columns.pag", "+C:\\src\\Lib\\Columns.pgx", "C:\\src\\Lib\\Page.dob",
                  "+C:\\src\\Lib\\Page.dox", "C:\\src\\Lib\\Environment.Dsr",
                  "+C:\\src\\Lib\\Environment.dsx", "+C:\\src\\Lib\\Environment.dca", "C:\\src\\Lib\\Lib.RES",
                  "+C:\\src\\Lib\\docs\\read me.txt"));
}

TEST(ProjectSources, PassesOverWhatNamesNoFile) {
  EXPECT_THAT(Paths("Reference=*\\G{1}#1.0#0#x.dll#X\r\nIconForm=\"frmDesk\"\r\nStartup=\"Sub Main\"\r\n"
                    "Class=\r\nClass=Money;\r\nForm\r\nResFile32=\"\"\r\n=x\r\n\r\n"),
              IsEmpty());
}

TEST(ProjectSources, StopsAtTheFirstSection) {
  EXPECT_THAT(Paths("Class=A; A.cls\r\n[MS Transaction Server]\r\nClass=B; B.cls\r\n"),
              ElementsAre("C:\\src\\Lib\\A.cls"));
}

TEST(ProjectSources, TakesKeysInAnyCaseAndRowsWithoutCarriageReturn) {
  EXPECT_THAT(Paths("class = A ; A.cls\nFORM=f.frm"),
              ElementsAre("C:\\src\\Lib\\A.cls", "C:\\src\\Lib\\f.frm", "+C:\\src\\Lib\\f.frx"));
}

TEST(ProjectSources, ReadsNamesInTheCodePageOfProjectFiles) {
  EXPECT_THAT(Paths("Class=Menu; Men\xFC.cls\r\n"), ElementsAre("C:\\src\\Lib\\Men\xC3\xBC.cls"));
}

TEST(ProjectSources, KeepsAbsolutePathsAndTakesAFileWithoutExtension) {
  EXPECT_THAT(
      Paths("Form=D:\\shared\\frm.x\\form\r\nModule=m; \\\\server\\share\\m.bas\r\n"),
      ElementsAre("D:\\shared\\frm.x\\form", "+D:\\shared\\frm.x\\form.frx", "\\\\server\\share\\m.bas"));
}

}  // namespace
}  // namespace hearthmake::host
