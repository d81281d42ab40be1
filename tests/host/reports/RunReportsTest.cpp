#include "host/reports/RunReports.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"
#include "support/XmlLint.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using support::XmlLint;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// The reports of a build of Lib, App (which references it) and Tool, by the real command.
class RunReportsTest : public testing::Test {
 protected:
  RunReportsTest() {
    // The machine on which the tests run may be a CI service's.
    for (const char* name : {"GITHUB_WORKSPACE", "CI_PROJECT_DIR", "BUILD_SOURCESDIRECTORY", "WORKSPACE",
                             "GITHUB_ACTIONS", "GITLAB_CI", "TF_BUILD", "TEAMCITY_VERSION"}) {
      command.environment.emplace_back(name, std::nullopt);
    }
    command.root.MakeFolder("src/.git");
    command.MakeShop();
  }

  std::string JUnit() const { return command.root.Path("out.xml"); }
  CommandResult Build(HostCommand::Arguments more = {}) {
    more.insert(more.begin(), {"build", "Shop"});
    return command.Run(more);
  }
  CommandResult BuildForJUnit(HostCommand::Arguments more = {}) {
    more.insert(more.end(), {"--junit", JUnit()});
    return Build(std::move(more));
  }
  std::string Value(const std::string& expression) const { return XmlLint::Value(JUnit(), expression); }
  std::string Of(const std::string& project, const std::string& path) const {
    return Value("//testcase[@name='" + project + "']/" + path);
  }
  void ExpectValid() const {
    EXPECT_THAT(XmlLint::Check(JUnit(), SOURCE_DIRECTORY "/tests/host/junit.xsd"), IsEmpty())
        << command.root.Content("out.xml");
  }
  // A compiler that writes this log, with the escapes of printf, and does nothing else.
  void LogText(const std::string& escaped) const {
    command.root.MakeFile(
        "vb6", "#!/bin/sh\nLOG=$(printf '%s' \"$4\" | sed -e 's|^[Zz]:||' -e 's|\\\\|/|g')\nprintf '" +
                   escaped + "' > \"$LOG\"\n");
  }

  HostCommand command;
};

#define NEEDS_XMLLINT() \
  if (!XmlLint::IsHere()) GTEST_SKIP() << "xmllint is not installed"

TEST_F(RunReportsTest, WritesAGoodRunAsJUnit) {
  NEEDS_XMLLINT();
  ASSERT_EQ(BuildForJUnit().status, 0);
  ExpectValid();
  EXPECT_EQ(Value("count(//testcase)"), "3");
  EXPECT_EQ(Value("//testsuite/@name"), "Shop");
  EXPECT_EQ(Value("//testsuite/@tests"), "3");
  EXPECT_EQ(Value("count(//failure|//error|//skipped)"), "0");
  EXPECT_EQ(Value("//testcase[1]/@name"), "Lib");
  EXPECT_EQ(Value("//testcase[1]/@classname"), "hearthmake.Shop");
  EXPECT_EQ(Of("App", "system-out"), "Build of 'App' succeeded.");
  EXPECT_EQ(Value("//property[@name='build.result']/@value"), "complete");
  EXPECT_THAT(Value("//property[@name='hearthmake.version']/@value"), HasSubstr("0."));
  EXPECT_THAT(Value("//property[@name='compiler']/@value"), HasSubstr("vb6"));
}

TEST_F(RunReportsTest, WritesAFailureWithItsPlace) {
  NEEDS_XMLLINT();
  command.FailOn("App");
  ASSERT_EQ(BuildForJUnit().status, 1);
  ExpectValid();
  EXPECT_EQ(Value("//testsuite/@failures"), "1");
  EXPECT_EQ(Value("//testsuite/@errors"), "0");
  EXPECT_EQ(Value("//testsuite/@skipped"), "1");
  EXPECT_EQ(Of("App", "failure/@message"), "App.cls:12: Variable not defined");
  EXPECT_EQ(Of("App", "failure/@type"), "CompileError");
  EXPECT_THAT(Of("App", "system-out"), HasSubstr("Line 12 : Variable not defined\nBuild of 'App' failed."));
  EXPECT_EQ(Of("Tool", "skipped/@message"), "not reached: the run stopped at App");
}

