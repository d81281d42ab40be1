#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

// new, list, show, delete, add, remove, scan, refs, order, bases, set: what edits a build.

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class EditingCommands : public testing::Test {
 protected:
  HostCommand command;
};

TEST_F(EditingCommands, NewMakesTheDataFolderAndTheDatabase) {
  const CommandResult result = command.Run({"new", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("Made build Shop, id 1, in " + command.Data() + "/Build.mdb"));
  EXPECT_EQ(command.Run({"new", "Bank"}).status, 0);
  EXPECT_EQ(command.Run({"list"}).out, "   1  Shop\n   2  Bank\n");
}

TEST_F(EditingCommands, NewRefusesANameThatIsTakenLongOrBlank) {
  command.Run({"new", "Shop"});
  const CommandResult taken = command.Run({"new", "SHOP"});
  EXPECT_EQ(taken.status, 2);
  EXPECT_THAT(taken.err, HasSubstr("There is a build 'Shop' already, its id is 1."));
  const CommandResult tooLong = command.Run({"new", std::string(31, 'x')});
  EXPECT_EQ(tooLong.status, 2);
  EXPECT_THAT(tooLong.err, HasSubstr("at most 30 characters"));
  const CommandResult blank = command.Run({"new", "  "});
  EXPECT_EQ(blank.status, 2);
  EXPECT_THAT(blank.err, HasSubstr("Invalid name (error 45 in Build.Name)"));
  EXPECT_EQ(command.Run({"list"}).out, "   1  Shop\n");
}

TEST_F(EditingCommands, OthersSayHowToMakeADatabaseThatIsMissing) {
  for (const auto& arguments : std::vector<HostCommand::Arguments>{
           {"list"}, {"show", "Shop"}, {"build", "Shop"}, {"set", "Shop", "Lib", "CompileMe", "true"}}) {
    const CommandResult result = command.Run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("There is no build database yet: " + command.Data() + "/Build.mdb"));
    EXPECT_THAT(result.err, HasSubstr("hearthmake new NAME"));
  }
  EXPECT_FALSE(std::filesystem::exists(command.Data()));
}

TEST_F(EditingCommands, ListPrintsJson) {
  command.Run({"new", "Shop"});
  const json list = json::parse(command.Run({"list", "--json"}).out);
  EXPECT_EQ(list, json::parse(R"([{"id": 1, "name": "Shop"}])"));
}

