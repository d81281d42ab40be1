#include "adapters/posix/RegText.hpp"

#include <gtest/gtest.h>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"
#include "support/ForeignBytes.hpp"

namespace hearthmake::posix {
namespace {

using namespace std::string_literals;
using platform::RegistryRoot;
using platform::RegistryType;

const std::string kStart = "Windows Registry Editor Version 5.00\r\n\r\n";

std::vector<RegistryChange> Parse(const std::string& bytes) {
  std::vector<RegistryChange> changes;
  RegText::Parse(bytes, "my.reg", [&](const RegistryChange& change) { changes.push_back(change); });
  return changes;
}

// The data of the only value, below some key.
std::string Data(const std::string& value, RegistryType type) {
  const auto changes = Parse(kStart + "[HKEY_CURRENT_USER\\k]\r\n\"v\"=" + value + "\r\n");
  if (changes.size() != 2 || changes[1].value.type != type) return "(none)";
  return changes[1].value.data;
}

std::string ErrorOf(const std::string& bytes) {
  try {
    Parse(bytes);
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), automation::kInvalidValue);
    return error.Description();
  }
  return "(none)";
}

TEST(RegText, ReportsTheStepsInTheirOrder) {
  const auto changes = Parse(kStart +
                             "; comment\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n@=\"d\"\r\n\"n\"=-\r\n\r\n"
                             "[-HKCR\\B]\r\n[hkey_users]\r\n");
  ASSERT_EQ(changes.size(), 5U);
  EXPECT_EQ(changes[0].kind, RegistryChange::Kind::MakeKey);
  EXPECT_EQ(changes[0].root, RegistryRoot::LocalMachine);
  EXPECT_EQ(changes[0].key, "Software\\A");
  EXPECT_EQ(changes[1].kind, RegistryChange::Kind::SetValue);
  EXPECT_EQ(changes[1].name, "");
  EXPECT_EQ(changes[1].value.data, "d");
  EXPECT_EQ(changes[2].kind, RegistryChange::Kind::RemoveValue);
  EXPECT_EQ(changes[2].name, "n");
  EXPECT_EQ(changes[3].kind, RegistryChange::Kind::RemoveKey);
  EXPECT_EQ(changes[3].root, RegistryRoot::ClassesRoot);
  EXPECT_EQ(changes[3].key, "B");
  EXPECT_EQ(changes[4].root, RegistryRoot::Users);
  EXPECT_EQ(changes[4].key, "");
}

TEST(RegText, ReadsEveryTypeOfValue) {
  EXPECT_EQ(Data("\"a\\\\b \\\"c\\\"\" ; comment", RegistryType::String), "a\\b \"c\"");
  EXPECT_EQ(Data("\"C:\\new\\table\"", RegistryType::String), "C:\\new\\table");
  EXPECT_EQ(Data("\"two\r\nlines\"", RegistryType::String), "two\r\nlines");
  EXPECT_EQ(Data("dword:0000002a", RegistryType::DWord), "\x2A\0\0\0"s);
  EXPECT_EQ(Data("dword:A;x", RegistryType::DWord), "\x0A\0\0\0"s);
  EXPECT_EQ(Data("hex:01,02,\\\r\n  03", RegistryType::Binary), "\1\2\3");
  EXPECT_EQ(Data("hex:", RegistryType::Binary), "");
  EXPECT_EQ(Data("hex(2):25,00,f6,00,00,00", RegistryType::ExpandString), "%ö");
  EXPECT_EQ(Data("hex(7):61,00,00,00,62,00,00,00,00,00", RegistryType::MultiString), "a\0b\0"s);
  EXPECT_EQ(Data("hex(b):01,00,00,00,00,00,00,00", RegistryType::QWord), "\1\0\0\0\0\0\0\0"s);
}

