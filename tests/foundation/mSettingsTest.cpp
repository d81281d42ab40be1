#include "foundation/mSettings.hpp"

#include <gtest/gtest.h>

#include "foundation/Apartment.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using support::Workbench;

TEST(mSettings, LoadsAtFirstUseAndKeepsTheObject) {
  const Workbench bench;
  Settings& first = mSettings::GetSettings();
  bench.settings->Save("Hearthmake", "VB", {{"ScriptTimeOut", "5"}});
  EXPECT_EQ(&mSettings::GetSettings(), &first);
  EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
}

TEST(mSettings, LoadsAfreshAfterAReset) {
  const Workbench bench;
  EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
  bench.settings->Save("Hearthmake", "VB", {{"ScriptTimeOut", "5"}});
  mSettings::ResetSettings();
  EXPECT_EQ(mSettings::ScriptTimeOut(), 5);
}

TEST(mSettings, AFailedLoadIsTriedAgain) {
  const Workbench bench;
  bench.settings->Save("Hearthmake", "VB", {{"Nonsense", "5"}});
  EXPECT_THROW(mSettings::GetSettings(), automation::Error);
  bench.settings->Remove("Hearthmake", "VB", "Nonsense");
  EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
}

TEST(mSettings, GivesEachOptionThatTheLibraryReads) {
  const Workbench bench;
  bench.Write("C:\\Reports\\x.log", "x");
  bench.settings->Save("Hearthmake", "VB",
                       {{"VBExe", "C:\\VB6.EXE"},
                        {"SetProjectCompatible", "-1"},
                        {"MakeFilesWriteable", "-1"},
                        {"RunScripts", "-1"},
                        {"CreateReport", "True"},
                        {"BuildReport", "C:\\Reports"},
                        {"ScriptTimeOut", "5"}});
  EXPECT_EQ(mSettings::VBExe(), "C:\\VB6.EXE");
  EXPECT_TRUE(mSettings::SetProjectCompatible());
  EXPECT_TRUE(mSettings::MakeFilesWriteable());
  EXPECT_TRUE(mSettings::RunScripts());
  EXPECT_TRUE(mSettings::CreateReport());
  EXPECT_EQ(mSettings::BuildReport(), "C:\\Reports\\");
  EXPECT_EQ(mSettings::ScriptTimeOut(), 5);
}

}  // namespace
}  // namespace hearthmake
