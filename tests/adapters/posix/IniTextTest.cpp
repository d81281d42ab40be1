#include "adapters/posix/IniText.hpp"

#include <gtest/gtest.h>

#include "automation/Error.hpp"
#include "support/ForeignBytes.hpp"

namespace hearthmake::posix {
namespace {

using platform::SettingPairs;

SettingPairs All(const std::string& text) { return IniText(text).GetAll("App", "S"); }

std::string ErrorOf(const std::string& text) {
  try {
    IniText ini(text, "my.ini");
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), automation::kInvalidValue);
    EXPECT_EQ(error.Source(), "SettingsStore");
    return error.Description();
  }
  return "(none)";
}

TEST(IniText, ReadsHandWrittenValuesAsTheyStand) {
  EXPECT_EQ(All("; comment\n# another\n\n[App\\S]\n  VBExe =  C:\\VB98\\VB6.EXE  \nb=x ; no comment\r\nc=\nd "
                "= = \n"),
            (SettingPairs{{"VBExe", "C:\\VB98\\VB6.EXE"}, {"b", "x ; no comment"}, {"c", ""}, {"d", "="}}));
  EXPECT_EQ(All("[App\\S]\nlast=1"), (SettingPairs{{"last", "1"}}));
}

TEST(IniText, TakesQuotesOffButLeavesBackslashesAlone) {
  EXPECT_EQ(All("[App\\S]\na=\"C:\\new folder\\t.exe\"\nb=\"say \"\"x\"\"\"\n"),
            (SettingPairs{{"a", "C:\\new folder\\t.exe"}, {"b", "say \"x\""}}));
  EXPECT_EQ(All("[App\\S]\na=\"C:\\VB6.EXE\" \"%1\"\nb=\"open\nc=escaped:\"\\q\"\n"),
            (SettingPairs{{"a", "\"C:\\VB6.EXE\" \"%1\""}, {"b", "\"open"}, {"c", "escaped:\"\\q\""}}));
}

TEST(IniText, ReadsEscapes) {
  EXPECT_EQ(All("[App\\S]\na=escaped:\"\\r\\n\\t\\\"\\\\\\x41\\xff\"\n"),
            (SettingPairs{{"a", "\r\n\t\"\\A\xFF"}}));
  EXPECT_EQ(All("[App\\S]\na=escaped:\"\\x4\"\n"), (SettingPairs{{"a", "escaped:\"\\x4\""}}));
}

TEST(IniText, ReadsOtherEncodings) {
  EXPECT_EQ(All("\xEF\xBB\xBF[App\\S]\na=1\n"), (SettingPairs{{"a", "1"}}));
  EXPECT_EQ(All("[App\\S]\na=Gr\xF6\xDF"
                "e\n"),
            (SettingPairs{{"a", "Größe"}}));
}

TEST(IniText, MergesSectionsAndLetsTheLastLineWin) {
  EXPECT_EQ(All("[app\\s]\na=1\nb=2\n[x]\nc=0\n[APP\\S]\nA=3\nd=4\n"),
            (SettingPairs{{"a", "3"}, {"b", "2"}, {"d", "4"}}));
}

TEST(IniText, NamesTheLineOfJunk) {
  EXPECT_EQ(ErrorOf("[App\\S]\na=1\nnonsense\n"),
            "my.ini, line 3: expected Key=Value, a [section] or a ; comment");
  EXPECT_EQ(ErrorOf("\na=1\n"), "my.ini, line 2: expected a section, [Application\\Section]");
  EXPECT_EQ(ErrorOf("[App\\S\n"), "my.ini, line 1: the name of a section ends with ]");
  EXPECT_EQ(ErrorOf(std::string("[App\\S]\n;\0\n", 11)), "my.ini, line 2: a zero byte is no text");
  EXPECT_EQ(ErrorOf("[General]\na=1\n"), "(none)");
}

TEST(IniText, KeepsWhatItDoesNotChange) {
  IniText ini("; mine\n[App\\S]\n  a =  1 ; x\n# keep\nb=2\n\n[Other\\O]\nz=1\n");
  EXPECT_TRUE(ini.Set("App", "S", "B", "3"));
  EXPECT_TRUE(ini.Set("App", "S", "c", " 4"));
  EXPECT_FALSE(ini.Set("App", "S", "c", " 4"));
  EXPECT_TRUE(ini.Set("New", "N", "k", "v"));
  EXPECT_EQ(ini.Print(),
            "; mine\n[App\\S]\n  a =  1 ; x\n# keep\nb=3\nc=\" 4\"\n\n[Other\\O]\nz=1\n\n[New\\N]\nk=v\n");
}

TEST(IniText, KeepsTheLineEndsOfTheFile) {
  IniText ini("[App\\S]\r\na=1");
  EXPECT_TRUE(ini.Set("App", "S", "b", "2"));
  EXPECT_EQ(ini.Print(), "[App\\S]\r\na=1\r\nb=2\r\n");
}

TEST(IniText, CompletesALineEndThatTheFileStopsIn) {
  IniText ini("[App\\S]\r\na=\"1\"\r");
  EXPECT_TRUE(ini.Set("App", "S", "b", "2"));
  EXPECT_EQ(ini.Print(), "[App\\S]\r\na=\"1\"\r\nb=2\r\n");
}

TEST(IniText, RemovesEveryLineOfASetting) {
  IniText ini("[App\\S]\na=1\nb=2\n[app\\s]\nA=3\n");
  EXPECT_TRUE(ini.Remove("APP", "s", "a"));
  EXPECT_FALSE(ini.Remove("APP", "s", "a"));
  EXPECT_EQ(ini.Print(), "[App\\S]\nb=2\n[app\\s]\n");
  EXPECT_TRUE(ini.Set("App", "S", "c", "4"));
  EXPECT_EQ(IniText(ini.Print()).GetAll("App", "S"), (SettingPairs{{"b", "2"}, {"c", "4"}}));
}

TEST(IniText, SurvivesDamage) {
  const std::string text =
      "; c\n[Hearthmake\\VB]\nVBExe=\"C:\\a "
      "b\"\nx=escaped:\"\\r\\n\\x41\"\n\"k=\"=v\n[\"a\\b\"\\s]\nGröße=€\n";
  support::FeedDamaged(text, [](const std::string& damaged) {
    IniText ini(damaged, "damaged.ini");
    const SettingPairs before = ini.GetAll("Hearthmake", "VB");
    ini.Set("Hearthmake", "VB", "new\n", " \"value");
    ini.Remove("Hearthmake", "VB", "x");
    const IniText again(ini.Print(), "again.ini");
    EXPECT_EQ(again.GetAll("Hearthmake", "VB"), ini.GetAll("Hearthmake", "VB")) << damaged;
  });
}

}  // namespace
}  // namespace hearthmake::posix
