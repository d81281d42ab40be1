#include "host/commandline/ShellWords.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

using testing::ElementsAre;

TEST(ShellWords, TakesQuotesAndBackslashesAway) {
  EXPECT_THAT(SplitShellLine("a  'b c' \"d $e \\\" f\" g\\ h'i'").words,
              ElementsAre("a", "b c", "d $e \" f", "g hi"));
  EXPECT_THAT(SplitShellLine("a ''").words, ElementsAre("a", ""));
  EXPECT_THAT(SplitShellLine("\"C:\\dir\\file\"").words, ElementsAre("C:\\dir\\file"));
}

TEST(ShellWords, EndsWithTheWordAtTheCursor) {
  EXPECT_THAT(SplitShellLine("").words, ElementsAre(""));
  EXPECT_THAT(SplitShellLine("a ").words, ElementsAre("a", ""));
  const ShellWords open = SplitShellLine("a \"b c");
  EXPECT_THAT(open.words, ElementsAre("a", "b c"));
  EXPECT_EQ(open.quote, '"');
  EXPECT_EQ(open.typed, "\"b c");
  EXPECT_EQ(SplitShellLine("a 'b'").quote, 0);
  EXPECT_THAT(SplitShellLine("a b\\").words, ElementsAre("a", "b"));
}

TEST(ShellWords, KnowsTheHomeFolderOutsideOfQuotes) {
  setenv("HOME", "/home/me", 1);
  EXPECT_THAT(SplitShellLine("~/x '~/x' ~x ~").words, ElementsAre("/home/me/x", "~/x", "~x", "/home/me"));
}

TEST(ShellWords, QuotesSoThatTheTextIsReadAgain) {
  for (const char* text :
       {"plain", "with blank", "It's \"so\" \\ $x `y` !z", "Déjà", "a;b|c&d(e)<f>*?[g]{h}#~"}) {
    EXPECT_THAT(SplitShellLine(QuoteForShell(text, 0)).words, ElementsAre(text));
    EXPECT_THAT(SplitShellLine("'" + QuoteForShell(text, '\'') + "'").words, ElementsAre(text));
    EXPECT_THAT(SplitShellLine("\"" + QuoteForShell(text, '"') + "\"").words, ElementsAre(text));
  }
}

}  // namespace
}  // namespace hearthmake::host
