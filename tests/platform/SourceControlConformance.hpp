#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "platform/FileSystem.hpp"
#include "platform/SourceControl.hpp"

// What every SourceControl does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Git, SourceControlConformance, ::testing::Values(MakePlayground));

namespace hearthmake::platform {

using SeedFiles = std::vector<std::pair<std::string, std::string>>;  // "Suite/Lib/a.cls" and its bytes

// A database that holds the files it was made with, in one version, and an existing empty folder (a DOS path
// without a final backslash) for working folders. `keepAlive` holds what must stay.
struct SourceControlPlayground {
  std::shared_ptr<SourceControl> control;
  std::shared_ptr<FileSystem> files;
  std::string ini;
  std::string folder;
  std::shared_ptr<void> keepAlive;
  // Whether a version is one of the whole database. Else it is one of a file: a project's history holds those
  // of the files right in it, and labels stand in the order of time.
  bool versionsAreOfAll = true;
  // Else labels have up to 31 characters, none of them a blank at either end.
  bool takesAnyLabel = true;
};

using SourceControlFactory = std::function<SourceControlPlayground(const SeedFiles&)>;

class SourceControlConformance : public ::testing::TestWithParam<SourceControlFactory> {
 protected:
  static constexpr std::int32_t kAll = SourceFlags::kRecursiveYes | SourceFlags::kReplaceYes;

  void SetUp() override { m_playground = GetParam()(m_seed); }

  FileSystem& Files() { return *m_playground.files; }
  std::string At(std::string_view name) const { return m_playground.folder + "\\" + std::string(name); }
  std::unique_ptr<VSSDatabase> Open(std::string_view user = "Ann") {
    return m_playground.control->Open(m_playground.ini, user, "");
  }
  std::unique_ptr<VSSItem> Item(std::string_view spec, std::string_view user = "Ann") {
    return Open(user)->VSSItem(spec, false);
  }
  const std::string& Ini() const { return m_playground.ini; }
  SourceControl& Control() { return *m_playground.control; }
  bool IsReadOnly(std::string_view name) { return (Files().Attributes(At(name)) & kReadOnly) != 0; }

  void CheckInText(std::string_view spec, const std::string& text, std::string_view comment = "change",
                   std::string_view user = "Ann") {
    Files().Replace(At("checkin.tmp"), text);
    const auto item = Item(spec, user);
    item->Checkout("out", "", SourceFlags::kGetNo);
    item->Checkin(comment, At("checkin.tmp"), SourceFlags::kKeepNo);
  }

  // Labels in brackets, comments of versions without.
  std::vector<std::string> History(std::string_view spec) {
    std::vector<std::string> history;
    const auto versions = Item(spec)->Versions();
    while (const auto version = versions->Next())
      history.push_back(version->Label().empty() ? version->Comment() : "[" + version->Label() + "]");
    return history;
  }

  // The history that an item begins with, behind the newer entries.
  std::vector<std::string> AfterSeed(std::vector<std::string> newer, std::string_view spec) const {
    if (VersionsAreOfAll()) newer.push_back("First");
    for (const auto& [path, bytes] : m_seed) {
      if (!VersionsAreOfAll() && "$/" + path.substr(0, path.rfind('/')) == spec) newer.push_back("First");
    }
    return newer;
  }
  bool VersionsAreOfAll() const { return m_playground.versionsAreOfAll; }
  bool Takes(const std::string& label) const {
    return m_playground.takesAnyLabel || (label.size() <= 31 && !label.starts_with(' '));
  }

  std::unique_ptr<VSSVersion> Find(std::string_view spec, std::string_view label) {
    const auto versions = Item(spec)->Versions();
    while (auto version = versions->Next()) {
      if (version->Label() == label) return version;
    }
    return nullptr;
  }

