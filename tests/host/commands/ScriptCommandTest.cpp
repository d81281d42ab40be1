#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using namespace std::string_literals;
using support::CommandResult;
using support::HostCommand;
using testing::EndsWith;
using testing::HasSubstr;

class ScriptCommandTest : public testing::Test {
 protected:
  std::string Write(const std::string& code) const { return command.root.MakeFile("a.vbs", code); }
  CommandResult Run(const std::string& code, const HostCommand::Arguments& arguments = {},
                    const HostCommand::Arguments& options = {}) {
    HostCommand::Arguments words = {"script"};
    words.insert(words.end(), options.begin(), options.end());
    words.push_back(Write(code));
    words.insert(words.end(), arguments.begin(), arguments.end());
    return command.Run(words);
  }

  HostCommand command;
};

TEST_F(ScriptCommandTest, EchoesValuesWithBlanksBetweenThem) {
  const CommandResult result =
      Run("WScript.Echo \"a\", 1.5, Empty, True, Null\r\nWScript.Echo\r\n"
          "WScript.Echo \"x\" & vbCrLf & \"y\"\r\nWScript.StdOut.Write \"no end\"\r\n");
  EXPECT_EQ(result.out, "a 1.5  -1 null\n\nx\ny\nno end");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_FALSE(std::filesystem::exists(command.Data() + "/Build.mdb"));
}

TEST_F(ScriptCommandTest, HandsTheScriptItsArguments) {
  const CommandResult result =
      Run("For Each a In WScript.Arguments : WScript.Echo a : Next\n"
          "With WScript.Arguments\n"
          "WScript.Echo .Count, .Item(0), .Named(\"To\"), .Named.Exists(\"none\"), .Named(\"f\"), "
          ".Unnamed.Count\n"
          "End With\n"
          "On Error Resume Next\nx = WScript.Arguments(9)\nWScript.Echo Err.Number\n",
          {"one", "/to:a b", "--data", "/F-", "ü"});
  EXPECT_EQ(result.out, "one\n/to:a b\n--data\n/F-\nü\n5 one a b 0 0 3\n9\n");
}

TEST_F(ScriptCommandTest, NamesTheScriptAndItsHost) {
  const CommandResult result =
      Run("WScript.Echo WScript, WScript.Version, WScript.ScriptName, WScript.ScriptFullName\n"
          "WScript.Echo WScript.FullName\n");
  EXPECT_THAT(result.out, HasSubstr("Windows Script Host 5.8 a.vbs Z:\\"));
  EXPECT_THAT(result.out, EndsWith("\\hearthmake\n"));
}

TEST_F(ScriptCommandTest, QuitsThroughEveryHandler) {
  const CommandResult result =
      Run("Sub S\nOn Error Resume Next\nWScript.Quit 42\nEnd Sub\n"
          "On Error Resume Next\nS\nWScript.Echo \"not here\"\n");
  EXPECT_EQ(result.status, 42);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(Run("WScript.Quit").status, 0);
}