TEST(RegText, ReadsEveryEncodingAndTheOlderFormat) {
  const std::string text = kStart + "[HKEY_CURRENT_USER\\Größe]\r\n\"n\"=\"€\"\r\n";
  const std::string single = kStart +
                             "[HKEY_CURRENT_USER\\Gr\xF6\xDF"
                             "e]\r\n\"n\"=\"\x80\"\r\n";
  for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, "\xFF\xFE" + Utf16FromUtf8(text), single}) {
    const auto changes = Parse(bytes);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[1].key, "Größe");
    EXPECT_EQ(changes[1].value.data, "€");
  }
  const auto old = Parse("REGEDIT4\n\n[HKEY_CURRENT_USER\\k]\n\"v\"=hex(2):25,f6,00\n");
  ASSERT_EQ(old.size(), 2U);
  EXPECT_EQ(old[1].value.data, "%ö");
}

TEST(RegText, NamesTheLineOfJunk) {
  EXPECT_EQ(ErrorOf(""), "(none)");
  EXPECT_EQ(ErrorOf("[HKEY_CURRENT_USER]"),
            "my.reg, line 1: a registry file begins with \"Windows Registry Editor Version 5.00\"");
  EXPECT_EQ(ErrorOf(kStart + "[HKEY_CURRENT_USER\\x\r\n"), "my.reg, line 3: a key ends with ]");
  EXPECT_EQ(ErrorOf(kStart + "[HKEY_DYN_DATA\\x]\r\n").substr(0, 16), "my.reg, line 3: ");
  EXPECT_EQ(ErrorOf(kStart + "\"a\"=\"b\"\r\n"),
            "my.reg, line 3: a value stands below the [key] that it belongs to");
  const std::string key = kStart + "[HKCU\\x]\r\n";
  EXPECT_EQ(ErrorOf(key + "nonsense\r\n").substr(0, 16), "my.reg, line 4: ");
  EXPECT_EQ(ErrorOf(key + "\"a\"=\"b\r\n\r\n"), "my.reg, line 4: the closing quote is missing");
  EXPECT_EQ(ErrorOf(key + "\"a\"=dword:xyz\r\n"),
            "my.reg, line 4: dword: takes one to eight hexadecimal digits");
  EXPECT_EQ(ErrorOf(key + "\"a\"=hex:0102\r\n").substr(0, 16), "my.reg, line 4: ");
  EXPECT_EQ(ErrorOf(key + "\"a\"=\"b\" c\r\n"), "my.reg, line 4: there is something behind the value");
}

TEST(RegText, PrintsWhatItReads) {
  std::string text = RegText::Header();
  RegText::AppendKey(text, "HKEY_CURRENT_USER\\x]y");
  RegText::AppendValue(text, "", {RegistryType::String, "a\\b\"c"});
  RegText::AppendValue(text, "n\\\"", {RegistryType::String, "line\n"});
  RegText::AppendValue(text, "d", {RegistryType::DWord, "\x2A\0\0\0"s});
  RegText::AppendValueRemoval(text, "gone");
  RegText::AppendKeyRemoval(text, "HKEY_USERS\\y");
  EXPECT_EQ(text,
            "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\x]y]\n@=\"a\\\\b\\\"c\"\n"
            "\"n\\\\\\\"\"=hex(1):6c,00,69,00,6e,00,65,00,0a,00,00,00\n\"d\"=dword:0000002a\n\"gone\"=-\n"
            "[-HKEY_USERS\\y]\n");
  const auto changes = Parse(text);
  ASSERT_EQ(changes.size(), 6U);
  EXPECT_EQ(changes[0].key, "x]y");
  EXPECT_EQ(changes[2].name, "n\\\"");
  EXPECT_EQ(changes[2].value.data, "line\n");
}

TEST(RegText, SurvivesDamage) {
  const std::string text =
      kStart +
      "; c\r\n[HKEY_CURRENT_USER\\Größe]\r\n@=\"a\\\\b\"\r\n\"m\"=hex(7):61,00,\\\r\n  00,00\r\n"
      "\"d\"=dword:1\r\n\"q\"=hex(b):01\r\n\"x\"=-\r\n[-HKLM\\z]\r\n";
  support::FeedDamaged(text, Parse);
  support::FeedDamaged("\xFF\xFE" + Utf16FromUtf8(text.substr(0, 120)), Parse);
}

}  // namespace
}  // namespace hearthmake::posix
