#include <gtest/gtest.h>

#include <filesystem>

#include "support/Vb6Sandbox.hpp"
#include "vb6/DosPath.hpp"
#include "vb6/ProjectFile.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// The projects of the suite, each after those that it refers to.
const std::vector<std::string> kInOrder = {
    "Common\\OdCommon",   "Interfaces\\OdInterfaces", "Data\\OdData",   "Rules\\OdRules",
    "Pricing\\OdPricing", "Stock\\OdStock",           "Print\\OdPrint", "Grid\\OdGrid",
    "Orders\\OdOrders",   "Server\\OdServer",         "Desk\\OdDesk",   "Reports\\OdReports",
    "Import\\OdImport",   "Tests\\OdOrdersTest"};

class Examples : public ::testing::Test {
 protected:
  Examples() {
    std::filesystem::copy(std::string(SOURCE_DIRECTORY) + "/examples/suite", m_sandbox.Drive() + "/src",
                          std::filesystem::copy_options::recursive);
    m_sandbox.Files().CreateFolders("C:\\Suite\\Bin");
  }

  // What a build does before a compile: identifier and version of each library that is there now.
  void UpdateReferences(const std::string& path) {
    std::string bytes = m_sandbox.Read(path);
    const ProjectFile project = ProjectFile::Parse(bytes);
    for (const ReferenceRow& row : project.References()) {
      if (row.kind == ReferenceKind::Project) continue;
      const std::string file = row.kind == ReferenceKind::Control ? "C:\\src\\bin\\" + row.file
                                                                  : JoinPath(FolderOf(path), row.file);
      if (!m_sandbox.Exists(file)) continue;
      const auto info = m_sandbox.Library(file);
      const std::string before = row.guid + "#" + row.version + "#";
      bytes.replace(bytes.find(before), before.size(),
                    info.guid + "#" + Hex(info.majorVersion) + "." + Hex(info.minorVersion) + "#");
    }
    m_sandbox.Files().Replace(path, bytes);
  }

  tests::Vb6Sandbox m_sandbox;
};

TEST_F(Examples, CompileInDependencyOrderAndCompileAgain) {
  for (int round = 0; round < 2; ++round) {
    for (const std::string& name : kInOrder) {
      const std::string path = "C:\\src\\" + name + ".vbp";
      UpdateReferences(path);
      const std::string log = m_sandbox.Compile(path);
      EXPECT_NE(log.find("' succeeded.\r\n"), std::string::npos) << path << ": " << log;
    }
  }
  EXPECT_TRUE(m_sandbox.Exists("C:\\Suite\\Bin\\OdPricing.dll"));
  EXPECT_TRUE(m_sandbox.Exists("C:\\src\\bin\\OdReports.exe"));
  EXPECT_EQ(m_sandbox.Library("C:\\src\\bin\\OdGrid.ocx").flags & 2, 2);
}

TEST_F(Examples, FailToCompileWithTheIdentifiersOfOldBinaries) {
  ASSERT_NE(m_sandbox.Compile("C:\\src\\Common\\OdCommon.vbp").find("succeeded"), std::string::npos);
  EXPECT_NE(
      m_sandbox.Compile("C:\\src\\Grid\\OdGrid.vbp").find("The type library of 'C:\\src\\bin\\OdCommon.dll'"),
      std::string::npos);
}

TEST_F(Examples, ArePutTogetherInTheGroup) {
  const std::string group = m_sandbox.Read("C:\\src\\OrderDesk.vbg");
  for (const std::string& name : kInOrder) {
    EXPECT_NE(group.find("Project=" + name + ".vbp\r\n"), std::string::npos) << name;
    EXPECT_TRUE(m_sandbox.Exists("C:\\src\\" + name + ".vbp"));
  }
  EXPECT_NE(group.find("StartupProject=Desk\\OdDesk.vbp\r\n"), std::string::npos);
}

}  // namespace
}  // namespace hearthmake::vb6
