#include "sourcecontrol/SSProjects.hpp"

#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"
#include "support/SourceScene.hpp"

namespace hearthmake {
namespace {

using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;
using support::MemorySourceControl;
using support::RecordingEvents;
using support::SourceScene;

using Texts = std::vector<std::string>;

constexpr const char* kOpen = "Open C:\\vss\\srcsafe.ini as Bob";

// Hears a build while it lives.
class Heard {
 public:
  explicit Heard(Build& build) : m_build(build) { build.AddSink(events); }
  Heard(const Heard&) = delete;
  Heard& operator=(const Heard&) = delete;
  ~Heard() { m_build.RemoveSink(events); }

  RecordingEvents events;

 private:
  Build& m_build;
};

// Projects $/A, $/B and $/C with a file each.
class ThreeSources : public SourceScene {
 public:
  ThreeSources() {
    for (const std::string name : {"A", "B", "C"}) {
      Base().Change("$/" + name + "/" + name + ".bas", name);
      projects.push_back(AddSource("$/" + name, "C:\\" + name));
    }
  }
  bool IsGot(const std::string& name) const {
    return files->FileExists("C:\\" + name + "\\" + name + ".bas");
  }
  std::vector<Ref<SSProject>> projects;
};

TEST(SSProjects, FindsItsProjectsByPositionAndId) {
  const ThreeSources scene;
  SSProjects& all = scene.All();
  EXPECT_EQ(all.Count(), 3);
  EXPECT_EQ(all.Item(Variant::FromLong(2)), scene.projects[1]);
  EXPECT_EQ(all.Item(Variant::FromText(automation::Decimal(scene.projects[2]->Id()))), scene.projects[2]);
  ExpectError([&] { all.Item(Variant::FromLong(4)); }, 9, "SSProjects.item", "Subscript out of range");
  ExpectError([&] { all.Item(Variant::FromText("99")); }, 5, "SSProjects.item",
              "Invalid procedure call or argument");
  EXPECT_EQ(all.Parent(), scene.build.Get());
}

TEST(SSProjects, AreWalkedInTheirOrder) {
  const ThreeSources scene;
  Texts names;
  const auto walk = scene.All().NewEnum();
  for (Variant item; walk->Next(item);) names.push_back(automation::ToText(item.AsObject()->Get("Project")));
  EXPECT_EQ(names, (Texts{"$/A", "$/B", "$/C"}));
}

TEST(SSProjects, AreThoseOfTheirBuild) {
  const ThreeSources scene;
  const auto other = BuildScene::Stored("Other");
  EXPECT_EQ(other->SSProjects().Count(), 0);
  EXPECT_EQ(BuildScene::Loaded(scene.build->Id())->SSProjects().Count(), 3);
}

TEST(SSProjects, GetLatestTakesThemAllInOneSession) {
  const ThreeSources scene;
  const Heard heard(*scene.build);
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(scene.TakeCalls(),
            (Texts{kOpen, "Get $/A to C:\\A, 128", "Get $/B to C:\\B, 128", "Get $/C to C:\\C, 128"}));
  EXPECT_EQ(heard.events.heard,
            (Texts{"GettingLatestVersion $/A", "GettingLatestVersion $/B", "GettingLatestVersion $/C"}));
  EXPECT_EQ(scene.Read("C:\\C\\C.bas"), "C");
  EXPECT_EQ(scene.sources->openSessions, 0);
}

TEST(SSProjects, ASessionIsSharedByNeighboursOfTheSameDatabaseAndUser) {
  const ThreeSources scene;
  (*scene.sources)["C:\\other\\srcsafe.ini"].Change("$/B/B.bas", "other");
  scene.projects[1]->SetSrcSafeIni("C:\\other\\srcsafe.ini");
  scene.All().GetLatestFromSoursafe();
  EXPECT_EQ(scene.TakeCalls(), (Texts{kOpen, "Get $/A to C:\\A, 128", "Open C:\\other\\srcsafe.ini as Bob",
                                      "Get $/B to C:\\B, 128", kOpen, "Get $/C to C:\\C, 128"}));
  scene.projects[1]->SetSrcSafeIni("c:\\VSS\\SrcSafe.ini");
  scene.projects[2]->SetUser("Eve");
  scene.All().GetLatestFromSoursafe();
  EXPECT_EQ(scene.TakeCalls(), (Texts{kOpen, "Get $/A to C:\\A, 128", "Get $/B to C:\\B, 128",
                                      "Open C:\\vss\\srcsafe.ini as Eve", "Get $/C to C:\\C, 128"}));
}

TEST(SSProjects, ASkippedProjectIsPassedOver) {
  const ThreeSources scene;
  const Heard heard(*scene.build);
  scene.projects[1]->SetSkip(true);
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard, (Texts{"GettingLatestVersion $/A", "GettingLatestVersion $/C"}));
  EXPECT_FALSE(scene.IsGot("B"));
}

TEST(SSProjects, WithAllProjectsSkippedNothingIsGotAndTheResultIsTrue) {
  const ThreeSources scene;
  const Heard heard(*scene.build);
  for (const auto& project : scene.projects) project->SetSkip(true);
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_TRUE(scene.sources->calls.empty());
  EXPECT_TRUE(heard.events.heard.empty());
}

TEST(SSProjects, WithoutProjectsTheResultIsTrue) {
  const SourceScene scene;
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
}

TEST(SSProjects, CancellingStopsBeforeTheFilesAndTheRemainingProjects) {
  const ThreeSources scene;
  Heard heard(*scene.build);
  heard.events.On("GettingLatestVersion $/B", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard, (Texts{"GettingLatestVersion $/A", "GettingLatestVersion $/B"}));
  EXPECT_TRUE(scene.IsGot("A"));
  EXPECT_FALSE(scene.IsGot("B"));
  EXPECT_FALSE(scene.IsGot("C"));
}

TEST(SSProjects, ListenersByNameGetTheProjectAndCanCancel) {
  class Listener final : public automation::EventSink {
   public:
    void Raise(std::string_view event, std::span<Variant> arguments) override {
      heard.push_back(std::string(event) + " " +
                      automation::ToText(arguments[0].Target().AsObject()->Get("WorkingFolder")));
      arguments[1].Target() = Variant::FromBoolean(true);
    }
    Texts heard;
  };
  const ThreeSources scene;
  const auto listener = std::make_shared<Listener>();
  scene.build->Advise(listener);
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(listener->heard, Texts{"GettingLatestVersion C:\\A"});
  EXPECT_FALSE(scene.IsGot("A"));
}

TEST(SSProjects, AProjectThatAHandlerDeletesIsNotGot) {
  const ThreeSources scene;
  Heard heard(*scene.build);
  heard.events.On("GettingLatestVersion $/A", [&](bool& /*cancel*/) {
    scene.projects[1]->BeginEdit();
    scene.projects[1]->Delete();
    scene.projects[1]->ApplyEdit();
  });
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard, (Texts{"GettingLatestVersion $/A", "GettingLatestVersion $/C"}));
}

