#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "automation/Error.hpp"
#include "platform/Registry.hpp"

// What every Registry does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Text, RegistryConformance, ::testing::Values(MakeRegistry));

namespace hearthmake::platform {

struct RegistryPlayground {
  std::shared_ptr<Registry> registry;  // without keys of interest
  // Another one on the same keys, as another process has it.
  std::function<std::shared_ptr<Registry>()> reopen;
  std::shared_ptr<void> keepAlive;
};

using RegistryFactory = std::function<RegistryPlayground()>;

class RegistryConformance : public ::testing::TestWithParam<RegistryFactory> {
 protected:
  static constexpr RegistryRoot kClasses = RegistryRoot::ClassesRoot;
  static constexpr RegistryRoot kUser = RegistryRoot::CurrentUser;
  static constexpr RegistryRoot kMachine = RegistryRoot::LocalMachine;

  void SetUp() override { m_playground = GetParam()(); }

  Registry& Keys() { return *m_playground.registry; }
  void SetText(RegistryRoot root, const std::string& key, const std::string& name, const std::string& text) {
    Keys().Set(root, key, name, {RegistryType::String, text});
  }
  static std::string Text(Registry& registry, RegistryRoot root, const std::string& key,
                          const std::string& name = {}) {
    const auto value = registry.Query(root, key, name);
    return value && value->type == RegistryType::String ? value->data : "(none)";
  }
  // As another process sees it.
  std::string Text(RegistryRoot root, const std::string& key, const std::string& name = {}) {
    return Text(*m_playground.reopen(), root, key, name);
  }

  RegistryPlayground m_playground;
};

TEST_P(RegistryConformance, KnowsWhichKeysExist) {
  EXPECT_FALSE(Keys().KeyExists(kUser, "Software\\Hearthmake"));
  SetText(kUser, "Software\\Hearthmake\\VB", "a", "1");
  EXPECT_TRUE(Keys().KeyExists(kUser, "Software\\Hearthmake"));
  EXPECT_TRUE(Keys().KeyExists(kUser, "SOFTWARE\\hearthmake\\vb"));
  EXPECT_FALSE(Keys().KeyExists(kUser, "Software\\Hearthmake\\VB\\a"));
  EXPECT_FALSE(Keys().KeyExists(kMachine, "Software\\Hearthmake"));
  EXPECT_TRUE(Keys().KeyExists(kUser, ""));
}

TEST_P(RegistryConformance, GivesBackValuesOfEveryType) {
  using namespace std::string_literals;
  const std::vector<RegistryValue> values = {
      {RegistryType::String, "plain"},
      {RegistryType::String, ""},
      {RegistryType::String, "C:\\VB98\\VB6.EXE \"%1\""},
      {RegistryType::String, "lines\r\nand\ttabs"},
      {RegistryType::String, "Größe € \U0001F600"},
      {RegistryType::String, "trailing\\"},
      {RegistryType::ExpandString, "%SystemRoot%\\x"},
      {RegistryType::MultiString, "one\0two\0"s},
      {RegistryType::MultiString, "Größe\0"s},
      {RegistryType::MultiString, ""},
      {RegistryType::DWord, "\x2A\0\0\x80"s},
      {RegistryType::DWord, "odd"},
      {RegistryType::QWord, "\1\2\3\4\5\6\7\x88"},
      {RegistryType::Binary, "\0\xFF\x7F"s},
      {RegistryType::Binary, ""},
      {RegistryType::Binary, std::string(500, '\xAB')},
      {RegistryType::None, "x"},
      {static_cast<RegistryType>(0x1234), "yz"},
  };
  for (std::size_t i = 0; i < values.size(); ++i)
    Keys().Set(kMachine, "Software\\Types", std::to_string(i), values[i]);
  const auto other = m_playground.reopen();
  for (Registry* registry : {&Keys(), other.get()}) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const auto value = registry->Query(kMachine, "Software\\Types", std::to_string(i));
      ASSERT_TRUE(value.has_value()) << i;
      EXPECT_EQ(value->type, values[i].type) << i;
      EXPECT_EQ(value->data, values[i].data) << i;
    }
  }
}

