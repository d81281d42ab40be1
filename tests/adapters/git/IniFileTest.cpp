#include "adapters/git/IniFile.hpp"

#include <gtest/gtest.h>

namespace hearthmake::git {
namespace {

TEST(IniFile, FindsValuesWithoutRegardToCase) {
  const IniFile ini("[Git]\r\nRepository = a b \r\n;x=y\r\n# z\r\n\r\nremote=origin\n[users]\nAnn=a=b\n");
  EXPECT_EQ(ini.Value("gIT", "REPOSITORY"), "a b");
  EXPECT_EQ(ini.Value("git", "remote"), "origin");
  EXPECT_EQ(ini.Value("Users", "ann"), "a=b");
  EXPECT_EQ(ini.Value("git", "x"), "");
  EXPECT_EQ(ini.Value("none", "x"), "");
}

TEST(IniFile, KeepsTheOrderOfASectionAndTakesTheLastOfAKey) {
  const IniFile ini("[u]\nb=1\na=2\n[v]\nc=3\n[U]\nB=4\n");
  EXPECT_EQ(ini.Section("u"), (IniFile::Pairs{{"b", "1"}, {"a", "2"}, {"B", "4"}}));
  EXPECT_EQ(ini.Value("u", "b"), "4");
}

TEST(IniFile, PassesOverWhatIsNoSetting) {
  const IniFile ini("before=1\n[broken\nx=1\n[ok]\nno equals\ny=2\n=3\n");
  EXPECT_EQ(ini.Value("broken", "x"), "");
  EXPECT_EQ(ini.Value("ok", "y"), "2");
}

TEST(IniFile, ReadsUtf8AndWindows1252) {
  EXPECT_EQ(IniFile("\xEF\xBB\xBF[a]\nx=\xC3\xA9").Value("a", "x"), "é");
  EXPECT_EQ(IniFile("[a]\nx=\xE9").Value("a", "x"), "é");
  EXPECT_EQ(IniFile("[a]\nx=\"C:\\My Files\"").Value("a", "x"), "C:\\My Files");
}

}  // namespace
}  // namespace hearthmake::git
