#include "adapters/posix/CommandLine.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace hearthmake::posix {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

std::vector<std::pair<std::string, std::string>> Candidates(std::string_view line) {
  std::vector<std::pair<std::string, std::string>> result;
  CommandLine commandLine(line);
  while (const auto candidate = commandLine.NextCandidate())
    result.emplace_back(candidate->program, candidate->arguments);
  return result;
}

TEST(CommandLine, TakesAQuotedStartAsTheProgram) {
  EXPECT_THAT(Candidates("\"C:\\a b\\c.exe\" /x \"y z\""),
              ElementsAre(Pair("C:\\a b\\c.exe", " /x \"y z\"")));
  EXPECT_THAT(Candidates("  \"c\""), ElementsAre(Pair("c", "")));
  EXPECT_THAT(Candidates("\"no end x"), ElementsAre(Pair("no end x", "")));
}

TEST(CommandLine, TriesEveryBeginningOfAnUnquotedLine) {
  EXPECT_THAT(Candidates("C:\\a b\\c.exe  x"),
              ElementsAre(Pair("C:\\a", " b\\c.exe  x"), Pair("C:\\a b\\c.exe", "  x"),
                          Pair("C:\\a b\\c.exe  x", "")));
  EXPECT_THAT(Candidates("\tvb6\t/make "), ElementsAre(Pair("vb6", "\t/make "), Pair("vb6\t/make", " ")));
}

TEST(CommandLine, NamesNoProgramWhenThereIsNone) {
  EXPECT_THAT(Candidates(""), IsEmpty());
  EXPECT_THAT(Candidates(" \t "), IsEmpty());
  EXPECT_THAT(Candidates("\"\" x"), IsEmpty());
  EXPECT_THAT(Candidates("\""), IsEmpty());
}

struct Split {
  const char* line;
  std::vector<std::string> arguments;
};

class CommandLineSplit : public ::testing::TestWithParam<Split> {};

TEST_P(CommandLineSplit, TakesArgumentsApartAsWindowsProgramsDo) {
  EXPECT_EQ(CommandLine::SplitArguments(GetParam().line), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, CommandLineSplit,
    ::testing::Values(
        Split{"", {}}, Split{" \t ", {}}, Split{"a b\tc", {"a", "b", "c"}},
        Split{"\"a b c\" d e", {"a b c", "d", "e"}}, Split{"\"\"", {""}}, Split{"a \"\" b", {"a", "", "b"}},
        Split{"\"ab\\\"c\" \"\\\\\" d", {"ab\"c", "\\", "d"}},
        Split{"a\\\\b d\"e f\"g h", {"a\\\\b", "de fg", "h"}}, Split{"a\\\\\\\"b c d", {"a\\\"b", "c", "d"}},
        Split{"a\\\\\\\\\"b c\" d e", {"a\\\\b c", "d", "e"}}, Split{"\"C:\\a b\\\\\" x", {"C:\\a b\\", "x"}},
        Split{"\"C:\\a b\\\" x", {"C:\\a b\" x"}}, Split{"C:\\dir\\ x", {"C:\\dir\\", "x"}},
        Split{"x\\", {"x\\"}}, Split{"\\\\server\\s", {"\\\\server\\s"}}, Split{"\"a\"\"b\"", {"a\"b"}},
        Split{"\"a b\"\"c d\"", {"a b\"c d"}}, Split{"\"\"\"Call me\"\"\" x", {"\"Call me\"", "x"}},
        Split{"\"a\"b\"c d\"", {"abc d"}}, Split{"\"open end ", {"open end "}}, Split{"\\\"a\\\"", {"\"a\""}},
        Split{"a\nb c\rd", {"a\nb", "c\rd"}},
        Split{"$HOME `x` 'a b' *.vbp ; |", {"$HOME", "`x`", "'a", "b'", "*.vbp", ";", "|"}},
        Split{"Gr\xC3\xB6\xC3\x9F"
              "e",
              {"Gr\xC3\xB6\xC3\x9F"
               "e"}}));

}  // namespace
}  // namespace hearthmake::posix