  void ExpectError(std::string_view source, std::string_view named, const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no error of " << source;
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Source(), source);
      EXPECT_NE(error.Description().find(named), std::string::npos) << error.Description();
      EXPECT_NE(error.Number(), 0);
    }
  }

 private:
  const SeedFiles m_seed = {{"Suite/main.bas", "main"},
                            {"Suite/Lib/a.cls", "one\r\n"},
                            {"Suite/Lib/Prüf Liste é.cls", std::string("\0\xFF\r\n", 4)},
                            {"Suite/Lib/Deep/er/b.cls", "b"},
                            {"Other/x.txt", "x"}};
  SourceControlPlayground m_playground;
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SourceControlConformance);

using Strings = std::vector<std::string>;

TEST_P(SourceControlConformance, RefusesAnIniFileThatIsNotThere) {
  ExpectError("VSSDatabase.Open", "none.ini", [&] { Control().Open(At("none.ini"), "Ann", ""); });
}

TEST_P(SourceControlConformance, FindsItemsByEitherSlashInAnyCase) {
  const auto database = Open();
  for (const char* spec :
       {"$/Suite/Lib/a.cls", "$/Suite\\Lib\\a.cls", "$\\SUITE/lib\\A.CLS", "$/Suite//Lib/a.cls"})
    EXPECT_EQ(database->VSSItem(spec, false)->Spec(), "$/Suite/Lib/a.cls") << spec;
  EXPECT_EQ(database->VSSItem("$/suite/lib/", false)->Spec(), "$/Suite/Lib");
  EXPECT_EQ(database->VSSItem("$/", false)->Spec(), "$/");
  EXPECT_EQ(database->VSSItem("$/SUITE/LIB/PRÜF LISTE É.CLS", false)->Spec(), "$/Suite/Lib/Prüf Liste é.cls");
}

TEST_P(SourceControlConformance, NamesThePathThatItCannotFind) {
  const auto database = Open();
  for (const char* spec : {"$/Suite/none.cls", "$/None", "$/Suite/main.bas/x"})
    ExpectError("VSSDatabase.VSSItem", spec, [&] { database->VSSItem(spec, false); });
  ExpectError("VSSDatabase.VSSItem", "..", [&] { database->VSSItem("$/Suite/../Other", false); });
}

TEST_P(SourceControlConformance, GetsAFolderWithAllBelowIt) {
  Item("$/Suite")->Get(At("work\\new"), kAll);
  EXPECT_EQ(Files().Read(At("work\\new\\main.bas")), "main");
  EXPECT_EQ(Files().Read(At("work\\new\\Lib\\a.cls")), "one\r\n");
  EXPECT_EQ(Files().Read(At("work\\new\\Lib\\Prüf Liste é.cls")), std::string("\0\xFF\r\n", 4));
  EXPECT_EQ(Files().Read(At("work\\new\\Lib\\Deep\\er\\b.cls")), "b");
  EXPECT_FALSE(Files().FolderExists(At("work\\new\\Other")));
}

TEST_P(SourceControlConformance, GetsOnlyTheFolderItselfUnlessAskedForMore) {
  Item("$/Suite")->Get(At("work"), SourceFlags::kReplaceYes);
  EXPECT_TRUE(Files().FileExists(At("work\\main.bas")));
  EXPECT_FALSE(Files().FolderExists(At("work\\Lib")));
}

TEST_P(SourceControlConformance, GetsAFileToItsNameOrIntoAFolder) {
  Item("$/Suite/Lib/a.cls")->Get(At("renamed.cls"), 0);
  EXPECT_EQ(Files().Read(At("renamed.cls")), "one\r\n");
  Files().CreateFolders(At("into"));
  Item("$/Suite/Lib/a.cls")->Get(At("into"), 0);
  EXPECT_EQ(Files().Read(At("into\\a.cls")), "one\r\n");
}

TEST_P(SourceControlConformance, WritesToTheFilesWhoseNamesDifferInCaseOnly) {
  Files().CreateFolders(At("work\\LIB"));
  Files().Replace(At("work\\LIB\\A.CLS"), "old");
  Item("$/Suite")->Get(At("work"), kAll);
  std::size_t count = 0;
  for (const FolderEntry& entry : Files().List(At("work\\LIB"))) count += entry.isFolder ? 0 : 1;
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(Files().Read(At("work\\LIB\\A.CLS")), "one\r\n");
}

