#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/HostCommand.hpp"
#include "support/ShellOnTerminal.hpp"

// The completions in the shells themselves: keys are typed, and what the command is then called with counts.

namespace hearthmake::host {
namespace {

using support::HostCommand;
using support::ShellOnTerminal;

struct Shell {
  const char* name;
  std::vector<std::string> arguments;
  std::string setUp;
};

void PrintTo(const Shell& shell, std::ostream* out) { *out << shell.name; }

const std::string kCompletions = SOURCE_DIRECTORY "/completions";

class ShellCompletion : public testing::TestWithParam<Shell> {
 protected:
  void SetUp() override {
    if (!ShellOnTerminal::IsThere(GetParam().name)) GTEST_SKIP() << GetParam().name << " is not installed";
    if (!HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
    command.MakeShop();
    command.Run({"new", kTricky});
    command.root.MakeFolder("src/with blank/inner");
  }

  static constexpr const char* kTricky = "Déjà vu 'n' \"more\" $HOME";
  HostCommand command;
};

TEST_P(ShellCompletion, CompletesWhatIsTyped) {
  ShellOnTerminal shell(command, GetParam().arguments, GetParam().setUp);
  // Words, options and their values.
  EXPECT_EQ(shell.Enter("hearthmake vers\tSho\t--bu\tmin\t"), "<version><Shop><--bump><minor>");
  EXPECT_EQ(shell.Enter("hearthmake version Shop --bump=maj\t"), "<version><Shop><--bump=major>");
  EXPECT_EQ(shell.Enter("hearthmake packages Shop ass\t"), "<packages><Shop><assign>");
  // Names, in any case.
  EXPECT_EQ(shell.Enter("hearthmake show Shop Too\tCompatibleM\t"), "<show><Shop><Tool><CompatibleMode>");
  EXPECT_EQ(shell.Enter("hearthmake set shop too\tcompatiblem\tbin\t"),
            "<set><shop><Tool><CompatibleMode><BinaryCompatibility>");
  // Names that the shell would take apart, begun with and without quotes.
  const std::string tricky = "<show><" + std::string(kTricky) + "><x>";
  EXPECT_EQ(shell.Enter("hearthmake show Dé\tx"), tricky);
  EXPECT_EQ(shell.Enter("hearthmake show \"Dé\tx"), tricky);
  EXPECT_EQ(shell.Enter("hearthmake show 'Dé\tx"), tricky);
  // Paths.
  EXPECT_EQ(shell.Enter("hearthmake add Shop Too\t"), "<add><Shop><Tool.vbp>");
  // Some shells keep the slash at the end.
  EXPECT_THAT(shell.Enter("hearthmake scan Shop with\tinn\t"),
              testing::StartsWith("<scan><Shop><with blank/inner"));
}

INSTANTIATE_TEST_SUITE_P(
    Shells, ShellCompletion,
    testing::Values(
        Shell{"bash", {"bash", "--norc", "--noprofile", "-i"}, "source " + kCompletions + "/hearthmake.bash"},
        Shell{"zsh",
              {"zsh", "-f", "-i"},
              "fpath=(" + kCompletions + " $fpath); autoload -Uz compinit; compinit -u -D"},
        Shell{"fish", {"fish", "--no-config", "-i"}, "source " + kCompletions + "/hearthmake.fish"}),
    [](const auto& shell) { return std::string(shell.param.name); });

}  // namespace
}  // namespace hearthmake::host
