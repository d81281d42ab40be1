#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::AllOf;
using testing::HasSubstr;

class ScriptsCommandTest : public testing::Test {
 protected:
  ScriptsCommandTest() { command.MakeShop(); }

  CommandResult Scripts(HostCommand::Arguments words) {
    words.insert(words.begin(), {"scripts", "Shop"});
    return command.Run(words);
  }
  CommandResult Set(const std::string& event, const std::string& bytes) {
    return Scripts({event, "--set", command.root.MakeFile("a.vbs", bytes)});
  }
  CommandResult SetFromInput(const std::string& bytes) {
    command.standardInput = command.root.MakeFile("input", bytes);
    return Scripts({"AfterMTSpackage", "--set", "-"});
  }
  void SwitchOn() { command.Run({"settings", "RunScripts", "true"}); }

  HostCommand command;
};

TEST_F(ScriptsCommandTest, ListsTheSevenWithTheirLengths) {
  Set("CompileComplete", "x = 1\r\ny = 2\r\n");
  const CommandResult result = Scripts({});
  EXPECT_EQ(result.status, 0) << result.err;
  const auto lines = support::LinesOf(result.out);
  ASSERT_EQ(lines.size(), 7U);
  EXPECT_THAT(lines[1], AllOf(HasSubstr("1  BeforeComplie"), HasSubstr("Before Compile"), HasSubstr("  -")));
  EXPECT_THAT(lines[5], AllOf(HasSubstr("5  CompileComplete"), HasSubstr("2 lines")));
}

TEST_F(ScriptsCommandTest, SetsAndShowsATextAsItIs) {
  const std::string text = "x = 1\r\n\r\n' \xE2\x82\xAC\n";
  EXPECT_EQ(Set("BeforeComplie", "x = 1\r\n\r\n' \x80\n").out, "BeforeComplie: 3 lines\n");
  EXPECT_EQ(Scripts({"BeforeComplie"}).out, text);
  EXPECT_EQ(Set("BeforeComplie", "x = 1").out, "BeforeComplie: 1 line\n");
}

TEST_F(ScriptsCommandTest, KnowsAnEventByEachOfItsNames) {
  Set("AfterMTSpackage", "x = 1");
  for (const char* name : {"aftermtspackage", "After MTS", "BS_AFTERMTS", "6"})
    EXPECT_EQ(Scripts({name}).out, "x = 1") << name;
}

TEST_F(ScriptsCommandTest, ReadsFilesInTheirEncodings) {
  for (const std::string& bytes : {std::string("\xE9"), std::string("\xEF\xBB\xBF\xC3\xA9"),
                                   std::string("\xFF\xFE\xE9\0", 4), std::string("\xFE\xFF\0\xE9", 4)}) {
    Set("AfterMTSpackage", bytes);
    EXPECT_EQ(Scripts({"AfterMTSpackage"}).out, "\xC3\xA9");
  }
}

TEST_F(ScriptsCommandTest, ReadsStandardInputAsUtf8) {
  EXPECT_EQ(SetFromInput("x = \"\xC3\xA9\"\n").status, 0);
  EXPECT_EQ(Scripts({"AfterMTSpackage"}).out, "x = \"\xC3\xA9\"\n");
  SetFromInput(std::string("\xFF\xFEx\0", 4));
  EXPECT_EQ(Scripts({"AfterMTSpackage"}).out, "x");
}

TEST_F(ScriptsCommandTest, ClearsOne) {
  Set("BeforeComplie", "x = 1");
  Set("BuildFailed", "y = 1");
  EXPECT_EQ(Scripts({"BeforeComplie", "--clear"}).status, 0);
  EXPECT_EQ(Scripts({"BeforeComplie"}).out, "");
  EXPECT_EQ(Scripts({"BuildFailed"}).out, "y = 1");
}

