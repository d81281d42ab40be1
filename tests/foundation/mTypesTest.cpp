#include "foundation/mTypes.hpp"

#include <gtest/gtest.h>

#include <set>

#include "automation/Interface.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using automation::Variant;
using support::ExpectError;
using support::Workbench;

TEST(mTypes, ListsEverySettingAtItsPlace) {
  for (std::size_t i = 0; i < kSettingCount; ++i)
    EXPECT_EQ(static_cast<std::size_t>(AllSettings()[i].setting), i) << AllSettings()[i].name;
}

TEST(mTypes, EveryMarkerIsAKeyWithItsEqualsSign) {
  std::set<std::string_view> markers;
  for (const SettingInfo& info : AllSettings()) {
    EXPECT_TRUE(info.marker.ends_with('=')) << info.name;
    EXPECT_GT(info.width, 0) << info.name;
    markers.insert(info.marker);
  }
  EXPECT_EQ(markers.size(), kSettingCount);
}

TEST(mTypes, FindsASettingByNameWithoutRegardToCase) {
  EXPECT_EQ(FindSetting("MAJORVER"), Setting::MajorVer);
  EXPECT_EQ(FindSetting("FavorPentiumPro"), Setting::FavorPentiumPro);
  EXPECT_FALSE(FindSetting("MajorVer="));
  EXPECT_FALSE(FindSetting(""));
}

TEST(mTypes, TheApartmentHasOneList) {
  const Workbench bench;
  EXPECT_EQ(&mTypes::GetSettingNames(), &mTypes::GetSettingNames());
}

TEST(SettingNames, GivesNamesByPositionAndByName) {
  const Workbench bench;
  auto& names = mTypes::GetSettingNames();
  EXPECT_EQ(names.Count(), 43);
  EXPECT_EQ(names.Item(Variant::FromLong(1)), "Name");
  EXPECT_EQ(names.Item(Variant::FromLong(43)), "NoControlUpgrade");
  EXPECT_EQ(names.Item(Variant::FromText("title")), "Title");
}

TEST(SettingNames, AnUnknownPositionOrKeyIsAnError) {
  const Workbench bench;
  auto& names = mTypes::GetSettingNames();
  for (const int position : {0, 44, -1}) {
    ExpectError([&] { names.Item(Variant::FromLong(position)); }, 9, "Properties.item",
                "Subscript out of range");
  }
  ExpectError([&] { names.Item(Variant::FromText("Nothing")); }, 5, "Properties.item",
              "Invalid procedure call or argument");
}

TEST(SettingNames, CanBeWalked) {
  const Workbench bench;
  const auto walk = mTypes::GetSettingNames().Enumerate();
  std::size_t count = 0;
  for (Variant name; walk->Next(name); ++count)
    EXPECT_EQ(automation::ToText(name), AllSettings()[count].name);
  EXPECT_EQ(count, kSettingCount);
}

}  // namespace
}  // namespace hearthmake
