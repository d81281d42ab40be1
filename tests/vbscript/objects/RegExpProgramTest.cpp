#include "vbscript/objects/RegExpProgram.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {
namespace {

using Clock = std::chrono::steady_clock;

// The text that a pattern finds first; nothing when it finds none.
std::optional<std::u16string> Found(std::u16string_view pattern, std::u16string_view text,
                                    RegExpFlags flags = {}) {
  RegExpProgram program(pattern, flags);
  const std::u16string subject = flags.ignoreCase ? Lower(text) : std::u16string(text);
  Budget budget;
  if (!program.Match(subject, 0, budget)) return std::nullopt;
  const auto places = program.Places();
  return std::u16string(text.substr(places[0], places[1] - places[0]));
}

struct DialectCase {
  std::u16string_view pattern;
  std::u16string_view subject;
  std::optional<std::u16string> found;
  RegExpFlags flags = {};
};

std::u16string_view Raw(const char16_t* units, std::size_t count) { return {units, count}; }

TEST(RegExpProgram, ReadsTheDialect) {
  const DialectCase cases[] = {
      {u"a$", u"a\n", std::nullopt},
      {u"a$", u"ba", u"a"},
      {u"a$", u"a\nb", u"a", {.multiline = true}},
      {u"a$", u"a\r\nb", u"a", {.multiline = true}},
      {u"^b", u"a\r\nb", u"b", {.multiline = true}},
      {u"^b", u"a\rb", u"b", {.multiline = true}},
      {u"^b", u"a\nb", std::nullopt},
      {u".+", u"a\rb\nc", u"a\rb"},
      {u"\\s+", u"x \t\n\v\f\ry", u" \t\n\v\f\r"},
      {u"\\s", u"\u00A0\u2028\u3000", std::nullopt},
      {u"\\d+", u"\u0661\u066212", u"12"},
      {u"\\w+", u"\u00E9ab_9\u00E9", u"ab_9"},
      {u"\\bx\\b", u"\u00E9x\u00E9", u"x"},
      {u"\\W", u"a\u4E2D", u"\u4E2D"},
      {u"[\\W]", u"a\u4E2D", u"\u4E2D"},
      {u"[^\\w]", u"a\u4E2D", u"\u4E2D"},
      {u"[\\D]", u"1\u4E2D", u"\u4E2D"},
      {u"[\\s\\S]+", u"a\n\u4E2D", u"a\n\u4E2D"},
      {u"[\u0400-\u04FF]+", u"ab\u0416\u0436c", u"\u0416\u0436"},
      {u"[^\u0400-\u04FF]+", u"\u0416ab\u0436", u"ab"},
      {u"[]", u"a", std::nullopt},
      {u"[]*b", u"ab", u"b"},
      {u"[^]+", u"a\nb", u"a\nb"},
      {u"\\x41\\u0042\\103", u"xABCx", u"ABC"},
      {u"\\cJ", u"a\n", u"\n"},
      {u"[\\b]", u"a\b", u"\b"},
      {u"\\Qa", u"Qa", u"Qa"},
      {u"\\p{2}", u"xpp", u"pp"},
      {u"x{,2}", u"x{,2}", u"x{,2}"},
      {u"a{2,3}?", u"aaa", u"aa"},
      {u"(a)|b\\1c", u"bc", u"bc"},  // a group that took no part is as good as empty
      {u"(a\\1)b", u"ab", u"ab"},
      {u"(\\w)\\1", u"abccd", u"cc"},
      {u"(?:ab)+(?=c)", u"ababac ababc", u"abab"},
      {u"a(?!b)", u"abac", u"a"},
      {u"(?=a)*b", u"b", u"b"},
      {u"(?:a|b){0}c", u"abc", u"c"},
      {u"(?:)*()+a", u"a", u"a"},
      {u"(a*)*b", u"aab", u"aab"},
      {u"x|", u"ax", u""},
      {u"", u"abc", u""},
      {u"\u00C4\u0416", u"\u00E4\u0436", u"\u00E4\u0436", {.ignoreCase = true}},
      {u"[\u0410-\u042F]+", u"\u0436\u0416", u"\u0436\u0416", {.ignoreCase = true}},
      {u"[^A-C]", u"abcD", u"D", {.ignoreCase = true}},
      {u"(\u0416)\\1", u"\u0416\u0436", u"\u0416\u0436", {.ignoreCase = true}},
      {u"\u00FF", u"\u0178", u"\u0178", {.ignoreCase = true}},
      {u"k", u"\u212A", std::nullopt, {.ignoreCase = true}},
      {u"STRASSE", u"straße", std::nullopt, {.ignoreCase = true}},
      {Raw(u"a\0b", 3), Raw(u"xa\0b", 4), std::u16string(u"a\0b", 3)},
      {Raw(u"\xD83D", 1), Raw(u"\xD83D\xDE00", 2), std::u16string(u"\xD83D")},
      {u".", Raw(u"\xDE00\xD83D", 2), std::u16string(u"\xDE00")},
  };
  for (const DialectCase& one : cases)
    EXPECT_EQ(Found(one.pattern, one.subject, one.flags), one.found)
        << automation::Utf16ToUtf8(one.pattern) << " on " << automation::Utf16ToUtf8(one.subject);
}

TEST(RegExpProgram, GivesThePlacesOfGroups) {
  RegExpProgram program(u"(a)(x)?(b)", {});
  Budget budget;
  ASSERT_TRUE(program.Match(u"-ab", 0, budget));
  const auto places = program.Places();
  constexpr std::size_t kNone = RegExpProgram::kNoPlace;
  EXPECT_EQ(std::vector<std::size_t>(places.begin(), places.end()),
            (std::vector<std::size_t>{1, 3, 1, 2, kNone, kNone, 2, 3}));
  EXPECT_EQ(program.GroupCount(), 3u);
}

TEST(RegExpProgram, BeginsTheSearchWhereItIsTold) {
  RegExpProgram program(u"a", {});
  Budget budget;
  ASSERT_TRUE(program.Match(u"aba", 1, budget));
  EXPECT_EQ(program.Places()[0], 2u);
  EXPECT_FALSE(program.Match(u"aba", 3, budget));
  EXPECT_FALSE(program.Match(u"aba", 4, budget));
  RegExpProgram anchored(u"^a", {});
  EXPECT_FALSE(anchored.Match(u"aa", 1, budget));
}

// Long subjects are searched in windows: nothing may be lost at their borders.
TEST(RegExpProgram, FindsAMatchAnywhereInALongSubject) {
  for (const std::size_t place : {0, 127, 128, 129, 65'535, 65'536, 199'990, 199'997}) {
    std::u16string subject(200'000, u'-');
    subject.replace(place, 3, u"abb");
    for (const auto* pattern : {u"ab+", u"abb", u"[a]b*$|ab{2}", u"(?:a|x)(b)\\1"}) {
      Budget budget;
      RegExpProgram program(pattern, {});
      ASSERT_TRUE(program.Match(subject, 0, budget)) << place;
      EXPECT_EQ(program.Places()[0], place);
      EXPECT_EQ(program.Places()[1], place + 3);
    }
  }
}

TEST(RegExpProgram, MatchesTheWholeOfALongSubject) {
  std::u16string subject;
  while (subject.size() < 2'000'000) subject += u"word and word ";
  Budget budget;
  RegExpProgram program(u"(?:(\\w+)\\s)*", {});
  ASSERT_TRUE(program.Match(subject, 0, budget));
  EXPECT_EQ(program.Places()[1], subject.size());
}

TEST(RegExpProgram, FinishesAMatchThatBacktracksALot) {
  Budget budget;
  RegExpProgram program(u"(a+)+$", {});
  EXPECT_FALSE(program.Match(std::u16string(20, u'a') + u"!", 0, budget));
  RegExpProgram other(u"(?:a|aa)+b|a+!", {});
  ASSERT_TRUE(other.Match(std::u16string(24, u'a') + u"!", 0, budget));
  EXPECT_EQ(other.Places()[1], 25u);
}

TEST(RegExpProgram, EndsEndlessBacktrackingInTime) {
  struct {
    const char16_t* pattern;
    std::u16string subject;
  } const cases[] = {
      {u"(a+)+$", std::u16string(100, u'a') + u"!"},
      {u"(a*)*b", std::u16string(5'000, u'a')},
      {u"(?:a|aa)+$", std::u16string(1'000'000, u'a') + u"!"},
      {u"(.*)(.*)(.*)(.*)[0-9]x", std::u16string(20'000, u'a')},
      {u"(x+x+)+y", std::u16string(300'000, u'x')},
      {u"(?:.*,)*?\\d{3}[;:]",
       [] {
         std::u16string text;
         while (text.size() < 100'000) text += u"ab,12,";
         return text;
       }()},
      {u"(?:a|aa)*x*\\b[yz]", std::u16string(40, u'a') + std::u16string(1'000'000, u'x')},
  };
  for (const auto& one : cases) {
    Budget budget;
    RegExpProgram program(one.pattern, {});
    budget.StartTimeout(50);
    const auto start = Clock::now();
    EXPECT_THROW(
        {
          while (true) program.Match(one.subject, 0, budget);
        },
        Interrupted);
    // The allowance is wide for machines that are busy and for sanitizers.
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(1'000)) << automation::Utf16ToUtf8(one.pattern);
  }
}

// Each of them is quick, so that no single one comes to its limit.
TEST(RegExpProgram, EndsManyMatchesOfShortTextsInTime) {
  const std::u16string run = std::u16string(60, u'x') + u"-";
  for (const std::u16string& subject : {run, run + run + run + run + run + run + run + run}) {
    Budget budget;
    RegExpProgram program(u"x*x*[yz]", {});
    budget.StartTimeout(50);
    const auto start = Clock::now();
    EXPECT_THROW(
        {
          while (true) program.Match(subject, 0, budget);
        },
        Interrupted);
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(1'000));
  }
}

TEST(RegExpProgram, WorksAgainAfterItWasInterrupted) {
  RegExpProgram program(u"(a+)+$", {});
  Budget spent;
  spent.LimitSteps(100'000);
  EXPECT_THROW(program.Match(std::u16string(60, u'a') + u"!", 0, spent), Interrupted);
  Budget budget;
  EXPECT_TRUE(program.Match(u"aaa", 0, budget));
}

TEST(RegExpProgram, RefusesWhatIsTooLarge) {
  EXPECT_EQ(ErrorOf([] { RegExpProgram(u"(((a{1,9999}){1,9999}){1,9999})", {}); }), number::kOutOfMemory);
  EXPECT_EQ(ErrorOf([] { RegExpProgram(std::u16string(200'000, u'a'), {}); }), number::kOutOfMemory);
}

TEST(RegExpProgram, TakesGroupsAsDeepAsItSays) {
  constexpr std::size_t kDepth = RegExpPattern::kMaximumDepth;
  const std::u16string pattern = std::u16string(kDepth, u'(') + u"a" + std::u16string(kDepth, u')');
  Budget budget;
  RegExpProgram program(pattern, {});
  EXPECT_TRUE(program.Match(u"a", 0, budget));
}

}  // namespace
}  // namespace hearthmake::vbscript
