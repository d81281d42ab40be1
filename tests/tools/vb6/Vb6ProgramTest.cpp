#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "support/Vb6Sandbox.hpp"

namespace hearthmake::vb6 {
namespace {

using tests::Vb6Sandbox;

class Vb6Program : public ::testing::Test {
 protected:
  Vb6Program() { m_sandbox.Files().CreateFolders("C:\\bin"); }

  void WriteProject(const std::string& rows = "") {
    m_sandbox.Write(
        "C:\\src\\Lib.vbp",
        "Type=OleDll\n" + rows +
            "Class=Order; Order.cls\nName=\"Lib\"\nDescription=\"The Lib\"\nExeName32=\"Lib.dll\"\n"
            "Path32=\"..\\bin\"\nMajorVer=1\nMinorVer=2\nRevisionVer=3\nAutoIncrementVer=0\n");
  }
  void WriteClass(const std::string& body, const std::string& name = "Order") {
    m_sandbox.Write("C:\\src\\" + name + ".cls",
                    "VERSION 1.0 CLASS\nBEGIN\nEND\nAttribute VB_Name = \"" + name +
                        "\"\nAttribute VB_Creatable = True\nAttribute VB_Exposed = True\n" + body);
  }
  std::string Compile(const Vb6Sandbox::Environment& environment = {}) {
    return m_sandbox.Compile("C:\\src\\Lib.vbp", environment);
  }
  platform::TypeLibInfo Library() { return m_sandbox.Library("C:\\bin\\Lib.dll"); }
  std::string Version() {
    const auto info = Library();
    return std::to_string(info.majorVersion) + "." + std::to_string(info.minorVersion);
  }

