#include "adapters/sourcesafe/SourceSafe.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"
#include "support/SourceSafeBench.hpp"

namespace hearthmake::sourcesafe {
namespace {

using platform::CheckoutState;
using support::ErrorOf;
using support::ExpectError;
using support::MemorySourceControl;
using testing::ElementsAre;

class SourceSafeTest : public testing::Test, protected support::SourceSafeBench {
 protected:
  SourceSafeTest() {
    memory[kIni].passwords["Ann"] = "secret";
    memory[kIni].Change("$/Suite/a.cls", "one", "Ann", "first", 36975.5);
    memory[kIni].Change("$/Suite/Lib/b.cls", "b", "Ben", "of the library", 36976.25);
    base.projects = doubles::ProjectsAbove({"$/Suite/a.cls", "$/Suite/Lib/b.cls"});
  }

  std::unique_ptr<platform::VSSItem> Item(const std::string& spec, const std::string& user = "Ben") {
    auto item = m_safe.Open(kIni, user, "")->VSSItem(spec, false);
    log->calls.clear();
    return item;
  }
  std::vector<std::string> Calls() const { return log->calls; }

 private:
  SourceSafe m_safe;
};

TEST_F(SourceSafeTest, OpensASessionWithIniFileUserAndPassword) {
  EXPECT_EQ(SourceSafe().Open(kIni, "Ann", "secret")->VSSItem("$/Suite", false)->Spec(), "$/Suite");
  EXPECT_THAT(Calls(), ElementsAre("VSSDatabase.Open(\"C:\\vss\\srcsafe.ini\", \"Ann\", \"secret\")",
                                   "VSSDatabase.VSSItem(\"$/Suite\", False)", "VSSItem.Spec"));
  EXPECT_EQ(memory.openSessions, 0);
}

TEST_F(SourceSafeTest, NamesTheDatabaseThatCannotBeOpened) {
  ExpectError([] { SourceSafe().Open(kIni, "Ann", "wrong"); }, MemorySourceControl::kFailure,
              "VSSDatabase.Open", "Invalid password (C:\\vss\\srcsafe.ini)");
  ExpectError([] { SourceSafe().Open("C:\\none.ini", "Ann", ""); }, MemorySourceControl::kFailure,
              "VSSDatabase.Open", "There is no database C:\\none.ini");
}

TEST_F(SourceSafeTest, NamesTheItemThatIsNotThere) {
  const auto database = SourceSafe().Open(kIni, "Ben", "");
  ExpectError([&] { database->VSSItem("$/None", false); }, MemorySourceControl::kFailure,
              "VSSDatabase.VSSItem", "There is no $/None");
}

TEST_F(SourceSafeTest, GetsFiles) {
  const std::string work = folder.Path("work");
  Item("$/Suite")->Get(work, 0x2080);
  EXPECT_EQ(folder.Content("work/a.cls"), "one");
  EXPECT_EQ(folder.Content("work/Lib/b.cls"), "b");
  EXPECT_THAT(Calls(), ElementsAre("VSSItem.Get(\"" + work + "\", 8320)"));
}

TEST_F(SourceSafeTest, PassesAnEmptyPathForTheWorkingFolder) {
  Item("$/Suite")->Get("", 128);
  EXPECT_THAT(Calls(), ElementsAre("VSSItem.Get(\"\", 128)"));
}

TEST_F(SourceSafeTest, PutsLabels) {
  Item("$/Suite")->Label("1.0", "the label");
  EXPECT_THAT(Calls(), ElementsAre("VSSItem.Label(\"1.0\", \"the label\")"));
}

TEST_F(SourceSafeTest, TellsTheVersionsOfAnItem) {
  Item("$/Suite")->Label("1.0", "the label");
  memory[kIni].Change("$/Suite/a.cls", "two", "Ann", "second", 36977.5);
  const auto versions = Item("$/Suite")->Versions();
  const auto newest = versions->Next();
  EXPECT_EQ(newest->Label(), "");
  EXPECT_EQ(newest->Username(), "Ann");
  EXPECT_EQ(newest->Date(), 36977.5);
  EXPECT_EQ(newest->Comment(), "second");
  const auto label = versions->Next();
  EXPECT_EQ(label->Label(), "1.0");
  EXPECT_EQ(label->Comment(), "the label");
  label->VSSItem()->Get(folder.Path("old"), 128);
  EXPECT_EQ(folder.Content("old/a.cls"), "one");
  EXPECT_EQ(versions->Next()->Comment(), "first");
  EXPECT_EQ(versions->Next(), nullptr);
}

TEST_F(SourceSafeTest, ChecksOutAndInAgain) {
  const std::string file = folder.MakeFile("a.cls", "two");
  const auto item = Item("$/Suite/a.cls");
  EXPECT_EQ(item->IsCheckedOut(), CheckoutState::NotCheckedOut);
  item->Checkout("out", "", 0x8000000);
  EXPECT_EQ(item->IsCheckedOut(), CheckoutState::ByCurrentUser);
  EXPECT_EQ(Item("$/Suite/a.cls", "Cy")->IsCheckedOut(), CheckoutState::ByOther);
  log->calls.clear();
  item->Checkin("in", file, 0x10000);
  EXPECT_THAT(Calls(), ElementsAre("VSSItem.Checkin(\"in\", \"" + file + "\", 65536)"));
  EXPECT_EQ(item->IsCheckedOut(), CheckoutState::NotCheckedOut);
  EXPECT_EQ(memory[kIni].Content("$/Suite/a.cls"), "two");
}

TEST_F(SourceSafeTest, TellsWhoHasAFileCheckedOut) {
  Item("$/Suite/a.cls", "Cy")->Checkout("mine", "", 0x8000000);
  EXPECT_THAT(Calls(), ElementsAre("VSSItem.Checkout(\"mine\", \"\", 134217728)"));
  const auto checkouts = Item("$/Suite/a.cls")->Checkouts();
  ASSERT_EQ(checkouts.size(), 1U);
  EXPECT_EQ(checkouts[0].Spec, "$/Suite/a.cls");
  EXPECT_EQ(checkouts[0].Username, "Cy");
  EXPECT_EQ(checkouts[0].Date, 36975.5);
  EXPECT_EQ(checkouts[0].Comment, "mine");
}

TEST_F(SourceSafeTest, LooksForTheCheckOutsBelowAProject) {
  Item("$/Suite/a.cls", "Cy")->Checkout("", "", 0x8000000);
  Item("$/Suite/Lib/b.cls", "Ben")->Checkout("", "", 0x8000000);
  const auto checkouts = Item("$/Suite")->Checkouts();
  ASSERT_EQ(checkouts.size(), 2U);
  EXPECT_EQ(checkouts[0].Spec, "$/Suite/a.cls");
  EXPECT_EQ(checkouts[1].Spec, "$/Suite/Lib/b.cls");
  EXPECT_EQ(Item("$/Suite/Lib")->Checkouts().size(), 1U);
}

TEST_F(SourceSafeTest, SaysWhichOperationFailedOnWhichItem) {
  const std::map<std::string, std::function<void(platform::VSSItem&)>> operations = {
      {"Get", [](platform::VSSItem& item) { item.Get("C:\\work", 128); }},
      {"Label", [](platform::VSSItem& item) { item.Label("L", ""); }},
      {"IsCheckedOut", [](platform::VSSItem& item) { item.IsCheckedOut(); }},
      {"Checkout", [](platform::VSSItem& item) { item.Checkout("", "", 0); }},
      {"Checkin", [](platform::VSSItem& item) { item.Checkin("", "C:\\a.cls", 0); }}};
  for (const auto& [name, operation] : operations) {
    const auto item = Item("$/Suite/a.cls");
    memory.failures = {{name, "The disk is full"}};
    ExpectError([&] { operation(*item); }, MemorySourceControl::kFailure, "VSSItem." + name,
                "The disk is full ($/Suite/a.cls)");
    memory.failures.clear();
  }
}

TEST(SourceSafe, SaysThatAMachineHasNoSourceSafe) {
  const doubles::ComThread com;
  const automation::Error error = ErrorOf([] { SourceSafe().Open("C:\\srcsafe.ini", "Ann", ""); });
  EXPECT_EQ(error.Number(), 429);
  EXPECT_THAT(error.Description(), testing::HasSubstr("SourceSafe"));
}

}  // namespace
}  // namespace hearthmake::sourcesafe
