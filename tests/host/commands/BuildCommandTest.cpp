#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class BuildCommandTest : public testing::Test {
 protected:
  BuildCommandTest() { command.MakeShop(); }

  bool HasJournal() const { return std::filesystem::exists(command.Data() + "/run-1.json"); }

  HostCommand command;
};

TEST_F(BuildCommandTest, CompilesEveryProjectAfterThoseItReferences) {
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool"));
  EXPECT_THAT(result.out, HasSubstr("[1/3] Compiling Lib\n[2/3] Compiling App\n[3/3] Compiling Tool\n"));
  EXPECT_THAT(result.out, HasSubstr("Done. Shop: 3 of 3 projects compiled"));
  EXPECT_EQ(result.err, "");
  EXPECT_FALSE(HasJournal());
  EXPECT_TRUE(command.LeftNoTemporaryFiles());
}

TEST_F(BuildCommandTest, TellsAFailureInTheCompilersOwnWords) {
  command.FailOn("App");
  const CommandResult result = command.Run({"build", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib"));
  EXPECT_THAT(result.err, HasSubstr("FAILED: App (" + command.Source("App.vbp") +
                                    ")\n"
                                    "Compile Error in File 'App.cls', Line 12 : Variable not defined\n"
                                    "Build of 'App' failed.\n"));
  EXPECT_THAT(result.err, HasSubstr("Build failed: Shop at App, 1 of 3 projects compiled"));
  EXPECT_THAT(result.err, HasSubstr("hearthmake build 'Shop' --resume"));
}

TEST_F(BuildCommandTest, ResumesInANewProcessWhereTheLastOneStopped) {
  command.FailOn("App");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.BehaveWell();
  command.ForgetCompiled();
  const CommandResult result = command.Run({"build", "Shop", "--resume"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
  EXPECT_THAT(result.out, HasSubstr("Going on with Shop: 1 compiled already."));
  EXPECT_THAT(result.out, HasSubstr("[2/2] Compiling Tool"));
  EXPECT_FALSE(HasJournal());
  // What was left out of the run is still to be compiled by the next one.
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool"));
}

TEST_F(BuildCommandTest, AResumedRunThatFailsCanBeResumedAgain) {
  command.FailOn("App");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.FailOn("Tool");
  ASSERT_EQ(command.Run({"build", "Shop", "--resume"}).status, 1);
  command.BehaveWell();
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("Tool"));
}

TEST_F(BuildCommandTest, AFreshRunForgetsTheLastOne) {
  command.FailOn("Tool");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.FailOn("Lib");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.BehaveWell();
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool"));
}

TEST_F(BuildCommandTest, CompilesAllWhenThereIsNothingToResume) {
  const CommandResult result = command.Run({"build", "Shop", "--resume"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, HasSubstr("no stopped run to go on with"));
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool"));
}

TEST_F(BuildCommandTest, CompilesAllWhenTheProjectsHaveChangedSinceTheStoppedRun) {
  command.FailOn("Tool");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.BehaveWell();
  command.ForgetCompiled();
  command.WriteProject("Extra", "Exe");
  ASSERT_EQ(command.Run({"add", "Shop", command.Source("Extra.vbp")}).status, 0);
  const CommandResult result = command.Run({"build", "Shop", "--resume"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, HasSubstr("projects have changed"));
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool", "Extra"));
}

TEST_F(BuildCommandTest, LeavesOutWhatIsNotToBeCompiled) {
  ASSERT_EQ(command.Run({"set", "Shop", "Tool", "CompileMe", "false"}).status, 0);
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App"));
  EXPECT_THAT(result.out, HasSubstr("2 of 2 projects compiled"));
}

std::vector<json> Events(const std::string& text) {
  std::vector<json> events;
  for (const std::string& line : support::LinesOf(text)) events.push_back(json::parse(line));
  return events;
}

std::vector<std::string> NamesOf(const std::vector<json>& events) {
  std::vector<std::string> names;
  for (const json& event : events) {
    if (event.at("event") != "MTSEvent") names.push_back(event.at("event"));
    EXPECT_EQ(event.at("time").get<std::string>().size(), std::string("2001-03-24T13:05:00.000Z").size());
  }
  return names;
}

TEST_F(BuildCommandTest, WritesEachEventAsALineOfJson) {
  command.FailOn("App");
  const CommandResult result = command.Run({"build", "Shop", "--json"});
  EXPECT_EQ(result.status, 1);
  const std::vector<json> events = Events(result.out);
  EXPECT_THAT(NamesOf(events),
              ElementsAre("BuildStart", "WillCompile", "ProjectCompiled", "WillCompile", "BuildFaild"));
  EXPECT_EQ(events.front().at("build"), "Shop");
  EXPECT_EQ(events.front().at("resume"), false);
  const json& failure = events.back();
  EXPECT_EQ(failure.at("project"), "App");
  EXPECT_EQ(failure.at("compileError"), true);
  EXPECT_EQ(failure.at("cancelled"), false);
  EXPECT_THAT(failure.at("message").get<std::string>(), HasSubstr("Line 12 : Variable not defined"));
  command.BehaveWell();
  const CommandResult resumed = command.Run({"build", "Shop", "--resume", "--json"});
  EXPECT_EQ(resumed.status, 0);
  EXPECT_THAT(NamesOf(Events(resumed.out)), ElementsAre("BuildStart", "WillCompile", "ProjectCompiled",
                                                        "WillCompile", "ProjectCompiled", "BuildComplete"));
}

TEST_F(BuildCommandTest, NamesAMissingOutputFolderAndHowToMakeIt) {
  ASSERT_EQ(command.Run({"set", "Shop", "Lib", "Path32", command.root.Path("gone")}).status, 0);
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("The path to the binary component does not exist!"));
  EXPECT_THAT(result.err, HasSubstr("mkdir -p '" + command.root.Path("gone") + "'"));
}

TEST_F(BuildCommandTest, NamesAMissingProjectFile) {
  std::filesystem::remove(command.Source("Lib.vbp"));
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("The project file is missing: " + command.Source("Lib.vbp")));
}

TEST_F(BuildCommandTest, SaysHowToSetACompilerThatIsNotThere) {
  ASSERT_EQ(command.Run({"settings", "VBExe", "/nowhere/vb6.exe"}).status, 0);
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("Failed to start the following process"));
  EXPECT_THAT(result.err, HasSubstr("hearthmake settings VBExe PATH"));
}

TEST_F(BuildCommandTest, RefusesToRunWithJunkInTheSettings) {
  command.root.MakeFile("config/hearthmake/settings.ini", "[Hearthmake\\VB]\nNoSuchKey=1\n");
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("settings.ini"));
  EXPECT_THAT(result.err, HasSubstr("NoSuchKey"));
  EXPECT_THAT(command.Compiled(), ElementsAre());
}

TEST_F(BuildCommandTest, NamesACycleOfReferencesAndCompilesNothing) {
  command.WriteProject("A", "OleDll", "Reference=*\\AC.vbp\r\n");
  command.WriteProject("B", "OleDll", "Reference=*\\AA.vbp\r\n");
  command.WriteProject("C", "OleDll", "Reference=*\\AB.vbp\r\n");
  command.Run({"add", "Shop", command.Source("A.vbp"), command.Source("B.vbp"), command.Source("C.vbp")});
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("A -> C -> B -> A"));
  EXPECT_THAT(command.Compiled(), ElementsAre());
}