TEST_P(SourceControlConformance, LeavesOtherFilesAlone) {
  Files().CreateFolders(At("work\\Lib"));
  Files().Replace(At("work\\Lib\\mine.txt"), "mine");
  Item("$/Suite")->Get(At("work"), kAll);
  EXPECT_EQ(Files().Read(At("work\\Lib\\mine.txt")), "mine");
}

TEST_P(SourceControlConformance, FilesAreReadOnlyUnlessAskedForWritable) {
  Item("$/Suite")->Get(At("a"), kAll);
  EXPECT_TRUE(IsReadOnly("a\\main.bas"));
  Item("$/Suite")->Get(At("b"), kAll | SourceFlags::kReadOnlyNo);
  EXPECT_FALSE(IsReadOnly("b\\main.bas"));
  Item("$/Suite")->Get(At("b"), kAll | SourceFlags::kReadOnlyYes);
  EXPECT_TRUE(IsReadOnly("b\\main.bas"));
}

TEST_P(SourceControlConformance, ReplacesReadOnlyFiles) {
  Files().Replace(At("main.bas"), "old");
  Files().SetAttributes(At("main.bas"), kReadOnly);
  Item("$/Suite")->Get(At("") + ".", SourceFlags::kReplaceSkip);
  EXPECT_EQ(Files().Read(At("main.bas")), "main");
}

TEST_P(SourceControlConformance, ReplacesWritableFilesOnlyWhenTheFlagsSaySo) {
  using namespace SourceFlags;
  for (const std::int32_t flags :
       {0, kReplaceAsk, kReplaceSkip, kReplaceMerge, kReplaceYes + 128, kReplaceSkip + 128}) {
    Files().Replace(At("main.bas"), "my work");
    Item("$/Suite/main.bas")->Get(At("main.bas"), flags);
    EXPECT_EQ(Files().Read(At("main.bas")), "my work") << flags;
  }
  Item("$/Suite/main.bas")->Get(At("main.bas"), kReplaceYes);
  EXPECT_EQ(Files().Read(At("main.bas")), "main");
}

TEST_P(SourceControlConformance, UpdatesWritableFilesThatNobodyHasTouched) {
  using namespace SourceFlags;
  Item("$/Suite")->Get(At("work"), kReadOnlyNo | kReplaceSkip);
  Item("$/Suite")->Get(At("work"), kReadOnlyNo | kReplaceSkip);
  CheckInText("$/Suite/main.bas", "newer");
  Item("$/Suite")->Get(At("work"), kReadOnlyNo | kReplaceYes);
  EXPECT_EQ(Files().Read(At("work\\main.bas")), "newer");
}

TEST_P(SourceControlConformance, LeavesUnchangedFilesAlone) {
  Item("$/Suite")->Get(At("work"), kAll);
  const FileStamp before = Files().Stamp(At("work\\Lib\\a.cls"));
  Item("$/Suite")->Get(At("work"), kAll);
  EXPECT_EQ(Files().Stamp(At("work\\Lib\\a.cls")), before);
}

TEST_P(SourceControlConformance, SeesAChangeOfTheSameSizeMadeAtOnce) {
  for (int i = 0; i < 20; ++i) {
    Item("$/Suite/main.bas")->Get(At("main.bas"), SourceFlags::kReadOnlyNo | SourceFlags::kReplaceYes);
    ASSERT_EQ(Files().Read(At("main.bas")), "main");
    Files().Replace(At("main.bas"), "niam");
  }
}