TEST(SSProjects, ABuildThatIsKilledByAHandlerGetsNoMore) {
  const ThreeSources scene;
  Heard heard(*scene.build);
  heard.events.On("GettingLatestVersion $/A", [&](bool& /*cancel*/) { scene.build->Kill(); });
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard, Texts{"GettingLatestVersion $/A"});
  EXPECT_FALSE(scene.IsGot("C"));
}

TEST(SSProjects, ErrorsOfAGetReachTheCaller) {
  const ThreeSources scene;
  Heard heard(*scene.build);
  scene.projects[1]->SetProject("$/Nowhere");
  ExpectError([&] { scene.All().GetLatestFromSoursafe(); }, MemorySourceControl::kFailure,
              "VSSDatabase.VSSItem", "There is no $/Nowhere");
  EXPECT_EQ(heard.events.heard, Texts{"GettingLatestVersion $/A"})
      << "the item is looked up before the event";
  EXPECT_TRUE(scene.IsGot("A"));
  EXPECT_EQ(scene.sources->openSessions, 0);
  scene.projects[1]->SetProject("$/B");
  scene.projects[1]->SetFlags(0x7FFFFFFF);
  EXPECT_EQ(ErrorOf([&] { scene.All().GetLatestFromSoursafe(); }).Number(), 6);
}

