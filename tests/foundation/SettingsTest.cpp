#include "foundation/Settings.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "automation/Interface.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/mSettings.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using automation::Make;
using automation::Variant;
using platform::SettingPairs;
using support::ErrorOf;
using support::ExpectError;
using support::Workbench;

constexpr const char* kOpenCommand = "VisualBasic.Project\\shell\\open\\command";

// A bench whose store holds nothing.
class EmptyBench : public Workbench {
 public:
  EmptyBench() { settings->Remove("Hearthmake", "VB", "VBExe"); }
  SettingPairs Stored() const { return settings->GetAll("Hearthmake", "VB"); }
  void Store(const SettingPairs& pairs) const { settings->Save("Hearthmake", "VB", pairs); }
  void SetOpenCommand(const std::string& command) const {
    registry->Set(platform::RegistryRoot::ClassesRoot, kOpenCommand, "",
                  {platform::RegistryType::String, command});
  }
};

TEST(Settings, MembersStandInInterfaceOrder) {
  std::vector<std::string> names;
  for (const auto& member : Settings::Describe().Members()) {
    if (names.empty() || names.back() != member.name) names.push_back(member.name);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"VBExe", "SetProjectCompatible", "ScriptTimeOut",
                                             "UseOriginalVbp", "TakeLatestFromVSS", "MakeFilesWriteable",
                                             "AskForMTSPackage", "RunScripts", "CreateReport", "BuildReport",
                                             "IgnoreScriptError", "ApplyEdit", "CancelEdit", "BeginEdit"}));
}

TEST(Settings, OfAnEmptyStoreHaveTheirDefaults) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  EXPECT_EQ(settings->VBExe(), "vb6.exe");
  EXPECT_EQ(settings->ScriptTimeOut(), 0);
  EXPECT_EQ(settings->BuildReport(), "C:\\data\\");
  EXPECT_FALSE(settings->SetProjectCompatible());
  EXPECT_FALSE(settings->UseOriginalVbp());
  EXPECT_FALSE(settings->TakeLatestFromVSS());
  EXPECT_FALSE(settings->MakeFilesWriteable());
  EXPECT_FALSE(settings->AskForMTSPackage());
  EXPECT_FALSE(settings->RunScripts());
  EXPECT_FALSE(settings->CreateReport());
  EXPECT_FALSE(settings->IgnoreScriptError());
}

TEST(Settings, FindTheCompilerThatOpensProjectFiles) {
  const EmptyBench bench;
  bench.SetOpenCommand("\"C:\\VB98\\VB6.EXE\" \"%1\"");
  EXPECT_EQ(Make<Settings>()->VBExe(), "C:\\VB98\\VB6.EXE");
}

TEST(Settings, TheCompilersPathMayHaveBlanks) {
  const EmptyBench bench;
  bench.SetOpenCommand("  \"C:\\Program Files\\VB98\\VB6.EXE\" \"%1\"  ");
  EXPECT_EQ(Make<Settings>()->VBExe(), "C:\\Program Files\\VB98\\VB6.EXE");
}

TEST(Settings, ACommandWithoutAQuoteInsideFindsNoCompiler) {
  const EmptyBench bench;
  bench.SetOpenCommand("C:\\VB98\\VB6.EXE %1");
  EXPECT_EQ(Make<Settings>()->VBExe(), "vb6.exe");
  bench.SetOpenCommand("");
  EXPECT_EQ(Make<Settings>()->VBExe(), "vb6.exe");
  bench.SetOpenCommand("xy");
  EXPECT_EQ(Make<Settings>()->VBExe(), "vb6.exe");
}

TEST(Settings, ACompilerThatIsStoredIsNotLookedFor) {
  const EmptyBench bench;
  bench.SetOpenCommand("\"C:\\VB98\\VB6.EXE\" \"%1\"");
  bench.Store({{"VBExe", " D:\\vb6.exe "}});
  EXPECT_EQ(Make<Settings>()->VBExe(), "D:\\vb6.exe");
}

TEST(Settings, AFoundCompilerStaysAndIsNoChange) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  EXPECT_EQ(settings->VBExe(), "vb6.exe");
  bench.SetOpenCommand("\"C:\\VB98\\VB6.EXE\" \"%1\"");
  EXPECT_EQ(settings->VBExe(), "vb6.exe") << "what was found is kept";
  settings->ApplyEdit();
  EXPECT_TRUE(bench.Stored().empty());
}

TEST(Settings, ACompilersPathIsCutAtTwoHundredCharacters) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->SetVBExe(std::string(250, 'x'));
  EXPECT_EQ(settings->VBExe(), std::string(200, 'x'));
}

TEST(Settings, AReportFolderWithAFileEndsInABackslash) {
  const EmptyBench bench;
  bench.Write("C:\\Reports\\old.log", "x");
  const auto settings = Make<Settings>();
  settings->SetBuildReport("C:\\Reports");
  EXPECT_EQ(settings->BuildReport(), "C:\\Reports\\");
  settings->SetBuildReport("C:\\Reports\\");
  EXPECT_EQ(settings->BuildReport(), "C:\\Reports\\");
}

