#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;
using testing::Not;

class SourceprojectsCommandTest : public testing::Test {
 protected:
  SourceprojectsCommandTest() {
    command.Run({"new", "Shop"});
    command.root.MakeFile("srcsafe.ini", "");
  }

  CommandResult Add(const std::string& project, const std::string& folder, HostCommand::Arguments more = {}) {
    HostCommand::Arguments arguments = {"sourceprojects", "Shop",  "add",
                                        project,          "--ini", command.root.Path("srcsafe.ini"),
                                        "--folder",       folder};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return command.Run(arguments);
  }
  json List() { return json::parse(command.Run({"sourceprojects", "Shop", "--json"}).out); }

  HostCommand command;
};

TEST_F(SourceprojectsCommandTest, AddsWithEveryPropertyAndListsThem) {
  EXPECT_THAT(command.Run({"sourceprojects", "Shop"}).out, HasSubstr("No source projects yet"));
  const CommandResult result =
      Add("$/Suite", command.root.Path("src") + "/",
          {"--user", "Bob", "--database", "The old server", "--flags", "readonly,recursive"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Added $/Suite, id 1\n");
  EXPECT_EQ(result.err, "");
  std::string folder = "Z:" + command.root.Path("src");
  std::replace(folder.begin(), folder.end(), '/', '\\');
  const json list = List();
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].at("project"), "$/Suite");
  EXPECT_EQ(list[0].at("workingFolder"), folder);
  EXPECT_EQ(list[0].at("user"), "Bob");
  EXPECT_EQ(list[0].at("hasPassword"), false);
  EXPECT_EQ(list[0].at("flags"), 0x2001);
  EXPECT_EQ(list[0].at("database"), "The old server");
  const std::string text = command.Run({"sourceprojects", "Shop", "list"}).out;
  EXPECT_EQ(text, "   1  $/Suite -> " + command.root.Path("src") + "  (The old server)\n      from " +
                      command.root.Path("srcsafe.ini") + ", user Bob, flags readonly,recursive\n");
  EXPECT_THAT(command.Run({"show", "Shop"}).out, HasSubstr("Sources\n" + text));
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out).at("sourceProjects"), list);
}

TEST_F(SourceprojectsCommandTest, ChangesWhatIsGivenAndLeavesTheRest) {
  Add("$/Suite", "C:\\Src", {"--user", "Bob"});
  EXPECT_EQ(command.Run({"sourceprojects", "Shop", "edit", "suite", "--project", "$/Other"}).out,
            "Changed $/Other, id 1\n");
  EXPECT_EQ(command.Run({"sourceprojects", "Shop", "edit", "1", "--flags", "4", "--folder", ""}).status, 0);
  const json list = List();
  EXPECT_EQ(list[0].at("project"), "$/Other");
  EXPECT_EQ(list[0].at("user"), "Bob");
  EXPECT_EQ(list[0].at("flags"), 4);
  EXPECT_EQ(list[0].at("workingFolder"), "");
}

TEST_F(SourceprojectsCommandTest, RemovesOne) {
  Add("$/Suite", "C:\\Src");
  Add("$/Lib", "C:\\Lib");
  EXPECT_THAT(command.Run({"sourceprojects", "Shop", "remove", "$/Suite/"}).out,
              HasSubstr("Removed $/Suite."));
  EXPECT_EQ(List().size(), 1U);
}

TEST_F(SourceprojectsCommandTest, NeverTellsAPassword) {
  command.root.MakeFile("input", "s3cret token\r\nmore\n");
  command.standardInput = command.root.Path("input");
  CommandResult result = Add("$/Suite", "C:\\Src", {"--password-stdin"});
  EXPECT_EQ(result.status, 0) << result.err;
  std::string all = result.out + result.err;
  command.standardInput = "/dev/null";
  for (const auto& arguments : std::vector<HostCommand::Arguments>{{"sourceprojects", "Shop"},
                                                                   {"sourceprojects", "Shop", "--json"},
                                                                   {"show", "Shop"},
                                                                   {"show", "Shop", "--json"}}) {
    result = command.Run(arguments);
    all += result.out + result.err;
  }
  EXPECT_THAT(all, Not(HasSubstr("s3cret")));
  EXPECT_THAT(all, HasSubstr("with a password"));
  EXPECT_EQ(List()[0].at("hasPassword"), true);
  command.root.MakeFile("ask.vbs",
                        "Set b = CreateObject(\"Hearthmake.Build\")\nb.Load 1\n"
                        "WScript.Echo \"[\" & b.SSProjects(1).Password & \"]\"\n");
  EXPECT_EQ(command.Run({"script", command.root.Path("ask.vbs")}).out, "[s3cret token]\n");
  EXPECT_EQ(command.Run({"sourceprojects", "Shop", "edit", "1", "--password-stdin"}).status, 2) << "no line";
  EXPECT_EQ(List()[0].at("hasPassword"), true);
  command.root.MakeFile("input", "\n");
  command.standardInput = command.root.Path("input");
  EXPECT_EQ(command.Run({"sourceprojects", "Shop", "edit", "1", "--password-stdin"}).status, 0);
  EXPECT_EQ(List()[0].at("hasPassword"), false) << "an empty line takes it out";
}