TEST_P(SourceControlConformance, AFileIsHeldByOnePerson) {
  const auto ann = Item("$/Suite/Lib/a.cls", "Ann");
  const auto ben = Item("$/Suite/Lib/a.cls", "Ben");
  EXPECT_EQ(ann->IsCheckedOut(), CheckoutState::NotCheckedOut);
  EXPECT_TRUE(ann->Checkouts().empty());
  ann->Checkout("I need it", "", SourceFlags::kGetNo);
  EXPECT_EQ(Item("$/Suite/Lib/A.CLS", "ann")->IsCheckedOut(), CheckoutState::ByCurrentUser);
  EXPECT_EQ(Item("$/Suite/Lib/a.cls", "Ben")->IsCheckedOut(), CheckoutState::ByOther);
  const auto checkouts = Item("$/Suite/Lib/a.cls", "Ben")->Checkouts();
  ASSERT_EQ(checkouts.size(), 1U);
  EXPECT_EQ(checkouts[0].Username, "Ann");
  EXPECT_EQ(checkouts[0].Comment, "I need it");
  EXPECT_GT(checkouts[0].Date, 36526);
  ExpectError("VSSItem.Checkout", "Ann", [&] { ben->Checkout("me too", "", SourceFlags::kGetNo); });
  ExpectError("VSSItem.Checkout", "a.cls", [&] { ann->Checkout("again", "", SourceFlags::kGetNo); });
  EXPECT_EQ(Item("$/Suite/main.bas", "Ben")->IsCheckedOut(), CheckoutState::NotCheckedOut);
}

TEST_P(SourceControlConformance, AFolderKnowsTheCheckOutsBelowIt) {
  EXPECT_TRUE(Item("$/")->Checkouts().empty());
  Item("$/Suite/Lib/Deep/er/b.cls", "Ann")->Checkout("mine", "", SourceFlags::kGetNo);
  Item("$/Other/x.txt", "Ben")->Checkout("", "", SourceFlags::kGetNo);
  const auto checkouts = Item("$/suite/lib", "Ben")->Checkouts();
  ASSERT_EQ(checkouts.size(), 1U);
  EXPECT_EQ(checkouts[0].Spec, "$/Suite/Lib/Deep/er/b.cls");
  EXPECT_EQ(checkouts[0].Username, "Ann");
  EXPECT_EQ(checkouts[0].Comment, "mine");
  EXPECT_EQ(Item("$/")->Checkouts().size(), 2U);
  EXPECT_TRUE(Item("$/Suite/main.bas")->Checkouts().empty());
}

TEST_P(SourceControlConformance, ACheckOutGetsTheFileWritableUnlessAskedNotTo) {
  using namespace SourceFlags;
  Item("$/Suite")->Get(At("work"), kAll);
  Item("$/Suite/main.bas")->Checkout("", At("work\\main.bas"), kGetYes);
  EXPECT_FALSE(IsReadOnly("work\\main.bas"));
  EXPECT_EQ(Files().Read(At("work\\main.bas")), "main");
  Item("$/Suite/Lib/a.cls")->Checkout("", At("work\\Lib\\a.cls"), kGetNo);
  EXPECT_TRUE(IsReadOnly("work\\Lib\\a.cls"));
}

TEST_P(SourceControlConformance, FoldersAreNotCheckedOut) {
  EXPECT_EQ(Item("$/Suite")->IsCheckedOut(), CheckoutState::NotCheckedOut);
  EXPECT_EQ(Item("$/")->IsCheckedOut(), CheckoutState::NotCheckedOut);
  ExpectError("VSSItem.Checkout", "$/Suite", [&] { Item("$/Suite")->Checkout("", "", SourceFlags::kGetNo); });
}

TEST_P(SourceControlConformance, ACheckInMakesAVersionAndEndsTheCheckOut) {
  CheckInText("$/Suite/Lib/a.cls", "two", "Second\nwith é and 2 lines");
  EXPECT_EQ(Item("$/Suite/Lib/a.cls")->IsCheckedOut(), CheckoutState::NotCheckedOut);
  Item("$/Suite/Lib/a.cls")->Get(At("a.cls"), 0);
  EXPECT_EQ(Files().Read(At("a.cls")), "two");
  const auto version = Item("$/Suite/Lib/a.cls")->Versions()->Next();
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version->Comment(), "Second\nwith é and 2 lines");
  EXPECT_EQ(version->Username(), "Ann");
  EXPECT_EQ(version->Label(), "");
  EXPECT_GT(version->Date(), 36526);
  EXPECT_EQ(History("$/Suite/Lib/a.cls").size(), 2U);
}

