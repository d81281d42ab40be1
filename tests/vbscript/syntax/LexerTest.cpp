#include "vbscript/syntax/Lexer.hpp"

#include <gtest/gtest.h>

#include "support/VbsParse.hpp"

namespace hearthmake::vbscript {
namespace {

using test::Parse;
using test::ParseOne;

std::vector<Token> Tokens(Script& script) {
  Lexer lexer(script);
  std::vector<Token> tokens;
  do {
    tokens.push_back(lexer.Next());
  } while (tokens.back().kind != TokenKind::EndOfSource);
  return tokens;
}

std::vector<TokenKind> Kinds(std::u16string_view source) {
  Script script(source);
  std::vector<TokenKind> kinds;
  for (const Token& token : Tokens(script)) kinds.push_back(token.kind);
  kinds.pop_back();
  return kinds;
}

TEST(Lexer, EndsLinesAtCrLfOrBoth) {
  using enum TokenKind;
  EXPECT_EQ(Kinds(u"\r\n\r\n\n\r"), (std::vector{EndOfLine, EndOfLine, EndOfLine, EndOfLine}));
  EXPECT_EQ(Kinds(u":"), std::vector{Colon});
}

TEST(Lexer, SkipsBlanksAndComments) {
  using enum TokenKind;
  EXPECT_EQ(Kinds(u" \t\v\f' x = \"1\n: Rem a : b\nRem\nthen rem x"),
            (std::vector{EndOfLine, Colon, EndOfLine, EndOfLine, Then}));
}

TEST(Lexer, TakesRemForACommentOnlyWhereAStatementBegins) {
  EXPECT_EQ(Parse("x = 1 Rem no"), "1025 (1, 7)");
  EXPECT_EQ(Parse("x = 1 : Rem yes"), "x := 1");
  EXPECT_EQ(Parse("If a Then Rem block\nx = 1\nEnd If"), "if a {x := 1}");
  EXPECT_EQ(Parse("o.Rem 1"), "call o.Rem(1)");
  EXPECT_EQ(Parse("Remark = 1"), "Remark := 1");
}

TEST(Lexer, JoinsContinuedLines) {
  EXPECT_EQ(Parse("x = 1 _\r\n + 2"), "x := (+ 1 2)");
  EXPECT_EQ(Parse("x = 1 + _ \t \n _\r 2"), "x := (+ 1 2)");
  EXPECT_EQ(Parse("x =_\n2"), "x := 2");
  EXPECT_EQ(Parse("x = 1 _"), "x := 1");
  EXPECT_EQ(Parse("x_\n"), "call x_");
  EXPECT_EQ(Parse("x = 1 _ 2"), "1032 (1, 7)");
  EXPECT_EQ(Parse("x = 1 ' _\ny = 2"), "x := 1; y := 2");
}

TEST(Lexer, KnowsKeywordsInAnyCase) {
  using enum TokenKind;
  EXPECT_EQ(Kinds(u"WEND wend WenD function PRESERVE xOr ands"),
            (std::vector{Wend, Wend, Wend, Function, Preserve, Xor, Identifier}));
}

TEST(Lexer, TakesAnyWordBehindADotForAName) {
  EXPECT_EQ(Parse("a.Select.Next = b.End.If(1)"), "a.Select.Next := b.End.If(1)");
  EXPECT_EQ(Parse("With a : .Loop .Wend : End With"), "with a {call .Loop(.Wend)}");
}

TEST(Lexer, LeavesWordsOfOnePlaceOnlyUsableAsNames) {
  EXPECT_EQ(Parse("Property = Default + Step + Explicit + Error + Erase"),
            "Property := (+ (+ (+ (+ Default Step) Explicit) Error) Erase)");
  EXPECT_EQ(Parse("Dim Property, Default, Step, Explicit, Error, Erase"),
            "dim Property, Default, Step, Explicit, Error, Erase");
  EXPECT_EQ(Parse("Erase = 1"), "Erase := 1");
  EXPECT_EQ(Parse("Dim Preserve"), "1010 (1, 5)");
  EXPECT_EQ(Parse("Dim Stop"), "1010 (1, 5)");
}

TEST(Lexer, ReadsNamesInBrackets) {
  EXPECT_EQ(Parse("[end if] = [_x] + [] "), "1010 (1, 19)");
  EXPECT_EQ(Parse("[end if] = [_x].[ä b]"), "end if := _x.ä b");
  EXPECT_EQ(Parse("[Name] = name"), "Name := Name");
  EXPECT_EQ(Parse("[abc\n]"), "1007 (1, 5)");
}

TEST(Lexer, LimitsTheLengthOfNames) {
  const std::string longest(255, 'n');
  EXPECT_EQ(Parse(longest + " = 1"), longest + " := 1");
  EXPECT_EQ(Parse("x = " + longest + "n"), "1030 (1, 5)");
  EXPECT_EQ(Parse("x = [" + longest + "]"), "x := " + longest);
  EXPECT_EQ(Parse("x = [" + longest + "n]"), "1030 (1, 5)");
}

TEST(Lexer, RefusesCharactersThatBelongToNothing) {
  for (const std::string character : {"_", "$", "%", "!", "@", "?", ";", "{", "|", "~"}) {
    EXPECT_EQ(Parse("x = " + character + "1"), "1032 (1, 5)") << character;
  }
  EXPECT_EQ(Parse(std::u16string_view(u"x = \0", 5)), "1032 (1, 5)");
  EXPECT_EQ(Parse(u"\u00E4 = 1"), "1032 (1, 1)");
  EXPECT_EQ(Parse(u"x\u00A0= 1"), "1032 (1, 2)");
  EXPECT_EQ(Parse(u"x\u3000= 1"), "1032 (1, 2)");
  EXPECT_EQ(Parse(u"\uFEFFx = 1"), "1032 (1, 1)");
  EXPECT_EQ(Parse(u"x = \xD800"), "1032 (1, 5)");
}

TEST(Lexer, ReadsTexts) {
  EXPECT_EQ(ParseOne("\"\""), "\"\"");
  EXPECT_EQ(ParseOne("\"a \"\"b\"\" 'c _\""), "\"a \"b\" 'c _\"");
  EXPECT_EQ(ParseOne("\"\"\"\""), "\"\"\"");
  EXPECT_EQ(Parse("x = \"abc\ny = 1"), "1033 (1, 9)");
  EXPECT_EQ(Parse("x = \"abc\"\""), "1033 (1, 11)");
}

TEST(Lexer, KeepsAnyUnitInATextButLineEnds) {
  Script script(std::u16string_view(u"\"a\0\xD800\u2028\"", 6));
  EXPECT_EQ(Tokens(script).front().text, std::u16string_view(u"a\0\xD800\u2028", 4));
}

TEST(Lexer, GivesNumbersTheSmallestTypeThatHoldsThem) {
  EXPECT_EQ(ParseOne("0"), "0");
  EXPECT_EQ(ParseOne("32767"), "32767");
  EXPECT_EQ(ParseOne("32768"), "32768&");
  EXPECT_EQ(ParseOne("2147483647"), "2147483647&");
  EXPECT_EQ(ParseOne("2147483648"), "2147483648#");
  EXPECT_EQ(ParseOne("00000000000000000000001"), "1");
  EXPECT_EQ(ParseOne("99999999999999999999"), "100000000000000000000#");
}

TEST(Lexer, ReadsDecimalsAndExponentsAsDoubles) {
  EXPECT_EQ(ParseOne("1.0"), "1#");
  EXPECT_EQ(ParseOne(".5"), "0.5#");
  EXPECT_EQ(ParseOne("5."), "5#");
  EXPECT_EQ(ParseOne("1e3"), "1000#");
  EXPECT_EQ(ParseOne("1.5E+2"), "150#");
  EXPECT_EQ(ParseOne("25e-1"), "2.5#");
  EXPECT_EQ(ParseOne("1e-999"), "0#");
  EXPECT_EQ(ParseOne("0.000e99999999999999999999"), "0#");
  EXPECT_EQ(ParseOne("1e999"), "1031 (1, 1)");
  EXPECT_EQ(ParseOne("1e"), "1031 (1, 1)");
  EXPECT_EQ(ParseOne("1e+"), "1031 (1, 1)");
  EXPECT_EQ(ParseOne("1.2.3"), "1025 (1, 4)");
}

TEST(Lexer, ReadsHexadecimalAndOctalNumbers) {
  EXPECT_EQ(ParseOne("&H7FFF"), "32767");
  EXPECT_EQ(ParseOne("&hffff"), "-1");
  EXPECT_EQ(ParseOne("&HFFFF&"), "65535&");
  EXPECT_EQ(ParseOne("&H10000"), "65536&");
  EXPECT_EQ(ParseOne("&HFFFFFFFF"), "-1&");
  EXPECT_EQ(ParseOne("&H0000000001"), "1");
  EXPECT_EQ(ParseOne("&O17"), "15");
  EXPECT_EQ(ParseOne("&o177777"), "-1");
  EXPECT_EQ(ParseOne("&17&"), "15&");
  EXPECT_EQ(ParseOne("&37777777777"), "-1&");
  EXPECT_EQ(ParseOne("&H100000000"), "1031 (1, 1)");
  EXPECT_EQ(ParseOne("&O777777777777"), "1031 (1, 1)");
}

TEST(Lexer, TellsAnAmpersandThatJoinsFromOneThatBeginsANumber) {
  EXPECT_EQ(ParseOne("a &1"), "(& a 1)");
  EXPECT_EQ(ParseOne("a&hour"), "(& a hour)");
  EXPECT_EQ(ParseOne("\"a\"&&H10"), "(& \"a\" 16)");
  EXPECT_EQ(ParseOne("a & &7"), "(& a 7)");
  EXPECT_EQ(ParseOne("a &H1"), "1025 (1, 3)");
}

TEST(Lexer, ReadsDates) {
  EXPECT_EQ(ParseOne("#1/1/2000#"), "date(36526)");
  EXPECT_EQ(ParseOne("#12:00#"), "date(0.5)");
  EXPECT_EQ(Parse("x = #no date#"), "1002 (1, 5)");
  EXPECT_EQ(Parse("x = #1/1/2000\n#"), "1002 (1, 5)");
}

}  // namespace
}  // namespace hearthmake::vbscript