TEST_F(RunReportsTest, WritesOtherFailuresAsErrors) {
  NEEDS_XMLLINT();
  std::filesystem::remove(command.Source("Lib.vbp"));
  ASSERT_EQ(BuildForJUnit().status, 1);
  ExpectValid();
  EXPECT_EQ(Value("//testsuite/@failures"), "0");
  EXPECT_EQ(Value("//testsuite/@errors"), "1");
  EXPECT_EQ(Of("Lib", "error/@message"), "Lib.vbp: Projet path is incorrect");
}

TEST_F(RunReportsTest, WritesScriptsThatFailAndWhatTheyTell) {
  NEEDS_XMLLINT();
  command.root.MakeFile("a.vbs", "Scripts.Notify \"so far\"\r\nErr.Raise 1, \"x\", \"Not <today>\"");
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Shop", "BeforeComplie", "--set", command.root.Path("a.vbs")});
  ASSERT_EQ(BuildForJUnit().status, 1);
  ExpectValid();
  EXPECT_EQ(Value("//testsuite/@tests"), "4");
  EXPECT_EQ(Value("//testsuite/@errors"), "1");
  EXPECT_THAT(Of("(build)", "error/@message"), HasSubstr("Not <today>"));
  EXPECT_EQ(Of("Lib", "skipped/@message"), "not reached: the run stopped before it");
  EXPECT_THAT(Value("//testsuite/system-out"), HasSubstr("so far"));
}

TEST_F(RunReportsTest, SaysWhyAProjectWasSkipped) {
  NEEDS_XMLLINT();
  ASSERT_EQ(command.Run({"set", "Shop", "Tool", "CompileMe", "false"}).status, 0);
  ASSERT_EQ(BuildForJUnit().status, 0);
  ExpectValid();
  EXPECT_EQ(Of("Tool", "skipped/@message"), "not to be compiled: its CompileMe is off");
}

TEST_F(RunReportsTest, SaysWhichFailureBlocksAProject) {
  NEEDS_XMLLINT();
  command.FailOn("Lib");
  ASSERT_EQ(BuildForJUnit({"--keep-going"}).status, 1);
  ExpectValid();
  EXPECT_EQ(Value("//testsuite/@failures"), "1");
  EXPECT_THAT(Of("App", "skipped/@message"), AllOf(StartsWith("blocked: "), HasSubstr("Lib")));
  EXPECT_EQ(Of("Tool", "system-out"), "Build of 'Tool' succeeded.");
  EXPECT_EQ(Value("//property[@name='build.result']/@value"), "failed");
  command.BehaveWell();
  ASSERT_EQ(BuildForJUnit({"--resume"}).status, 0);
  ExpectValid();
  EXPECT_THAT(Of("Tool", "skipped/@message"), StartsWith("compiled earlier"));
}

TEST_F(RunReportsTest, SaysWhatIsUpToDate) {
  NEEDS_XMLLINT();
  ASSERT_EQ(BuildForJUnit({"--only", "Tool"}).status, 0);
  ExpectValid();
  EXPECT_THAT(Of("Lib", "skipped/@message"), StartsWith("not to be compiled: "));
  ASSERT_EQ(BuildForJUnit({"--changed"}).status, 0);
  ASSERT_EQ(BuildForJUnit({"--changed"}).status, 0);
  ExpectValid();
  EXPECT_THAT(Of("Lib", "skipped/@message"), StartsWith("up to date"));
}

