#include "build/Builds.hpp"

#include <gtest/gtest.h>

#include "automation/Interface.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Make;
using automation::Variant;
using support::BuildScene;
using support::ExpectError;
using support::Workbench;

TEST(Builds, MembersStandInInterfaceOrder) {
  std::vector<std::string> names;
  for (const auto& member : Builds::Describe().Members()) names.push_back(member.name);
  EXPECT_EQ(names, (std::vector<std::string>{"NewEnum", "item", "Count", "LoadAll"}));
}

TEST(Builds, AreEmptyUntilLoaded) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  EXPECT_EQ(builds->Count(), 0);
}

TEST(Builds, LoadAllListsEveryBuildByItsId) {
  const BuildScene scene;
  const auto second = BuildScene::Stored("Second");
  const auto builds = Make<Builds>();
  EXPECT_TRUE(builds->LoadAll().IsEmpty());
  ASSERT_EQ(builds->Count(), 2);
  EXPECT_EQ(builds->Item(Variant::FromLong(1))->Name(), "Suite");
  EXPECT_EQ(builds->Item(Variant::FromText(std::to_string(second->Id())))->Name(), "Second");
}

TEST(Builds, AListedBuildHasItsIdAndNameOnly) {
  const BuildScene scene;
  scene.build->BeginEdit();
  scene.build->SetStartDllBaseAddress(0x11000000);
  scene.build->ApplyEdit();
  const auto builds = Make<Builds>();
  builds->LoadAll();
  const auto listed = builds->Item(Variant::FromLong(1));
  EXPECT_EQ(listed->Id(), scene.build->Id());
  EXPECT_EQ(listed->StartDllBaseAddress(), 0);
  listed->Load(listed->Id());
  EXPECT_EQ(listed->StartDllBaseAddress(), 0x11000000);
}

TEST(Builds, LoadAllClosesTheDatabaseAndTheNextLoadOpensItAgain) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  EXPECT_FALSE(scene.apartment->DatabaseSlot());
  BuildScene::Loaded(scene.build->Id());
  EXPECT_TRUE(scene.apartment->DatabaseSlot());
}

TEST(Builds, LoadAllAgainReadsTheListAnew) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  BuildScene::Stored("Second");
  builds->LoadAll();
  EXPECT_EQ(builds->Count(), 2);
}

TEST(Builds, ABuildWithoutRowsInTheTableGivesAnEmptyList) {
  const Workbench bench;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  EXPECT_EQ(builds->Count(), 0);
}

TEST(Builds, WithoutDatabaseTheListStaysAsItWas) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  scene.files->Remove("C:\\data\\Build.mdb");
  ExpectError([&] { builds->LoadAll(); }, automation::BuildErrors::beNoDatabase, "DB",
              "The database is unavailable.");
  EXPECT_EQ(builds->Count(), 1);
}

TEST(Builds, AnUnknownPositionIsErrorNineAndAnUnknownKeyErrorFive) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->LoadAll();
  ExpectError([&] { builds->Item(Variant::FromLong(2)); }, 9, "Builds.item", "Subscript out of range");
  ExpectError([&] { builds->Item(Variant::FromText("99")); }, 5, "Builds.item",
              "Invalid procedure call or argument");
}

TEST(Builds, CanBeWalkedAndReachedByTheirDefaultMember) {
  const BuildScene scene;
  const auto builds = Make<Builds>();
  builds->Call("loadall");
  const auto walk = builds->Enumerate();
  Variant item;
  ASSERT_TRUE(walk->Next(item));
  EXPECT_EQ(automation::ToText(item.AsObject()->Get("Name")), "Suite");
  EXPECT_FALSE(walk->Next(item));
  std::vector<Variant> position = {Variant::FromLong(1)};
  const Variant first = builds->Invoke(automation::kDefaultMember, automation::InvokeKind::Get, position);
  EXPECT_EQ(automation::ToText(first.AsObject()->Get("Name")), "Suite");
}

TEST(Builds, ABuildKeptFromTheListIsUsableWithoutIt) {
  const BuildScene scene;
  automation::Ref<Build> kept;
  {
    const auto builds = Make<Builds>();
    builds->LoadAll();
    kept = builds->Item(Variant::FromLong(1));
  }
  EXPECT_NE(kept->Owner(), nullptr) << "it keeps its list alive";
  kept->Kill();
  EXPECT_EQ(kept->Owner(), nullptr);
  EXPECT_EQ(kept->Name(), "Suite");
}

}  // namespace
}  // namespace hearthmake