TEST(SSProjects, TheScriptBeforeSourceSafeRunsFirst) {
  const ThreeSources scene;
  Heard heard(*scene.build);
  scene.build->Scripts().SetBeforeSourceSafe("Scripts.Notify \"before\"\r\nBuild.SSProjects(2).Skip = True");
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard.size(), 3U) << "scripts are switched off";
  scene.SetOption("RunScripts", "-1");
  heard.events.heard.clear();
  EXPECT_TRUE(scene.All().GetLatestFromSoursafe());
  EXPECT_EQ(heard.events.heard,
            (Texts{"ScriptNotify 0 before", "GettingLatestVersion $/A", "GettingLatestVersion $/C"}));
}

TEST(SSProjects, AFailingScriptKeepsTheFilesFromBeingGot) {
  const ThreeSources scene;
  scene.SetOption("RunScripts", "-1");
  scene.build->Scripts().SetBeforeSourceSafe("x = 1 / 0");
  EXPECT_TRUE(ErrorOf([&] { scene.All().GetLatestFromSoursafe(); })
                  .Description()
                  .starts_with("Script Error: Division by zero"));
  EXPECT_TRUE(scene.sources->calls.empty());
}

TEST(SSProjects, TheReportHasASectionForTheSources) {
  const ThreeSources scene;
  scene.SetOption("CreateReport", "True");
  scene.SetOption("RunScripts", "-1");
  scene.build->Scripts().SetBeforeSourceSafe("Build.StopReporting True");
  scene.All().GetLatestFromSoursafe();
  const std::string report = scene.Read("C:\\data\\BUILD_Suite.log");
  const std::size_t closing = report.find("Build successfully completed\r\n");
  ASSERT_NE(closing, std::string::npos) << report;
  const std::size_t section = report.find("[Takeing latest version from SourceSafe]\r\n\r\n");
  ASSERT_NE(section, std::string::npos) << report;
  EXPECT_GT(section, closing) << "the script comes first";
  EXPECT_EQ(report.substr(section), "[Takeing latest version from SourceSafe]\r\n\r\n");
}

TEST(SSProjects, AFileBelongsToTheProjectWithTheLongestCommonPart) {
  const SourceScene scene;
  scene.AddSource("$/Suite", "C:\\Src");
  scene.AddSource("$/Lib", "C:\\Src\\Lib");
  const auto place = scene.All().FindPlace("C:\\Src\\Lib\\a.dll");
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->project->Project(), "$/Lib");
  EXPECT_EQ(place->spec, "$/Lib\\a.dll");
}

// Letters count, not folders: the backslash behind C:\Src is one that only the longer folder shares.
TEST(SSProjects, AFileAboveANestedFolderBelongsToTheOuterProjectWhenItsFolderEndsInABackslash) {
  const SourceScene scene;
  const auto outer = scene.AddSource("$/Suite", "C:\\Src");
  scene.AddSource("$/Lib", "C:\\Src\\Lib");
  EXPECT_EQ(scene.All().FindPlace("C:\\Src\\a.dll")->spec, "$/Liba.dll");
  outer->SetWorkingFolder("C:\\Src\\");
  outer->SetProject("$/Suite/");
  EXPECT_EQ(scene.All().FindPlace("C:\\Src\\a.dll")->spec, "$/Suite/a.dll");
  EXPECT_EQ(scene.All().FindPlace("C:\\Src\\Lib\\a.dll")->spec, "$/Lib\\a.dll");
}

TEST(SSProjects, CommonPartsAreComparedWithoutRegardToCase) {
  const SourceScene scene;
  scene.AddSource("$/Suite", "c:\\SRC\\\xC3\x84pfel");
  EXPECT_EQ(scene.All().FindPlace("C:\\src\\\xC3\xA4PFEL\\a.dll")->spec, "$/Suite\\a.dll");
}

