#include "host/display/JsonEvent.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "support/HostCommand.hpp"
#include "support/HostRepository.hpp"
#include "support/JsonSchema.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using support::JsonSchema;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

// What the command prints with --json, each line checked by docs/events.schema.json.
class JsonEventTest : public testing::Test {
 protected:
  JsonEventTest() : schema(SOURCE_DIRECTORY "/docs/events.schema.json") { command.MakeShop(); }

  // The names of the events that are printed.
  std::vector<std::string> Heard(const HostCommand::Arguments& arguments) {
    return Checked(command.Run(arguments));
  }
  std::vector<std::string> Checked(const CommandResult& result) {
    std::vector<std::string> names;
    for (const std::string& line : support::LinesOf(result.out)) {
      const json event = json::parse(line);
      EXPECT_EQ(schema.Check(event), "") << line;
      EXPECT_EQ(event.contains("format"), names.empty()) << line;
      names.push_back(event.at("event"));
      last = event;
    }
    EXPECT_FALSE(names.empty()) << result.err;
    return names;
  }
  void SetScript(const char* event, const std::string& text) {
    command.root.MakeFile("script.vbs", text);
    command.Run({"settings", "RunScripts", "true"});
    ASSERT_EQ(command.Run({"scripts", "Shop", event, "--set", command.root.Path("script.vbs")}).status, 0);
  }

  HostCommand command;
  JsonSchema schema;
  json last;
};

TEST_F(JsonEventTest, ARunThatCompletes) {
  SetScript("BeforeProjectComplie", "Scripts.Notify \"so far\", 50");
  const auto names = Heard({"build", "Shop", "--json"});
  for (const char* name :
       {"BuildStart", "MTSEvent", "WillCompile", "ScriptNotify", "ProjectCompiled", "BuildComplete"}) {
    EXPECT_THAT(names, Contains(name));
  }
  EXPECT_EQ(names.front(), "BuildStart");
}

TEST_F(JsonEventTest, ARunThatFails) {
  command.FailOn("App");
  EXPECT_EQ(Heard({"build", "Shop", "--json"}).back(), "BuildFaild");
  EXPECT_EQ(last.at("project"), "App");
}

TEST_F(JsonEventTest, ARunThatKeepsGoing) {
  command.FailOn("Lib");
  const auto names = Heard({"build", "Shop", "--json", "--keep-going"});
  EXPECT_THAT(names, Contains("BuildFaild"));
  EXPECT_EQ(names.back(), "Summary");
  EXPECT_EQ(last.at("leftOut").size(), 1U);
}

TEST_F(JsonEventTest, ARunOfWhatChanged) {
  Heard({"build", "Shop", "--json", "--only", "Tool"});
  command.FailOn("App");
  Heard({"build", "Shop", "--json", "--changed"});
  Heard({"build", "Shop", "--json", "--resume"});
  command.BehaveWell();
  Heard({"build", "Shop", "--json", "--changed"});
  Heard({"build", "Shop", "--json", "--changed"});
}

TEST_F(JsonEventTest, ARehearsal) {
  command.WriteProject("App", "Exe", "Reference=*\\ALib.vbp\r\nClass=Till; Till.cls\r\n");
  const auto names = Heard({"build", "Shop", "--json", "--dry-run"});
  EXPECT_EQ(names.front(), "DryRun");
  EXPECT_EQ(names.back(), "WouldCompile");
  std::filesystem::remove(command.Source("Tool.vbp"));
  Heard({"build", "Shop", "--json", "--dry-run", "--changed"});
  EXPECT_TRUE(last.contains("problem"));
}

TEST_F(JsonEventTest, ARunWhoseScriptFails) {
  SetScript("BeforeComplie", "Err.Raise 1, \"x\", \"Not today\"");
  EXPECT_EQ(Heard({"build", "Shop", "--json"}).back(), "BuildFaild");
  EXPECT_EQ(last.at("project"), nullptr);
  EXPECT_EQ(last.at("script").at("line"), 1);
  command.Run({"settings", "IgnoreScriptError", "true"});
  EXPECT_THAT(Heard({"build", "Shop", "--json"}), Contains("Error"));
}