TEST(Settings, AnEmptyReportFolderIsReplacedByTheLibrarysOwn) {
  const EmptyBench bench;
  bench.files->CreateFolders("C:\\Reports\\sub");
  const auto settings = Make<Settings>();
  settings->SetBuildReport("C:\\Reports");
  EXPECT_EQ(settings->BuildReport(), "C:\\data\\");
  bench.Write("C:\\Reports\\new.log", "x");
  EXPECT_EQ(settings->BuildReport(), "C:\\data\\") << "the resolved folder was kept";
}

TEST(Settings, AMissingReportFolderIsReplacedByTheLibrarysOwn) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->SetBuildReport("C:\\gone");
  EXPECT_EQ(settings->BuildReport(), "C:\\data\\");
}

TEST(Settings, BothSpellingsOfABooleanLoad) {
  const EmptyBench bench;
  for (const char* truth : {"True", "true", "-1", "1", "17"}) {
    bench.Store({{"RunScripts", truth}, {"CreateReport", truth}});
    const auto settings = Make<Settings>();
    EXPECT_TRUE(settings->RunScripts()) << truth;
    EXPECT_TRUE(settings->CreateReport()) << truth;
  }
  for (const char* lie : {"False", "FALSE", "0"}) {
    bench.Store({{"RunScripts", lie}, {"CreateReport", lie}});
    const auto settings = Make<Settings>();
    EXPECT_FALSE(settings->RunScripts()) << lie;
    EXPECT_FALSE(settings->CreateReport()) << lie;
  }
}

TEST(Settings, KeysAreFoundWithoutRegardToCase) {
  const EmptyBench bench;
  bench.Store({{"scripttimeout", "-1"}});
  EXPECT_EQ(Make<Settings>()->ScriptTimeOut(), -1);
}

TEST(Settings, AKeyThatNamesNoOptionMakesTheCreationFail) {
  const EmptyBench bench;
  bench.Store({{"Nonsense", "1"}});
  const auto error = ErrorOf([] { Make<Settings>(); });
  EXPECT_EQ(error.Number(), 438);
  EXPECT_NE(error.Description().find("Nonsense"), std::string::npos);
}

TEST(Settings, AKeyThatNamesAMethodMakesTheCreationFail) {
  const EmptyBench bench;
  bench.Store({{"ApplyEdit", "1"}});
  EXPECT_EQ(ErrorOf([] { Make<Settings>(); }).Number(), 438);
}

TEST(Settings, AValueThatCanNotBeConvertedMakesTheCreationFail) {
  const EmptyBench bench;
  bench.Store({{"ScriptTimeOut", "soon"}});
  EXPECT_EQ(ErrorOf([] { Make<Settings>(); }).Number(), 13);
  bench.Store({{"ScriptTimeOut", "99999999999"}});
  EXPECT_EQ(ErrorOf([] { Make<Settings>(); }).Number(), 6);
}

TEST(Settings, AStoreWithJunkMakesTheCreationFail) {
  const EmptyBench bench;
  bench.root.MakeFile("settings.ini", "[Hearthmake\\VB]\nno equals sign here\n");
  EXPECT_EQ(ErrorOf([] { Make<Settings>(); }).Number(), 45);
}

TEST(Settings, EveryLetReadsBack) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  for (const char* name :
       {"SetProjectCompatible", "UseOriginalVbp", "TakeLatestFromVSS", "MakeFilesWriteable",
        "AskForMTSPackage", "RunScripts", "CreateReport", "IgnoreScriptError"}) {
    settings->Let(name, {Variant::FromBoolean(true)});
    EXPECT_TRUE(automation::ToBoolean(settings->Get(name))) << name;
  }
  settings->Let("ScriptTimeOut", {Variant::FromLong(5000)});
  EXPECT_EQ(automation::ToLong(settings->Get("ScriptTimeOut")), 5000);
  settings->Let("VBExe", {Variant::FromText("C:\\x.exe")});
  EXPECT_EQ(automation::ToText(settings->Get("VBExe")), "C:\\x.exe");
}

TEST(Settings, ApplyEditStoresEveryKeyInItsOrderAndSpelling) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetSetProjectCompatible(true);
  settings->SetCreateReport(true);
  settings->SetScriptTimeOut(-1);
  settings->ApplyEdit();
  EXPECT_EQ(bench.Stored(), (SettingPairs{{"VBExe", "vb6.exe"},
                                          {"SetProjectCompatible", "-1"},
                                          {"UseOriginalVbp", "0"},
                                          {"TakeLatestFromVSS", "0"},
                                          {"MakeFilesWriteable", "0"},
                                          {"AskForMTSPackage", "0"},
                                          {"RunScripts", "0"},
                                          {"BuildReport", "C:\\data\\"},
                                          {"CreateReport", "True"},
                                          {"ScriptTimeOut", "-1"},
                                          {"IgnoreScriptError", "False"}}));
}