TEST_P(SourceControlConformance, ACheckInCanKeepTheCheckOut) {
  Files().Replace(At("new"), "two");
  const auto item = Item("$/Suite/main.bas");
  item->Checkout("", "", SourceFlags::kGetNo);
  item->Checkin("two", At("new"), SourceFlags::kKeepYes);
  EXPECT_EQ(item->IsCheckedOut(), CheckoutState::ByCurrentUser);
  Files().Replace(At("new"), "three");
  item->Checkin("three", At("new"), SourceFlags::kKeepNo);
  EXPECT_EQ(item->IsCheckedOut(), CheckoutState::NotCheckedOut);
  EXPECT_EQ(History("$/Suite/main.bas").front(), "three");
}

TEST_P(SourceControlConformance, AnUnchangedFileMakesNoVersion) {
  const std::size_t before = History("$/Suite/main.bas").size();
  CheckInText("$/Suite/main.bas", "main");
  EXPECT_EQ(History("$/Suite/main.bas").size(), before);
  EXPECT_EQ(Item("$/Suite/main.bas")->IsCheckedOut(), CheckoutState::NotCheckedOut);
}

TEST_P(SourceControlConformance, OnlyTheHolderChecksIn) {
  Files().Replace(At("new"), "two");
  const auto checkIn = [&](const char* user) { Item("$/Suite/main.bas", user)->Checkin("c", At("new"), 0); };
  ExpectError("VSSItem.Checkin", "$/Suite/main.bas", [&] { checkIn("Ann"); });
  Item("$/Suite/main.bas", "Ben")->Checkout("", "", SourceFlags::kGetNo);
  ExpectError("VSSItem.Checkin", "Ann", [&] { checkIn("Ann"); });
  ExpectError("VSSItem.Checkin", "none",
              [&] { Item("$/Suite/main.bas", "Ben")->Checkin("c", At("none"), 0); });
  EXPECT_EQ(History("$/Suite/main.bas").size(), 1U);
}

TEST_P(SourceControlConformance, AVersionIsTheItemAsItWas) {
  CheckInText("$/Suite/Lib/a.cls", "two", "second");
  CheckInText("$/Suite/Lib/a.cls", "three", "third");
  const auto versions = Item("$/Suite/Lib/a.cls")->Versions();
  Strings contents;
  while (const auto version = versions->Next()) {
    version->VSSItem()->Get(At("a.cls"), 0);
    contents.push_back(Files().Read(At("a.cls")));
  }
  EXPECT_EQ(contents, (Strings{"three", "two", "one\r\n"}));
}

TEST_P(SourceControlConformance, HistoryHoldsWhatTouchesTheItemOnly) {
  CheckInText("$/Suite/Lib/a.cls", "two", "a");
  CheckInText("$/Other/x.txt", "two", "x");
  EXPECT_EQ(History("$/Suite/Lib"), AfterSeed({"a"}, "$/Suite/Lib"));
  EXPECT_EQ(History("$/Suite/main.bas").size(), 1U);
  EXPECT_EQ(History("$/Other"), AfterSeed({"x"}, "$/Other"));
  EXPECT_EQ(History("$/"), AfterSeed(VersionsAreOfAll() ? Strings{"x", "a"} : Strings(), "$/"));
}

TEST_P(SourceControlConformance, LabelsStandBetweenTheVersions) {
  Item("$/Suite/Lib")->Label("1.0", "the first");
  CheckInText("$/Suite/Lib/a.cls", "two", "second");
  Item("$/Suite/Lib")->Label("2.0", "");
  EXPECT_EQ(History("$/Suite/Lib"), AfterSeed({"[2.0]", "second", "[1.0]"}, "$/Suite/Lib"));
  const auto first = Find("$/Suite/Lib", "1.0");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->Comment(), "the first");
  EXPECT_EQ(first->Username(), "Ann");
  EXPECT_EQ(Find("$/Suite/Lib", "2.0")->Comment(), "");
  first->VSSItem()->Get(At("old"), kAll);
  EXPECT_EQ(Files().Read(At("old\\a.cls")), "one\r\n");
  EXPECT_EQ(Files().Read(At("old\\Deep\\er\\b.cls")), "b");
}

