#include "adapters/posix/ProgramFinder.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using support::CurrentFolderOverride;
using support::EnvironmentOverride;
using support::PosixFolder;

class ProgramFinderTest : public ::testing::Test {
 protected:
  ProgramFinderTest() {
    m_drives.SetDrive('C', m_folder.MakeFolder("c"));
    m_drives.SetDrive('Z', "/");
  }

  static std::string PortableExecutable(std::uint8_t offset = 0x80) {
    std::string image(256, '\0');
    image.replace(0, 2, "MZ");
    image[0x3C] = static_cast<char>(offset);
    image.replace(offset, 2, "PE");
    return image;
  }
  std::string Script(const std::string& name, const std::string& text = "#!/bin/sh\n") {
    const std::string path = m_folder.MakeFile(name, text);
    EXPECT_EQ(chmod(path.c_str(), 0755), 0);
    return path;
  }
  // The path of the program and the arguments, or what is missing.
  std::string Find(ProgramFinder& finder, std::string_view line) {
    const auto match = finder.Find(line);
    if (!match) return "(none)";
    return match->program->path.substr(m_folder.Path().size()) + "|" + std::string(match->arguments);
  }
  std::string Find(std::string_view line, const std::string& systemFolder = {}) {
    ProgramFinder finder(m_drives, systemFolder);
    return Find(finder, line);
  }

  PosixFolder m_folder;
  DriveMap m_drives;
  EnvironmentOverride m_path{"PATH", m_folder.Path("bin1") + "::" + m_folder.Path("bin2")};
};

TEST_F(ProgramFinderTest, FindsDosAndPosixPaths) {
  Script("c/tools/vb6.exe");
  EXPECT_EQ(Find("C:\\tools\\vb6.exe /make x"), "/c/tools/vb6.exe| /make x");
  EXPECT_EQ(Find("\"c:\\TOOLS\\VB6.EXE\" x"), "/c/tools/vb6.exe| x");
  EXPECT_EQ(Find(m_folder.Path("c/tools/vb6.exe") + " x"), "/c/tools/vb6.exe| x");
  EXPECT_EQ(Find("C:\\tools\\missing.exe"), "(none)");
  EXPECT_EQ(Find("Q:\\vb6.exe"), "(none)");
}

TEST_F(ProgramFinderTest, TriesAnUnquotedPathWithBlanksPieceByPiece) {
  Script("c/a b/c.exe");
  EXPECT_EQ(Find("C:\\a b\\c.exe x y"), "/c/a b/c.exe| x y");
  EXPECT_EQ(Find("C:\\a b\\c x y"), "/c/a b/c.exe| x y");
  EXPECT_EQ(Find("\"C:\\a b\\c.exe\"x"), "/c/a b/c.exe|x");
  EXPECT_EQ(Find("\"C:\\a\" b\\c.exe"), "(none)");
  Script("c/a.exe");
  EXPECT_EQ(Find("C:\\a b\\c.exe x y"), "/c/a.exe| b\\c.exe x y");
}

TEST_F(ProgramFinderTest, PassesOverFoldersOnThePathOfABlank) {
  m_folder.MakeFolder("c/a");
  Script("c/a b");
  EXPECT_EQ(Find("C:\\a b"), "/c/a b|");
}

TEST_F(ProgramFinderTest, AppendsAndLeavesOffTheExtension) {
  Script("c/native");
  EXPECT_EQ(Find("C:\\native.exe x"), "/c/native| x");
  EXPECT_EQ(Find("C:\\native x"), "/c/native| x");
  Script("c/both");
  Script("c/both.exe");
  EXPECT_EQ(Find("C:\\both"), "/c/both.exe|");
  Script("c/tool.sh");
  EXPECT_EQ(Find("C:\\tool"), "(none)");
  EXPECT_EQ(Find("C:\\tool.sh"), "/c/tool.sh|");
  Script("c/.exe");
  EXPECT_EQ(Find("C:\\.exe"), "/c/.exe|");
}

TEST_F(ProgramFinderTest, LooksForABareNameInTheFoldersInTheirOrder) {
  const CurrentFolderOverride current(m_folder.MakeFolder("c/current"));
  EXPECT_EQ(Find("tool", "C:\\windows\\system32"), "(none)");
  Script("bin2/tool");
  EXPECT_EQ(Find("tool x", "C:\\windows\\system32"), "/bin2/tool| x");
  Script("bin1/tool.exe");
  EXPECT_EQ(Find("TOOL.exe x", "C:\\windows\\system32"), "/bin1/tool.exe| x");
  Script("c/windows/system32/tool.exe");
  EXPECT_EQ(Find("tool x", "C:\\windows\\system32\\"), "/c/windows/system32/tool.exe| x");
  Script("c/current/tool");
  EXPECT_EQ(Find("tool x", "C:\\windows\\system32"), "/c/current/tool| x");
}