TEST(SSProjects, OfEqualCommonPartsTheFirstProjectWins) {
  const SourceScene scene;
  scene.AddSource("$/First", "C:\\Src");
  scene.AddSource("$/Second", "C:\\Src");
  EXPECT_EQ(scene.All().FindPlace("C:\\Src\\a.dll")->project->Project(), "$/First");
}

TEST(SSProjects, WhatIsBehindTheCommonPartFollowsTheProjectAsItIs) {
  const SourceScene scene;
  scene.AddSource("$/Suite", "C:\\Src\\");
  EXPECT_EQ(scene.All().FindPlace("C:\\Src\\a.dll")->spec, "$/Suitea.dll");
  EXPECT_EQ(scene.All().FindPlace("C:\\Temp\\a.dll")->spec, "$/SuiteTemp\\a.dll");
}

TEST(SSProjects, ACommonPartOfNothingNeverWins) {
  const SourceScene scene;
  scene.AddSource("$/Suite", "C:\\Src");
  scene.AddSource("$/Anywhere", "");
  EXPECT_FALSE(scene.All().FindPlace("D:\\Src\\a.dll").has_value());
}

// A file of $/Suite, to be checked in from C:\Src.
class CheckIn : public SourceScene {
 public:
  CheckIn() {
    Base().Change("$/Suite/bin/a.dll", "old");
    project = AddSource("$/Suite", "C:\\Src");
    Write(kFile, "new");
  }
  void CheckedOutBy(const std::string& user) const {
    platform::VSSCheckout checkout;
    checkout.Username = user;
    Base().checkouts["$/suite/bin/a.dll"] = {checkout};
  }
  // "" for success.
  std::string Reason(const std::string& file = kFile, const std::string& comment = "Mine",
                     bool keep = false) const {
    std::string reason;
    const bool result = All().CheckInFile(file, comment, keep, reason);
    EXPECT_EQ(result, reason.empty());
    return reason;
  }

  static constexpr const char* kFile = "C:\\Src\\bin\\a.dll";
  Ref<SSProject> project;
};

TEST(CheckInFile, ChecksOutWithoutGettingAndThenIn) {
  const CheckIn scene;
  EXPECT_EQ(scene.Reason(), "");
  EXPECT_EQ(scene.sources->calls,
            (Texts{kOpen, "VSSItem $/Suite\\bin\\a.dll", "IsCheckedOut $/Suite/bin/a.dll",
                   "Checkout $/Suite/bin/a.dll 'Hearthmake Check out' '' 134217728",
                   "Checkin $/Suite/bin/a.dll 'Mine' 'C:\\Src\\bin\\a.dll' 65536"}));
  EXPECT_EQ(scene.Base().Content("$/Suite/bin/a.dll"), "new");
  EXPECT_EQ(scene.sources->openSessions, 0);
}

TEST(CheckInFile, HasACommentOfItsOwn) {
  const CheckIn scene;
  EXPECT_EQ(scene.Reason(CheckIn::kFile, ""), "");
  EXPECT_EQ(scene.TakeCalls().back(),
            "Checkin $/Suite/bin/a.dll 'Hearthmake Check in' 'C:\\Src\\bin\\a.dll' 65536");
}

TEST(CheckInFile, KeepsTheFileCheckedOutOnDemand) {
  const CheckIn scene;
  EXPECT_EQ(scene.Reason(CheckIn::kFile, "Mine", true), "");
  EXPECT_EQ(scene.TakeCalls().back(), "Checkin $/Suite/bin/a.dll 'Mine' 'C:\\Src\\bin\\a.dll' 131072");
}

TEST(CheckInFile, NamesTheUserWhoHasTheFileCheckedOut) {
  const CheckIn scene;
  scene.CheckedOutBy("Ann");
  EXPECT_EQ(scene.Reason(), "The file a.dll is checked out to Ann");
  scene.CheckedOutBy("");
  EXPECT_EQ(scene.Reason(), "The file a.dll is checked out to another user!");
  EXPECT_EQ(scene.TakeCalls(), (Texts{kOpen, kOpen}));
}