TEST_F(JsonEventTest, ARunThatIsCancelled) {
  command.SleepOn("App");
  const pid_t process = command.Start({"build", "Shop", "--json"});
  ASSERT_GT(command.WaitForSleeper(), 0);
  kill(process, SIGINT);
  EXPECT_EQ(Checked(command.Finish(process)).back(), "BuildFaild");
  EXPECT_EQ(last.at("cancelled"), true);
}

TEST_F(JsonEventTest, ARunThatIsCancelledBetweenTwoProjects) {
  // The signal comes while a script waits, and is heard of before the next project.
  SetScript("AfterProjectCompile", "CreateObject(\"Scripting.FileSystemObject\").CreateTextFile(\"Z:" +
                                       command.root.Path("sleeper") +
                                       "\").WriteLine 1\r\nt = Timer\r\nDo Until Timer > t + 2\r\nLoop\r\n");
  command.Run({"settings", "IgnoreScriptError", "true"});
  const pid_t process = command.Start({"build", "Shop", "--json"});
  ASSERT_EQ(command.WaitForSleeper(), 1);
  kill(process, SIGINT);
  EXPECT_THAT(Checked(command.Finish(process)), Contains("BuildCancled"));
}

TEST_F(JsonEventTest, ADeployment) {
  std::filesystem::copy_file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/Shapes.tlb",
                             command.Source("Lib.dll"));
  command.Run({"packages", "Shop", "add", "Orders"});
  command.Run({"packages", "Shop", "assign", "Orders", "Lib"});
  for (const bool isMts : {false, true}) {
    HostCommand::Arguments arguments = {"deploy", "Shop", "--json"};
    if (isMts) arguments.emplace_back("--mts");
    const auto names = Heard(arguments);
    EXPECT_EQ(names.front(), "DeployStart");
    EXPECT_THAT(names, Contains("MTSEvent"));
    EXPECT_EQ(names.back(), "DeployComplete");
  }
  SetScript("AfterMTSpackage", "Scripts.Notify \"so far\", 50\r\nErr.Raise 1, \"x\", \"Not today\"");
  EXPECT_THAT(Heard({"deploy", "Shop", "--json"}), Contains("ScriptNotify"));
  command.Run({"settings", "IgnoreScriptError", "true"});
  Heard({"deploy", "Shop", "--json"});
  std::filesystem::remove(command.Source("Lib.dll"));
  EXPECT_EQ(Heard({"deploy", "Shop", "--json"}).back(), "DeployFailed");
}

TEST_F(JsonEventTest, SourcesThatAreGot) {
  if (!support::HostRepository::HasGit()) GTEST_SKIP() << "git is not installed";
  const support::HostRepository repository(command);
  ASSERT_EQ(command
                .Run({"sourceprojects", "Shop", "add", "$/Suite", "--ini", repository.Ini(), "--user", "Bob",
                      "--folder", command.root.Path("src"), "--flags", "recursive,keep"})
                .status,
            0);
  command.root.MakeFile("src/readme.txt", "mine\n");
  Heard({"sources", "Shop", "--json"});
  EXPECT_EQ(last.at("got"), false);
  std::filesystem::remove(command.Source("readme.txt"));
  EXPECT_THAT(Heard({"sources", "Shop", "--json"}), testing::ElementsAre("GettingLatestVersion", "File"));
  EXPECT_EQ(last.at("got"), true);
  EXPECT_THAT(Heard({"build", "Shop", "--json", "--sources"}), Contains("BuildComplete"));
}

// The tests above print each of them.
TEST_F(JsonEventTest, TheSchemaDescribesEveryEventOnce) {
  std::set<std::string> described;
  for (const json& one : schema.Root().at("oneOf")) described.insert(one.at("$ref").get<std::string>());
  EXPECT_EQ(described.size(), schema.Root().at("oneOf").size());
  EXPECT_EQ(described.size(), 17U);
  EXPECT_THAT(schema.Check({{"event", "BuildStart"}}), Not(testing::IsEmpty()));
  EXPECT_THAT(schema.Check({{"event", "Nothing"}, {"time", "2001-03-24T13:05:00.000Z"}}),
              HasSubstr("one of 0"));
}

}  // namespace
}  // namespace hearthmake::host
