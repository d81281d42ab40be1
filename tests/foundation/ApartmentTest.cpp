#include "foundation/Apartment.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "foundation/mSettings.hpp"
#include "foundation/modDatabase.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using support::Workbench;

TEST(Apartment, AThreadWithoutOneHasNoPorts) {
  support::ExpectError([] { Apartment::Current(); }, 91, "Apartment",
                       "Object variable or With block variable not set");
  EXPECT_EQ(support::ErrorOf([] { Ports(); }).Number(), 91);
}

TEST(Apartment, IsTheCurrentOneOfItsThread) {
  const Workbench bench;
  EXPECT_EQ(&Apartment::Current(), bench.apartment.get());
  EXPECT_EQ(Ports().files, bench.files);
  std::thread([] { EXPECT_EQ(support::ErrorOf([] { Apartment::Current(); }).Number(), 91); }).join();
}

TEST(Apartment, AnInnerOneStandsInForTheOuterUntilItGoes) {
  const Workbench outer;
  {
    const Workbench inner;
    EXPECT_EQ(&Apartment::Current(), inner.apartment.get());
  }
  EXPECT_EQ(&Apartment::Current(), outer.apartment.get());
}

TEST(Apartment, ItsSlotsAreEmptyUntilFirstUse) {
  const Workbench bench;
  EXPECT_FALSE(bench.apartment->DatabaseSlot());
  EXPECT_FALSE(bench.apartment->SettingsSlot());
  EXPECT_FALSE(bench.apartment->SettingNamesSlot());
}

TEST(Apartment, EachThreadHasItsOwnDatabaseAndSettings) {
  const Workbench bench;
  const auto database = modDatabase::GetDatabase();
  mSettings::GetSettings().SetScriptTimeOut(7);
  std::thread([&] {
    const Apartment apartment(bench.apartment->Ports());
    EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
    mSettings::ResetSettings();
  }).join();
  EXPECT_EQ(mSettings::ScriptTimeOut(), 7);
  EXPECT_EQ(modDatabase::GetDatabase(), database);
}

}  // namespace
}  // namespace hearthmake
