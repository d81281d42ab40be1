#include "host/commandline/ManPage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "host/HostError.hpp"
#include "host/commandline/CommandLine.hpp"

namespace hearthmake::host {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const std::string kPage = BINARY_DIRECTORY "/doc/hearthmake.1";

std::string Content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// What a shell command says, both streams; a command that is not there is nothing.
std::optional<std::string> Said(const std::string& tool, const std::string& arguments) {
  if (std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) != 0) return std::nullopt;
  std::string text;
  FILE* pipe = popen((tool + " " + arguments + " 2>&1").c_str(), "r");
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) text += static_cast<char>(c);
  pclose(pipe);
  return text;
}

TEST(ManPage, HasEveryWordAndOptionThatIsDeclared) {
  const std::string page = Content(kPage);
  const CommandDeclaration declaration;
  for (const CLI::App* word : declaration.App().get_subcommands([](const CLI::App*) { return true; })) {
    EXPECT_THAT(page, HasSubstr(".SS \\fB" + RoffText(word->get_name()) + "\\fR"));
    for (const CLI::Option* option : word->get_options()) {
      for (const std::string& name : option->get_lnames())
        EXPECT_THAT(page, HasSubstr("\\fB" + RoffText("--" + name) + "\\fR")) << word->get_name();
    }
  }
}

// Read by the command; those that scripts and children see are all of the process.
TEST(ManPage, HasEveryVariableThatIsRead) {
  const std::string page = Content(kPage);
  const std::string environment =
      page.substr(page.find(".SH ENVIRONMENT"), page.find(".SH FILES") - page.find(".SH ENVIRONMENT"));
  static const std::regex kRead(R"re((?:getenv|EnvironmentValue)\("([A-Z_]+)"\)|Variable = "([A-Z_]+)")re");
  std::set<std::string> names;
  for (const char* folder : {"/src/host", "/src/adapters/posix"}) {
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(SOURCE_DIRECTORY + std::string(folder))) {
      const bool isOfWindows = entry.path().parent_path().filename() == "windows";
      if (isOfWindows || !entry.is_regular_file()) continue;
      const std::string text = Content(entry.path());
      for (std::sregex_iterator match(text.begin(), text.end(), kRead); match != std::sregex_iterator();
           ++match)
        names.insert((*match)[1].matched ? (*match)[1] : (*match)[2]);
    }
  }
  EXPECT_GT(names.size(), 5U);
  names.erase("PATH");
  for (const std::string& name : names) EXPECT_THAT(environment, HasSubstr(name));
}

TEST(ManPage, IsCleanForMan) {
  const auto said = Said("man", "--warnings -E UTF-8 -l -Tutf8 -Z " + kPage + " >/dev/null");
  if (!said) GTEST_SKIP() << "man is not installed";
  EXPECT_EQ(*said, "");
}

TEST(ManPage, IsCleanForGroff) {
  const auto said = Said("groff", "-ww -man -Tutf8 -z " + kPage);
  if (!said) GTEST_SKIP() << "groff is not installed";
  EXPECT_EQ(*said, "");
}

TEST(ManPage, IsCleanForMandoc) {
  const auto said = Said("mandoc", "-Tlint -Wwarning " + kPage);
  if (!said) GTEST_SKIP() << "mandoc is not installed";
  EXPECT_EQ(*said, "");
}

TEST(ManPage, ShowsTextAsItIs) {
  EXPECT_EQ(RoffText(".so 'a-b' \\n ~^`…"), "\\&.so \\(aqa\\-b\\(aq \\en \\(ti\\(ha\\(ga\\[u2026]");
}

TEST(ManPage, RefusesATemplateWithoutItsMarks) {
  const CommandDeclaration declaration;
  EXPECT_THROW(ManPage(declaration.App(), "@VERSION@ @DATE@ @OPTIONS@\n", "1", "2"), HostError);
}

}  // namespace
}  // namespace hearthmake::host
