#include "host/commandline/CommandLine.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;
using testing::StartsWith;

class CommandLineTest : public testing::Test {
 protected:
  HostCommand command;
};

TEST_F(CommandLineTest, HelpsWithEveryWord) {
  const CommandResult overview = command.RunBare({"--help"});
  EXPECT_EQ(overview.status, 0);
  EXPECT_THAT(overview.out, HasSubstr("Exit status: 0 done, 1 the build failed"));
  for (const char* word :
       {"new", "list", "show", "delete", "add", "remove", "scan", "refs", "order", "build", "bases", "set",
        "settings", "sources", "label", "checkin", "checkouts", "sourceprojects", "doctor"}) {
    EXPECT_THAT(overview.out, HasSubstr(std::string("\n  ") + word + " "));
    const CommandResult help = command.RunBare({word, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr(std::string("Example:\n  hearthmake ") + word));
    EXPECT_EQ(help.err, "");
  }
}

TEST_F(CommandLineTest, TellsItsVersion) {
  const CommandResult result = command.RunBare({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, StartsWith("hearthmake 0."));
}

TEST_F(CommandLineTest, RefusesWrongUsage) {
  for (const auto& arguments : std::vector<HostCommand::Arguments>{{},
                                                                   {"bulid"},
                                                                   {"new"},
                                                                   {"new", "a", "b"},
                                                                   {"list", "--colour"},
                                                                   {"refs", "Shop", "--add", "Lib"}}) {
    const CommandResult result = command.Run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, StartsWith("hearthmake: error: "));
    EXPECT_EQ(result.out, "");
  }
  EXPECT_THAT(command.Run({"bulid"}).err, HasSubstr("There is no command 'bulid'."));
}

TEST_F(CommandLineTest, TakesGlobalOptionsOnEitherSideOfTheWord) {
  EXPECT_EQ(command.RunBare({"new", "Shop", "--data", command.Data()}).status, 0);
  EXPECT_THAT(command.RunBare({"--data", command.Data(), "list"}).out, HasSubstr("Shop"));
}

TEST_F(CommandLineTest, TakesWordsOfItsOwnAsNames) {
  EXPECT_EQ(command.Run({"new", "list"}).status, 0);
  EXPECT_THAT(command.Run({"show", "list"}).out, StartsWith("list"));
}

}  // namespace
}  // namespace hearthmake::host