TEST_F(BuildCommandTest, CtrlCEndsTheCompilerAndTheRunCanBeResumed) {
  command.SleepOn("App");
  const pid_t process = command.Start({"build", "Shop"});
  const pid_t compiler = command.WaitForSleeper();
  ASSERT_GT(compiler, 0);
  kill(process, SIGINT);
  const CommandResult result = command.Finish(process);
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("Cancelled. Shop: 1 of 3 projects compiled"));
  EXPECT_THAT(result.err, Not(HasSubstr("FAILED")));
  EXPECT_TRUE(HostCommand::IsGone(compiler));
  EXPECT_TRUE(command.LeftNoTemporaryFiles());
  command.BehaveWell();
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
}

TEST_F(BuildCommandTest, CtrlCEndsAScriptThatRunsWithoutEnd) {
  command.root.MakeFile("endless.vbs", "CreateObject(\"Scripting.FileSystemObject\").CreateTextFile(\"Z:" +
                                           command.root.Path("sleeper") +
                                           "\").WriteLine 1\r\nOn Error Resume Next\r\nDo\r\nLoop\r\n");
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Shop", "BeforeComplie", "--set", command.root.Path("endless.vbs")});
  const pid_t process = command.Start({"build", "Shop"});
  ASSERT_EQ(command.WaitForSleeper(), 1) << "the script did not begin";
  kill(process, SIGINT);
  const CommandResult result = command.Finish(process);
  EXPECT_EQ(result.status, 3) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre());
}

TEST_F(BuildCommandTest, ATerminationSignalCancelsToo) {
  command.SleepOn("Lib");
  const pid_t process = command.Start({"build", "Shop", "--json"});
  const pid_t compiler = command.WaitForSleeper();
  ASSERT_GT(compiler, 0);
  kill(process, SIGTERM);
  const CommandResult result = command.Finish(process);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(Events(result.out).back().at("cancelled"), true);
  EXPECT_TRUE(HostCommand::IsGone(compiler));
}