TEST_F(ScriptsCommandTest, ChecksWithoutRunning) {
  const std::string file = command.root.Path("made");
  Set("BeforeComplie", "CreateObject(\"Scripting.FileSystemObject\").CreateTextFile(\"Z:" + file + "\")");
  const CommandResult result = Scripts({"--check"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "BeforeComplie: sound\n");
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ScriptsCommandTest, CheckTellsThePlaceOfASyntaxErrorAndChecksTheOthers) {
  Set("BeforeComplie", "x = 1\r\nIf x Then y = = 2");
  Set("BuildFailed", "x = 1");
  const CommandResult result = Scripts({"--check"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, AllOf(HasSubstr("BeforeComplie(2, "), HasSubstr("    If x Then y = = 2\n")));
  EXPECT_EQ(result.out, "BuildFailed: sound\n");
}

TEST_F(ScriptsCommandTest, CheckTellsMissingFilesAndValuesWithoutThePlaceOfAnotherError) {
  Set("BeforeComplie", "If");
  Set("BeforeProjectComplie", "'Include<C:\\no.vbs>");
  Set("AfterProjectCompile", "x = \"%Build.Nosuch%\"");
  const CommandResult result = Scripts({"--check"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, AllOf(HasSubstr("BeforeProjectComplie: Could not open include file C:\\no.vbs\n"),
                                HasSubstr("AfterProjectCompile: Method Nosuch failed\n")));
  EXPECT_EQ(Scripts({"AfterProjectCompile", "--check"}).err, "AfterProjectCompile: Method Nosuch failed\n");
}

TEST_F(ScriptsCommandTest, RefusesWrongNamesAndUsage) {
  CommandResult result = Scripts({"BeforeCompilation"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("There is no event BeforeCompilation."), HasSubstr("BeforeComplie")));
  result = Scripts({"--clear"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("Which of the seven scripts?"));
  EXPECT_EQ(Scripts({"7"}).status, 2);
  EXPECT_EQ(Scripts({"BuildFailed", "--set", command.root.Path("no.vbs")}).status, 2);
  EXPECT_EQ(command.Run({"scripts", "Nosuch"}).status, 2);
}

TEST_F(ScriptsCommandTest, ABuildTellsWhereAScriptFailed) {
  SwitchOn();
  Set("BeforeProjectComplie", "x = 1\r\n  y = x / 0");
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("FAILED: Lib ("), HasSubstr("Division by zero"),
                    HasSubstr("This was the script \"Before Project Compile\", line 2, column "),
                    HasSubstr(":   y = x / 0\n"), HasSubstr("hearthmake scripts 'Shop' --check")));
}

TEST_F(ScriptsCommandTest, ABuildTellsOfAMissingIncludeFileWithoutAPlace) {
  SwitchOn();
  Set("BeforeComplie", "On Error Resume Next\r\nx = 1 / 0");
  Set("BeforeProjectComplie", "'Include<C:\\no.vbs>");
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("Could not open include file C:\\no.vbs"),
                                HasSubstr("This was the script \"Before Project Compile\"\n")));
}

TEST_F(ScriptsCommandTest, ABuildAsJsonTellsWhereAScriptFailed) {
  SwitchOn();
  Set("AfterProjectCompile", "x = 1\r\ny = x / 0");
  const CommandResult result = command.Run({"build", "Shop", "--json"});
  EXPECT_EQ(result.status, 1);
  const json failure = json::parse(support::LinesOf(result.out).back());
  EXPECT_EQ(failure.at("event"), "BuildFaild");
  EXPECT_EQ(failure.at("project"), "Lib");
  EXPECT_EQ(failure.at("compileError"), false);
  EXPECT_EQ(failure.at("message"), "Script Error: Division by zero\r\ny = x / 0");
  EXPECT_EQ(failure.at("script").at("event"), "After Project Compile");
  EXPECT_EQ(failure.at("script").at("line"), 2);
  EXPECT_EQ(failure.at("script").at("text"), "y = x / 0");
}

TEST_F(ScriptsCommandTest, ABuildGoesOnWhenErrorsAreIgnoredAndTellsThem) {
  SwitchOn();
  command.Run({"settings", "IgnoreScriptError", "true"});
  Set("CompileComplete", "y = 1 / 0");
  Set("BeforeComplie", "Scripts.Notify \"hello\", , 50");
  CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, AllOf(HasSubstr("hello\n"),
                                HasSubstr("Script error in event Compile Complete. Division by zero\n"),
                                HasSubstr("line 1, column ")));
  result = command.Run({"build", "Shop", "--json"});
  EXPECT_THAT(result.out, AllOf(HasSubstr("\"ScriptNotify\""), HasSubstr("\"progress\":50")));
}

TEST_F(ScriptsCommandTest, ABuildEndsItsReport) {
  command.Run({"settings", "CreateReport", "true"});
  command.Run({"build", "Shop"});
  std::string report;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(command.Data())) {
    if (entry.path().filename() == "BUILD_Shop.log")
      report = command.root.Content(std::filesystem::relative(entry.path(), command.root.Path()));
  }
  EXPECT_THAT(report, HasSubstr("Build successfully completed\r\n"));
}

}  // namespace
}  // namespace hearthmake::host
