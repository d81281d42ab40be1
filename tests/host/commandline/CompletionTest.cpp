#include "host/commandline/Completion.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "host/commandline/CommandLine.hpp"
#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using support::CommandResult;
using support::HostCommand;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Words = std::vector<std::string>;

class CompletionTest : public testing::Test {
 protected:
  // The values, with what the shell is to add in front.
  Words At(Words words) {
    words.insert(words.begin(), {"__complete", "words", "--data", command.Data()});
    const CommandResult result = command.RunBare(words);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    Words lines = support::LinesOf(result.out);
    for (std::string& line : lines) line = line.substr(0, line.find('\t'));
    return lines;
  }

  HostCommand command;
  const CommandDeclaration declaration;
};

TEST_F(CompletionTest, KnowsEveryWordAndOptionThatIsDeclared) {
  const auto texts = [&](const Words& words) {
    Words values;
    for (const auto& value : Complete(declaration.App(), words).values) values.push_back(value.text);
    return values;
  };
  const Words all = texts({""});
  for (const CLI::App* word : declaration.App().get_subcommands([](const CLI::App*) { return true; })) {
    EXPECT_THAT(all, Contains(word->get_name()));
    if (word->get_prefix_command()) continue;
    const Words options = texts({word->get_name(), "--"});
    EXPECT_THAT(options, Contains("--data")) << word->get_name();
    for (const CLI::Option* option : word->get_options()) {
      for (const std::string& name : option->get_lnames())
        EXPECT_THAT(options, Contains("--" + name)) << word->get_name();
    }
  }
}

TEST_F(CompletionTest, OffersTheNamesOfTheDatabase) {
  command.MakeShop();
  command.Run({"packages", "Shop", "add", "Orders"});
  EXPECT_THAT(At({"show", ""}), ElementsAre("values", "Shop"));
  EXPECT_THAT(At({"show", "shop", ""}), ElementsAre("values", "App", "Lib", "Tool"));
  EXPECT_THAT(At({"remove", "1", "App", "l"}), ElementsAre("values", "Lib"));
  EXPECT_THAT(At({"packages", "Shop", "show", ""}), ElementsAre("values", "Orders"));
  EXPECT_THAT(At({"packages", "Shop", "assign", "Orders", "T"}), ElementsAre("values", "Tool"));
  EXPECT_THAT(At({"refs", "Shop", "--drop", "L"}), ElementsAre("values", "Lib"));
  EXPECT_THAT(At({"refs", "Shop", "--add", "App", "L"}), ElementsAre("files", "Lib"));
  EXPECT_THAT(At({"show", "Nope", ""}), ElementsAre("values"));
}

TEST_F(CompletionTest, OffersPropertiesAndTheirValues) {
  command.MakeShop();
  EXPECT_THAT(At({"show", "Shop", "Lib", "dllb"}), ElementsAre("values", "DllBaseAddress"));
  EXPECT_THAT(At({"set", "Shop", "s"}), ElementsAre("values", "StartDllBaseAddress"));
  EXPECT_THAT(At({"set", "Shop", "Lib", "FullP"}), ElementsAre("values"));  // it can be read only
  EXPECT_THAT(At({"set", "Shop", "Lib", "CompileMe", ""}), ElementsAre("values", "true", "false"));
  EXPECT_THAT(At({"set", "Shop", "Lib", "CompatibleMode", "p"}),
              ElementsAre("values", "ProjectCompatibility"));
  EXPECT_THAT(At({"set", "Shop", "Lib", "CopyPath", ""}), ElementsAre("files"));
  EXPECT_THAT(At({"set", "Shop", "Name", ""}), ElementsAre("values"));
  EXPECT_THAT(At({"settings", "RunS"}), ElementsAre("values", "RunScripts"));
  EXPECT_THAT(At({"settings", "RunScripts", "t"}), ElementsAre("values", "true"));
  EXPECT_THAT(At({"settings", "--host", "Wine"}), ElementsAre("values", "WinePrefix", "WineProgram"));
  EXPECT_THAT(At({"scripts", "Shop", "BeforeP"}), ElementsAre("values", "BeforeProjectComplie"));
  EXPECT_THAT(At({"packages", "Shop", "add", "X", "--LibraryPackage", ""}),
              ElementsAre("values", "true", "false"));
}

TEST_F(CompletionTest, OffersWhatAnOptionTakes) {
  EXPECT_THAT(At({"version", "Shop", "--bump", ""}), ElementsAre("values", "major", "minor", "revision"));
  EXPECT_THAT(At({"version", "Shop", "--bump=r"}), ElementsAre("values", "--bump=revision"));
  EXPECT_THAT(At({"--wine-prefix", ""}), ElementsAre("folders"));
  EXPECT_THAT(At({"add", "Shop", ""}), ElementsAre("files"));
  EXPECT_THAT(At({"script", "x.vbs", "-"}), ElementsAre("files"));
  EXPECT_THAT(At({"list", "--json", "--js"}), ElementsAre("values"));  // once is enough
  EXPECT_THAT(At({"list", "--", "--js"}), ElementsAre("values"));
}

TEST_F(CompletionTest, QuotesForBash) {
  command.Run({"new", "It's a build"});
  const auto bash = [&](const std::string& line, const std::string& replaced) {
    return command
        .RunBare({"__complete", "bash", "hearthmake --data '" + command.Data() + "' " + line, replaced})
        .out;
  };
  EXPECT_EQ(bash("show It", "It"), "values\nIt\\'s\\ a\\ build\n");
  EXPECT_EQ(bash("show It\\'s\\ ", "It\\'s\\ "), "values\nIt\\'s\\ a\\ build\n");
  EXPECT_EQ(bash("show \"It", "It"), "values\nIt's a build\n");
  EXPECT_EQ(bash("show 'It", "It"), "values\nIt'\\''s a build\n");
  EXPECT_EQ(bash("version x --bump=ma", "ma"), "values\nmajor\n");
}

TEST_F(CompletionTest, NeverWritesAndNeverComplains) {
  EXPECT_THAT(At({"show", ""}), ElementsAre("values"));
  EXPECT_FALSE(std::filesystem::exists(command.Data()));
  command.MakeShop();
  const auto listing = [&] {
    Words names;
    for (const auto& entry : std::filesystem::directory_iterator(command.Data()))
      names.push_back(entry.path());
    return names;
  };
  const Words before = listing();
  const auto time = std::filesystem::last_write_time(command.Data() + "/Build.mdb");
  EXPECT_THAT(At({"show", "Shop", ""}), Contains("Lib"));
  EXPECT_EQ(listing(), before);
  EXPECT_EQ(std::filesystem::last_write_time(command.Data() + "/Build.mdb"), time);
  command.root.MakeFile("data/Build.mdb", "no database");
  EXPECT_THAT(At({"show", "Shop", ""}), ElementsAre("values"));
  EXPECT_THAT(At({"nope", ""}), Not(IsEmpty()));
  EXPECT_EQ(command.RunBare({"__complete"}).status, 0);
  EXPECT_EQ(command.RunBare({"__complete", "bash", "", ""}).status, 0);
  command.environment = {{"HOME", std::nullopt}};
  EXPECT_EQ(command.RunBare({"__complete", "words", "show", ""}).out, "values\n");
}

}  // namespace
}  // namespace hearthmake::host