TEST_F(BuildCommandTest, ASecondCtrlCEndsItAtOnce) {
  command.root.MakeFile("vb6", "#!/bin/sh\ntrap '' TERM INT\necho $$ > '" + command.root.Path("sleeper") +
                                   "'\nwhile :; do sleep 0.1; done\n");
  const pid_t process = command.Start({"build", "Shop"});
  const pid_t compiler = command.WaitForSleeper();
  ASSERT_GT(compiler, 0);
  kill(process, SIGINT);
  // Into the time that the compiler is given to end by itself.
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  const auto start = std::chrono::steady_clock::now();
  kill(process, SIGINT);
  EXPECT_EQ(command.Finish(process).status, 3);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  EXPECT_TRUE(HostCommand::IsGone(compiler));
  EXPECT_TRUE(command.LeftNoTemporaryFiles());
}

TEST_F(BuildCommandTest, AKilledRunLosesNothingThatCompiled) {
  command.SleepOn("App");
  const pid_t process = command.Start({"build", "Shop"});
  const pid_t compiler = command.WaitForSleeper();
  ASSERT_GT(compiler, 0);
  kill(process, SIGKILL);
  command.Finish(process);
  kill(-compiler, SIGKILL);
  command.BehaveWell();
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
}

TEST_F(BuildCommandTest, RefusesABuildThatAnotherProcessRuns) {
  command.SleepOn("Lib");
  const pid_t process = command.Start({"build", "Shop"});
  ASSERT_GT(command.WaitForSleeper(), 0);
  const CommandResult second = command.Run({"build", "Shop"});
  EXPECT_EQ(second.status, 2);
  EXPECT_THAT(second.err, HasSubstr("Another process is running this build"));
  kill(process, SIGINT);
  EXPECT_EQ(command.Finish(process).status, 3);
}

TEST_F(BuildCommandTest, DrawsOneLineOnATerminalThatFitsItsWidth) {
  if (!support::HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  const CommandResult result = command.RunOnTerminal({"build", "Shop"}, 20);
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_THAT(result.out, HasSubstr("\r[1/3] 0:00 Compilin\x1b[K"));
  EXPECT_THAT(result.out, HasSubstr("\x1b[1;32mDone.\x1b[0m"));
  const CommandResult wide = command.RunOnTerminal({"build", "Shop"}, 80);
  EXPECT_THAT(wide.out, HasSubstr("\r[2/3] 0:00 Compiling App\x1b[K"));
}

TEST_F(BuildCommandTest, ClearsTheLineBeforeAFailure) {
  if (!support::HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  command.FailOn("Lib");
  const CommandResult result = command.RunOnTerminal({"build", "Shop"}, 80);
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("\r\x1b[K\x1b[1;31mFAILED:\x1b[0m Lib"));
}

TEST_F(BuildCommandTest, ShowsTheTimeGoOnWhileACompilerRuns) {
  if (!support::HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  command.root.MakeFile("vb6", "#!/bin/sh\nsleep 1.3\n");
  const CommandResult result = command.RunOnTerminal({"build", "Shop"}, 80);
  EXPECT_THAT(result.out, HasSubstr("[1/3] 0:01 Compiling Lib"));
  EXPECT_THAT(result.out, HasSubstr("The compiler wrote no log"));
}

TEST_F(BuildCommandTest, LeavesColoursOutWhenTheyAreNotWanted) {
  if (!support::HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  EXPECT_THAT(command.RunOnTerminal({"--no-color", "build", "Shop"}, 80).out, Not(HasSubstr("\x1b[1;")));
  command.environment = {{"NO_COLOR", "1"}};
  const CommandResult result = command.RunOnTerminal({"build", "Shop"}, 80);
  EXPECT_THAT(result.out, Not(HasSubstr("\x1b[1;")));
  EXPECT_THAT(result.out, HasSubstr("\x1b[K"));
}

TEST_F(BuildCommandTest, UsesNoTerminalControlOnADumbTerminal) {
  command.environment = {{"TERM", "dumb"}};
  EXPECT_THAT(command.RunOnTerminal({"build", "Shop"}, 80).out, Not(HasSubstr("\x1b")));
}

TEST_F(BuildCommandTest, CompilesTheProjectsOfAnEmptyBuildInNoTime) {
  command.Run({"new", "Empty"});
  const CommandResult result = command.Run({"build", "Empty"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("0 of 0 projects compiled"));
}

}  // namespace
}  // namespace hearthmake::host