TEST_P(SourceControlConformance, ALabelHoldsForTheItemAndAllBelowAndNothingElse) {
  Item("$/Suite")->Label("L", "");
  EXPECT_NE(Find("$/Suite", "L"), nullptr);
  EXPECT_NE(Find("$/Suite/Lib", "L"), nullptr);
  EXPECT_NE(Find("$/Suite/Lib/a.cls", "L"), nullptr);
  EXPECT_EQ(Find("$/Other", "L"), nullptr);
  EXPECT_EQ(Find("$/", "L"), nullptr);
}

TEST_P(SourceControlConformance, DifferentItemsMayHaveTheSameLabel) {
  Item("$/Suite")->Label("1.0", "of the suite");
  CheckInText("$/Other/x.txt", "two");
  Item("$/Other")->Label("1.0", "of the other");
  Item("$/")->Label("1.0", "of all");
  EXPECT_EQ(Find("$/Suite", "1.0")->Comment(), "of all");  // on a newer version
  // On one version the item's own comes first.
  EXPECT_EQ(Find("$/Other", "1.0")->Comment(), VersionsAreOfAll() ? "of the other" : "of all");
  EXPECT_EQ(History("$/Other"), (Strings{"[1.0]", "[1.0]", "change", "First"}));
}

TEST_P(SourceControlConformance, PuttingALabelAgainMovesIt) {
  Item("$/Suite")->Label("latest", "a");
  CheckInText("$/Suite/main.bas", "two", "second");
  Item("$/Suite")->Label("latest", "b");
  EXPECT_EQ(History("$/Suite"), AfterSeed({"[latest]", "second"}, "$/Suite"));
  EXPECT_EQ(Find("$/Suite", "latest")->Comment(), "b");
}

TEST_P(SourceControlConformance, KeepsAnyTextOfALabel) {
  for (const std::string& label :
       {std::string("Build 12 of 5"), std::string("a/b\\c..d~^:?*[x]@{y}"), std::string(".lock"),
        std::string("-v"), std::string("é 漢"), std::string("@"), std::string("100%"), std::string("a.lock"),
        std::string(300, 'n'), std::string("Label: x"), std::string("a b"), std::string("a-b"),
        std::string(" ")}) {
    if (!Takes(label)) {
      ExpectError("VSSItem.Label", "$/Suite", [&] { Item("$/Suite")->Label(label, "of " + label); });
      EXPECT_EQ(Find("$/Suite", label), nullptr) << label;
      continue;
    }
    Item("$/Suite")->Label(label, "of " + label);
    const auto version = Find("$/Suite", label);
    ASSERT_NE(version, nullptr) << label;
    EXPECT_EQ(version->Comment(), "of " + label);
  }
  ExpectError("VSSItem.Label", "$/Suite", [&] { Item("$/Suite")->Label("", "none"); });
}

TEST_P(SourceControlConformance, NewItemsAreUnknown) {
  ExpectError("VSSDatabase.VSSItem", "new.cls", [&] { Open()->VSSItem("$/Suite/new.cls", false); });
}

TEST_P(SourceControlConformance, RefusesAGetWhereAFileIsInTheWay) {
  Files().Replace(At("work"), "a file");
  ExpectError("VSSItem.Get", "work", [&] { Item("$/Suite")->Get(At("work"), kAll); });
  Files().CreateFolders(At("w2\\main.bas"));
  ExpectError("VSSItem.Get", "main.bas", [&] { Item("$/Suite")->Get(At("w2"), kAll); });
}

}  // namespace hearthmake::platform