TEST_F(SourceprojectsCommandTest, AsksForAPasswordOnATerminalOnly) {
  const CommandResult result = Add("$/Suite", "C:\\Src", {"--password"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("--password-stdin"));
  EXPECT_TRUE(List().empty());
}

TEST_F(SourceprojectsCommandTest, TakesAPasswordFromATerminalWithoutShowingIt) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  Add("$/Suite", "C:\\Src");
  const auto edit = [&](const std::string& answer) {
    return command.RunOnTerminal({"sourceprojects", "Shop", "edit", "1", "--password"}, 80, answer);
  };
  const CommandResult cancelled = edit("s3c\x03");
  EXPECT_EQ(cancelled.status, 3);
  EXPECT_EQ(List()[0].at("hasPassword"), false);
  const CommandResult result = edit("s3cret\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("Password for $/Suite: "));
  EXPECT_THAT(result.out, Not(HasSubstr("s3c")));
  EXPECT_EQ(List()[0].at("hasPassword"), true);
}

TEST_F(SourceprojectsCommandTest, LetsTheEndsOfPathAndFolderAgree) {
  // What is behind the folder in a file's path follows the project as it is.
  Add("$/Suite", "C:\\Src\\");
  Add("$/Lib/", "C:\\Lib");
  Add("$/", "C:\\All");
  Add("$/Root", "D:\\");
  const json list = List();
  EXPECT_EQ(list[0].at("workingFolder"), "C:\\Src");
  EXPECT_EQ(list[0].at("flags"), 0x2000) << "recursive, when nothing is said";
  EXPECT_EQ(list[1].at("workingFolder"), "C:\\Lib\\");
  EXPECT_EQ(list[2].at("workingFolder"), "C:\\All\\");
  EXPECT_EQ(list[3].at("workingFolder"), "D:\\");
  EXPECT_EQ(list[3].at("project"), "$/Root/");
}

TEST_F(SourceprojectsCommandTest, WarnsOfFilesThatWouldGoToANestedProject) {
  EXPECT_EQ(Add("$/Suite", "C:\\Src").err, "");
  EXPECT_THAT(Add("$/Lib", "C:\\Src\\Lib").err,
              HasSubstr("A file in C:\\Src itself would be checked in as $/LibFILE, through $/Lib."));
  EXPECT_EQ(command.Run({"sourceprojects", "Shop", "edit", "$/Suite", "--project", "$/Suite/"}).err, "");
}

TEST_F(SourceprojectsCommandTest, NotesAnIniFileThatIsNotThere) {
  const CommandResult result = command.Run({"sourceprojects", "Shop", "add", "--project", "$/Suite", "--ini",
                                            command.root.Path("gone.ini"), "--folder", "C:\\Src"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, HasSubstr("There is no file " + command.root.Path("gone.ini")));
}

TEST_F(SourceprojectsCommandTest, RefusesWhatCanNotBe) {
  const auto refused = [&](HostCommand::Arguments arguments) {
    arguments.insert(arguments.begin(), {"sourceprojects", "Shop"});
    const CommandResult result = command.Run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.err;
  };
  EXPECT_THAT(refused({"add", "$/Suite"}), HasSubstr("needs its path and the ini file"));
  EXPECT_THAT(refused({"add", "--ini", "x.ini"}), HasSubstr("needs its path and the ini file"));
  EXPECT_THAT(refused({"add", "Suite", "--ini", "x.ini"}), HasSubstr("'Suite' is no path inside"));
  EXPECT_THAT(refused({"add", "$/Suite", "--ini", "x.ini", "--database", std::string(256, 'x')}),
              HasSubstr("at most 255 characters"));
  EXPECT_THAT(refused({"add", "$/Suite", "--ini", "x.ini", "--flags", "fast"}),
              HasSubstr("There are: readonly"));
  EXPECT_THAT(refused({"edit"}), HasSubstr("Which source project?"));
  EXPECT_THAT(refused({"edit", "$/Suite"}), HasSubstr("has no source project '$/Suite'"));
  EXPECT_THAT(refused({"change"}), HasSubstr("change"));
  EXPECT_TRUE(List().empty());
  Add("$/Suite", "C:\\A");
  Add("$/suite", "C:\\B");
  EXPECT_THAT(refused({"remove", "$/Suite"}), HasSubstr("$/Suite (1), $/suite (2)"));
}

}  // namespace
}  // namespace hearthmake::host
