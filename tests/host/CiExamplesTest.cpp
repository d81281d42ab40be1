// The examples of docs/ci.md.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>

#include "host/commandline/CommandLine.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

using testing::IsEmpty;

struct Example {
  std::string language;
  std::vector<std::string> lines;
};

std::vector<Example> Examples() {
  std::ifstream file(SOURCE_DIRECTORY "/docs/ci.md");
  std::vector<Example> examples;
  bool isInside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("```")) {
      isInside = !isInside;
      if (isInside) examples.push_back({line.substr(3), {}});
    } else if (isInside) {
      examples.back().lines.push_back(line);
    }
  }
  return examples;
}

// The words of a command that a shell would make of a line: quotes are taken away, operators and redirections
// end it.
std::vector<std::vector<std::string>> CommandsOf(const std::string& line) {
  std::vector<std::vector<std::string>> commands(1);
  std::string word;
  bool hasWord = false;
  char quote = 0;
  const auto endWord = [&] {
    if (hasWord) commands.back().push_back(word);
    word.clear();
    hasWord = false;
  };
  for (const char c : line) {
    if (quote != 0 ? c == quote : (c == '\'' || c == '"')) {
      quote = quote != 0 ? '\0' : c;
      hasWord = true;
    } else if (quote == 0 && (c == ' ' || c == '|' || c == '&' || c == '>')) {
      endWord();
      if (c != ' ') commands.emplace_back();
    } else {
      word += c;
      hasWord = true;
    }
  }
  endWord();
  return commands;
}

// Without what YAML and Groovy put around a command.
std::string CommandLineOf(std::string line) {
  line.erase(0, line.find_first_not_of(' '));
  for (const char* prefix : {"- ", "run: ", "sh '"}) {
    if (!line.starts_with(prefix)) continue;
    line.erase(0, std::string(prefix).size());
    if (prefix == std::string("sh '")) line.pop_back();
  }
  return line;
}

TEST(CiExamples, AreOfEachServerAndAContainer) {
  std::map<std::string, int> counts;
  for (const Example& example : Examples()) ++counts[example.language];
  EXPECT_EQ(counts["yaml"], 2);
  EXPECT_EQ(counts["groovy"], 1);
  EXPECT_EQ(counts["dockerfile"], 1);
}

TEST(CiExamples, UseCommandsAsTheyAre) {
  std::size_t count = 0;
  for (const Example& example : Examples()) {
    for (const std::string& line : example.lines) {
      for (std::vector<std::string> words : CommandsOf(CommandLineOf(line))) {
        const auto program = std::find(words.begin(), words.end(), "hearthmake");
        // As a name of something else it is followed by no word.
        if (program == words.end() || program + 1 == words.end() || example.language == "dockerfile")
          continue;
        words.erase(words.begin(), program + 1);
        EXPECT_THAT(UsageProblem(words), IsEmpty()) << line;
        ++count;
      }
    }
  }
  EXPECT_GT(count, 20U);
}

TEST(CiExamples, AreValidYaml) {
  if (std::system("python3 -c 'import yaml' 2>/dev/null") != 0)
    GTEST_SKIP() << "python3-yaml is not installed";
  const support::PosixFolder folder;
  for (const Example& example : Examples()) {
    if (example.language != "yaml") continue;
    std::string text;
    for (const std::string& line : example.lines) text += line + "\n";
    folder.MakeFile("example.yml", text);
    const std::string check =
        "python3 -c 'import sys, yaml; assert isinstance(yaml.safe_load(open(sys.argv[1])), "
        "dict)' '" +
        folder.Path("example.yml") + "'";
    EXPECT_EQ(std::system(check.c_str()), 0) << text;
  }
}

TEST(UsageProblem, TellsWhatIsWrong) {
  EXPECT_THAT(UsageProblem({"build", "Shop", "--no-such-option"}), testing::HasSubstr("--no-such-option"));
  EXPECT_THAT(UsageProblem({}), testing::Not(IsEmpty()));
  EXPECT_THAT(UsageProblem({"build", "Shop", "--junit", "a.xml"}), IsEmpty());
  EXPECT_THAT(UsageProblem({"build", "--help"}), IsEmpty());
}

}  // namespace
}  // namespace hearthmake::host
