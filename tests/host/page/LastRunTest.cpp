#include "host/page/LastRun.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/BuildScene.hpp"

namespace hearthmake::host {
namespace {

using support::BuildScene;
using testing::ElementsAre;
using Kind = ProjectChange::Kind;
using Outcome = RememberedProject::Outcome;

const std::string kLibrary = "{11111111-2222-3333-4444-555555555555}";

RememberedProject Remembered(Outcome outcome = Outcome::Compiled) {
  return {7, "Lib", outcome, 1.5, {"1.0.3", 4096, kLibrary, "1.2"}};
}

LastRun RunOf(const RememberedProject& project) { return {1000, 2.5, {project}}; }

ProjectChange Compare(const RememberedProject& now, ProjectOutcome outcome, const RememberedProject& last) {
  return CompareWithLast(now, outcome, RunOf(last));
}

TEST(LastRun, SurvivesItsFile) {
  const LastRun run = RunOf(Remembered(Outcome::Failed));
  const auto read = ParseLastRun(LastRunText(run));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->began, 1000);
  EXPECT_EQ(read->seconds, 2.5);
  ASSERT_EQ(read->projects.size(), 1U);
  const RememberedProject& project = read->projects.front();
  EXPECT_EQ(project.id, 7);
  EXPECT_EQ(project.name, "Lib");
  EXPECT_EQ(project.outcome, Outcome::Failed);
  EXPECT_EQ(project.seconds, 1.5);
  EXPECT_EQ(project.facts, Remembered().facts);
}

TEST(LastRun, IsNothingInAFileThatIsNone) {
  EXPECT_FALSE(ParseLastRun(""));
  EXPECT_FALSE(ParseLastRun("{}"));
  EXPECT_FALSE(ParseLastRun("[1]"));
  EXPECT_FALSE(ParseLastRun("{\"format\":2}"));
  EXPECT_FALSE(ParseLastRun("{\"format\":1,\"began\":1,\"seconds\":1,\"projects\":[{\"id\":\"x\"}]}"));
  EXPECT_FALSE(ParseLastRun(std::string(100'000, '[')));
}

TEST(LastRun, FindsNoDifferenceBetweenEqualRuns) {
  EXPECT_FALSE(Compare(Remembered(), ProjectOutcome::Compiled, Remembered()).IsAny());
}

TEST(LastRun, KnowsWhatFailsAnewAndWhatIsFixed) {
  const RememberedProject good = Remembered();
  const RememberedProject bad = Remembered(Outcome::Failed);
  EXPECT_EQ(Compare(bad, ProjectOutcome::Failed, good).kind, Kind::NewlyFailing);
  EXPECT_EQ(Compare(bad, ProjectOutcome::Failed, bad).kind, Kind::StillFailing);
  EXPECT_EQ(Compare(good, ProjectOutcome::Compiled, bad).kind, Kind::Fixed);
  EXPECT_EQ(Compare(bad, ProjectOutcome::NotReached, bad).kind, Kind::None);
  EXPECT_EQ(CompareWithLast(good, ProjectOutcome::Compiled, LastRun()).kind, Kind::NewProject);
}

TEST(LastRun, TellsANewIdentityFromANewVersion) {
  RememberedProject now = Remembered();
  now.facts.libraryVersion = "1.3";
  ProjectChange change = Compare(now, ProjectOutcome::Compiled, Remembered());
  EXPECT_TRUE(change.hasNewLibraryVersion);
  EXPECT_FALSE(change.hasNewLibrary);
  now.facts.library = "{99999999-2222-3333-4444-555555555555}";
  change = Compare(now, ProjectOutcome::Compiled, Remembered());
  EXPECT_TRUE(change.hasNewLibrary);
  EXPECT_FALSE(change.hasNewLibraryVersion);
  EXPECT_EQ(change.last.facts.library, kLibrary);
}

TEST(LastRun, MeasuresSizesAndTimes) {
  RememberedProject now = Remembered();
  now.facts.size = 5000;
  now.facts.version = "1.0.4";
  now.seconds = 2.5;
  ProjectChange change = Compare(now, ProjectOutcome::Compiled, Remembered());
  EXPECT_EQ(change.sizeChange, 904);
  EXPECT_TRUE(change.hasNewVersion);
  EXPECT_DOUBLE_EQ(change.secondsChange, 1.0);
  now.seconds = 1.6;  // no more than the machine's mood
  EXPECT_EQ(Compare(now, ProjectOutcome::Compiled, Remembered()).secondsChange, 0);
  now.facts.size = -1;
  EXPECT_EQ(Compare(now, ProjectOutcome::Compiled, Remembered()).sizeChange, 0);
}

TEST(LastRun, NamesProjectsThatAreGone) {
  EXPECT_THAT(GoneProjects(LastRun(), RunOf(Remembered())), ElementsAre("Lib"));
  EXPECT_THAT(GoneProjects(RunOf(Remembered()), RunOf(Remembered())), ElementsAre());
}

TEST(LastRun, KeepsWhatIsKnownOfProjectsThatARunDidNotComeTo) {
  BuildScene scene;
  scene.Add("A", "Exe");
  const RunRecord record(*scene.build);  // of a run that never began
  LastRun last = RunOf(Remembered(Outcome::Failed));
  last.projects.front().id = record.Projects().front().id;
  const LastRun now = Remember(record, RunFacts(), &last);
  ASSERT_EQ(now.projects.size(), 1U);
  EXPECT_EQ(now.projects.front().outcome, Outcome::Failed);
  EXPECT_EQ(now.projects.front().seconds, 1.5);
  EXPECT_EQ(now.projects.front().name, "A");
  EXPECT_EQ(Remember(record, RunFacts(), nullptr).projects.front().outcome, Outcome::Unknown);
}

}  // namespace
}  // namespace hearthmake::host
