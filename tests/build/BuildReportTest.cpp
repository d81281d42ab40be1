#include "build/BuildReport.hpp"

#include <gtest/gtest.h>

#include "build/IReportItem.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Make;
using support::BuildScene;
using support::RecordingEvents;

const std::string kRule(60, '-');
const std::string kStart = kRule + "\r\nStart build: 'Suite' Time:2001-03-25 13:05:00\r\n";
constexpr const char* kLog = "C:\\data\\BUILD_Suite.log";

class ReportScene : public BuildScene {
 public:
  ReportScene() { SetOption("CreateReport", "True"); }
};

// The details of a project as BuildScene writes it.
constexpr const char* kDetails =
    "\tVersion: 1.0\r\n\tCompatible mode: No Compatibility\r\n\tCompile:  Native Code\r\n"
    "\tOptimization:  Fast Code\r\n\tConditional Compile Arguments:  \r\n";

TEST(BuildReport, BeginsWithTheStartEntryOnceABuildIsItsParent) {
  const ReportScene scene;
  BuildReport report;
  report.SetParent(*scene.build);
  EXPECT_EQ(scene.Read(kLog), kStart);
}

TEST(BuildReport, WritesAHeaderAsItStands) {
  const ReportScene scene;
  scene.build->ReportAction(nullptr, 1, "[Compiling projects]\r\n");
  EXPECT_EQ(scene.Read(kLog), kStart + "[Compiling projects]\r\n\r\n");
}

TEST(BuildReport, WritesAnItemWithTimeAndDetails) {
  const ReportScene scene;
  const auto project = scene.Add("Lib");
  scene.build->ReportAction(project.Get(), 1, "not shown");
  EXPECT_EQ(scene.Read(kLog), kStart + "\r\nLib (Time: 13:05:00)\r\n" + kDetails);
}

TEST(BuildReport, WithoutCreateReportItStillReceivesTheStartEntryButNoOther) {
  const BuildScene scene;
  scene.SetOption("CreateReport", "False");
  scene.build->ReportAction(nullptr, 1, "header");
  scene.build->StopReporting(true);
  EXPECT_EQ(scene.Read(kLog), kStart);
}

TEST(BuildReport, TwoBuildsOfOneNameShareALog) {
  const ReportScene scene;
  const auto other = BuildScene::Stored("Suite");
  scene.build->ReportAction(nullptr, 1, "one");
  other->ReportAction(nullptr, 1, "two");
  scene.build->ReportAction(nullptr, 1, "three");
  EXPECT_EQ(scene.Read(kLog), kStart + "one\r\n" + kStart + "two\r\nthree\r\n");
}

TEST(BuildReport, GoesIntoTheFolderOfTheSettingInWindowsCharacters) {
  const ReportScene scene;
  scene.Write("C:\\logs\\readme.txt", "");
  scene.SetOption("BuildReport", "C:\\logs");
  scene.build->ReportAction(nullptr, 1, "Größe");
  EXPECT_EQ(scene.Read("C:\\logs\\BUILD_Suite.log"), kStart + "Gr\xF6\xDF" + "e\r\n");
}

TEST(BuildReport, AFolderThatIsMissingIsTheLibrarysOwn) {
  const ReportScene scene;
  scene.SetOption("BuildReport", "C:\\nowhere");
  scene.build->ReportAction(nullptr, 1, "here");
  EXPECT_EQ(scene.Read(kLog), kStart + "here\r\n");
}

TEST(BuildReport, AFileThatCanNotBeWrittenReachesTheCaller) {
  const ReportScene scene;
  scene.files->CreateFolders(kLog);  // in the file's place
  EXPECT_NE(support::ErrorOf([&] { scene.build->ReportAction(nullptr, 1, "x"); }).Number(), 0);
}

TEST(BuildReport, StopReportingWritesTheClosingLineAndTheNextRunBeginsANewReport) {
  const ReportScene scene;
  scene.build->StopReporting(true);
  scene.build->StopReporting(false);
  EXPECT_EQ(scene.Read(kLog),
            kStart + "Build successfully completed\r\n\r\n" + kStart + "Build Stoped\r\n\r\n");
}

TEST(BuildReport, ARunReportsItsHeaderItsProjectsAndWhatFailed) {
  const ReportScene scene;
  scene.Add("Good");
  scene.Add("Bad");
  scene.FailOn("Bad");
  EXPECT_FALSE(scene.build->Projects().Build(false));
  scene.build->StopReporting(false);
  EXPECT_EQ(scene.Read(kLog),
            kStart + "[Compiling projects]\r\n\r\n" + "\r\nGood (Time: 13:05:00)\r\n" + kDetails +
                "\r\nBad (Time: 13:05:00)\r\n" + kDetails + "\r\nBad (Time: 13:05:00)\r\n" + kDetails +
                "Compile failed: Variable not defined\r\nBuild failed.\r\n" + "Build Stoped\r\n\r\n");
}

TEST(BuildReport, OneThatCanNotBeWrittenFailsTheRunWithAnEvent) {
  const ReportScene scene;
  scene.Add("Lib");
  scene.files->CreateFolders(kLog);
  RecordingEvents events;
  scene.build->AddSink(events);
  EXPECT_FALSE(scene.build->Projects().Build(false));
  scene.build->RemoveSink(events);
  ASSERT_FALSE(events.heard.empty());
  EXPECT_TRUE(events.heard.back().starts_with("BuildFaild - other error: ")) << events.heard.back();
}

TEST(IReportItem, AloneHasEmptyTexts) {
  const auto item = Make<IReportItem>();
  EXPECT_EQ(automation::ToText(item->Get("Name")), "");
  EXPECT_EQ(automation::ToText(item->Get("Details")), "");
}

}  // namespace
}  // namespace hearthmake