TEST_F(RunReportsTest, StaysValidWhateverTheCompilerWrites) {
  NEEDS_XMLLINT();
  LogText("\\033[31m<Compile> & \\001\\377 ]]> \"quoted\"\\r\\nBuild of App failed.\\r\\n");
  ASSERT_EQ(BuildForJUnit().status, 1);
  ExpectValid();
  EXPECT_THAT(Of("Lib", "failure/@message"), HasSubstr("<Compile> & "));
  EXPECT_THAT(Of("Lib", "system-out"), HasSubstr("]]> \"quoted\""));
}

TEST_F(RunReportsTest, AreWrittenWhenTheCompilerWritesNothing) {
  NEEDS_XMLLINT();
  LogText("");
  ASSERT_EQ(BuildForJUnit().status, 1);
  ExpectValid();
  EXPECT_EQ(Of("Lib", "failure/@message"), "Lib.vbp: The compiler wrote no log.");
}

TEST_F(RunReportsTest, AreWrittenOfARunThatIsCancelled) {
  NEEDS_XMLLINT();
  command.SleepOn("App");
  const pid_t process = command.Start({"build", "Shop", "--junit", JUnit()});
  ASSERT_GT(command.WaitForSleeper(), 0);
  kill(process, SIGINT);
  EXPECT_EQ(command.Finish(process).status, 3);
  ExpectValid();
  EXPECT_EQ(Of("App", "error/@type"), "Cancelled");
  EXPECT_EQ(Of("Tool", "skipped/@message"), "not reached: the run was cancelled at App");
  EXPECT_EQ(Value("//property[@name='build.result']/@value"), "cancelled");
}

TEST_F(RunReportsTest, AreWrittenOfARunThatNeverBegan) {
  NEEDS_XMLLINT();
  command.WriteProject("A", "OleDll", "Reference=*\\AC.vbp\r\n");
  command.WriteProject("B", "OleDll", "Reference=*\\AA.vbp\r\n");
  command.WriteProject("C", "OleDll", "Reference=*\\AB.vbp\r\n");
  command.Run({"add", "Shop", command.Source("A.vbp"), command.Source("B.vbp"), command.Source("C.vbp")});
  ASSERT_EQ(BuildForJUnit({"--annotations", "github"}).status, 1);
  ExpectValid();
  EXPECT_THAT(Of("(build)", "error/@message"), HasSubstr("A -> C -> B -> A"));
}

TEST_F(RunReportsTest, ReplaceTheOnesOfTheLastRun) {
  NEEDS_XMLLINT();
  command.FailOn("Lib");
  ASSERT_EQ(BuildForJUnit().status, 1);
  command.BehaveWell();
  ASSERT_EQ(BuildForJUnit().status, 0);
  ExpectValid();
  EXPECT_EQ(Value("//testsuite/@failures"), "0");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(command.root.Path("tmp")), {}), 0);
}

TEST_F(RunReportsTest, NeedTheirFoldersBeforeAnythingRuns) {
  for (const char* option : {"--junit", "--code-quality"}) {
    const CommandResult result = Build({option, command.root.Path("gone/out")});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr(std::string("no folder for the file of ") + option));
    EXPECT_THAT(result.err, HasSubstr("mkdir -p '" + command.root.Path("gone") + "'"));
    EXPECT_EQ(Build({option, command.root.Path("src")}).status, 2);
  }
  EXPECT_THAT(command.Compiled(), IsEmpty());
}

