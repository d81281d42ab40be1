#include "host/run/RunRecord.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/Session.hpp"
#include "host/run/SinkGuard.hpp"
#include "support/BuildScene.hpp"

namespace hearthmake::host {
namespace {

using support::BuildScene;
using testing::ElementsAre;
using testing::HasSubstr;

// Three programs A, B and C.
class RunRecordTest : public testing::Test {
 protected:
  RunRecordTest() {
    for (const char* name : {"A", "B", "C"}) scene.Add(name, "Exe");
  }

  bool Run(RunRecord& record, bool resume = false) {
    const SinkGuard guard(*scene.build, record);
    return scene.build->Projects().Build(resume);
  }
  automation::Ref<Project> Of(const char* name) { return scene.build->Projects().GetByName(name); }
  static std::vector<ProjectOutcome> Outcomes(const RunRecord& record) {
    std::vector<ProjectOutcome> outcomes;
    for (const ProjectRecord& project : record.Projects()) outcomes.push_back(project.outcome);
    return outcomes;
  }

  BuildScene scene;
};

TEST_F(RunRecordTest, KnowsTheProjectsBeforeTheRun) {
  Of("B")->BeginEdit();
  Of("B")->SetCompileMe(false);
  const RunRecord record(*scene.build);
  EXPECT_EQ(record.BuildName(), "Suite");
  EXPECT_EQ(record.BuildId(), scene.build->Id());
  ASSERT_EQ(record.Projects().size(), 3U);
  const ProjectRecord& first = record.Projects().front();
  EXPECT_EQ(first.id, Of("A")->Id());
  EXPECT_EQ(first.name, "A");
  EXPECT_EQ(first.type, "StandardExe");
  EXPECT_EQ(first.path, "C:\\src\\A.vbp");
  EXPECT_EQ(first.binary, "C:\\src\\A.exe");
  EXPECT_EQ(record.Projects()[1].reason, "its CompileMe is off");
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::NotReached, ProjectOutcome::NotWanted, ProjectOutcome::NotReached));
  EXPECT_EQ(record.Result(), RunResult::Cancelled);
  EXPECT_EQ(record.Seconds(), 0);
}

TEST_F(RunRecordTest, RecordsARunThatCompletes) {
  RunRecord record(*scene.build);
  const auto before = std::chrono::system_clock::now();
  ASSERT_TRUE(Run(record));
  EXPECT_EQ(record.Result(), RunResult::Complete);
  EXPECT_EQ(record.Count(ProjectOutcome::Compiled), 3U);
  EXPECT_GE(record.Began(), before);
  EXPECT_LE(record.Ended(), std::chrono::system_clock::now());
  EXPECT_LE(record.Began(), record.Ended());
  double end = 0;
  for (const ProjectRecord& project : record.Projects()) {
    EXPECT_GE(project.start, end);
    EXPECT_GT(project.seconds, 0);
    end = project.start + project.seconds;
    EXPECT_THAT(project.log, HasSubstr("succeeded"));
    EXPECT_EQ(project.message, "");
  }
  EXPECT_GE(record.Seconds(), end);
}

TEST_F(RunRecordTest, RecordsACompileThatFails) {
  scene.FailOn("B");
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  EXPECT_EQ(record.Result(), RunResult::Failed);
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::Compiled, ProjectOutcome::Failed, ProjectOutcome::NotReached));
  const ProjectRecord& failed = record.Projects()[1];
  EXPECT_TRUE(failed.isCompileError);
  EXPECT_EQ(failed.message, "Compile failed: Variable not defined\r\nBuild failed.");
  EXPECT_EQ(failed.log, "Variable not defined\r\nBuild failed.");
  EXPECT_GT(failed.seconds, 0);
}

TEST_F(RunRecordTest, RecordsOtherFailuresOfAProject) {
  std::filesystem::remove(scene.Posix("C:\\src\\B.vbp"));
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  const ProjectRecord& failed = record.Projects()[1];
  EXPECT_EQ(failed.outcome, ProjectOutcome::Failed);
  EXPECT_FALSE(failed.isCompileError);
  EXPECT_EQ(failed.message, "Projet path is incorrect");
  EXPECT_EQ(failed.log, "");
}

TEST_F(RunRecordTest, GoesOnWithTheRunThatResumes) {
  scene.FailOn("B");
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  // The rest without what failed.
  Of("B")->BeginEdit();
  Of("B")->SetCompileMe(false);
  ASSERT_TRUE(Run(record, true));
  EXPECT_EQ(record.Result(), RunResult::Failed);
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::Compiled, ProjectOutcome::Failed, ProjectOutcome::Compiled));
  EXPECT_GT(record.Projects()[2].start, record.Projects()[1].start);
}

TEST_F(RunRecordTest, ForgetsAFailureThatTheNextRunMends) {
  scene.FailOn("B");
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  scene.SetCompiler("echo succeeded > \"$LOG\"");
  ASSERT_TRUE(Run(record, true));
  EXPECT_EQ(record.Result(), RunResult::Complete);
  EXPECT_EQ(record.Projects()[1].outcome, ProjectOutcome::Compiled);
  EXPECT_EQ(record.Projects()[1].message, "");
}

TEST_F(RunRecordTest, RecordsWhereARunWasCancelled) {
  support::RecordingEvents events;
  events.On("WillCompile B", [](bool& cancel) { cancel = true; });
  const SinkGuard canceller(*scene.build, events);
  RunRecord record(*scene.build);
  Run(record);
  EXPECT_EQ(record.Result(), RunResult::Cancelled);
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::Compiled, ProjectOutcome::Cancelled, ProjectOutcome::NotReached));
}