  Vb6Sandbox m_sandbox;
};

const std::string kSucceeded = "Build of 'Lib.dll' succeeded.\r\n";
const std::string kFailed = "Build of 'Lib.dll' failed.\r\n";

TEST_F(Vb6Program, WritesTheBinaryItsLibraryAndAGoodLog) {
  WriteProject();
  WriteClass("Public Sub Go()\nEnd Sub\n");
  EXPECT_EQ(Compile(), kSucceeded);
  EXPECT_EQ(m_sandbox.Last().exitCode, 0);
  EXPECT_EQ(m_sandbox.Last().output + m_sandbox.Last().errors, "");
  EXPECT_EQ(Library().name, "Lib");
  EXPECT_EQ(Library().helpString, "The Lib");
  EXPECT_EQ(Version(), "1.0");
  ASSERT_EQ(m_sandbox.Types("C:\\bin\\Lib.dll").size(), 2U);
  EXPECT_EQ(m_sandbox.Types("C:\\bin\\Lib.dll")[1].name, "Order");
}

TEST_F(Vb6Program, TakesPosixPathsAndAnotherFolder) {
  WriteProject();
  WriteClass("");
  m_sandbox.Files().CreateFolders("C:\\other");
  const auto result =
      m_sandbox.Run("vb6", {m_sandbox.Drive() + "/src/Lib.vbp", "/M", "/d", "A=1", "/outdir",
                            m_sandbox.Drive() + "/other", "/out", m_sandbox.Drive() + "/log.txt"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(m_sandbox.Read("C:\\log.txt"), kSucceeded);
  EXPECT_TRUE(m_sandbox.Exists("C:\\other\\Lib.dll"));
  EXPECT_FALSE(m_sandbox.Exists("C:\\bin\\Lib.dll"));
}

TEST_F(Vb6Program, SaysWhatItIs) {
  EXPECT_NE(m_sandbox.Run("vb6", {"--help"}).output.find("does not compile Basic"), std::string::npos);
  EXPECT_EQ(m_sandbox.Run("vb6", {"--version"}).exitCode, 0);
  const auto noMake = m_sandbox.Run("vb6", {"C:\\src\\Lib.vbp"});
  EXPECT_EQ(noMake.exitCode, 1);
  EXPECT_NE(noMake.errors.find("no development environment"), std::string::npos);
  EXPECT_EQ(m_sandbox.Run("vb6", {"/make"}).exitCode, 1);
}

TEST_F(Vb6Program, PutsTheMessagesOnStandardErrorWithoutALog) {
  const auto result = m_sandbox.Run("vb6", {"C:\\none.vbp", "/make"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.errors.find("C:\\none.vbp"), std::string::npos);
  EXPECT_NE(result.errors.find("Build of 'none.vbp' failed."), std::string::npos);
}

TEST_F(Vb6Program, NamesAMissingOrMalformedSource) {
  WriteProject();
  EXPECT_EQ(Compile(), "Compile Error in File 'C:\\src\\Order.cls', Line 1 : File not found\r\n" + kFailed);
  EXPECT_EQ(m_sandbox.Last().exitCode, 1);
  WriteClass("Public Sub Go()\n");
  EXPECT_EQ(Compile(), "Compile Error in File 'C:\\src\\Order.cls', Line 7 : Expected End Sub\r\n" + kFailed);
  EXPECT_FALSE(m_sandbox.Exists("C:\\bin\\Lib.dll"));
}

TEST_F(Vb6Program, WantsSomethingThatOthersCanCreate) {
  WriteProject();
  m_sandbox.Write("C:\\src\\Order.cls", "VERSION 1.0 CLASS\nBEGIN\nEND\nAttribute VB_Name = \"Order\"\n");
  EXPECT_EQ(Compile(), "Error in project 'Lib': No creatable public component detected\r\n" + kFailed);
}

TEST_F(Vb6Program, WantsTheFolderOfTheBinary) {
  m_sandbox.Write("C:\\src\\Lib.vbp", "Type=Exe\nName=\"Lib\"\nExeName32=\"Lib.dll\"\nPath32=\"C:\\none\"\n");
  EXPECT_EQ(Compile(), "Error in project 'Lib': Path not found: 'C:\\none'\r\n" + kFailed);
}

TEST_F(Vb6Program, ChecksTheResourceFile) {
  WriteProject("ResFile32=\"Lib.res\"\n");
  WriteClass("");
  EXPECT_EQ(Compile(), "Error in project 'Lib': File not found: 'C:\\src\\Lib.res'\r\n" + kFailed);
  m_sandbox.Write("C:\\src\\Lib.res", "no resources");
  EXPECT_EQ(Compile(), "Error in project 'Lib': Invalid resource file: 'C:\\src\\Lib.res'\r\n" + kFailed);
  m_sandbox.Write("C:\\src\\Lib.res", std::string("\0\0\0\0\x20\0\0\0", 8));
  EXPECT_EQ(Compile(), kSucceeded);
}

TEST_F(Vb6Program, RefusesAReferenceToAnotherLibraryThanTheRowNames) {
  WriteProject();
  WriteClass("");
  ASSERT_EQ(Compile(), kSucceeded);
  const std::string guid = Library().guid;
  const auto compileUser = [this](const std::string& rows) {
    m_sandbox.Write("C:\\src\\User.vbp", "Type=Exe\n" + rows + "Name=\"User\"\nPath32=\"..\\bin\"\n");
    return m_sandbox.Compile("C:\\src\\User.vbp");
  };
  const std::string good = "Build of 'User.exe' succeeded.\r\n";
  EXPECT_EQ(compileUser("Reference=*\\G" + guid + "#1.0#0#..\\bin\\Lib.dll#The Lib\n"), good);
  EXPECT_NE(
      compileUser("Reference=*\\G" + guid + "#1.1#0#..\\bin\\Lib.dll#The Lib\n").find(guid + " version 1.1"),
      std::string::npos);
  const std::string other = "{00000000-0000-4000-8000-000000000001}";
  EXPECT_NE(compileUser("Reference=*\\G" + other + "#1.0#0#C:\\bin\\Lib.dll#The Lib\n").find(other),
            std::string::npos);
  EXPECT_NE(compileUser("Object=" + other + "#1.0#0; Lib.dll\n").find(other), std::string::npos);
  EXPECT_EQ(compileUser("Object=" + guid + "#1.0#0; Lib.dll\n"), good);
  EXPECT_NE(compileUser("Reference=*\\G" + guid + "#1.0#0#User.vbp#No library\n")
                .find("Can't read the type library"),
            std::string::npos);
}

TEST_F(Vb6Program, TakesLibrariesOfTheSystemForPresentUnlessToldOtherwise) {
  const std::string guid = "{00020430-0000-0000-C000-000000000046}";
  const auto compile = [&](const std::string& file, const Vb6Sandbox::Environment& environment = {}) {
    m_sandbox.Write("C:\\src\\User.vbp", "Type=Exe\nReference=*\\G" + guid + "#2.0#0#" + file +
                                             "#X\nName=\"User\"\nPath32=\"..\\bin\"\n");
    return m_sandbox.Compile("C:\\src\\User.vbp", environment);
  };
  const std::string good = "Build of 'User.exe' succeeded.\r\n";
  EXPECT_EQ(compile("C:\\WINNT\\System32\\stdole2.tlb"), good);
  EXPECT_EQ(compile("..\\..\\Windows\\SysWOW64\\stdole2.tlb"), good);
  EXPECT_EQ(compile("C:\\Program Files (x86)\\Common Files\\x.dll"), good);
  EXPECT_EQ(compile("stdole2.tlb"), good);
  const std::string missing = compile("..\\lib\\Own.dll");
  EXPECT_EQ(missing,
            "Error in project 'User': Can't find project or library: 'C:\\lib\\Own.dll'\r\n"
            "Build of 'User.exe' failed.\r\n");
  EXPECT_NE(compile("C:\\WINNT\\System32\\stdole2.tlb", {{"VB6_STANDIN_SYSTEM_LIBRARIES", "missing"}}), good);
  EXPECT_EQ(compile("..\\lib\\Own.dll", {{"VB6_STANDIN_SKIP_REFERENCES", "1"}}), good);
}

TEST_F(Vb6Program, KeepsTheIdentityUnderBinaryCompatibility) {
  WriteProject("CompatibleMode=\"2\"\nCompatibleEXE32=\"..\\bin\\Lib.dll\"\n");
  WriteClass("Public Sub Go()\nEnd Sub\n");
  ASSERT_EQ(Compile(), kSucceeded);
  const std::string guid = Library().guid;
  ASSERT_EQ(Compile(), kSucceeded);
  EXPECT_EQ(Library().guid, guid);
  EXPECT_EQ(Version(), "1.0");
  WriteClass("Public Sub Go()\nEnd Sub\nPublic Sub Further()\nEnd Sub\n");
  ASSERT_EQ(Compile(), kSucceeded);
  EXPECT_EQ(Library().guid, guid);
  EXPECT_EQ(Version(), "1.1");
  WriteClass("Public Sub Go(ByVal n As Long)\nEnd Sub\nPublic Sub Further()\nEnd Sub\n");
  EXPECT_EQ(
      Compile(),
      "'Lib.dll' breaks binary compatibility: 'method go()' of class 'Order' was removed or changed\r\n" +
          kFailed);
  EXPECT_EQ(Version(), "1.1");
}

TEST_F(Vb6Program, WritesTheBinaryAnewEvenWhenNothingChanged) {
  WriteProject("CompatibleMode=\"2\"\nCompatibleEXE32=\"..\\bin\\Lib.dll\"\n");
  WriteClass("");
  ASSERT_EQ(Compile(), kSucceeded);
  const std::string bytes = m_sandbox.Read("C:\\bin\\Lib.dll");
  const auto before = m_sandbox.Files().Stamp("C:\\bin\\Lib.dll").modified;
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  ASSERT_EQ(Compile(), kSucceeded);
  EXPECT_EQ(m_sandbox.Read("C:\\bin\\Lib.dll"), bytes);
  EXPECT_GT(m_sandbox.Files().Stamp("C:\\bin\\Lib.dll").modified, before);
}

TEST_F(Vb6Program, LeavesAReadOnlyBinaryAlone) {
  WriteProject();
  WriteClass("");
  ASSERT_EQ(Compile(), kSucceeded);
  const std::string bytes = m_sandbox.Read("C:\\bin\\Lib.dll");
  m_sandbox.Files().SetAttributes("C:\\bin\\Lib.dll", platform::kReadOnly);
  EXPECT_NE(Compile().find("Error in project 'Lib': Path/File access error"), std::string::npos);
  EXPECT_EQ(m_sandbox.Last().exitCode, 1);
  EXPECT_EQ(m_sandbox.Read("C:\\bin\\Lib.dll"), bytes);
}

TEST_F(Vb6Program, MakesANewIdentityWithoutCompatibility) {
  WriteProject("CompatibleMode=\"0\"\nCompatibleEXE32=\"..\\bin\\Lib.dll\"\n");
  WriteClass("");
  ASSERT_EQ(Compile(), kSucceeded);
  const std::string guid = Library().guid;
  ASSERT_EQ(Compile(), kSucceeded);
  EXPECT_NE(Library().guid, guid);
  ASSERT_EQ(Compile({{"VB6_STANDIN_SEED", "7"}}), kSucceeded);
  const std::string seeded = Library().guid;
  ASSERT_EQ(Compile({{"VB6_STANDIN_SEED", "7"}}), kSucceeded);
  EXPECT_EQ(Library().guid, seeded);
}

TEST_F(Vb6Program, RefusesACompatibleBinaryThatItCantRead) {
  WriteProject("CompatibleMode=\"2\"\nCompatibleEXE32=\"Order.cls\"\n");
  WriteClass("");
  const std::string log = Compile();
  EXPECT_NE(log.find("Unable to set the version compatible component 'C:\\src\\Order.cls'"),
            std::string::npos)
      << log;
  EXPECT_EQ(log.find("compatibility"), std::string::npos) << "a build would take it for a broken interface";
}

TEST_F(Vb6Program, WritesTheTypeLibraryForRemoteServers) {
  WriteProject("ServerSupportFiles=1\n");
  WriteClass("");
  ASSERT_EQ(Compile(), kSucceeded);
  EXPECT_EQ(m_sandbox.Library("C:\\bin\\Lib.tlb").guid, Library().guid);
}

TEST_F(Vb6Program, CountsTheRevision) {
  m_sandbox.Write("C:\\src\\Lib.vbp",
                  "Type=Exe\nName=\"Lib\"\nPath32=\"..\\bin\"\nRevisionVer=9\nAutoIncrementVer=1\n");
  m_sandbox.Compile("C:\\src\\Lib.vbp");
  EXPECT_NE(m_sandbox.Read("C:\\src\\Lib.vbp").find("\r\nRevisionVer=10\r\n"), std::string::npos);
}

TEST_F(Vb6Program, SkipsSourcesWhenAskedAndStaysStable) {
  WriteProject("CompatibleMode=\"2\"\nCompatibleEXE32=\"..\\bin\\Lib.dll\"\n");
  ASSERT_EQ(Compile({{"VB6_STANDIN_SKIP_SOURCES", "1"}}), kSucceeded);
  const std::string guid = Library().guid;
  EXPECT_EQ(m_sandbox.Types("C:\\bin\\Lib.dll").back().name, "LibClass");
  ASSERT_EQ(m_sandbox.Run("vb6", {"C:\\src\\Lib.vbp", "/makedll", "--skip-sources"}).exitCode, 0);
  EXPECT_EQ(Library().guid, guid);
}

TEST_F(Vb6Program, FailsTheProjectsThatItIsToldTo) {
  WriteProject();
  WriteClass("");
  EXPECT_EQ(Compile({{"VB6_STANDIN_FAIL", "Other;lib"}}),
            "Compile Error in File 'C:\\src\\Order.cls', Line 12 : Variable not defined\r\n" + kFailed);
  EXPECT_EQ(Compile({{"VB6_STANDIN_FAIL", "Other"}}), kSucceeded);
}

TEST_F(Vb6Program, BreaksCompatibilityOnlyWhereItIsAskedFor) {
  const Vb6Sandbox::Environment broken = {{"VB6_STANDIN_BREAK", "Lib"}};
  WriteProject("CompatibleMode=\"2\"\n");
  WriteClass("");
  EXPECT_NE(Compile(broken).find("compatibility"), std::string::npos);
  EXPECT_EQ(m_sandbox.Last().exitCode, 1);
  WriteProject("CompatibleMode=\"1\"\n");
  EXPECT_EQ(Compile(broken), kSucceeded);
}

TEST_F(Vb6Program, DiesWithoutALogWhenToldTo) {
  WriteProject();
  EXPECT_EQ(Compile({{"VB6_STANDIN_CRASH", "Lib"}}), "");
  EXPECT_EQ(m_sandbox.Last().signal, SIGABRT);
}

TEST_F(Vb6Program, HangsUntilItIsKilled) {
  WriteProject();
  const pid_t child = m_sandbox.Start("vb6", {"C:\\src\\Lib.vbp", "/makedll"}, {{"VB6_STANDIN_HANG", "Lib"}});
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0);
  kill(child, SIGKILL);
  EXPECT_EQ(m_sandbox.Wait(child).signal, SIGKILL);
}

TEST_F(Vb6Program, IsSlowWhenToldTo) {
  WriteProject();
  WriteClass("");
  const auto milliseconds = [this](const std::string& slow) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Compile({{"VB6_STANDIN_SLOW", slow}}), kSucceeded);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
        .count();
  };
  EXPECT_GE(milliseconds("150"), 150);
  EXPECT_GE(milliseconds("Lib=150"), 150);
  EXPECT_LT(milliseconds("Other=5000"), 5000);
}

TEST_F(Vb6Program, HasAYardstickThatOnlyWritesAGoodLog) {
  const auto result = m_sandbox.Run("vb6-goodlog", {"C:\\src\\Lib.vbp", "/makedll", "/out", "C:\\good.txt"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(m_sandbox.Read("C:\\good.txt"), "Build of 'Lib.vbp' succeeded.\r\n");
  EXPECT_EQ(m_sandbox.Run("vb6-goodlog", {"Lib.vbp", "/out", m_sandbox.Drive() + "/posix.txt"}).exitCode, 0);
  EXPECT_TRUE(m_sandbox.Exists("C:\\posix.txt"));
  EXPECT_EQ(m_sandbox.Run("vb6-goodlog", {"Lib.vbp", "/out", "Q:\\x.txt"}).exitCode, 1);
}

}  // namespace
}  // namespace hearthmake::vb6