TEST_F(RunReportsTest, FailWhatWasDoneWhenTheyCantBeWritten) {
  // The compiler takes the place away while the run goes on.
  command.root.MakeFolder("out");
  command.root.MakeFile("vb6", command.root.Content("vb6") + "rm -rf '" + command.root.Path("out") + "'\n");
  const CommandResult result = Build({"--junit", command.root.Path("out/a.xml")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("Done."));
  EXPECT_THAT(result.err, HasSubstr("can't be written"));
}

TEST_F(RunReportsTest, WriteProblemsForGitLab) {
  command.FailOn("App");
  ASSERT_EQ(Build({"--code-quality", command.root.Path("q.json")}).status, 1);
  const json report = json::parse(command.root.Content("q.json"));
  ASSERT_EQ(report.size(), 1U);
  EXPECT_EQ(report[0].at("description"), "Variable not defined");
  EXPECT_EQ(report[0].at("check_name"), "compile-error");
  EXPECT_EQ(report[0].at("severity"), "blocker");
  EXPECT_EQ(report[0].at("location").at("path"), "App.cls");
  EXPECT_EQ(report[0].at("location").at("lines").at("begin"), 12);
  EXPECT_FALSE(report[0].at("fingerprint").get<std::string>().empty());
  command.BehaveWell();
  ASSERT_EQ(Build({"--code-quality", command.root.Path("q.json")}).status, 0);
  EXPECT_EQ(command.root.Content("q.json"), "[]\n");
}

TEST_F(RunReportsTest, TellProblemsOfOneTextApart) {
  LogText("Compile Error in File a.cls, Line 1 : x\\r\\nCompile Error in File a.cls, Line 2 : x\\r\\n");
  ASSERT_EQ(Build({"--code-quality", command.root.Path("q.json")}).status, 1);
  const json report = json::parse(command.root.Content("q.json"));
  ASSERT_EQ(report.size(), 2U);
  EXPECT_NE(report[0].at("fingerprint"), report[1].at("fingerprint"));
}

TEST_F(RunReportsTest, FoldProjectsAndMarkErrorsBelowThem) {
  command.FailOn("App");
  const CommandResult result = Build({"--annotations", "github"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("::group::Lib\n[1/3] Compiling Lib\n::endgroup::\n::group::App\n"
                                    "[2/3] Compiling App\n::endgroup::\n"
                                    "::error file=App.cls,line=12,title=App::Variable not defined\n"));
}

TEST_F(RunReportsTest, CloseTheLastFold) {
  EXPECT_THAT(Build({"--annotations", "github"}).out, HasSubstr("Compiling Tool\n::endgroup::\nDone."));
}

TEST_F(RunReportsTest, FoldNothingButTheProjectWhenTheRunGoesOn) {
  command.FailOn("Lib");
  const CommandResult result = Build({"--annotations", "github", "--keep-going"});
  EXPECT_THAT(result.out,
              HasSubstr("::error file=Lib.cls,line=12,title=Lib::Variable not defined\n::group::Tool\n"
                        "[2/3] Compiling Tool\n::endgroup::\n"));
}

TEST_F(RunReportsTest, LeaveEventsForProgramsAlone) {
  command.FailOn("App");
  const CommandResult result = Build({"--annotations", "github", "--json"});
  for (const std::string& line : support::LinesOf(result.out)) EXPECT_TRUE(json::accept(line)) << line;
  EXPECT_THAT(result.err, HasSubstr("::error file=App.cls,line=12"));
  EXPECT_THAT(result.err, Not(HasSubstr("::group::")));
}

TEST_F(RunReportsTest, TellFailuresOfTheBuildOnce) {
  command.root.MakeFile("a.vbs", "Err.Raise 1, \"x\", \"Not today\"");
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Shop", "BeforeComplie", "--set", command.root.Path("a.vbs")});
  command.Run({"scripts", "Shop", "BuildFailed", "--set", command.root.Path("a.vbs")});
  const std::string out = Build({"--annotations", "github"}).out;
  std::size_t count = 0;
  for (const std::string& line : support::LinesOf(out)) count += line.starts_with("::error") ? 1 : 0;
  EXPECT_EQ(count, 2U) << out;
}

TEST_F(RunReportsTest, AreSilentWhereNoServiceIs) {
  EXPECT_EQ(Build({"--annotations", "auto"}).status, 0);
  EXPECT_THAT(Build({"--annotations", "auto"}).out, Not(HasSubstr("::")));
  EXPECT_EQ(Build({"--annotations", "jenkins"}).status, 2);
}

}  // namespace
}  // namespace hearthmake::host
