#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;
using testing::Not;

class VersionCommand : public testing::Test {
 protected:
  VersionCommand() { command.MakeShop(); }

  CommandResult Version(HostCommand::Arguments arguments) {
    arguments.insert(arguments.begin(), {"version", "Shop"});
    return command.Run(arguments);
  }
  // "App 1.0.0, Lib …" of all projects.
  std::string All() {
    std::string text;
    for (const json& project : json::parse(Version({"--json"}).out)) {
      text += (text.empty() ? "" : ", ") + project["name"].get<std::string>() + " " +
              project["version"].get<std::string>();
    }
    return text;
  }

  HostCommand command;
};

TEST_F(VersionCommand, ShowsTheVersionsOfAllOrOfNamedProjects) {
  EXPECT_EQ(All(), "App 1.0.0, Lib 1.0.0, Tool 1.0.0");
  EXPECT_EQ(Version({"lib"}).out, "Lib                      1.0.0\n");
  const json tool = json::parse(Version({"--json", "Tool"}).out)[0];
  EXPECT_EQ(tool["major"], 1);
  EXPECT_EQ(tool["minor"], 0);
  EXPECT_EQ(tool["revision"], 0);
  EXPECT_EQ(tool["autoIncrement"], false);
}

TEST_F(VersionCommand, SetsTheVersionOfAllOrOfNamedProjects) {
  EXPECT_EQ(Version({"2.3.9999"}).status, 0);
  EXPECT_EQ(All(), "App 2.3.9999, Lib 2.3.9999, Tool 2.3.9999");
  EXPECT_EQ(Version({"0.0.1", "Lib", "Tool"}).out,
            "Lib                      2.3.9999 -> 0.0.1\n"
            "Tool                     2.3.9999 -> 0.0.1\n");
  EXPECT_EQ(All(), "App 2.3.9999, Lib 0.0.1, Tool 0.0.1");
}

TEST_F(VersionCommand, RaisesOnePartAndBeginsThoseBehindItAnew) {
  Version({"1.2.3"});
  Version({"--bump", "revision"});
  EXPECT_EQ(All(), "App 1.2.4, Lib 1.2.4, Tool 1.2.4");
  Version({"--bump", "minor", "Lib"});
  Version({"--bump", "major", "Tool"});
  EXPECT_EQ(All(), "App 1.2.4, Lib 1.3.0, Tool 2.0.0");
}

TEST_F(VersionCommand, RefusesWhatIsNoVersion) {
  for (const char* text : {"1.2", "1.2.3.4", "1.2.10000", "1..3", "1.2.", "1.-2.3", "1.2.3x", "1.2. 3"}) {
    const CommandResult result = Version({text});
    EXPECT_EQ(result.status, 2) << text;
    EXPECT_THAT(result.err, HasSubstr("is no version")) << text;
  }
  EXPECT_THAT(Version({"--bump", "build"}).err, HasSubstr("{major,minor,revision}"));
  EXPECT_THAT(Version({"1.2.3", "--bump", "minor"}).err, HasSubstr("don't go together"));
  EXPECT_THAT(Version({"1.2.3", "Nope"}).err, HasSubstr("no project 'Nope'"));
  EXPECT_EQ(All(), "App 1.0.0, Lib 1.0.0, Tool 1.0.0");
}

TEST_F(VersionCommand, ChangesNothingWhenOnePartCantGrow) {
  Version({"1.0.9999", "Tool"});
  const CommandResult result = Version({"--bump", "revision"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("The revision number of Tool can't grow: it is 9999."));
  EXPECT_EQ(All(), "App 1.0.0, Lib 1.0.0, Tool 1.0.9999");
}

// A trigger stands for whatever keeps the last of several rows from being written.
TEST_F(VersionCommand, ChangesNothingWhenOneProjectCantBeStored) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open((command.Data() + "/Build.mdb").c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db,
                         "CREATE TRIGGER Refuse BEFORE UPDATE ON Project WHEN NEW.Name LIKE '%Tool%' "
                         "BEGIN SELECT RAISE(ABORT, 'refused'); END",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  EXPECT_EQ(Version({"3.0.0"}).status, 2);
  EXPECT_EQ(All(), "App 1.0.0, Lib 1.0.0, Tool 1.0.0");
}

TEST_F(VersionCommand, SaysWhereTheCompilerCountsTheRevision) {
  command.Run({"set", "Shop", "Lib", "AutoIncrementVer", "true"});
  EXPECT_THAT(Version({"2.0.0"}).out,
              HasSubstr("Lib                      1.0.0 -> 2.0.0  (revision counted"));
  EXPECT_THAT(Version({"App"}).out, Not(HasSubstr("counted")));
  EXPECT_EQ(json::parse(Version({"--json", "Lib"}).out)[0]["autoIncrement"], true);
  command.Run({"build", "Shop"});
  const std::string file = command.root.Content("src/Lib.vbp");
  EXPECT_THAT(file, HasSubstr("MajorVer=2\r\n"));
  EXPECT_THAT(file, HasSubstr("RevisionVer=0\r\n"));
  EXPECT_THAT(command.root.Content("src/App.vbp"), HasSubstr("MajorVer=2\r\n"));
}

}  // namespace
}  // namespace hearthmake::host