TEST_F(EditingCommands, ABuildIsFoundByIdFirstAndThenByName) {
  command.Run({"new", "2"});
  command.Run({"new", "Other"});
  EXPECT_THAT(command.Run({"show", "2"}).out, StartsWith("Other  (id 2"));
  EXPECT_THAT(command.Run({"show", "1"}).out, StartsWith("2  (id 1"));
  EXPECT_THAT(command.Run({"show", "oTHER"}).out, StartsWith("Other  (id 2"));
  const CommandResult unknown = command.Run({"show", "Nope"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.err, HasSubstr("There is no build 'Nope'."));
  EXPECT_THAT(unknown.err, HasSubstr("2 (1), Other (2)"));
}

TEST_F(EditingCommands, ShowListsTheProjectsOfABuild) {
  command.MakeShop();
  const CommandResult result = command.Run({"show", "Shop"});
  EXPECT_THAT(result.out, HasSubstr("Lib"));
  EXPECT_THAT(result.out, HasSubstr("ActiveXDll"));
  const json shown = json::parse(command.Run({"show", "Shop", "--json"}).out);
  EXPECT_EQ(shown.at("name"), "Shop");
  ASSERT_EQ(shown.at("projects").size(), 3U);
  EXPECT_EQ(shown.at("projects")[0].at("name"), "App");
  EXPECT_EQ(shown.at("projects")[0].at("type"), "StandardExe");
}

TEST_F(EditingCommands, ShowTellsAllAboutAProject) {
  command.MakeShop();
  const CommandResult result = command.Run({"show", "Shop", "app"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("CompileMe                True\n"));
  EXPECT_THAT(result.out, HasSubstr("   1  project  Lib\n"));
  const json shown = json::parse(command.Run({"show", "Shop", "App", "--json"}).out);
  EXPECT_EQ(shown.at("CompileMe"), true);
  EXPECT_EQ(shown.at("MajorVer"), 1);
  EXPECT_EQ(shown.at("CompatibleMode"), "NoCompatibility");
  EXPECT_TRUE(shown.at("LastCompiled").is_null());
  EXPECT_EQ(shown.at("References")[0].at("project"), "Lib");
  const CommandResult unknown = command.Run({"show", "Shop", "Nope"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.err, HasSubstr("The build 'Shop' has no project 'Nope'."));
  EXPECT_THAT(unknown.err, HasSubstr("It has: App, Lib, Tool"));
}

TEST_F(EditingCommands, AddTakesProjectsAndGroupsAndDetectsReferencesToLaterOnes) {
  command.WriteProject("Lib", "OleDll");
  command.WriteProject("App", "Exe", "Reference=*\\ALib.vbp\r\n");
  command.root.MakeFile("src/All.vbg", "VBGROUP 5.0\r\nStartupProject=App.vbp\r\nProject=Lib.vbp\r\n");
  command.Run({"new", "Shop"});
  const CommandResult result = command.Run({"add", "Shop", command.Source("All.vbg")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("Added App"));
  EXPECT_THAT(result.out, HasSubstr("Shop: 2 projects, 1 reference between them."));
}

TEST_F(EditingCommands, AddTakesRelativeAndDosPaths) {
  command.WriteProject("Lib", "OleDll");
  command.WriteProject("Tool", "Exe");
  command.Run({"new", "Shop"});
  const support::CurrentFolderOverride here(command.root.Path("src"));
  EXPECT_EQ(command.Run({"add", "Shop", "./Lib.vbp"}).status, 0);
  std::string dosPath = "Z:" + command.Source("Tool.vbp");
  std::replace(dosPath.begin(), dosPath.end(), '/', '\\');
  EXPECT_EQ(command.Run({"add", "Shop", dosPath}).status, 0);
  EXPECT_THAT(command.Run({"show", "Shop"}).out, HasSubstr(dosPath));
}

TEST_F(EditingCommands, AddNamesFilesByTheDriveThatIsNearest) {
  command.WriteProject("Lib", "OleDll");
  command.Run({"new", "Shop"});
  const std::string drive = "S:=" + command.root.Path("src");
  EXPECT_THAT(command.Run({"--drive", drive, "add", "Shop", command.Source("Lib.vbp")}).out,
              HasSubstr("Added Lib  S:\\Lib.vbp"));
  EXPECT_THAT(command.Run({"--drive", drive, "refs", "Shop"}).out, HasSubstr("Lib\n"));
  // Without the drive the file is not there.
  EXPECT_EQ(command.Run({"refs", "Shop"}).status, 2);
}

TEST_F(EditingCommands, AddTellsEachFileThatItCouldNotAddAndAddsTheOthers) {
  command.MakeShop();
  command.WriteProject("More", "Exe");
  command.root.MakeFile("src/notes.txt", "no project");
  const CommandResult result =
      command.Run({"add", "Shop", command.Source("gone.vbp"), command.Source("Lib.vbp"),
                   command.Source("notes.txt"), command.Source("More.vbp")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("gone.vbp was not added: File not found"));
  EXPECT_THAT(result.err, HasSubstr("A project with the same name, Lib, is already part of this build"));
  EXPECT_THAT(result.err, HasSubstr("File is not a vbp file"));
  EXPECT_THAT(result.out, HasSubstr("Added More"));
  EXPECT_FALSE(std::filesystem::exists(command.Source("gone.vbp")));
}

TEST_F(EditingCommands, RemoveRefusesWhatOthersReferenceAndNamesThem) {
  command.MakeShop();
  const CommandResult refused = command.Run({"remove", "Shop", "Lib", "Tool"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("Lib can't be removed, these reference it: App."));
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out).at("projects").size(), 3U);
  EXPECT_EQ(command.Run({"remove", "Shop", "Lib", "App"}).status, 0);
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out).at("projects").size(), 1U);
}

TEST_F(EditingCommands, DeleteRemovesABuildWhateverItsReferences) {
  command.MakeShop();
  command.WriteProject("A", "OleDll", "Reference=*\\AC.vbp\r\n");
  command.WriteProject("B", "OleDll", "Reference=*\\AA.vbp\r\n");
  command.WriteProject("C", "OleDll", "Reference=*\\AB.vbp\r\n");
  command.Run({"add", "Shop", command.Source("A.vbp"), command.Source("B.vbp"), command.Source("C.vbp")});
  EXPECT_EQ(command.Run({"order", "Shop"}).status, 1);
  const CommandResult result = command.Run({"delete", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Run({"list"}).out, HasSubstr("No builds yet"));
  EXPECT_TRUE(std::filesystem::exists(command.Source("Lib.vbp")));
}

TEST_F(EditingCommands, DeleteLeavesABuildThatIsRunning) {
  command.MakeShop();
  command.SleepOn("Lib");
  const pid_t process = command.Start({"build", "Shop"});
  ASSERT_GT(command.WaitForSleeper(), 0);
  const CommandResult refused = command.Run({"delete", "Shop"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("Another process is running the build 'Shop'"));
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out).at("projects").size(), 3U);
  kill(process, SIGINT);
  EXPECT_EQ(command.Finish(process).status, 3);
  // What the stopped run has left goes with the build.
  EXPECT_TRUE(std::filesystem::exists(command.Data() + "/run-1.json"));
  EXPECT_EQ(command.Run({"delete", "Shop"}).status, 0);
  EXPECT_FALSE(std::filesystem::exists(command.Data() + "/run-1.json"));
}

TEST_F(EditingCommands, ScanAddsTheProjectsBelowAFolder) {
  command.WriteProject("Core", "OleDll");
  command.WriteProject("MyTest", "Exe");
  command.WriteProject("deep/Project1", "Exe");
  command.Run({"new", "Shop"});
  const CommandResult result = command.Run({"scan", "Shop", command.root.Path("src")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("Shop: 1 added; 1 project"));
  EXPECT_THAT(command.Run({"scan", "Shop", command.root.Path("src"), "--tests"}).out, HasSubstr("2 added"));
  const CommandResult missing = command.Run({"scan", "Shop", command.root.Path("nowhere")});
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.err, HasSubstr("There is no folder " + command.root.Path("nowhere")));
}

TEST_F(EditingCommands, RefsDetectsAndLists) {
  command.MakeShop();
  command.WriteProject("Tool", "Exe", "Reference=*\\ALib.vbp\r\n");
  const json detected = json::parse(command.Run({"refs", "Shop", "--json"}).out);
  ASSERT_EQ(detected.size(), 3U);
  EXPECT_EQ(detected[2].at("project"), "Tool");
  EXPECT_EQ(detected[2].at("references")[0].at("project"), "Lib");
  command.WriteProject("Tool", "Exe");
  EXPECT_EQ(command.Run({"refs", "Shop", "Tool"}).out, "Tool\n      none\n");
}

TEST_F(EditingCommands, RefsAddsAndDropsByHand) {
  command.MakeShop();
  EXPECT_EQ(command.Run({"refs", "Shop", "--add", "Tool", "Lib"}).out, "Tool\n   1  project  Lib\n");
  const std::string row =
      "Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation";
  const CommandResult added = command.Run({"refs", "Shop", "--add", "Tool", row});
  EXPECT_EQ(added.out, "Tool\n   1  project  Lib\n   2  library  OLE Automation, stdole2.tlb 2.0\n");
  std::filesystem::copy_file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/Bare.tlb",
                             command.Source("Bare.tlb"));
  const CommandResult file = command.Run({"refs", "Shop", "--add", "Tool", command.Source("Bare.tlb")});
  EXPECT_EQ(file.status, 0) << file.err;
  EXPECT_THAT(file.out, HasSubstr("Bare.tlb"));
  const CommandResult dropped = command.Run({"refs", "Shop", "--drop", "Tool", "1", "--drop", "Tool", "3"});
  EXPECT_EQ(dropped.out, "Tool\n   1  library  OLE Automation, stdole2.tlb 2.0\n");
}

TEST_F(EditingCommands, RefsRefusesWhatCantBeAndChangesNothing) {
  command.MakeShop();
  const CommandResult self = command.Run({"refs", "Shop", "--add", "Lib", "Lib"});
  EXPECT_EQ(self.status, 2);
  EXPECT_THAT(self.err, HasSubstr("Project can't reference it self"));
  const CommandResult noLibrary = command.Run({"refs", "Shop", "--add", "Tool", command.Source("Lib.vbp")});
  EXPECT_EQ(noLibrary.status, 2);
  EXPECT_THAT(noLibrary.err, HasSubstr("This is not a valid typelibrary!"));
  const CommandResult position = command.Run({"refs", "Shop", "--drop", "App", "2"});
  EXPECT_EQ(position.status, 2);
  EXPECT_THAT(position.err, HasSubstr("App has no reference 2."));
  EXPECT_EQ(command.Run({"refs", "Shop", "App"}).out, "App\n   1  project  Lib\n");
}

TEST_F(EditingCommands, OrderPrintsLibrariesFirst) {
  command.MakeShop();
  EXPECT_EQ(command.Run({"order", "Shop"}).out, "   1  Lib\n   2  App\n   3  Tool\n");
  const json order = json::parse(command.Run({"order", "Shop", "--json"}).out);
  EXPECT_EQ(order[0].at("name"), "Lib");
}

TEST_F(EditingCommands, OrderNamesACycle) {
  command.WriteProject("A", "OleDll", "Reference=*\\AC.vbp\r\n");
  command.WriteProject("B", "OleDll", "Reference=*\\AA.vbp\r\n");
  command.WriteProject("C", "OleDll", "Reference=*\\AB.vbp\r\n");
  command.WriteProject("User", "Exe", "Reference=*\\AA.vbp\r\n");
  command.Run({"new", "Shop"});
  command.Run({"add", "Shop", command.Source("User.vbp"), command.Source("A.vbp"), command.Source("B.vbp"),
               command.Source("C.vbp")});
  const CommandResult result = command.Run({"order", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_THAT(result.err, HasSubstr("A -> C -> B -> A"));
  EXPECT_THAT(result.err, Not(HasSubstr("User")));
}

TEST_F(EditingCommands, BasesGivesAddressesInCompileOrderAndKeepsTheStart) {
  command.WriteProject("Up", "OleDll", "Reference=*\\ADown.vbp\r\n");
  command.WriteProject("Down", "OleDll");
  command.root.MakeFile("src/Down.dll", std::string(70000, 'x'));
  command.Run({"new", "Shop"});
  command.Run({"add", "Shop", command.Source("Up.vbp"), command.Source("Down.vbp")});
  EXPECT_EQ(command.Run({"bases", "Shop"}).out, "&H11000000   Down\n&H11020000   Up\n");
  EXPECT_EQ(command.Run({"bases", "Shop", "0x20000000"}).out, "&H20000000   Down\n&H20020000   Up\n");
  EXPECT_EQ(command.Run({"bases", "Shop"}).out, "&H20000000   Down\n&H20020000   Up\n");
  EXPECT_EQ(command.Run({"bases", "Shop", "285212672"}).out, "&H11000000   Down\n&H11020000   Up\n");
  const CommandResult odd = command.Run({"bases", "Shop", "&H11000001"});
  EXPECT_EQ(odd.status, 2);
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out).at("startDllBaseAddress"), 285212672);
  EXPECT_EQ(command.Run({"bases", "Shop", "somewhere"}).status, 2);
}

TEST_F(EditingCommands, SetTakesValuesAsPeopleTypeThem) {
  command.MakeShop();
  const auto set = [&](const std::string& property, const std::string& value) {
    const CommandResult result = command.Run({"set", "Shop", "Lib", property, value});
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  };
  EXPECT_EQ(set("compileme", "no"), "Lib.CompileMe = False\n");
  EXPECT_EQ(set("CompatibleMode", "binarycompatibility"), "Lib.CompatibleMode = BinaryCompatibility\n");
  EXPECT_EQ(set("CompilationType", "-1"), "Lib.CompilationType = PCode\n");
  EXPECT_EQ(set("MajorVer", "12"), "Lib.MajorVer = 12\n");
  EXPECT_EQ(set("DllBaseAddress", "0x12340000"), "Lib.DllBaseAddress = &H12340000\n");
  EXPECT_EQ(set("Title", "A \"title\""), "Lib.Title = A \"title\"\n");
  EXPECT_EQ(set("Path32", "../bin"), "Lib.Path32 = ..\\bin\n");
  const json shown = json::parse(command.Run({"show", "Shop", "Lib", "--json"}).out);
  EXPECT_EQ(shown.at("CompileMe"), false);
  EXPECT_EQ(shown.at("MajorVer"), 12);
  EXPECT_EQ(shown.at("CompatibleMode"), "BinaryCompatibility");
}

TEST_F(EditingCommands, SetRefusesWrongNamesAndValues) {
  command.MakeShop();
  const auto refused = [&](const std::string& property, const std::string& value) {
    const CommandResult result = command.Run({"set", "Shop", "Lib", property, value});
    EXPECT_EQ(result.status, 2);
    return result.err;
  };
  EXPECT_THAT(refused("Colour", "red"),
              HasSubstr("There is no property 'Colour'.\nThese can be set: ProjectPath, "));
  EXPECT_THAT(refused("ProjectType", "1"), HasSubstr("ProjectType can be read only."));
  EXPECT_THAT(refused("CompileMe", "maybe"), HasSubstr("true or false"));
  EXPECT_THAT(refused("CompatibleMode", "7"),
              HasSubstr("NoCompatibility (0), ProjectCompatibility (1), BinaryCompatibility (2)"));
  EXPECT_THAT(refused("MajorVer", "ten"), HasSubstr("'ten' is no number for MajorVer."));
  EXPECT_THAT(refused("MajorVer", "10000"), HasSubstr("Version number must be in range 0 to 9999"));
  EXPECT_THAT(refused("MajorVer", "70000"), HasSubstr("Overflow"));
  EXPECT_THAT(refused("MajorVer", "99999999999"), HasSubstr("is no number"));
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "Lib", "--json"}).out).at("MajorVer"), 1);
}

TEST_F(EditingCommands, TwoProcessesEditOneDatabase) {
  command.MakeShop();
  std::vector<pid_t> children;
  for (int i = 1; i <= 12; ++i) {
    for (const char* project : {"Lib", "App", "Tool"}) {
      children.push_back(command.Start({"set", "Shop", project, "RevisionVer", std::to_string(i)}));
    }
    for (const pid_t child : children) EXPECT_EQ(command.Finish(child).status, 0);
    children.clear();
  }
  for (const char* project : {"Lib", "App", "Tool"}) {
    EXPECT_EQ(json::parse(command.Run({"show", "Shop", project, "--json"}).out).at("RevisionVer"), 12);
  }
}

TEST_F(EditingCommands, TwoProcessesMakeTheDatabaseAtOnce) {
  std::vector<pid_t> children;
  for (int i = 0; i < 8; ++i) children.push_back(command.Start({"new", "Build" + std::to_string(i)}));
  for (const pid_t child : children) EXPECT_EQ(command.Finish(child).status, 0);
  EXPECT_EQ(json::parse(command.Run({"list", "--json"}).out).size(), 8U);
}

}  // namespace
}  // namespace hearthmake::host