TEST_F(ScriptCommandTest, TellsWhereAnErrorHappened) {
  const CommandResult result = Run("WScript.Echo 1\r\nx = CLng(\"abc\")\r\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "1\n");
  EXPECT_EQ(result.err,
            command.root.Path("a.vbs") + "(2, 1) Microsoft VBScript runtime error: Type mismatch: 'CLng'\n");
  EXPECT_EQ(Run("x = \n").err, command.root.Path("a.vbs") +
                                   "(1, 5) Microsoft VBScript compilation error: Expected expression\n");
  EXPECT_EQ(Run("Err.Raise 1001, \"Shop\", \"Closed\"").err,
            command.root.Path("a.vbs") + "(1, 1) Shop: Closed\n");
}

TEST_F(ScriptCommandTest, ReadsScriptsInTheirEncodings) {
  EXPECT_EQ(Run("WScript.Echo \"\xE9\x80\"").out, "é€\n");
  EXPECT_EQ(Run("\xEF\xBB\xBFWScript.Echo \"é一\"").out, "é一\n");
  std::string utf16 = "\xFF\xFE";
  for (const char c : "WScript.Echo \"x\""s) utf16 += {c, '\0'};
  EXPECT_EQ(Run(utf16).out, "x\n");
}

TEST_F(ScriptCommandTest, EndsAScriptWhoseTimeIsOver) {
  const CommandResult result = Run("On Error Resume Next\nDo\nLoop\n", {}, {"//nologo", "//T:1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "Script execution time was exceeded on script \"" + command.root.Path("a.vbs") +
                            "\".\nScript execution was terminated.\n");
  EXPECT_EQ(Run("WScript.Timeout = 1\nWScript.Sleep 60000\n").status, 1);
}

TEST_F(ScriptCommandTest, EndsOnCtrlC) {
  const std::string file = Write("WScript.StdErr.WriteLine \"up\"\nOn Error Resume Next\nDo\nLoop\n");
  const pid_t child = command.Start({"script", file});
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  kill(child, SIGINT);
  EXPECT_EQ(command.Finish(child).status, 3);
}

TEST_F(ScriptCommandTest, ReadsStandardInput) {
  const CommandResult result =
      Run("WScript.Echo WScript.StdIn.AtEndOfStream\nOn Error Resume Next\nWScript.StdIn.ReadLine\n"
          "WScript.Echo Err.Number\n");
  EXPECT_EQ(result.out, "-1\n62\n");
}

TEST_F(ScriptCommandTest, GivesTheAnswerThatStandsReadyWithoutATerminal) {
  const CommandResult result = Run("WScript.Echo MsgBox(\"Sure?\", vbYesNo), InputBox(\"Name?\", , \"Joe\")");
  EXPECT_EQ(result.out, "Sure?\n6 Joe\n");
  EXPECT_EQ(Run("WScript.Echo MsgBox(\"Sure?\", 4 + 256)", {}, {"//B"}).out, "7\n");
}

TEST_F(ScriptCommandTest, WorksOnFilesAndPrograms) {
  const CommandResult result =
      Run("Set fso = CreateObject(\"Scripting.FileSystemObject\")\n"
          "folder = fso.GetParentFolderName(WScript.ScriptFullName)\n"
          "With fso.CreateTextFile(folder & \"\\out.txt\") : .WriteLine \"one\" : .WriteLine \"two\" : "
          ".Close : End With\n"
          "Set ts = fso.OpenTextFile(folder & \"\\out.txt\")\n"
          "Do Until ts.AtEndOfStream : WScript.Echo ts.Line & \" \" & ts.ReadLine : Loop\n"
          "For Each f In fso.GetFolder(folder).Files : If LCase(f.Name) = \"out.txt\" Then WScript.Echo "
          "f.Size\nNext\n"
          "Set sh = WScript.CreateObject(\"WScript.Shell\")\n"
          "sh.Environment(\"PROCESS\")(\"VF\") = \"set\"\n"
          "WScript.Echo sh.Run(\"/bin/sh -c \"\"exit 4\"\"\", 0, True), sh.Exec(\"/bin/sh -c \"\"echo "
          "$VF\"\"\").StdOut.ReadAll\n"
          "WScript.Echo fso.FolderExists(sh.ExpandEnvironmentStrings(\"%TEMP%\"))\n");
  EXPECT_EQ(result.out, "1 one\n2 two\n10\n4 set\n\n-1\n") << result.err;
  EXPECT_EQ(result.err, "");
}

TEST_F(ScriptCommandTest, RefusesObjectsThatAreNotThere) {
  const CommandResult result =
      Run("On Error Resume Next\nCreateObject \"Excel.Application\"\nWScript.Echo Err.Number\n"
          "Err.Clear\nWScript.CreateObject \"Excel.Application\"\nWScript.Echo Err.Description\n"
          "Err.Clear\nWScript.ConnectObject CreateObject(\"Scripting.Dictionary\"), \"D_\"\nWScript.Echo "
          "Err.Description\n");
  EXPECT_EQ(
      result.out,
      "429\nCould not locate automation class named \"Excel.Application\".\nCould not connect object.\n");
}

TEST_F(ScriptCommandTest, RefusesWrongUsage) {
  EXPECT_EQ(command.Run({"script"}).status, 2);
  EXPECT_EQ(command.Run({"script", "none.vbs"}).status, 2);
  EXPECT_EQ(command.Run({"script", "//foo", Write("")}).status, 2);
  EXPECT_EQ(command.Run({"script", "--help"}).status, 0);
}

}  // namespace
}  // namespace hearthmake::host
