#include "adapters/posix/WineHive.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/Error.hpp"
#include "support/ForeignBytes.hpp"

namespace hearthmake::posix {
namespace {

using namespace std::string_literals;
using platform::RegistryType;
using platform::RegistryValue;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// `Software\Linked` is a link to `Software\Real`, `Software\Loop` one to itself.
const std::string kHive = R"(WINE REGISTRY Version 2
;; All keys relative to \\Machine

#arch=win64

[Software\\Classes\\Prog.Id] 1700000000
#time=1da1e3a8a8b2f80
@="default"
"Path"="C:\\VB98\\VB6.EXE \"%1\""
"Letters"="Gr\xf6\x00dfe \x20ac"
"Lines"="a\r\nb\tc\33[0m"
"Number"=dword:0000002a
"Expand"=str(2):"%SystemRoot%\\x"
"List"=str(7):"one\0two\0"
"Unended"=str(7):"one\0two"
"Bytes"=hex:01,02,\
  03,ff
"Long"=hex(b):01,00,00,00,00,00,00,00
"Wide"=hex(2):61,00,62,00,00,00
"Not understood"=foo:bar
"Old"=str:"text"

[Software\\Linked] 1700000000
#time=1da1e3a8a8b2f80
#link
"SymbolicLinkValue"=hex(6):5c,00,52,00,65,00,67,00,69,00,73,00,74,00,72,00,79,\
  00,5c,00,4d,00,61,00,63,00,68,00,69,00,6e,00,65,00,5c,00,53,00,6f,00,66,00,\
  74,00,77,00,61,00,72,00,65,00,5c,00,52,00,65,00,61,00,6c,00

[Software\\Loop] 1700000000
#link
"SymbolicLinkValue"=hex(6):5c,00,52,00,65,00,67,00,69,00,73,00,74,00,72,00,79,\
  00,5c,00,4d,00,61,00,63,00,68,00,69,00,6e,00,65,00,5c,00,53,00,6f,00,66,00,\
  74,00,77,00,61,00,72,00,65,00,5c,00,4c,00,6f,00,6f,00,70,00

[Software\\Real\\Sub] 1700000000
"v"="through the link"

[Software\\Odd \[x\] \x20ac] 1700000000
"n=\"1\""="odd"
)";

class WineHiveTest : public ::testing::Test {
 protected:
  std::string Text(const std::string& key, const std::string& name) {
    const auto value = m_hive.Query(key, name);
    return value && value->type == RegistryType::String ? value->data : "(none)";
  }
  RegistryValue Value(const std::string& name) {
    return m_hive.Query("Software\\Classes\\Prog.Id", name).value_or(RegistryValue{});
  }

  WineHive m_hive{kHive, "system.reg"};
};

std::string ErrorOf(const std::string& text) {
  try {
    WineHive hive(text, "system.reg");
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), automation::kInvalidValue);
    return error.Description();
  }
  return "(none)";
}

TEST_F(WineHiveTest, TellsWhatItIs) {
  EXPECT_TRUE(m_hive.Is64Bit());
  EXPECT_EQ(m_hive.Base(), "Machine");
  const WineHive user(
      "WINE REGISTRY Version 2\n;; All keys relative to "
      "REGISTRY\\\\User\\\\S-1-5-21-0-0-0-1000\n\n#arch=win32\n",
      "user.reg");
  EXPECT_FALSE(user.Is64Bit());
  EXPECT_EQ(user.Base(), "User\\S-1-5-21-0-0-0-1000");
}

TEST_F(WineHiveTest, ReadsEveryTypeOfValue) {
  EXPECT_EQ(Value("").data, "default");
  EXPECT_EQ(Value("path").data, "C:\\VB98\\VB6.EXE \"%1\"");
  EXPECT_EQ(Value("Letters").data, "Größe €");
  EXPECT_EQ(Value("Lines").data, "a\r\nb\tc\x1B[0m");
  EXPECT_EQ(Value("Number").type, RegistryType::DWord);
  EXPECT_EQ(Value("Number").data, "\x2A\0\0\0"s);
  EXPECT_EQ(Value("Expand").type, RegistryType::ExpandString);
  EXPECT_EQ(Value("Expand").data, "%SystemRoot%\\x");
  EXPECT_EQ(Value("List").type, RegistryType::MultiString);
  EXPECT_EQ(Value("List").data, "one\0two\0"s);
  EXPECT_EQ(Value("Unended").data, "one\0two\0"s);
  EXPECT_EQ(Value("Bytes").type, RegistryType::Binary);
  EXPECT_EQ(Value("Bytes").data, "\1\2\3\xFF");
  EXPECT_EQ(Value("Long").type, RegistryType::QWord);
  EXPECT_EQ(Value("Wide").data, "ab");
  EXPECT_EQ(Value("Old").data, "text");
  EXPECT_FALSE(m_hive.Query("Software\\Classes\\Prog.Id", "Not understood").has_value());
}