TEST_P(RegistryConformance, HasADefaultValueForEveryKey) {
  SetText(kClasses, "VisualBasic.Project\\shell\\open\\command", "", "\"C:\\VB98\\VB6.EXE\" \"%1\"");
  EXPECT_EQ(Text(kClasses, "visualbasic.project\\Shell\\Open\\Command"), "\"C:\\VB98\\VB6.EXE\" \"%1\"");
  EXPECT_FALSE(Keys().Query(kClasses, "VisualBasic.Project\\shell", "").has_value());
}

TEST_P(RegistryConformance, TakesOddNames) {
  SetText(kUser, "Software\\{0-1}\\a=b [c] ;d\\Größe", "x=\"y\"\\z]", "1");
  EXPECT_EQ(Text(kUser, "software\\{0-1}\\A=B [C] ;D\\GRÖßE", "X=\"Y\"\\Z]"), "1");
}

TEST_P(RegistryConformance, RefusesNamesThatCanNotBe) {
  for (const char* name : {"line\nend", "\x01", "\xFF"}) {
    EXPECT_THROW(SetText(kUser, std::string("Software\\") + name, "a", "1"), automation::Error);
    EXPECT_THROW(SetText(kUser, "Software\\Names", name, "1"), automation::Error);
  }
  EXPECT_FALSE(Keys().KeyExists(kUser, "Software\\Names"));
}

TEST_P(RegistryConformance, PutsTheLastValueInThePlaceOfTheFirst) {
  SetText(kUser, "Software\\x", "Name", "1");
  SetText(kUser, "Software\\x", "NAME", "2");
  EXPECT_EQ(Text(kUser, "Software\\x", "name"), "2");
  EXPECT_THAT(m_playground.reopen()->ValueNames(kUser, "Software\\x"), ::testing::ElementsAre("Name"));
}

TEST_P(RegistryConformance, SetsManyValuesInTheirOrder) {
  SetText(kClasses, "A.B", "", "before");
  const std::vector<RegistryEntry> entries = {{"a.b", "", {RegistryType::String, "first"}},
                                              {"A.B", "", {RegistryType::String, "last"}},
                                              {"A.B\\Clsid", "n", {RegistryType::String, "x"}}};
  Keys().SetAll(kClasses, entries);
  EXPECT_EQ(Text(kClasses, "A.B"), "last");
  EXPECT_EQ(Text(kClasses, "A.B\\Clsid", "N"), "x");
  Keys().SetAll(kClasses, {});
  EXPECT_EQ(Text(*m_playground.registry, kClasses, "A.B"), "last");
}

TEST_P(RegistryConformance, ListsKeysAndValues) {
  SetText(kMachine, "Software\\List\\One\\Deep", "", "1");
  SetText(kMachine, "Software\\List\\Two", "", "2");
  SetText(kMachine, "Software\\List", "a", "3");
  SetText(kMachine, "Software\\List", "", "4");
  EXPECT_THAT(Keys().SubKeys(kMachine, "software\\list"), ::testing::UnorderedElementsAre("One", "Two"));
  EXPECT_THAT(Keys().ValueNames(kMachine, "software\\list"), ::testing::UnorderedElementsAre("a", ""));
  EXPECT_THAT(Keys().SubKeys(kMachine, "Software\\Nowhere"), ::testing::IsEmpty());
  EXPECT_THAT(Keys().ValueNames(kMachine, "Software\\Nowhere"), ::testing::IsEmpty());
}

TEST_P(RegistryConformance, RemovesValues) {
  SetText(kUser, "Software\\x", "a", "1");
  SetText(kUser, "Software\\x", "b", "2");
  Keys().RemoveValue(kUser, "software\\X", "A");
  Keys().RemoveValue(kUser, "Software\\x", "missing");
  Keys().RemoveValue(kUser, "Software\\Nowhere", "missing");
  EXPECT_EQ(Text(kUser, "Software\\x", "a"), "(none)");
  EXPECT_EQ(Text(kUser, "Software\\x", "b"), "2");
  EXPECT_FALSE(Keys().KeyExists(kUser, "Software\\Nowhere"));
}

