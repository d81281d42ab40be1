#include "vb6/ProjectFile.hpp"

#include <gtest/gtest.h>

#include "automation/Error.hpp"

namespace hearthmake::vb6 {
namespace {

TEST(ProjectFile, ReadsSettingsWithoutQuotesAndWithoutRegardToCase) {
  const auto project =
      ProjectFile::Parse("Type=OleDll\r\nName=\"Lib\"\r\nMajorVer=3\r\nTitle=\"Caf\xE9\"\r\n");
  EXPECT_EQ(project.Kind(), ProjectKind::ActiveXDll);
  EXPECT_EQ(project.Value("name"), "Lib");
  EXPECT_EQ(project.Value("Title"), "Café");
  EXPECT_EQ(project.Number("MAJORVER"), 3U);
  EXPECT_EQ(project.Number("MinorVer", 7), 7U);
  EXPECT_EQ(project.Extension(), "dll");
}

TEST(ProjectFile, LeavesTheSectionsOfOtherToolsAlone) {
  const auto project =
      ProjectFile::Parse("Type=Exe\r\nName=\"A\"\r\n[Tool]\r\nName=\"B\"\r\nReference=x\r\n");
  EXPECT_EQ(project.Value("Name"), "A");
  EXPECT_TRUE(project.References().empty());
}

TEST(ProjectFile, ReadsTheThreeKindsOfReferences) {
  const auto project = ProjectFile::Parse(
      "Type=Exe\r\n"
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#..\\bin\\A.dll#A #1 helper\r\n"
      "Object={00020430-0000-0000-C000-000000000047}#1.A#0; Grid.ocx\r\n"
      "Reference=*\\A..\\B\\B.vbp\r\n");
  ASSERT_EQ(project.References().size(), 3U);
  const ReferenceRow& library = project.References()[0];
  EXPECT_EQ(library.kind, ReferenceKind::TypeLibrary);
  EXPECT_EQ(library.guid, "{00020430-0000-0000-C000-000000000046}");
  EXPECT_EQ(library.version, "2.0");
  EXPECT_EQ(library.file, "..\\bin\\A.dll");
  EXPECT_EQ(library.description, "A #1 helper");
  const ReferenceRow& control = project.References()[1];
  EXPECT_EQ(control.kind, ReferenceKind::Control);
  EXPECT_EQ(control.version, "1.A");
  EXPECT_EQ(control.file, "Grid.ocx");
  const ReferenceRow& other = project.References()[2];
  EXPECT_EQ(other.kind, ReferenceKind::Project);
  EXPECT_EQ(other.file, "..\\B\\B.vbp");
}

TEST(ProjectFile, ReadsComponentsWithAndWithoutNames) {
  const auto project =
      ProjectFile::Parse("Type=Control\r\nClass=Order; ..\\Order.cls\r\nUserControl=Grid.ctl\r\n");
  ASSERT_EQ(project.Components().size(), 2U);
  EXPECT_EQ(project.Components()[0].name, "Order");
  EXPECT_EQ(project.Components()[0].file, "..\\Order.cls");
  EXPECT_EQ(project.Components()[1].kind, ComponentKind::UserControl);
  EXPECT_EQ(project.Components()[1].name, "");
  EXPECT_EQ(project.Components()[1].file, "Grid.ctl");
}

std::string ProblemOf(std::string_view bytes) {
  try {
    ProjectFile::Parse(bytes);
  } catch (const automation::Error& error) {
    return error.Description();
  }
  return "";
}

TEST(ProjectFile, NamesTheRowThatItCantRead) {
  EXPECT_EQ(ProblemOf("Name=\"A\"\r\n"), "not a project file: it has no Type row");
  EXPECT_EQ(ProblemOf("Type=Dll\r\n"), "unknown Type 'Dll'");
  EXPECT_EQ(ProblemOf("Type=Exe\r\nReference=*\\G{1}#1\r\n"), "line 2: invalid Reference row '*\\G{1}#1'");
  EXPECT_EQ(ProblemOf("Type=Exe\r\nObject={1}\r\n"), "line 2: invalid Object row '{1}'");
  EXPECT_EQ(ProblemOf("Type=Exe\r\nForm=\r\n"), "line 2: Form row without a file");
}

TEST(ProjectFile, CountsTheRevisionOnlyWhenAsked) {
  EXPECT_EQ(ProjectFile::WithNextRevision("RevisionVer=9\r\nAutoIncrementVer=1\r\nX=1"),
            "RevisionVer=10\r\nAutoIncrementVer=1\r\nX=1");
  EXPECT_EQ(ProjectFile::WithNextRevision("RevisionVer=9\r\nAutoIncrementVer=0\r\n"),
            "RevisionVer=9\r\nAutoIncrementVer=0\r\n");
  EXPECT_EQ(ProjectFile::WithNextRevision("RevisionVer=9999\r\nAutoIncrementVer=1\r\n"),
            "RevisionVer=9999\r\nAutoIncrementVer=1\r\n");
}

}  // namespace
}  // namespace hearthmake::vb6