TEST_F(WineHiveTest, ReadsOddNames) {
  EXPECT_EQ(Text("Software\\odd [X] €", "N=\"1\""), "odd");
  EXPECT_THAT(m_hive.ValueNames("Software\\Odd [x] €"), ElementsAre("n=\"1\""));
  EXPECT_THAT(m_hive.SubKeys("Software"), ElementsAre("Classes", "Linked", "Loop", "Odd [x] €", "Real"));
}

TEST_F(WineHiveTest, FollowsLinks) {
  EXPECT_EQ(Text("Software\\Linked\\Sub", "v"), "through the link");
  EXPECT_THAT(m_hive.SubKeys("Software\\Linked"), ElementsAre("Sub"));
  EXPECT_TRUE(m_hive.Set("Software\\Linked\\New", "v", {RegistryType::String, "x"}));
  EXPECT_EQ(Text("Software\\Real\\New", "v"), "x");
}

TEST_F(WineHiveTest, IsNotCaughtInACircleOfLinks) {
  EXPECT_FALSE(m_hive.KeyExists("Software\\Loop\\x"));
  EXPECT_THROW(m_hive.Set("Software\\Loop", "v", {RegistryType::String, "x"}), automation::Error);
  EXPECT_FALSE(m_hive.RemoveKey("Software\\Loop\\x"));
}

TEST_F(WineHiveTest, KeepsEveryByteThatItDoesNotChange) {
  EXPECT_EQ(m_hive.Print(), kHive);
  EXPECT_TRUE(m_hive.Set("Software\\Classes\\Prog.Id", "bytes", {RegistryType::DWord, "\1\0\0\0"s}));
  std::string expected = kHive;
  expected.replace(expected.find("\"Bytes\""), std::string("\"Bytes\"=hex:01,02,\\\n  03,ff\n").size(),
                   "\"Bytes\"=dword:00000001\n");
  EXPECT_EQ(m_hive.Print(), expected);
  EXPECT_FALSE(m_hive.Set("Software\\Classes\\Prog.Id", "BYTES", {RegistryType::DWord, "\1\0\0\0"s}));
  EXPECT_TRUE(m_hive.Set("Software\\Real\\Sub", "new", {RegistryType::String, "Größe\n1"}));
  expected.insert(expected.find("\n[Software\\\\Odd"), "\"new\"=\"Gr\\x00f6\\x00dfe\\n1\"\n");
  EXPECT_EQ(m_hive.Print(), expected);
}

TEST_F(WineHiveTest, PutsNewKeysAtTheEnd) {
  EXPECT_TRUE(m_hive.Set("\\Software\\\\New [k]\\", "", {RegistryType::String, "x"}));
  const std::string text = m_hive.Print();
  EXPECT_TRUE(text.starts_with(kHive));
  EXPECT_THAT(text.substr(kHive.size()),
              ::testing::MatchesRegex(
                  "\\[Software\\\\\\\\New \\\\\\[k\\\\\\]\\] [0-9]+\n#time=[0-9a-f]+\n@=\"x\"\n\n"));
}

TEST_F(WineHiveTest, WritesWhatItReads) {
  const std::vector<RegistryValue> values = {{RegistryType::String,
                                              "a\x01"
                                              "7\x7F\U0001F600"},
                                             {RegistryType::MultiString,
                                              "1\0"
                                              "2\0"s},
                                             {RegistryType::MultiString, ""},
                                             {RegistryType::Binary, std::string(200, 'x')},
                                             {static_cast<RegistryType>(8), "r"}};
  for (std::size_t i = 0; i < values.size(); ++i) m_hive.Set("Software\\New", std::to_string(i), values[i]);
  WineHive again(m_hive.Print(), "again.reg");
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto value = again.Query("Software\\New", std::to_string(i));
    ASSERT_TRUE(value.has_value()) << i;
    EXPECT_EQ(value->type, values[i].type) << i;
    EXPECT_EQ(value->data, values[i].data) << i;
  }
}

