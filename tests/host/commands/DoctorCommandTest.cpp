#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"
#include "support/JsonSchema.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

// A build "Shop" of Lib, App and Tool, whose sources are their project files alone.
class DoctorCommandTest : public testing::Test {
 protected:
  void SetUp() override { command.MakeShop(); }

  struct Diagnosis {
    int status = -1;
    json report;
    // The findings of a check with a severity, each in one text.
    std::vector<std::string> Of(const std::string& severity, const std::string& check) const {
      std::vector<std::string> texts;
      for (const json& finding : report.at("findings")) {
        if (finding.at("severity") != severity || finding.at("check") != check) continue;
        std::string text;
        for (const char* part : {"what", "where", "mend"}) {
          if (!finding.at(part).is_null()) text += finding.at(part).get<std::string>() + "\n";
        }
        texts.push_back(text);
      }
      return texts;
    }
  };
  Diagnosis Examine(HostCommand::Arguments arguments = {"doctor", "Shop"}) {
    arguments.emplace_back("--json");
    const CommandResult result = command.Run(arguments);
    EXPECT_EQ(result.err, "");
    const json report = json::parse(result.out);
    EXPECT_EQ(support::JsonSchema(SOURCE_DIRECTORY "/docs/doctor.schema.json").Check(report), "") << report;
    return {result.status, report};
  }
  // Every file below the folder with its time of change and its content.
  std::map<std::string, std::string> Everything() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(command.root.Path())) {
      const std::string path = entry.path().string().substr(command.root.Path().size() + 1);
      if (!entry.is_regular_file() || path.starts_with("output-")) continue;
      files[path] =
          std::to_string(entry.last_write_time().time_since_epoch().count()) + command.root.Content(path);
    }
    return files;
  }

  HostCommand command;
};

TEST_F(DoctorCommandTest, FindsNothingWrongWithABuildThatIsWell) {
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  const CommandResult result = command.Run({"doctor", "Shop"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_THAT(result.out, HasSubstr("ok       compiler"));
  EXPECT_THAT(result.out, HasSubstr("0 errors, "));
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 0);
  EXPECT_EQ(diagnosis.report.at("format"), 1);
  EXPECT_EQ(diagnosis.report.at("build"), "Shop");
  EXPECT_EQ(diagnosis.report.at("errors"), 0);
}

TEST_F(DoctorCommandTest, ChangesNothing) {
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  std::filesystem::remove(command.Source("Tool.vbp"));
  const auto before = Everything();
  command.Run({"doctor", "Shop"});
  command.Run({"doctor", "--json"});
  EXPECT_EQ(Everything(), before);
  EXPECT_TRUE(command.LeftNoTemporaryFiles());
}

TEST_F(DoctorCommandTest, MakesNoDataFolder) {
  const Diagnosis diagnosis = Examine({"--data", command.root.Path("fresh"), "doctor"});
  EXPECT_EQ(diagnosis.status, 0) << diagnosis.report;
  EXPECT_THAT(diagnosis.Of("note", "data"), Contains(HasSubstr("hearthmake new NAME")));
  EXPECT_THAT(diagnosis.Of("note", "database"), Contains(HasSubstr("no build database yet")));
  EXPECT_FALSE(std::filesystem::exists(command.root.Path("fresh")));
}

TEST_F(DoctorCommandTest, MissesACompiler) {
  ASSERT_EQ(command.Run({"settings", "VBExe", "/nowhere/vb6.exe"}).status, 0);
  const Diagnosis diagnosis = Examine({"doctor"});
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "compiler"), Contains(HasSubstr("hearthmake settings VBExe PATH")));
  EXPECT_EQ(diagnosis.report.at("build"), nullptr);
}

TEST_F(DoctorCommandTest, TellsACompilerThatNeedsWine) {
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  // The stand-in writes images, and is none; an image is taken from the head of one.
  std::string image(128, '\0');
  image.replace(0, 2, "MZ");
  image[60] = 64;
  image.replace(64, 4, std::string("PE\0\0", 4));
  command.root.MakeFile("vb6.exe", image);
  ASSERT_EQ(command.Run({"settings", "VBExe", command.root.Path("vb6.exe")}).status, 0);
  ASSERT_EQ(command.Run({"settings", "--host", "WineProgram", "/nowhere/wine"}).status, 0);
  EXPECT_THAT(Examine({"doctor"}).Of("error", "compiler"),
              Contains(HasSubstr("/nowhere/wine to run it is not found")));
  command.root.MakeFile("wine", "#!/bin/sh\n");
  std::filesystem::permissions(command.root.Path("wine"), std::filesystem::perms::owner_all);
  ASSERT_EQ(command.Run({"settings", "--host", "WineProgram", command.root.Path("wine")}).status, 0);
  const Diagnosis diagnosis = Examine({"doctor"});
  EXPECT_THAT(diagnosis.Of("ok", "compiler"), Contains(HasSubstr("/wine runs it")));
  EXPECT_THAT(diagnosis.Of("warning", "compiler"), Contains(HasSubstr("WinePrefix")));
}

