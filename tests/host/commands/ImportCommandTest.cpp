#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"
#include "support/JetFileWriter.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using support::CommandResult;
using support::HostCommand;
using support::JetFileWriter;
using support::SmallBuilds;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ImportCommandTest : public testing::Test {
 protected:
  std::string MakeJet(int version = 4) {
    return command.root.MakeFile("old.mdb", SmallBuilds(version).Write());
  }
  std::string FileOf(const std::string& name) { return command.root.Path(name); }
  std::string Exported(const HostCommand::Arguments& words, const std::string& data = "data") {
    HostCommand::Arguments all = {"--data", FileOf(data), "export"};
    all.insert(all.end(), words.begin(), words.end());
    const CommandResult result = command.RunBare(all);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  }
  void ExpectRefused(const HostCommand::Arguments& arguments, const std::vector<std::string>& texts) {
    const CommandResult result = command.Run(arguments);
    EXPECT_EQ(result.status, 2) << result.out;
    for (const std::string& text : texts) EXPECT_THAT(result.err, HasSubstr(text));
  }
  // A build with a project of each kind, a package, a source project and scripts.
  void MakeRichBuild() {
    command.MakeShop();
    command.WriteProject("Regler", "Control",
                         "Title=\"Gr\xF6\xDF"
                         "e & S\xF6hne\"\r\n");
    command.WriteProject("Dienst", "OleExe", "Reference=*\\ALib.vbp\r\n");
    command.Run({"add", "Shop", command.Source("Regler.vbp"), command.Source("Dienst.vbp")});
    command.Run({"refs", "Shop", "--add", "Tool",
                 "Reference=*\\G{00000205-0000-0010-8000-00AA006D2EA4}#2.5#0#C:\\a b\\c d.tlb#x"});
    command.standardInput = command.root.MakeFile("secret", "geheim\n");
    command.Run({"packages", "Shop", "add", "Bestellung", "--User", "Bob", "--password-stdin"});
    command.Run({"sourceprojects", "Shop", "add", "$/Laden", "--ini", FileOf("srcsafe.ini"), "--user", "Ann",
                 "--password-stdin"});
    command.standardInput = "/dev/null";
    command.Run({"packages", "Shop", "assign", "Bestellung", "Lib"});
    std::string script;
    while (script.size() < 200'000) script += "' Zeile über viele Seiten, 20 €\r\n";
    command.Run({"scripts", "Shop", "BuildFailed", "--set",
                 command.root.MakeFile("long.vbs", "\xEF\xBB\xBF" + script)});
    command.Run({"scripts", "Shop", "AfterMTSpackage", "--set",
                 command.root.MakeFile("short.vbs", "a = 1\nb = 2\n")});
    command.Run(
        {"scripts", "Shop", "AfterProjectCompile", "--set", command.root.MakeFile("one.vbs", "c = 3")});
  }

  HostCommand command;
};

TEST_F(ImportCommandTest, MakesADatabaseOfAJetFile) {
  for (const int version : {3, 4}) {
    const CommandResult result = command.Run({"import", MakeJet(version)});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(
        result.out,
        HasSubstr("Imported " + FileOf("old.mdb") + " (Jet " + std::to_string(version) + ") into " +
                  command.Data() +
                  "/Build.mdb\n       2  Build\n       3  Project\n       2  Scripts\n"
                  "Builds\n       4  Büro\n       7  Laden – €\nNot in the file, left empty: Build.St"));
    EXPECT_EQ(command.Run({"list"}).out, "   4  Büro\n   7  Laden – €\n");
    EXPECT_THAT(command.Run({"show", "4"}).out,
                AllOf(HasSubstr("11  Kern"), HasSubstr("C:\\Büro\\Rest.vbp")));
    EXPECT_EQ(command.Run({"scripts", "4", "BeforeSourceSafe"}).out, "' kurz");
    fs::remove_all(command.Data());
  }
}

TEST_F(ImportCommandTest, GivesNewRowsIdsBehindTheImportedOnes) {
  command.Run({"import", MakeJet()});
  EXPECT_THAT(command.Run({"new", "Neu"}).out, HasSubstr("id 8"));
}

TEST_F(ImportCommandTest, PutsTheDatabaseWhereItIsTold) {
  EXPECT_EQ(command.Run({"import", MakeJet(), "--into", FileOf("a/b")}).status, 0);
  EXPECT_FALSE(fs::exists(command.Data() + "/Build.mdb"));
  EXPECT_THAT(command.RunBare({"--data", FileOf("a/b"), "list"}).out, HasSubstr("Büro"));
}

TEST_F(ImportCommandTest, ReplacesADatabaseOnlyWhenItIsTold) {
  command.Run({"new", "Shop"});
  command.root.MakeFile("data/run-4.json", "{}");
  ExpectRefused({"import", MakeJet()}, {"There is a database already", "--replace", "--into"});
  EXPECT_THAT(command.Run({"list"}).out, HasSubstr("Shop"));
  EXPECT_EQ(command.Run({"import", MakeJet(), "--replace"}).status, 0);
  EXPECT_THAT(command.Run({"list"}).out, AllOf(HasSubstr("Büro"), Not(HasSubstr("Shop"))));
  EXPECT_FALSE(fs::exists(FileOf("data/run-4.json")));  // of a build that is gone
}

TEST_F(ImportCommandTest, DoesNotReplaceTheFileThatItReads) {
  command.root.MakeFile("data/Build.mdb", SmallBuilds(4).Write());
  ExpectRefused({"import", FileOf("data/Build.mdb"), "--replace"}, {"would take its own place"});
  EXPECT_EQ(command.root.Content("data/Build.mdb"), SmallBuilds(4).Write());
}

TEST_F(ImportCommandTest, LeavesNothingOfWhatItRefuses) {
  JetFileWriter locked = SmallBuilds(4);
  locked.password = "x";
  const std::vector<std::pair<std::string, std::string>> files = {
      {command.root.MakeFile("text.mdb", "hello"), "It is no Jet database"},
      {command.root.MakeFile("empty.mdb", ""), "It is empty"},
      {command.root.MakeFile("locked.mdb", locked.Write()), "The database has a password"},
      {command.root.MakeFile("cut.mdb", SmallBuilds(4).Write().substr(0, 20000)), "The database is damaged"},
      {FileOf("missing.mdb"), "There is no file"},
      {command.root.MakeFolder("folder.mdb"), "It is not a file"}};
  for (const auto& [file, why] : files) {
    ExpectRefused({"import", file}, {why});
    EXPECT_FALSE(fs::exists(command.Data())) << file;
  }
}

TEST_F(ImportCommandTest, TellsADatabaseOfItsOwn) {
  command.Run({"new", "Shop"});
  ExpectRefused({"import", command.Data() + "/Build.mdb", "--into", FileOf("other")},
                {"is a build database of this command already"});
}

TEST_F(ImportCommandTest, GivesAJetDatabaseNoOtherName) {
  ExpectRefused({"import", MakeJet(), "--name", "x"}, {"--name is for an exported build"});
}

TEST_F(ImportCommandTest, IsEndedByASignalWithoutATrace) {
  const int pipe = mkfifo(FileOf("slow.json").c_str(), 0600);
  ASSERT_EQ(pipe, 0);
  const pid_t child = command.Start({"import", FileOf("slow.json")});
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  kill(child, SIGINT);
  EXPECT_EQ(command.Finish(child).status, 3);
  EXPECT_FALSE(fs::exists(command.Data() + "/Build.mdb"));
}

TEST_F(ImportCommandTest, BringsAnExportedBuildBackByteByByte) {
  MakeRichBuild();
  for (const HostCommand::Arguments& words : {HostCommand::Arguments{"Shop"}, {"Shop", "--passwords"}}) {
    const std::string text = Exported(words);
    const CommandResult result =
        command.Run({"import", command.root.MakeFile("shop.json", text), "--into", FileOf("other")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Imported build Shop, id 1: 5 projects, 1 package, 1 source project"));
    EXPECT_EQ(Exported(words, "other"), text);
    fs::remove_all(FileOf("other"));
  }
}

TEST_F(ImportCommandTest, ExportsAllThatIsStored) {
  MakeRichBuild();
  auto json = ordered_json::parse(Exported({"Shop"}));
  ASSERT_EQ(json["projects"].size(), 5U);
  EXPECT_EQ(json["projects"].at(0)["references"].dump(), R"(["Lib"])");
  EXPECT_EQ(json["projects"].at(1)["package"], "Bestellung");
  EXPECT_EQ(json["projects"].at(3)["Title"], "\"Größe & Söhne\"");
  EXPECT_EQ(json["projects"].at(2)["externalReferences"].at(0)["Path"], "C:\\a b\\c d.tlb");
  EXPECT_GT(json["scripts"]["BuildFailed"].size(), 5000U);
  EXPECT_EQ(json["scripts"]["AfterMTS"]["lines"].at(1), "b = 2");
  EXPECT_THAT(json.dump(), Not(HasSubstr("geheim")));
  auto open = ordered_json::parse(Exported({"Shop", "--passwords"}));
  EXPECT_EQ(open["packages"].at(0)["Password"], "geheim");
  EXPECT_EQ(open["sourceProjects"].at(0)["Password"], "geheim");
}

TEST_F(ImportCommandTest, WritesAFileThatOthersCantReadWherePasswordsAreInIt) {
  MakeRichBuild();
  EXPECT_EQ(command.Run({"export", "Shop", FileOf("plain.json")}).status, 0);
  EXPECT_EQ(command.Run({"export", "Shop", FileOf("open.json"), "--passwords"}).status, 0);
  EXPECT_EQ(command.root.Content("plain.json"), Exported({"Shop"}));
  EXPECT_EQ(command.root.Content("open.json"), Exported({"Shop", "--passwords"}));
  EXPECT_EQ(command.root.Mode("open.json"), 0600U);
}

TEST_F(ImportCommandTest, TakesABuildOfANameThatIsTakenOnlyUnderAnotherOrInItsPlace) {
  MakeRichBuild();
  const std::string text = Exported({"Shop"});
  const std::string file = command.root.MakeFile("shop.json", text);
  ExpectRefused({"import", file},
                {"There is a build 'Shop' already, its id is 1", "--name NAME", "--replace"});
  EXPECT_EQ(command.Run({"import", file, "--name", "Zwei"}).status, 0);
  EXPECT_EQ(command.Run({"list"}).out, "   1  Shop\n   2  Zwei\n");
  command.Run({"remove", "Shop", "Tool"});
  command.Run({"packages", "Shop", "add", "Mehr"});
  command.root.MakeFile("data/run-1.json", "{}");
  EXPECT_THAT(command.Run({"import", file, "--replace"}).out, HasSubstr("Replaced build Shop, id 1:"));
  EXPECT_EQ(Exported({"Shop"}), text);
  EXPECT_FALSE(fs::exists(FileOf("data/run-1.json")));
  EXPECT_THAT(Exported({"Zwei"}), HasSubstr("\"Name\": \"Zwei\""));
}

TEST_F(ImportCommandTest, DoesNotTakeThePlaceOfABuildThatIsRunning) {
  MakeRichBuild();
  const std::string before = Exported({"Shop"});
  const std::string file = command.root.MakeFile("shop.json", before);
  command.SleepOn("Lib");
  const pid_t process = command.Start({"build", "Shop"});
  ASSERT_GT(command.WaitForSleeper(), 0);
  ExpectRefused({"import", file, "--replace"}, {"Another process is running the build 'Shop'",
                                                "Wait until it has ended. Nothing was written."});
  EXPECT_EQ(Exported({"Shop"}), before);
  EXPECT_EQ(command.Run({"import", file, "--name", "Zwei"}).status, 0);
  kill(process, SIGINT);
  EXPECT_EQ(command.Finish(process).status, 3);
  EXPECT_EQ(command.Run({"import", file, "--replace"}).status, 0);
  EXPECT_THAT(command.Run({"build", "Shop", "--resume", "--dry-run"}).err,
              HasSubstr("There is no stopped run"));
}

TEST_F(ImportCommandTest, RefusesNamesThatNoBuildHas) {
  MakeRichBuild();
  const std::string file = command.root.MakeFile("shop.json", Exported({"Shop"}));
  ExpectRefused({"import", file, "--name", " "}, {"is no name of a build"});
  ExpectRefused({"import", file, "--name", std::string(31, 'x')}, {"1 to 30 characters"});
}

TEST_F(ImportCommandTest, WorksOnWithAnImportedBuild) {
  MakeRichBuild();
  command.Run({"import", command.root.MakeFile("shop.json", Exported({"Shop"})), "--into", FileOf("other")});
  const CommandResult order = command.RunBare({"--data", FileOf("other"), "order", "Shop"});
  EXPECT_EQ(order.status, 0) << order.err;
  EXPECT_LT(order.out.find("Lib"), order.out.find("App"));
}

TEST_F(ImportCommandTest, SaysWhereAnExportedBuildIsWrong) {
  MakeRichBuild();
  const std::string text = Exported({"Shop"});
  const std::string before = Exported({"Shop"});
  ExpectRefused({"import", command.root.MakeFile("cut.json", text.substr(0, text.size() / 2)), "--name", "x"},
                {"cut.json can't be imported, line ", "cut off", "Nothing was written"});
  ExpectRefused({"import", command.root.MakeFile("foreign.json", "{\"a\": 1}")},
                {"line 1: this is no exported build"});
  ExpectRefused({"import", FileOf("missing.json")}, {"missing.json"});
  EXPECT_EQ(command.Run({"list"}).out, "   1  Shop\n");
  EXPECT_EQ(Exported({"Shop"}), before);
}

TEST_F(ImportCommandTest, TakesAFileByWhatItBeginsWith) {
  MakeRichBuild();
  const std::string file = command.root.MakeFile("shop.txt", "\n " + Exported({"Shop"}));
  EXPECT_EQ(command.Run({"import", file, "--name", "Zwei"}).status, 0);
}

}  // namespace
}  // namespace hearthmake::host