TEST_F(RunRecordTest, AProjectWhoseScriptFailsAfterwardsFailed) {
  scene.SetOption("RunScripts", "True");
  scene.build->Scripts().SetText(BuildScripts::BS_AFTER_PROJECT_COMPILE, "Err.Raise 1, \"x\", \"Not today\"");
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  const ProjectRecord& project = record.Projects().front();
  EXPECT_EQ(project.outcome, ProjectOutcome::Failed);
  EXPECT_FALSE(project.isCompileError);
  EXPECT_THAT(project.message, HasSubstr("Not today"));
  EXPECT_THAT(project.log, HasSubstr("succeeded"));
}

TEST_F(RunRecordTest, KeepsFailuresThatBelongToNoProject) {
  scene.SetOption("RunScripts", "True");
  scene.build->Scripts().SetText(BuildScripts::BS_BEFORECOMPILE, "Err.Raise 1, \"x\", \"Not today\"");
  scene.build->Scripts().SetText(BuildScripts::BS_BUILDFAILED, "Err.Raise 1, \"x\", \"Nor this\"");
  RunRecord record(*scene.build);
  ASSERT_FALSE(Run(record));
  EXPECT_EQ(record.Result(), RunResult::Failed);
  EXPECT_THAT(record.Failures(), ElementsAre(HasSubstr("Not today"), HasSubstr("Nor this")));
  EXPECT_EQ(record.Count(ProjectOutcome::NotReached), 3U);
}

TEST_F(RunRecordTest, KeepsWhatTheRunTellsBesides) {
  scene.SetOption("RunScripts", "True");
  scene.build->Scripts().SetText(BuildScripts::BS_BEFORE_PROJECT_COMPILE,
                                 "Scripts.Notify \"about \" & Project.Name");
  RunRecord record(*scene.build);
  ASSERT_TRUE(Run(record));
  ASSERT_EQ(record.Messages().size(), 4U);
  const RunMessage& first = record.Messages().front();
  EXPECT_EQ(first.kind, RunMessage::Kind::MTSEvent);
  EXPECT_EQ(first.text, "Shutting down COM+ Applications");
  EXPECT_EQ(first.idProject, 0);
  const RunMessage& last = record.Messages().back();
  EXPECT_EQ(last.kind, RunMessage::Kind::ScriptNotify);
  EXPECT_EQ(last.text, "about C");
  EXPECT_EQ(last.idProject, Of("C")->Id());
  EXPECT_GT(last.seconds, first.seconds);
}

TEST_F(RunRecordTest, CountsMessagesBeyondItsLimit) {
  RunRecord record(*scene.build);
  automation::Variant cancel;
  for (std::size_t i = 0; i < RunRecord::kMessageLimit + 5; ++i) record.ScriptNotify("again", cancel, 0);
  EXPECT_EQ(record.Messages().size(), RunRecord::kMessageLimit);
  EXPECT_EQ(record.LostMessages(), 5U);
}

TEST_F(RunRecordTest, CutsLongTextsBetweenCharacters) {
  RunRecord record(*scene.build);
  std::string text = "x";
  while (text.size() < RunRecord::kTextLimit) text += "\xC3\xA4";
  record.Error(automation::Variant::FromText(text));
  const std::string& kept = record.Messages().front().text;
  EXPECT_EQ(kept, text.substr(0, RunRecord::kTextLimit - 1) + "...");
}

TEST_F(RunRecordTest, KnowsWhyProjectsAreLeftOut) {
  RunRecord record(*scene.build);
  record.LeaveOut(Of("A")->Id(), ProjectOutcome::Earlier, "compiled by the run that stopped");
  record.LeaveOut(Of("C")->Id(), ProjectOutcome::Blocked, "it needs B");
  scene.FailOn("B");
  for (const char* name : {"A", "C"}) {
    Of(name)->BeginEdit();
    Of(name)->SetCompileMe(false);
  }
  ASSERT_FALSE(Run(record));
  record.LeaveOut(Of("B")->Id(), ProjectOutcome::UpToDate, "too late: it failed");
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::Earlier, ProjectOutcome::Failed, ProjectOutcome::Blocked));
  EXPECT_EQ(record.Projects()[2].reason, "it needs B");
}

TEST_F(RunRecordTest, TakesWhatAPlanLeavesOut) {
  RunPlan plan(AllProjects(*scene.build));
  plan.LeaveOut(0, RunChoice::UpToDate, "");
  plan.LeaveOut(1, RunChoice::AfterFailure, "depends on A", plan.Projects()[0].id);
  plan.LeaveOut(2, RunChoice::NotAskedFor, "");
  RunRecord record(*scene.build);
  record.LeaveOut(plan);
  EXPECT_THAT(Outcomes(record),
              ElementsAre(ProjectOutcome::UpToDate, ProjectOutcome::Blocked, ProjectOutcome::NotWanted));
  EXPECT_EQ(record.Projects()[0].reason, "");
  EXPECT_EQ(record.Projects()[1].reason, "depends on A");
  EXPECT_EQ(record.Projects()[2].reason, "not asked for");
}

TEST_F(RunRecordTest, TakesInProjectsThatJoinTheBuildMeanwhile) {
  RunRecord record(*scene.build);
  scene.Add("D", "Exe");
  ASSERT_TRUE(Run(record));
  ASSERT_EQ(record.Projects().size(), 4U);
  EXPECT_EQ(record.Projects().back().name, "D");
  EXPECT_EQ(record.Projects().back().outcome, ProjectOutcome::Compiled);
}

TEST_F(RunRecordTest, AFailureOutsideOfTheRunFailsIt) {
  RunRecord record(*scene.build);
  record.Fail("There is a cycle.");
  EXPECT_EQ(record.Result(), RunResult::Failed);
  EXPECT_THAT(record.Failures(), ElementsAre("There is a cycle."));
}

}  // namespace
}  // namespace hearthmake::host
