#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;
using testing::Not;

class SettingsCommandTest : public testing::Test {
 protected:
  std::string Stored() const { return command.root.Content("config/hearthmake/settings.ini"); }

  HostCommand command;
};

TEST_F(SettingsCommandTest, ShowsAndStoresTheLibrarysSettings) {
  EXPECT_THAT(command.Run({"settings"}).out, HasSubstr("VBExe = vb6.exe\nSetProjectCompatible = False\n"));
  EXPECT_EQ(command.Run({"settings", "vbexe", "/opt/vb6"}).out, "VBExe = Z:\\opt\\vb6\n");
  EXPECT_EQ(command.Run({"settings", "VBExe"}).out, "Z:\\opt\\vb6\n");
  EXPECT_EQ(command.Run({"settings", "ScriptTimeOut", "-1"}).out, "ScriptTimeOut = -1\n");
  EXPECT_EQ(command.Run({"settings", "CreateReport", "on"}).out, "CreateReport = True\n");
  EXPECT_THAT(Stored(), HasSubstr("[Hearthmake\\VB]"));
  EXPECT_THAT(Stored(), HasSubstr("CreateReport=True"));
}

TEST_F(SettingsCommandTest, KeepsACompilerThatThePathFindsAsItIsTyped) {
  EXPECT_EQ(command.Run({"settings", "VBExe", "vb6.exe"}).out, "VBExe = vb6.exe\n");
  EXPECT_EQ(command.Run({"settings", "VBExe", "C:\\VB98\\VB6.EXE"}).out, "VBExe = C:\\VB98\\VB6.EXE\n");
}

TEST_F(SettingsCommandTest, ListsTheKeysForAWrongOne) {
  const CommandResult result = command.Run({"settings", "Compiler", "x"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("There is no setting 'Compiler'."));
  EXPECT_THAT(result.err, HasSubstr("VBExe, SetProjectCompatible, ScriptTimeOut"));
}

TEST_F(SettingsCommandTest, NamesTheFileThatHoldsJunk) {
  const std::string path = command.root.MakeFile("config/hearthmake/settings.ini", "no setting at all\n");
  const CommandResult junk = command.Run({"settings"});
  EXPECT_EQ(junk.status, 2);
  EXPECT_THAT(junk.err, HasSubstr(path + ", line 1"));
  command.root.MakeFile("config/hearthmake/settings.ini", "[Hearthmake\\VB]\nScriptTimeOut=soon\n");
  const CommandResult value = command.Run({"settings"});
  EXPECT_EQ(value.status, 2);
  EXPECT_THAT(value.err, HasSubstr(path));
  EXPECT_THAT(value.err, HasSubstr("Type mismatch"));
}

TEST_F(SettingsCommandTest, KeepsWhatBelongsToTheHostInTheDataFolder) {
  EXPECT_THAT(command.Run({"settings", "--host"}).out, HasSubstr("WinePrefix"));
  EXPECT_EQ(command.Run({"settings", "--host", "osversion", "5"}).out, "OSVersion = 5\n");
  EXPECT_EQ(command.Run({"settings", "--host", "d:", "/srv/d"}).out, "D: = /srv/d\n");
  EXPECT_EQ(command.Run({"settings", "--host"}).out, "OSVersion = 5\nD: = /srv/d\n");
  EXPECT_EQ(command.Run({"settings", "--host", "D:"}).out, "/srv/d\n");
  EXPECT_EQ(command.Run({"settings", "--host", "OSVersion", ""}).status, 0);
  EXPECT_EQ(command.Run({"settings", "--host"}).out, "D: = /srv/d\n");
  EXPECT_THAT(command.root.Content("data/host.ini"), HasSubstr("D:=/srv/d"));
  EXPECT_THAT(Stored(), Not(HasSubstr("/srv/d")));
  const CommandResult unknown = command.Run({"settings", "--host", "Colour", "red"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.err, HasSubstr("There are: WinePrefix, WineProgram, OSVersion, TemporaryFolder"));
}

TEST_F(SettingsCommandTest, RefusesHostSettingsThatCantBe) {
  EXPECT_EQ(command.Run({"settings", "--host", "OSVersion", "new"}).status, 2);
  command.root.MakeFile("data/host.ini", "junk\n");
  const CommandResult junk = command.Run({"settings", "--host"});
  EXPECT_EQ(junk.status, 2);
  EXPECT_THAT(junk.err, HasSubstr(command.Data() + "/host.ini, line 1"));
  EXPECT_EQ(command.Run({"list"}).status, 2);
}

}  // namespace
}  // namespace hearthmake::host