TEST(Settings, WhatWasStoredLoadsAgain) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetVBExe("C:\\VB98\\VB6.EXE");
  settings->SetIgnoreScriptError(true);
  settings->SetMakeFilesWriteable(true);
  settings->SetScriptTimeOut(12);
  settings->ApplyEdit();
  const auto again = Make<Settings>();
  EXPECT_EQ(again->VBExe(), "C:\\VB98\\VB6.EXE");
  EXPECT_TRUE(again->IgnoreScriptError());
  EXPECT_TRUE(again->MakeFilesWriteable());
  EXPECT_FALSE(again->RunScripts());
  EXPECT_EQ(again->ScriptTimeOut(), 12);
}

TEST(Settings, ApplyEditWithoutChangesWritesNothing) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->ApplyEdit();
  EXPECT_TRUE(bench.Stored().empty());
  mSettings::GetSettings();
  settings->ApplyEdit();
  EXPECT_TRUE(bench.apartment->SettingsSlot()) << "the cache stays";
}

TEST(Settings, AValueSetOutsideTheEditCycleWaitsForTheNextApplyEdit) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->SetScriptTimeOut(9);
  EXPECT_EQ(settings->ScriptTimeOut(), 9);
  EXPECT_TRUE(bench.Stored().empty());
  settings->BeginEdit();
  settings->ApplyEdit();
  EXPECT_EQ(Make<Settings>()->ScriptTimeOut(), 9);
}

TEST(Settings, BeginEditTwiceIsRefused) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  ExpectError([&] { settings->BeginEdit(); }, 1004, "clSettings.BeginEdit", "Already in edit mode");
}

TEST(Settings, CancelEditOutsideEditModeIsRefused) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  ExpectError([&] { settings->CancelEdit(); }, 1004, "clSettings.CancelEdit", "Not in edit mode");
}

TEST(Settings, ApplyEditOutsideEditModeIsRefusedUnderTheNameOfCancelEdit) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  ExpectError([&] { settings->ApplyEdit(); }, 1004, "clSettings.CancelEdit", "Not in edit mode");
}

TEST(Settings, CancelEditRestoresTheValuesAndTheDirtyState) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetScriptTimeOut(9);
  settings->SetVBExe("C:\\x.exe");
  settings->CancelEdit();
  EXPECT_EQ(settings->ScriptTimeOut(), 0);
  EXPECT_EQ(settings->VBExe(), "vb6.exe");
  settings->BeginEdit();
  settings->ApplyEdit();
  EXPECT_TRUE(bench.Stored().empty()) << "clean again";
}

TEST(Settings, CancelEditRestoresADirtyStateToo) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->SetScriptTimeOut(9);
  settings->BeginEdit();
  settings->SetScriptTimeOut(10);
  settings->CancelEdit();
  EXPECT_EQ(settings->ScriptTimeOut(), 9);
  settings->BeginEdit();
  settings->ApplyEdit();
  EXPECT_EQ(Make<Settings>()->ScriptTimeOut(), 9) << "still dirty from before";
}

TEST(Settings, ApplyEditLeavesTheObjectInEditModeUntilCancelEdit) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetScriptTimeOut(9);
  settings->ApplyEdit();
  ExpectError([&] { settings->BeginEdit(); }, 1004, "clSettings.BeginEdit", "Already in edit mode");
  settings->CancelEdit();
  settings->BeginEdit();
  EXPECT_EQ(settings->ScriptTimeOut(), 0) << "the snapshot of the first BeginEdit came back";
}

TEST(Settings, ApplyEditWithChangesDropsTheCacheOfTheApartment) {
  const EmptyBench bench;
  EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetScriptTimeOut(9);
  EXPECT_EQ(mSettings::ScriptTimeOut(), 0);
  settings->ApplyEdit();
  EXPECT_EQ(mSettings::ScriptTimeOut(), 9);
}

TEST(Settings, TheCachedObjectItselfMayBeEdited) {
  const EmptyBench bench;
  Settings& cached = mSettings::GetSettings();
  cached.BeginEdit();
  cached.SetScriptTimeOut(9);
  cached.ApplyEdit();
  EXPECT_FALSE(bench.apartment->SettingsSlot());
  EXPECT_EQ(mSettings::ScriptTimeOut(), 9);
}

TEST(Settings, AnObjectMadeBeforeDoesNotSeeWhatIsStoredLater) {
  const EmptyBench bench;
  const auto early = Make<Settings>();
  bench.Store({{"ScriptTimeOut", "9"}});
  EXPECT_EQ(early->ScriptTimeOut(), 0);
}

TEST(Settings, AStoreThatCanNotBeWrittenKeepsTheChange) {
  const EmptyBench bench;
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetScriptTimeOut(9);
  std::filesystem::remove(bench.root.Path("settings.ini"));
  std::filesystem::create_directories(bench.root.Path("settings.ini/in the way"));
  EXPECT_NE(ErrorOf([&] { settings->ApplyEdit(); }).Number(), 0);
  std::filesystem::remove_all(bench.root.Path("settings.ini"));
  settings->ApplyEdit();
  EXPECT_EQ(Make<Settings>()->ScriptTimeOut(), 9);
}

}  // namespace
}  // namespace hearthmake
