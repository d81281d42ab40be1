#include "host/run/RunPlanners.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Base; Lib, which references it; App, which references Lib; Tool, which stands alone.
class RunPlannersTest : public testing::Test {
 protected:
  RunPlannersTest() : build(automation::Make<Build>()) {
    build->SetName("Shop");
    build->BeginEdit();
    build->ApplyEdit();
    Add("Base", "OleDll", "");
    Add("Lib", "OleDll", "Reference=*\\ABase.vbp\n");
    Add("App", "Exe", "Reference=*\\ALib.vbp\n");
    Add("Tool", "Exe", "");
    build->AutoDetectReferences();
    plan = RunPlan(AllProjects(*build));
  }
  void Add(const std::string& name, const std::string& type, const std::string& rows) {
    bench.Write("C:\\src\\" + name + ".vbp", "Type=" + type + "\n" + rows + "Name=\"" + name + "\"\n");
    build->Projects().Add("C:\\src\\" + name + ".vbp");
  }
  std::vector<std::string> Running() const {
    std::vector<std::string> names;
    for (const PlannedProject& planned : plan.Projects()) {
      if (planned.Runs()) names.push_back(planned.name);
    }
    return names;
  }
  const PlannedProject& Planned(const std::string& name) {
    return *plan.Find(FindProject(*build, name)->Id());
  }

  support::Workbench bench;
  automation::Ref<Build> build;
  RunPlan plan;
};

TEST_F(RunPlannersTest, EveryProjectRunsAtFirstButThoseThatAreSwitchedOff) {
  FindProject(*build, "Tool")->SetCompileMe(false);
  plan = RunPlan(AllProjects(*build));
  EXPECT_THAT(Running(), ElementsAre("Base", "Lib", "App"));
  EXPECT_EQ(Planned("Tool").choice, RunChoice::SwitchedOff);
  EXPECT_EQ(plan.Count(RunChoice::Runs), 3U);
  EXPECT_EQ(plan.Find(99), nullptr);
  EXPECT_FALSE(plan.Runs(99));
}

TEST_F(RunPlannersTest, WhatIsLeftOutKeepsItsFirstReason) {
  plan.LeaveOut(0, RunChoice::UpToDate, "first");
  plan.LeaveOut(0, RunChoice::NotAskedFor, "second");
  plan.GiveReason(0, "third");
  EXPECT_EQ(Planned("Base").choice, RunChoice::UpToDate);
  EXPECT_EQ(Planned("Base").reason, "first");
}

TEST_F(RunPlannersTest, LeavesOutAllButTheNamedOnes) {
  LeaveOutAllBut(plan, *build, {"Tool", "lib"});
  EXPECT_THAT(Running(), ElementsAre("Lib", "Tool"));
  EXPECT_EQ(Planned("Base").choice, RunChoice::NotAskedFor);
}

TEST_F(RunPlannersTest, AWrongNameListsWhatThereIs) {
  for (const auto& attempt : {std::function<void()>([&] { LeaveOutAllBut(plan, *build, {"Libb"}); }),
                              std::function<void()>([&] { LeaveOutBefore(plan, *build, "Libb"); })}) {
    try {
      attempt();
      ADD_FAILURE();
    } catch (const HostError& error) {
      EXPECT_THAT(error.what(), HasSubstr("no project 'Libb'"));
      EXPECT_THAT(error.Advice(), HasSubstr("Base, Lib, App, Tool"));
    }
  }
}

TEST_F(RunPlannersTest, LeavesOutWhatComesBeforeAProject) {
  LeaveOutBefore(plan, *build, "App");
  EXPECT_THAT(Running(), ElementsAre("App", "Tool"));
  EXPECT_EQ(Planned("Lib").reason, "it comes before App");
  EXPECT_EQ(Planned("Tool").reason, "it comes behind App");
}

TEST_F(RunPlannersTest, GoesOnWithWhatAStoppedRunWasAskedForAndHasNotCompiled) {
  const auto id = [&](const char* name) { return FindProject(*build, name)->Id(); };
  RunJournal journal(bench.root.Path("run-1.json"), 1, {id("Base"), id("Lib"), id("App"), id("Tool")});
  journal.StartFresh();
  journal.AskFor({id("Base"), id("Lib"), id("App")});
  LeaveOutDone(plan, journal);
  EXPECT_THAT(Running(), ElementsAre("Base", "Lib", "App"));
  EXPECT_EQ(Planned("Tool").reason, "the stopped run was not asked for it");
}

TEST_F(RunPlannersTest, LeavesOutWhatDependsOnAFailureHoweverFarAway) {
  LeaveOutUsersOf(plan, ProjectGraph(AllProjects(*build)), *FindProject(*build, "Base"));
  EXPECT_THAT(Running(), ElementsAre("Base", "Tool"));
  EXPECT_EQ(Planned("App").choice, RunChoice::AfterFailure);
  EXPECT_EQ(Planned("App").cause, FindProject(*build, "Base")->Id());
  EXPECT_EQ(Planned("App").reason, "it depends on Base, which failed");
}

TEST_F(RunPlannersTest, AFailureThatNothingDependsOnLeavesNothingOut) {
  LeaveOutUsersOf(plan, ProjectGraph(AllProjects(*build)), *FindProject(*build, "App"));
  EXPECT_THAT(Running(), ElementsAre("Base", "Lib", "App", "Tool"));
}

}  // namespace
}  // namespace hearthmake::host
