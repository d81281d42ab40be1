#include "vbscript/objects/RegExpPattern.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {
namespace {

std::u16string Translated(std::u16string_view pattern, RegExpFlags flags = {}) {
  return RegExpPattern(pattern, flags).Translation();
}

std::int32_t Refused(std::u16string_view pattern) {
  return ErrorOf([&] { RegExpPattern(pattern, {}); });
}

TEST(RegExpPattern, KeepsWhatBothDialectsReadAlike) {
  EXPECT_EQ(Translated(u"a(b|c)*?d+(?:e)?(?=f)(?!g).\\w\\D\\s\\b\\B^"),
            u"a(b|c)*?d+(?:e)?(?=f)(?!g).\\w\\D\\s\\b\\B^");
}

TEST(RegExpPattern, SpellsPunctuationOut) {
  EXPECT_EQ(Translated(u"a-#\\.\\/"), u"a\\x{2d}\\x{23}\\x{2e}\\x{2f}");
  EXPECT_EQ(Translated(std::u16string_view(u"\0", 1)), u"\\x{0}");
  EXPECT_EQ(Translated(u"]}"), u"\\x{5d}\\x{7d}");
}

TEST(RegExpPattern, EndsAtTheVeryEndOrBeforeLineEnds) {
  EXPECT_EQ(Translated(u"$"), u"\\z");
  EXPECT_EQ(Translated(u"^a$", {.multiline = true}), u"(?<![^\\n\\r])a(?![^\\n\\r])");
}

TEST(RegExpPattern, TakesBracesThatAreNoQuantifierLiterally) {
  EXPECT_EQ(Translated(u"a{2}b{3,}c{4,5}?"), u"a{2,2}b{3,}c{4,5}?");
  EXPECT_EQ(Translated(u"a{,5}"), u"a\\x{7b}\\x{2c}5\\x{7d}");
  EXPECT_EQ(Translated(u"{x}"), u"\\x{7b}x\\x{7d}");
  EXPECT_EQ(Translated(u"a{2"), u"a\\x{7b}2");
}

TEST(RegExpPattern, TreatsAnUpperBoundBeyondTheLargestAsNone) {
  EXPECT_EQ(Translated(u"a{0,65536}"), u"a{0,}");
  EXPECT_EQ(Translated(u"a{0,99999999999999999999}"), u"a{0,}");
  EXPECT_EQ(Refused(u"a{65536}"), number::kOutOfMemory);
}

TEST(RegExpPattern, ReadsEscapes) {
  EXPECT_EQ(Translated(u"\\f\\n\\r\\t\\v"), u"\\x{c}\\x{a}\\x{d}\\x{9}\\x{b}");
  EXPECT_EQ(Translated(u"\\x41\\u0042\\u20AC"), u"AB\u20AC");
  EXPECT_EQ(Translated(u"\\x4\\u004"), u"x4u004");
  EXPECT_EQ(Translated(u"\\cA\\cz\\c1"), u"\\x{1}\\x{1a}c1");
  EXPECT_EQ(Translated(u"\\A\\z\\Z\\Q\\E\\pL\\K\\R\\h\\e\\a\\G\\k"), u"AzZQEpLKRheaGk");
}

TEST(RegExpPattern, TellsOctalEscapesFromBackReferences) {
  EXPECT_EQ(Translated(u"\\0\\101\\60"), u"\\x{0}A0");
  EXPECT_EQ(Translated(u"\\400"), u" 0");
  EXPECT_EQ(Translated(u"\\8\\9"), u"89");
  EXPECT_EQ(Translated(u"(a)\\1"), u"(a)\\g{1}");
  EXPECT_EQ(Translated(u"(a\\1)"), u"(a\\g{1})");
  EXPECT_EQ(Translated(u"\\1(a)"), u"\\x{1}(a)");
  EXPECT_EQ(Translated(u"(a)\\10"), u"(a)\\g{1}0");
  EXPECT_EQ(Translated(u"()()()()()()()()()(a)\\10"), u"()()()()()()()()()(a)\\g{10}");
}

TEST(RegExpPattern, ReadsClasses) {
  EXPECT_EQ(Translated(u"[a-c]"), u"[\\x{61}-\\x{63}]");
  EXPECT_EQ(Translated(u"[^a-]"), u"[^a\\x{2d}]");
  EXPECT_EQ(Translated(u"[-a]"), u"[\\x{2d}a]");
  EXPECT_EQ(Translated(u"[[:alpha:]]"), u"[\\x{5b}\\x{3a}alpha\\x{3a}]\\x{5d}");
  EXPECT_EQ(Translated(u"[\\w-.]"), u"[\\w\\x{2d}\\x{2e}]");
  EXPECT_EQ(Translated(u"[.-\\w]"), u"[\\x{2e}\\x{2d}\\w]");
  EXPECT_EQ(Translated(u"[\\b\\B\\1\\]^]"), u"[\\x{8}B\\x{1}\\x{5d}\\x{5e}]");
  EXPECT_EQ(Translated(u"[]"), u"[^\\x{0}-\\x{ffff}]");
  EXPECT_EQ(Translated(u"[^]"), u"[\\x{0}-\\x{ffff}]");
}

TEST(RegExpPattern, FoldsLettersWhenCaseDoesNotCount) {
  EXPECT_EQ(Translated(u"aB\u0416\\x41", {.ignoreCase = true}), u"ab\u0436a");
  EXPECT_EQ(Translated(u"[A-C]", {.ignoreCase = true}), u"[\\x{41}-\\x{43}\\x{61}-\\x{63}]");
  EXPECT_EQ(Translated(u"[a-c]", {.ignoreCase = true}), u"[\\x{61}-\\x{63}]");
  EXPECT_EQ(Translated(u"\\D\\S\\W", {.ignoreCase = true}), u"\\D\\S\\W");
}

TEST(RegExpPattern, CountsGroupsThatCapture) {
  EXPECT_EQ(RegExpPattern(u"(a)(?:b)((c))(?=(d))", {}).GroupCount(), 4u);
}

TEST(RegExpPattern, KnowsWhetherAnythingRepeatsLong) {
  EXPECT_FALSE(RegExpPattern(u"ab?c{2}[*]\\+", {}).HasLoops());
  for (const auto* pattern : {u"a*", u"a+?", u"a{2,}", u"a{1,100}"})
    EXPECT_TRUE(RegExpPattern(pattern, {}).HasLoops());
}

TEST(RegExpPattern, RefusesWhatIsNotWellFormed) {
  for (const auto* pattern : {u"(?<a>b)", u"(?<=a)", u"(?<!a)", u"(?>a)", u"(?i)a", u"(?#a)", u"(?P<a>b)",
                              u"a)", u"a\\", u"a{3,2}", u"(?"})
    EXPECT_EQ(Refused(pattern), number::kRegExpSyntax) << automation::Utf16ToUtf8(pattern);
  for (const auto* pattern : {u"*", u"+a", u"a|?", u"(*)", u"(?:+)", u"a**", u"a*+", u"a++", u"a???", u"^*",
                              u"$+", u"\\b*", u"{2}", u"a{2}{3}", u"(*UTF)a", u"(*FAIL)"})
    EXPECT_EQ(Refused(pattern), number::kUnexpectedQuantifier) << automation::Utf16ToUtf8(pattern);
  for (const auto* pattern : {u"[a", u"[", u"[^", u"[a-", u"[\\]", u"[\\"})
    EXPECT_EQ(Refused(pattern), number::kExpectedRightBracket) << automation::Utf16ToUtf8(pattern);
  for (const auto* pattern : {u"(a", u"((a)", u"(?:", u"("})
    EXPECT_EQ(Refused(pattern), number::kExpectedRightParenthesisInRegExp)
        << automation::Utf16ToUtf8(pattern);
  EXPECT_EQ(Refused(u"[b-a]"), number::kInvalidRange);
}

TEST(RegExpPattern, RefusesWhatIsTooDeepOrTooLong) {
  const std::u16string deep(100'000, u'(');
  EXPECT_EQ(Refused(deep + std::u16string(100'000, u')')), number::kOutOfMemory);
  EXPECT_EQ(Refused(std::u16string(10'000'000, u'a')), number::kOutOfMemory);
}

}  // namespace
}  // namespace hearthmake::vbscript