TEST_F(ProgramFinderTest, LooksInTheFolderOfTheRunningProgramFirst) {
  const std::string self = std::filesystem::read_symlink("/proc/self/exe");
  const std::string name = self.substr(self.rfind('/') + 1);
  Script("bin1/" + name);
  ProgramFinder finder(m_drives, "");
  const auto match = finder.Find(name);
  ASSERT_TRUE(match.has_value());
  EXPECT_EQ(match->program->path, self);
}

TEST_F(ProgramFinderTest, TellsImagesByTheirBytes) {
  using Kind = ProgramFinder::Kind;
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("a", PortableExecutable())), Kind::Windows);
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("b", PortableExecutable().substr(0, 0x82))),
            std::nullopt);
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("c", "MZ")), std::nullopt);
  std::string farAway = PortableExecutable();
  farAway.replace(0x3C, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("d", farAway)), std::nullopt);
  EXPECT_EQ(ProgramFinder::Identify("/proc/self/exe"), Kind::Native);
  EXPECT_EQ(ProgramFinder::Identify(Script("e")), Kind::Native);
  EXPECT_EQ(ProgramFinder::Identify(Script("f", "echo no script\n")), std::nullopt);
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("g", "#!/bin/sh\n")), std::nullopt);  // not executable
  EXPECT_EQ(ProgramFinder::Identify(m_folder.MakeFile("h", "")), std::nullopt);
  EXPECT_EQ(ProgramFinder::Identify(m_folder.Path()), std::nullopt);
  ASSERT_EQ(mkfifo(m_folder.Path("pipe").c_str(), 0700), 0);
  EXPECT_EQ(ProgramFinder::Identify(m_folder.Path("pipe")), std::nullopt);
}

TEST_F(ProgramFinderTest, PassesOverFilesThatCanNotBeStarted) {
  m_folder.MakeFile("bin1/tool", "a text\n");
  Script("bin2/tool");
  EXPECT_EQ(Find("tool"), "/bin2/tool|");
}

TEST_F(ProgramFinderTest, NoticesThatARememberedProgramHasChanged) {
  ProgramFinder finder(m_drives, "");
  const std::string path = Script("c/vb6");
  EXPECT_EQ(Find(finder, "C:\\vb6.exe x"), "/c/vb6| x");
  EXPECT_EQ(Find(finder, "C:\\vb6.exe y"), "/c/vb6| y");
  m_folder.MakeFile("c/vb6", PortableExecutable());
  const auto match = finder.Find("C:\\vb6.exe x");
  ASSERT_TRUE(match.has_value());
  EXPECT_EQ(match->program->kind, ProgramFinder::Kind::Windows);
  std::filesystem::remove(path);
  EXPECT_EQ(Find(finder, "C:\\vb6.exe x"), "(none)");
}

TEST_F(ProgramFinderTest, LooksAgainWhenTheCurrentFolderOrThePathIsAnother) {
  ProgramFinder finder(m_drives, "");
  Script("one/tool");
  Script("two/tool");
  {
    const CurrentFolderOverride current(m_folder.Path("one"));
    EXPECT_EQ(Find(finder, "tool"), "/one/tool|");
  }
  {
    const CurrentFolderOverride current(m_folder.Path("two"));
    EXPECT_EQ(Find(finder, "tool"), "/two/tool|");
  }
  const CurrentFolderOverride current(m_folder.Path());
  EXPECT_EQ(Find(finder, "tool"), "(none)");
  const EnvironmentOverride path("PATH", m_folder.Path("one"));
  EXPECT_EQ(Find(finder, "tool"), "/one/tool|");
}

TEST_F(ProgramFinderTest, IsNotHeldUpByALongLineWithoutAProgram) {
  std::string line;
  for (int i = 0; i < 100'000; ++i) line += "x ";
  EXPECT_EQ(Find(line), "(none)");
}

TEST_F(ProgramFinderTest, FindsNativeToolsByPosixRules) {
  const std::string path = Script("bin2/wine");
  m_folder.MakeFile("bin1/wine", "not executable");
  EXPECT_EQ(ProgramFinder::FindNative("wine"), path);
  EXPECT_EQ(ProgramFinder::FindNative(path), path);
  EXPECT_EQ(ProgramFinder::FindNative("wine64"), "");
  EXPECT_EQ(ProgramFinder::FindNative(m_folder.Path("bin1/wine")), "");
}

}  // namespace
}  // namespace hearthmake::posix