TEST_F(DoctorCommandTest, TellsJunkInTheSettingsOnce) {
  command.root.MakeFile("config/hearthmake/settings.ini", "[Hearthmake\\VB]\nNoSuchKey=1\n");
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "settings"), Contains(HasSubstr("NoSuchKey")));
  EXPECT_THAT(diagnosis.Of("error", "compiler"), IsEmpty());
}

TEST_F(DoctorCommandTest, KnowsAJetDatabase) {
  std::string header("\0\1\0\0Standard Jet DB\0", 20);
  header.resize(4096);
  command.root.MakeFile("old/Build.mdb", header);
  const Diagnosis diagnosis = Examine({"--data", command.root.Path("old"), "doctor", "Shop"});
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "database"),
              Contains(HasSubstr("hearthmake import '" + command.root.Path("old/Build.mdb") + "'")));
}

TEST_F(DoctorCommandTest, KnowsFilesThatAreNoDatabase) {
  command.root.MakeFile("odd/Build.mdb", "not a database");
  const Diagnosis diagnosis = Examine({"--data", command.root.Path("odd"), "doctor"});
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "database"), Contains(HasSubstr("no build database")));
}

TEST_F(DoctorCommandTest, LooksNoFurtherWithoutItsMachine) {
  const Diagnosis diagnosis = Examine({"--wine-prefix", command.root.Path("gone"), "doctor", "Shop"});
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "host"), Contains(HasSubstr("wineboot")));
  EXPECT_EQ(diagnosis.report.at("findings").size(), 1U);
}

TEST_F(DoctorCommandTest, LooksAtAWinePrefix) {
  command.root.MakeFolder("prefix/dosdevices");
  command.root.MakeFolder("prefix/drive_c");
  std::filesystem::create_directory_symlink("../drive_c", command.root.Path("prefix/dosdevices/c:"));
  std::filesystem::create_directory_symlink("/", command.root.Path("prefix/dosdevices/z:"));
  const HostCommand::Arguments arguments = {"--wine-prefix", command.root.Path("prefix"), "doctor"};
  EXPECT_THAT(Examine(arguments).Of("error", "wine"), Contains(HasSubstr("no registry")));
  command.root.MakeFile("prefix/system.reg",
                        "WINE REGISTRY Version 2\n\n[Software\\\\Classes\\\\TypeLib\\\\{1}] 1\n@=\"x\"\n");
  EXPECT_THAT(Examine(arguments).Of("ok", "wine"), Contains(HasSubstr("/prefix")));
}

TEST_F(DoctorCommandTest, MissesProjectFilesAndSources) {
  std::filesystem::remove(command.Source("Tool.vbp"));
  command.WriteProject("App", "Exe",
                       "Reference=*\\ALib.vbp\r\nClass=Till; Till.cls\r\nModule=Main; Main.bas\r\n");
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "files"), Contains(HasSubstr("hearthmake remove 'Shop' 'Tool'")));
  EXPECT_THAT(diagnosis.Of("error", "files"),
              Contains(HasSubstr("2 files of App are missing.\n" + command.Source("Till.cls"))));
}

TEST_F(DoctorCommandTest, AFileOfAProjectThatIsSwitchedOffFailsNothing) {
  command.WriteProject("Tool", "Exe", "Class=Till; Till.cls\r\n");
  ASSERT_EQ(command.Run({"set", "Shop", "Tool", "CompileMe", "false"}).status, 0);
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 0) << diagnosis.report;
  EXPECT_THAT(diagnosis.Of("note", "files"), Contains(HasSubstr("Tool")));
}

TEST_F(DoctorCommandTest, FindsTwoProjectsThatWriteOneBinary) {
  ASSERT_EQ(command.Run({"set", "Shop", "Tool", "ExeName32", "APP.exe"}).status, 0);
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "names"), Contains(HasSubstr("App (id 1), Tool (id 3)")));
}

TEST_F(DoctorCommandTest, MendsACircleOfReferencesByTheCommandThatItNames) {
  command.WriteProject("A", "OleDll", "Reference=*\\AC.vbp\r\n");
  command.WriteProject("B", "OleDll", "Reference=*\\AA.vbp\r\n");
  command.WriteProject("C", "OleDll", "Reference=*\\AB.vbp\r\n");
  command.Run({"add", "Shop", command.Source("A.vbp"), command.Source("B.vbp"), command.Source("C.vbp")});
  EXPECT_THAT(Examine().Of("error", "order"),
              Contains(HasSubstr("A -> C -> B -> A.\n" + command.Source("A.vbp") +
                                 "\nhearthmake refs 'Shop' --drop 'A' 1\n")));
  ASSERT_EQ(command.Run({"refs", "Shop", "--drop", "A", "1"}).status, 0);
  EXPECT_THAT(Examine().Of("error", "order"), IsEmpty());
}

