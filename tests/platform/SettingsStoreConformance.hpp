#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "platform/SettingsStore.hpp"

// What every SettingsStore does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Ini, SettingsStoreConformance, ::testing::Values(MakeStore));

namespace hearthmake::platform {

struct SettingsStorePlayground {
  std::shared_ptr<SettingsStore> store;  // empty
  // Another one on the same settings, as another process has it.
  std::function<std::shared_ptr<SettingsStore>()> reopen;
  std::shared_ptr<void> keepAlive;
  // What a store that is not our own may fall short of: the order of the pairs, and bytes that are no text.
  bool keepsOrder = true;
  bool keepsStrayBytes = true;
};

using SettingsStoreFactory = std::function<SettingsStorePlayground()>;

class SettingsStoreConformance : public ::testing::TestWithParam<SettingsStoreFactory> {
 protected:
  void SetUp() override { m_playground = GetParam()(); }

  SettingsStore& Store() { return *m_playground.store; }
  SettingPairs Reread(std::string_view section = "VB") {
    return m_playground.reopen()->GetAll("Hearthmake", section);
  }
  void ExpectPairs(SettingPairs got, SettingPairs expected) const {
    if (!m_playground.keepsOrder) {
      std::sort(got.begin(), got.end());
      std::sort(expected.begin(), expected.end());
    }
    EXPECT_EQ(got, expected);
  }

  SettingsStorePlayground m_playground;
};

TEST_P(SettingsStoreConformance, IsEmptyAtFirst) {
  EXPECT_EQ(Store().GetAll("Hearthmake", "VB"), SettingPairs());
}

TEST_P(SettingsStoreConformance, KeepsThePairsInTheOrderOfTheirFirstStoring) {
  Store().Save("Hearthmake", "VB", {{"VBExe", "C:\\VB98\\VB6.EXE"}, {"RunScripts", "-1"}, {"Again", "0"}});
  Store().Save("Hearthmake", "VB", {{"Last", "x"}, {"RunScripts", "0"}});
  const SettingPairs expected = {
      {"VBExe", "C:\\VB98\\VB6.EXE"}, {"RunScripts", "0"}, {"Again", "0"}, {"Last", "x"}};
  ExpectPairs(Store().GetAll("Hearthmake", "VB"), expected);
  ExpectPairs(Reread(), expected);
}

TEST_P(SettingsStoreConformance, MatchesNamesWithoutRegardToCase) {
  Store().Save("Hearthmake", "VB", {{"Größe", "1"}});
  Store().Save("HEARTHMAKE", "vb", {{"GRÖSSE", "2"}, {"gröSSe", "3"}, {"GRÖßE", "4"}});
  ExpectPairs(Store().GetAll("hearthmake", "Vb"), {{"Größe", "4"}, {"GRÖSSE", "3"}});
}

TEST_P(SettingsStoreConformance, KeepsSectionsAndApplicationsApart) {
  Store().Save("Hearthmake", "VB", {{"a", "1"}});
  Store().Save("Hearthmake", "Host", {{"a", "2"}});
  Store().Save("Other", "VB", {{"a", "3"}});
  EXPECT_EQ(Reread(), (SettingPairs{{"a", "1"}}));
  EXPECT_EQ(Reread("Host"), (SettingPairs{{"a", "2"}}));
  EXPECT_EQ(m_playground.reopen()->GetAll("Other", "VB"), (SettingPairs{{"a", "3"}}));
}

TEST_P(SettingsStoreConformance, GivesBackEveryText) {
  using namespace std::string_literals;
  SettingPairs odd = {{"empty", ""},
                      {"blanks", "  both ends\t"},
                      {"quotes", "\"quoted\""},
                      {"command", "\"C:\\VB98\\VB6.EXE\" \"%1\""},
                      {"half", "\"half"},
                      {"comment", "; no comment # at all"},
                      {"equals", "a=b=c"},
                      {"brackets", "[Hearthmake\\VB]"},
                      {"lines", "one\r\ntwo\nthree\r"},
                      {"zero", "a\0b"s},
                      {"letters", "Straße, Ελλάδα, \U0001F600"},
                      {"backslashes", "\\\\server\\share\\"},
                      {"wrapped", "escaped:\"x\\n\""},
                      {"bytes", "\xFF\xFE\x80"},
                      {"control", "\x01\x1B\x7F"}};
  if (!m_playground.keepsStrayBytes)
    std::erase_if(odd, [](const auto& pair) { return pair.first == "bytes"; });
  Store().Save("Hearthmake", "VB", odd);
  ExpectPairs(Reread(), odd);
}

TEST_P(SettingsStoreConformance, TakesEveryName) {
  const SettingPairs odd = {{"a=b", "1"},       {" blank ", "2"},    {"[x]", "3"},
                            {";x", "4"},        {"#x", "5"},         {"\"quoted\"", "6"},
                            {"line\nend", "7"}, {"escaped:\"", "8"}, {"", "9"}};
  Store().Save("Hear\\th]ma\"ke", " Se]ct\\ion ", odd);
  ExpectPairs(m_playground.reopen()->GetAll("Hear\\th]ma\"ke", " Se]ct\\ion "), odd);
  Store().Save("", "", {{"k", "v"}});
  EXPECT_EQ(m_playground.reopen()->GetAll("", ""), (SettingPairs{{"k", "v"}}));
}

TEST_P(SettingsStoreConformance, RemovesASetting) {
  Store().Save("Hearthmake", "VB", {{"a", "1"}, {"b", "2"}, {"c", "3"}});
  Store().Remove("Hearthmake", "vb", "B");
  ExpectPairs(Reread(), {{"a", "1"}, {"c", "3"}});
  Store().Remove("Hearthmake", "VB", "b");
  Store().Remove("Hearthmake", "Nowhere", "b");
  Store().Save("Hearthmake", "VB", {{"c", "4"}, {"b", "5"}});
  ExpectPairs(Reread(), {{"a", "1"}, {"c", "4"}, {"b", "5"}});
}

TEST_P(SettingsStoreConformance, SeesWhatOthersStore) {
  Store().Save("Hearthmake", "VB", {{"mine", "1"}});
  m_playground.reopen()->Save("Hearthmake", "VB", {{"theirs", "2"}});
  ExpectPairs(Store().GetAll("Hearthmake", "VB"), {{"mine", "1"}, {"theirs", "2"}});
  Store().Save("Hearthmake", "VB", {{"mine", "3"}});
  ExpectPairs(Reread(), {{"mine", "3"}, {"theirs", "2"}});
}

}  // namespace hearthmake::platform