TEST(CheckInFile, OfAFileThatTheUserHasCheckedOutTakesNoNewCheckOut) {
  const CheckIn scene;
  scene.CheckedOutBy("Bob");
  EXPECT_EQ(scene.Reason(), "");
  EXPECT_EQ(scene.TakeCalls(),
            (Texts{kOpen, "Checkin $/Suite/bin/a.dll 'Mine' 'C:\\Src\\bin\\a.dll' 65536"}));
}

TEST(CheckInFile, TellsOfAFileThatNoProjectHas) {
  const CheckIn scene;
  EXPECT_EQ(scene.Reason("D:\\a.dll"), "No matching SourceSafe project found");
  EXPECT_EQ(scene.Reason("C:\\Src\\bin\\b.dll"), "File $/Suite\\bin\\b.dll not found in SourceSafe");
}

TEST(CheckInFile, TellsOfOtherErrors) {
  const CheckIn scene;
  scene.sources->failures["Checkin"] = "the disk is full";
  EXPECT_EQ(scene.Reason(), "Errors occured: the disk is full");
  scene.project->SetPassword("guess");
  EXPECT_EQ(scene.Reason(), "Errors occured: Invalid password");
}

TEST(CheckInFile, CanBeCalledByNameAndGivesTheReasonBack) {
  const CheckIn scene;
  Variant reason;
  const Variant result =
      scene.All().Call("CheckInFile", {Variant::FromText("D:\\a.dll"), Variant::FromText(""),
                                       Variant::FromBoolean(false), Variant::ByReference(&reason)});
  EXPECT_FALSE(automation::ToBoolean(result));
  EXPECT_EQ(automation::ToText(reason), "No matching SourceSafe project found");
}

TEST(GetLastModifiedData, NeedsProjects) {
  const SourceScene scene;
  ExpectError([&] { scene.All().GetLastModifiedData("C:\\Src\\a.cls"); }, 45,
              "SSProjects.GetLastModifiedData", "You have no SourceSafe projects configured!");
}

TEST(GetLastModifiedData, TellsOfTheLastChangeAndPassesLabelsOver) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "1", "Eve", "first");
  scene.Base().Change("$/Suite/a.cls", "2", "Ann", "second", 36975.545138888889);
  scene.Base().history.push_back({"$/Suite/a.cls", "1.0", "Bob", 36980, "label", ""});
  scene.AddSource("$/Suite", "C:\\Src");
  EXPECT_EQ(scene.All().GetLastModifiedData("C:\\Src\\a.cls"), "Ann 2001-03-25 13:05:00\r\nsecond");
  EXPECT_EQ(scene.sources->openSessions, 0);
}

TEST(GetLastModifiedData, TellsOfAFileThatNoProjectHas) {
  const SourceScene scene;
  scene.Base().Change("$/Suite/a.cls", "1");
  scene.AddSource("$/Suite", "C:\\Src");
  EXPECT_EQ(scene.All().GetLastModifiedData("D:\\a.cls"),
            "No matching SourceSafe project fund for file D:\\a.cls");
  EXPECT_EQ(scene.All().GetLastModifiedData("C:\\Src\\b.cls"), "The file b.cls was not found in SourceSafe");
}

TEST(GetLastModifiedData, RaisesWhatKeepsTheDatabaseFromBeingOpened) {
  const SourceScene scene;
  scene.AddSource("$/Suite", "C:\\Src")->SetPassword("guess");
  ExpectError([&] { scene.All().GetLastModifiedData("C:\\Src\\a.cls"); }, MemorySourceControl::kFailure,
              "Open", "Invalid password");
}

TEST(NetSendCheckedOutFiles, RunsTheCommandOfTheSystem) {
  const SourceScene scene;
  // No such command here: it is what was tried that counts.
  ErrorOf([&] { scene.All().NetSendCheckedOutFiles("SERVER", "Please check in"); });
  EXPECT_EQ(scene.launcher->commands, Texts{"NET SEND SERVER Please check in"});
}

}  // namespace
}  // namespace hearthmake