TEST_F(DoctorCommandTest, MissesLibrariesThatAreNotOfTheSystem) {
  command.WriteProject(
      "Tool", "Exe",
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#C:\\WINDOWS\\system32\\stdole2.tlb#OLE"
      "\r\nReference=*\\G{11111111-0000-0000-C000-000000000046}#1.0#0#lib\\Gone.dll#Gone\r\n");
  ASSERT_EQ(command.Run({"refs", "Shop", "Tool"}).status, 0);
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(
      diagnosis.Of("error", "references"),
      Contains(HasSubstr("Tool references Gone 1.0, which is neither registered nor there.\n" +
                         command.Source("lib/Gone.dll") + "\nhearthmake refs 'Shop' --drop 'Tool' 2\n")));
  EXPECT_THAT(diagnosis.Of("note", "references"),
              Contains(HasSubstr("1 references to libraries of Windows")));
}

TEST_F(DoctorCommandTest, MissesOutputFolders) {
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "Path32", command.root.Path("gone")}).status, 0);
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "CopyPath", command.root.Path("copies")}).status, 0);
  const Diagnosis diagnosis = Examine();
  EXPECT_EQ(diagnosis.status, 1);
  EXPECT_THAT(diagnosis.Of("error", "output"),
              Contains(HasSubstr("mkdir -p '" + command.root.Path("gone") + "'")));
  EXPECT_THAT(diagnosis.Of("warning", "output"),
              Contains(HasSubstr("mkdir -p '" + command.root.Path("copies") + "'")));
}

TEST_F(DoctorCommandTest, MissesTheBinaryToStayCompatibleWith) {
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "CompatibleMode", "BinaryCompatibility"}).status, 0);
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "CompatibleEXE32", "Lib.dll"}).status, 0);
  EXPECT_THAT(Examine().Of("note", "compatibility"), Contains(HasSubstr("\nLib\n")));
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "CompatibleEXE32", "ref\\Lib.dll"}).status, 0);
  EXPECT_THAT(Examine().Of("warning", "compatibility"), Contains(HasSubstr(command.Source("ref/Lib.dll"))));
}

TEST_F(DoctorCommandTest, FindsLibrariesThatWantOneAddress) {
  command.WriteProject("Lib2", "OleDll");
  ASSERT_EQ(command.Run({"add", "Shop", command.Source("Lib2.vbp")}).status, 0);
  EXPECT_THAT(Examine().Of("note", "bases"),
              Contains(HasSubstr("Lib, Lib2 have the base address of new projects")));
  for (const char* name : {"Lib", "Lib2"}) {
    ASSERT_EQ(command.Run({"set", "Shop", name, "DllBaseAddress", "&H20000000"}).status, 0);
  }
  EXPECT_THAT(Examine().Of("warning", "bases"), Contains(HasSubstr("&H20000000\nhearthmake bases 'Shop'")));
  ASSERT_EQ(command.Run({"bases", "Shop"}).status, 0);
  EXPECT_THAT(Examine().Of("warning", "bases"), IsEmpty());
}

TEST_F(DoctorCommandTest, FindsAddressesThatReachIntoOthers) {
  command.WriteProject("Lib2", "OleDll");
  command.root.MakeFile("src/Lib.dll", std::string(70'000, 'x'));
  ASSERT_EQ(command.Run({"add", "Shop", command.Source("Lib2.vbp")}).status, 0);
  ASSERT_EQ(command.Run({"set", "Shop", "Lib2", "DllBaseAddress", "&H11010000"}).status, 0);
  EXPECT_THAT(Examine().Of("warning", "bases"),
              Contains(HasSubstr("Lib reaches into the addresses of Lib2")));
}

TEST_F(DoctorCommandTest, FindsComponentsThatAreNotRegistered) {
  EXPECT_THAT(Examine().Of("note", "registration"), Contains(HasSubstr("3 of 3 binaries are not there yet")));
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  ASSERT_EQ(command.Run({"unregister", "Shop", "Lib"}).status, 0);
  EXPECT_THAT(Examine().Of("warning", "registration"),
              Contains(HasSubstr("hearthmake register 'Shop' 'Lib'")));
  ASSERT_EQ(command.Run({"register", "Shop", "Lib"}).status, 0);
  EXPECT_THAT(Examine().Of("warning", "registration"), IsEmpty());
}

TEST_F(DoctorCommandTest, MissesTheIniFileOfASourceProject) {
  const std::string ini = command.root.MakeFile("srcsafe.ini", "[git]\nrepository = /nowhere\n");
  ASSERT_EQ(command
                .Run({"sourceprojects", "Shop", "add", "$/", "--ini", ini, "--folder",
                      command.root.Path("src"), "--user", "Bob"})
                .status,
            0);
  EXPECT_THAT(Examine().Of("warning", "sources"), IsEmpty());
  std::filesystem::remove(ini);
  EXPECT_THAT(Examine().Of("warning", "sources"),
              Contains(HasSubstr("hearthmake sourceprojects 'Shop' edit '$/' --ini FILE")));
  ASSERT_EQ(command.Run({"settings", "TakeLatestFromVSS", "true"}).status, 0);
  EXPECT_EQ(Examine().status, 1);
}

TEST_F(DoctorCommandTest, KnowsNoBuildThatIsNotThere) {
  const CommandResult result = command.Run({"doctor", "Nix"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("There is no build 'Nix'"));
}

}  // namespace
}  // namespace hearthmake::host