TEST_P(RegistryConformance, RemovesKeysWithAllBelowThem) {
  SetText(kClasses, "TypeLib\\{A}\\1.0\\0\\win32", "", "C:\\a.tlb");
  SetText(kClasses, "TypeLib\\{B}\\1.0", "", "B");
  Keys().RemoveKey(kClasses, "typelib\\{a}");
  Keys().RemoveKey(kClasses, "TypeLib\\{Missing}\\x");
  EXPECT_FALSE(Keys().KeyExists(kClasses, "TypeLib\\{A}"));
  EXPECT_FALSE(m_playground.reopen()->KeyExists(kClasses, "TypeLib\\{A}\\1.0\\0\\win32"));
  EXPECT_EQ(Text(kClasses, "TypeLib\\{B}\\1.0"), "B");
  EXPECT_THROW(Keys().RemoveKey(kUser, ""), automation::Error);
  SetText(kClasses, "TypeLib\\{A}\\2.0", "", "again");
  EXPECT_EQ(Text(kClasses, "TypeLib\\{A}\\2.0"), "again");
  EXPECT_EQ(Text(kClasses, "TypeLib\\{A}\\1.0\\0\\win32"), "(none)");
}

TEST_P(RegistryConformance, MergesTheClassesOfUserAndMachine) {
  SetText(kMachine, "Software\\Classes\\Prog.Id", "", "machine");
  SetText(kMachine, "Software\\Classes\\Prog.Id", "only", "machine");
  EXPECT_EQ(Text(kClasses, "Prog.Id"), "machine");
  SetText(kUser, "Software\\Classes\\Prog.Id", "", "user");
  SetText(kUser, "Software\\Classes\\Prog.Id\\Sub", "", "user");
  EXPECT_EQ(Text(kClasses, "Prog.Id"), "user");
  EXPECT_EQ(Text(kClasses, "Prog.Id", "only"), "machine");
  EXPECT_THAT(Keys().SubKeys(kClasses, "Prog.Id"), ::testing::ElementsAre("Sub"));
  EXPECT_THAT(Keys().ValueNames(kClasses, "Prog.Id"), ::testing::UnorderedElementsAre("", "only"));
}

TEST_P(RegistryConformance, WritesClassesWhereTheyAreElseForTheMachine) {
  SetText(kClasses, "New.Id", "", "new");
  EXPECT_EQ(Text(kMachine, "Software\\Classes\\New.Id"), "new");
  EXPECT_FALSE(Keys().KeyExists(kUser, "Software\\Classes\\New.Id"));
  SetText(kUser, "Software\\Classes\\Own.Id", "", "old");
  SetText(kClasses, "Own.Id", "", "changed");
  EXPECT_EQ(Text(kUser, "Software\\Classes\\Own.Id"), "changed");
  EXPECT_FALSE(Keys().KeyExists(kMachine, "Software\\Classes\\Own.Id"));
}

TEST_P(RegistryConformance, SeesWhatOthersWrite) {
  SetText(kUser, "Software\\x", "a", "1");
  m_playground.reopen()->Set(kUser, "Software\\x", "b", {RegistryType::String, "2"});
  EXPECT_EQ(Text(Keys(), kUser, "Software\\x", "b"), "2");
  SetText(kUser, "Software\\x", "a", "3");
  EXPECT_EQ(Text(kUser, "Software\\x", "a"), "3");
  EXPECT_EQ(Text(kUser, "Software\\x", "b"), "2");
}

TEST_P(RegistryConformance, RefusesKeysThatLieTooDeep) {
  std::string key = "Software";
  for (int i = 0; i < 600; ++i) key += "\\k";
  EXPECT_THROW(SetText(kUser, key, "a", "1"), automation::Error);
  SetText(kUser, "Software\\after", "a", "1");
  EXPECT_EQ(Text(kUser, "Software\\after", "a"), "1");
}

}  // namespace hearthmake::platform