TEST_F(WineHiveTest, RemovesValuesAndKeys) {
  EXPECT_TRUE(m_hive.RemoveValue("Software\\Classes\\Prog.Id", "BYTES"));
  EXPECT_FALSE(m_hive.RemoveValue("Software\\Classes\\Prog.Id", "Bytes"));
  EXPECT_THAT(m_hive.Print(), ::testing::Not(HasSubstr("03,ff")));
  EXPECT_TRUE(m_hive.RemoveKey("Software\\Classes"));
  EXPECT_FALSE(m_hive.RemoveKey("Software\\Classes"));
  EXPECT_FALSE(m_hive.RemoveKey(""));
  EXPECT_FALSE(m_hive.KeyExists("Software\\Classes\\Prog.Id"));
  EXPECT_THAT(m_hive.Print(), ::testing::Not(HasSubstr("Prog.Id")));
  EXPECT_TRUE(m_hive.KeyExists("Software\\Real\\Sub"));
}

TEST_F(WineHiveTest, LetsTheLastOfSeveralSectionsAndValuesCount) {
  WineHive hive(
      "WINE REGISTRY Version 2\n\n[a] 1\n\"v\"=\"1\"\n\"w\"=\"1\"\n\n[A] 2\n\"V\"=\"2\"\n\"v\"=\"3\"",
      "x.reg");
  EXPECT_EQ(hive.Query("a", "v")->data, "3");
  EXPECT_EQ(hive.Query("a", "w")->data, "1");
  EXPECT_THAT(hive.ValueNames("a"), ElementsAre("v", "w"));
  EXPECT_TRUE(hive.Set("a", "new", {RegistryType::String, "4"}));
  EXPECT_TRUE(hive.Print().ends_with("\"v\"=\"3\"\n\"new\"=\"4\"\n"));
  EXPECT_TRUE(hive.RemoveValue("a", "v"));
  EXPECT_FALSE(hive.Query("a", "v").has_value());
}

TEST(WineHive, NamesTheLineOfJunk) {
  EXPECT_EQ(ErrorOf(""), "system.reg, line 1: a Wine registry begins with \"WINE REGISTRY Version 2\"");
  EXPECT_EQ(ErrorOf("WINE REGISTRY Version 1\n").substr(0, 19), "system.reg, line 1:");
  EXPECT_EQ(ErrorOf("WINE REGISTRY Version 2\n\n[a\\]\n"),
            "system.reg, line 3: the name of a key ends with ]");
  std::string deep = "WINE REGISTRY Version 2\n\n[k";
  for (int i = 0; i < 100'000; ++i) deep += "\\\\k";
  EXPECT_EQ(ErrorOf(deep + "]\n"),
            "system.reg, line 3: Invalid procedure call or argument: keys lie at most 512 levels deep");
}

TEST(WineHive, TakesAnEmptyRegistry) {
  WineHive hive("WINE REGISTRY Version 2", "system.reg");
  EXPECT_THAT(hive.SubKeys(""), IsEmpty());
  EXPECT_TRUE(hive.Set("a", "b", {RegistryType::String, "c"}));
  WineHive again(hive.Print(), "again.reg");
  EXPECT_EQ(again.Query("a", "b")->data, "c");
}

TEST(WineHive, SurvivesDamage) {
  support::FeedDamaged(kHive, [](const std::string& damaged) {
    WineHive hive(damaged, "damaged.reg");
    EXPECT_EQ(hive.Print(), damaged);
    for (const std::string& key : hive.SubKeys("Software"))
      for (const std::string& name : hive.ValueNames("Software\\" + key))
        hive.Query("Software\\" + key, name);
    for (const std::string& name : hive.ValueNames("Software\\Classes\\Prog.Id"))
      hive.Query("Software\\Classes\\Prog.Id", name);
    hive.Set("Software\\Classes\\Prog.Id", "new", {RegistryType::String, "x"});
    WineHive again(hive.Print(), "again.reg");
    EXPECT_TRUE(again.Query("Software\\Classes\\Prog.Id", "new").has_value()) << hive.Print();
    hive.RemoveValue("Software\\Classes\\Prog.Id", "Number");
    hive.RemoveKey("Software\\Real");
  });
}

}  // namespace
}  // namespace hearthmake::posix
