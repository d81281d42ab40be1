// Projects: the build run, as a host hears it.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"
#include "support/TypeLibFixtures.hpp"

namespace hearthmake {
namespace {

using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::RecordingEvents;
using Heard = std::vector<std::string>;

constexpr const char* kComPlus = "MTSEvent Shutting down COM+ Applications";
constexpr const char* kFailure =
    "BuildFaild B compile error: Compile failed: Variable not defined\r\nBuild failed.";

// Three projects A, B and C, and somebody who listens.
class RunScene : public BuildScene {
 public:
  explicit RunScene(std::int32_t majorVersion = 10) : BuildScene(majorVersion) {
    for (const char* name : {"A", "B", "C"}) Add(name, "Exe");
    build->AddSink(events);
  }
  bool Run(bool bResume = false) {
    events.heard.clear();
    return build->Projects().Build(bResume);
  }
  Ref<Project> Of(const std::string& name) const { return build->Projects().GetByName(name); }
  // The projects that the compiler was started for.
  std::string Compiled() const {
    std::string names;
    for (const std::string& command : launcher->commands) {
      const std::size_t dot = command.find(".vbp");
      if (dot != std::string::npos) names += command.substr(dot - 1, 1);
    }
    return names;
  }

  RecordingEvents events;
};

TEST(BuildRun, CompilesTheProjectsInListOrderAndTellsEveryStep) {
  RunScene scene;
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard,
            (Heard{"BuildStart fresh", kComPlus, "WillCompile A", "ProjectCompiled A", "WillCompile B",
                   "ProjectCompiled B", "WillCompile C", "ProjectCompiled C", "BuildComplete"}));
  EXPECT_EQ(scene.Compiled(), "ABC");
}

TEST(BuildRun, RunsByNameToo) {
  RunScene scene;
  const Variant result = scene.build->Get("Projects").AsObject()->Call("build", {Variant::FromText("False")});
  EXPECT_EQ(result.Type(), automation::VariantType::Boolean);
  EXPECT_TRUE(automation::ToBoolean(result));
  EXPECT_EQ(scene.events.heard.back(), "BuildComplete");
}

TEST(BuildRun, SeesAProjectFileThatChangesWhileTheOneBeforeItCompiles) {
  RunScene scene;
  scene.Of("B")->BeginEdit();
  scene.Of("B")->SetMajorVer(7);
  scene.Of("B")->ApplyEdit();
  scene.SetCompiler(
      "case $PROJECT in */A.vbp) sleep 0.1; printf 'Type=Exe\\r\\nMajorVer=3\\r\\nNew=1\\r\\n' > "
      "\"$C/src/B.vbp\";; "
      "*/B.vbp) cp \"$PROJECT\" \"$C/seen.txt\";; esac\necho succeeded > \"$LOG\"");
  EXPECT_TRUE(scene.Run());
  const std::string seen = scene.Read("C:\\seen.txt");
  EXPECT_NE(seen.find("MajorVer=7\r\n"), std::string::npos) << seen;
  EXPECT_NE(seen.find("New=1\r\n"), std::string::npos) << seen;
}

TEST(BuildRun, LeavesTheNextProjectAloneWhileOneCompiles) {
  RunScene scene;
  std::filesystem::remove(scene.Posix("C:\\src\\B.vbp"));
  const std::string before = scene.Read("C:\\src\\C.vbp");
  scene.Of("C")->BeginEdit();
  scene.Of("C")->SetMajorVer(7);
  scene.Of("C")->ApplyEdit();
  scene.events.On("WillCompile B", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.Run());
  EXPECT_FALSE(scene.files->FileExists("C:\\src\\B.vbp"));
  scene.Of("B")->BeginEdit();
  scene.Of("B")->SetCompileMe(false);
  scene.Of("B")->ApplyEdit();
  scene.events.On("WillCompile C", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Read("C:\\src\\C.vbp"), before);
}

TEST(BuildRun, FollowsTheCompileOrder) {
  RunScene scene;
  scene.Of("A")->BeginEdit();
  scene.build->Projects().Add(scene.WriteProject("Z"));
  scene.Of("A")->ReferenceList().AddInternalReference(*scene.Of("Z"));
  scene.Of("A")->ApplyEdit();
  scene.build->Projects().SetCompileOrder();
  scene.WriteBytes("C:\\src\\Z.dll", test::ReadTypeLibFixture("Shapes.tlb"));
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "ZABC");
}

TEST(BuildRun, MarksWhatCompiled) {
  RunScene scene;
  scene.Of("B")->SetCompileMe(false);
  EXPECT_TRUE(scene.Run());
  EXPECT_TRUE(scene.Of("A")->CompiledOK());
  EXPECT_FALSE(scene.Of("B")->CompiledOK());
  EXPECT_DOUBLE_EQ(scene.Of("A")->LastCompiled().value, scene.clock->now);
}

TEST(BuildRun, PassesOverProjectsThatAreNotToBeCompiledWithoutAWord) {
  RunScene scene;
  scene.Of("B")->SetCompileMe(false);
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "WillCompile A", "ProjectCompiled A",
                                       "WillCompile C", "ProjectCompiled C", "BuildComplete"}));
}

TEST(BuildRun, WithNothingToCompileStartsAndCompletes) {
  RunScene scene;
  for (const auto& project : scene.build->Projects().All()) project->SetCompileMe(false);
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "BuildComplete"}));
  EXPECT_TRUE(scene.launcher->commands.empty());
}

TEST(BuildRun, OfAnEmptyBuildCompletes) {
  const BuildScene scene;
  EXPECT_TRUE(scene.build->Projects().Build(false));
}

TEST(BuildRun, ACompileErrorEndsTheRunWithTheCompilersWords) {
  RunScene scene;
  scene.FailOn("B");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "WillCompile A", "ProjectCompiled A",
                                       "WillCompile B", kFailure}));
  EXPECT_EQ(scene.Compiled(), "AB");
  EXPECT_TRUE(scene.Of("A")->CompiledOK());
  EXPECT_FALSE(scene.Of("B")->CompiledOK());
}

TEST(BuildRun, RemembersTheProjectAtWhichItStopped) {
  RunScene scene;
  EXPECT_EQ(scene.build->FailedProject(), nullptr);
  EXPECT_EQ(scene.build->Get("FailedProject").AsObject(), nullptr);
  scene.FailOn("B");
  scene.Run();
  EXPECT_EQ(scene.build->FailedProject(), scene.Of("B").Get());
  EXPECT_EQ(automation::ToText(scene.build->Get("FailedProject").AsObject()->Get("Name")), "B");
}

TEST(BuildRun, TheProjectIsKnownAsFailedWhenItsEventHasBeenHeard) {
  RunScene scene;
  scene.FailOn("B");
  const Project* during = scene.Of("A").Get();
  scene.events.On(kFailure, [&](bool&) { during = scene.build->FailedProject(); });
  scene.Run();
  EXPECT_EQ(during, nullptr) << "the event comes first";
  EXPECT_EQ(scene.build->FailedProject(), scene.Of("B").Get());
}

TEST(BuildRun, OtherErrorsAreNoCompileErrors) {
  RunScene scene;
  scene.files->Remove("C:\\src\\B.vbp");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild B other error: Projet path is incorrect");
  EXPECT_EQ(scene.build->FailedProject(), scene.Of("B").Get());
}

TEST(BuildRun, AMissingCompilerIsNoCompileError) {
  RunScene scene;
  scene.files->Remove("C:\\vb6.exe");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(),
            "BuildFaild A other error: Failed to start the following process: C:\\vb6.exe "
            "\"C:\\src\\A.vbp\" /make /out C:\\temp\\CR.txt");
}

TEST(BuildRun, ALogThatIsNotWrittenIsACompileError) {
  RunScene scene;
  scene.SetCompiler("exit 1");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild A compile error: Compile failed: ");
}

TEST(BuildRun, AResumedRunGoesOnAtTheFailedProject) {
  RunScene scene;
  scene.FailOn("B");
  scene.Run();
  scene.FailOn("nothing");
  scene.launcher->commands.clear();
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart resume", "WillCompile B", "ProjectCompiled B",
                                       "WillCompile C", "ProjectCompiled C", "BuildComplete"}))
      << "and no component services are shut down";
  EXPECT_EQ(scene.Compiled(), "BC");
}

TEST(BuildRun, ForgetsTheFailedProjectOfTheRunBefore) {
  RunScene scene;
  scene.FailOn("B");
  scene.Run();
  ASSERT_NE(scene.build->FailedProject(), nullptr);
  scene.FailOn("nothing");
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.build->FailedProject(), nullptr);
}

TEST(BuildRun, AResumedRunMayFailAgain) {
  RunScene scene;
  scene.FailOn("B");
  scene.Run();
  EXPECT_FALSE(scene.Run(true));
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart resume", "WillCompile B", kFailure}));
}

TEST(BuildRun, AResumedRunWithNothingLeftCompletes) {
  RunScene scene;
  scene.Run();
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart resume", "BuildComplete"}));
}

TEST(BuildRun, AFreshRunCompilesEverythingAgain) {
  RunScene scene;
  scene.Run();
  scene.launcher->commands.clear();
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "ABC");
}

TEST(BuildRun, AFreshRunForgetsWhatProjectsOutsideOfItCompiled) {
  RunScene scene;
  scene.Run();
  scene.Of("B")->SetCompileMe(false);
  scene.FailOn("A");
  EXPECT_FALSE(scene.Run());
  EXPECT_FALSE(scene.Of("B")->CompiledOK());
  EXPECT_FALSE(scene.Of("C")->CompiledOK());
}

TEST(BuildRun, AHostMayCancelBeforeAProject) {
  RunScene scene;
  scene.events.On("WillCompile B", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.Run()) << "a cancelled run has not failed";
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "WillCompile A", "ProjectCompiled A",
                                       "WillCompile B", "BuildCancled B"}));
  EXPECT_EQ(scene.Compiled(), "A");
  EXPECT_EQ(scene.build->FailedProject(), nullptr);
}

TEST(BuildRun, ACancelledRunCanBeResumed) {
  RunScene scene;
  scene.events.On("WillCompile B", [](bool& cancel) { cancel = true; });
  scene.Run();
  scene.events.On("WillCompile B", [](bool&) {});
  scene.launcher->commands.clear();
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.Compiled(), "BC");
}

TEST(BuildRun, OneOfSeveralListenersMayCancel) {
  RunScene scene;
  RecordingEvents second;
  scene.build->AddSink(second);
  scene.events.On("WillCompile A", [](bool& cancel) { cancel = true; });
  scene.Run();
  EXPECT_EQ(second.heard.back(), "BuildCancled A");
}

TEST(BuildRun, CancellingTheShutDownOfServicesHasNoEffect) {
  RunScene scene;
  scene.events.On(kComPlus, [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildComplete");
}

TEST(BuildRun, BeforeWindows2000NothingIsStoppedForABuildWithoutPackages) {
  RunScene scene(4);
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard[1], "WillCompile A");
  EXPECT_EQ(scene.Compiled().size(), scene.launcher->commands.size());
  EXPECT_EQ(scene.clock->slept.count(), 0);
}

TEST(BuildRun, FromWindows2000OnMtsIsNeverStopped) {
  RunScene scene(5);
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard[1], kComPlus);
  EXPECT_EQ(scene.launcher->commands.size(), 3U) << "only the compiler was started";
  EXPECT_EQ(scene.clock->slept.count(), 0);
}

TEST(BuildRun, TellsThatACompatibleBinaryIsMissing) {
  RunScene scene;
  const auto lib = scene.Add("L", "OleDll", "CompatibleMode=\"2\"\nCompatibleEXE32=\"gone.dll\"\n");
  for (const char* name : {"A", "B", "C"}) scene.Of(name)->SetCompileMe(false);
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(
      scene.events.heard,
      (Heard{"BuildStart fresh", kComPlus, "WillCompile L",
             "ScriptNotify 0 The binary compatible file: C:\\src\\gone.dll was not found. Compatible mode "
             "changed to no compatibility.\r\n",
             "ProjectCompiled L", "BuildComplete"}));
}

TEST(BuildRun, AnErrorOfAListenerAtTheStartFailsTheRunWithoutAProject) {
  RunScene scene;
  scene.events.On("BuildStart fresh", [](bool&) { automation::Raise(45, "Host", "not today"); });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", "BuildFaild - other error: not today"}));
  EXPECT_EQ(scene.build->FailedProject(), nullptr);
}

TEST(BuildRun, AnErrorOfAListenerBeforeAProjectFailsThatProject) {
  RunScene scene;
  scene.events.On("WillCompile B", [](bool&) { automation::Raise(45, "Host", "not this one"); });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild B other error: not this one");
  EXPECT_EQ(scene.Compiled(), "A");
}

TEST(BuildRun, AnErrorOfAListenerAfterAProjectLeavesItCompiled) {
  RunScene scene;
  scene.events.On("ProjectCompiled B", [](bool&) { automation::Raise(45, "Host", "late"); });
  EXPECT_FALSE(scene.Run());
  EXPECT_TRUE(scene.Of("B")->CompiledOK());
  scene.launcher->commands.clear();
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.Compiled(), "C");
}

TEST(BuildRun, AnErrorOfAListenerAtTheEndFailsTheRunWithoutAProject) {
  RunScene scene;
  scene.events.On("BuildComplete", [](bool&) { automation::Raise(45, "Host", "at the end"); });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild - other error: at the end");
}

TEST(BuildRun, AListenersOwnCompileErrorCountsAsOne) {
  RunScene scene;
  scene.events.On("WillCompile A", [](bool&) {
    automation::Raise(automation::BuildErrors::be_FailToCompile, "Host", "refused");
  });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild A compile error: refused");
}

TEST(BuildRun, AnErrorOfAListenerToTheFailureLeavesTheRunFailed) {
  RunScene scene;
  scene.FailOn("B");
  scene.events.On(kFailure, [](bool&) { automation::Raise(45, "Host", "too much"); });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), kFailure);
  EXPECT_EQ(scene.build->FailedProject(), scene.Of("B").Get());
}

TEST(BuildRun, AListenerMayStopListeningDuringTheRun) {
  RunScene scene;
  RecordingEvents second;
  scene.build->AddSink(second);
  scene.events.On("WillCompile A", [&](bool&) { scene.build->RemoveSink(scene.events); });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "WillCompile A"}));
  EXPECT_EQ(second.heard.back(), "BuildComplete");
}

TEST(BuildRun, AListenerThatAnotherOneRemovedHearsNothingMore) {
  RunScene scene;
  {
    RecordingEvents second;
    scene.build->AddSink(second);
    scene.events.On("BuildStart fresh", [&](bool&) { scene.build->RemoveSink(second); });
    EXPECT_TRUE(scene.Run());
    EXPECT_TRUE(second.heard.empty());
  }
  EXPECT_TRUE(scene.Run());
}

TEST(BuildRun, AListenerThatComesDuringAnEventHearsTheNextOne) {
  RunScene scene;
  RecordingEvents second;
  scene.events.On("WillCompile C", [&](bool&) { scene.build->AddSink(second); });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(second.heard, (Heard{"ProjectCompiled C", "BuildComplete"}));
  scene.build->RemoveSink(second);
}

TEST(BuildRun, RunsOnWhenAListenerTakesAnotherProjectOut) {
  RunScene scene;
  scene.events.On("WillCompile A", [&](bool&) {
    const auto c = scene.Of("C");
    c->BeginEdit();
    c->Delete();
    c->ApplyEdit();
  });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "AB");
  EXPECT_EQ(scene.events.heard.back(), "BuildComplete");
}

TEST(BuildRun, PassesOverTheProjectAtHandWhenAListenerTakesItOut) {
  RunScene scene;
  scene.events.On("WillCompile B", [&](bool&) {
    const auto b = scene.Of("B");
    b->BeginEdit();
    b->Delete();
    b->ApplyEdit();
  });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "AC");
}

TEST(BuildRun, EndsInPeaceWhenAListenerKillsTheBuild) {
  RunScene scene;
  scene.events.On("WillCompile B", [&](bool&) { scene.build->Kill(); });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "A");
  EXPECT_EQ(scene.events.heard.back(),
            "BuildFaild - other error: Object variable or With block variable not set");
}

TEST(BuildRun, LivesOnWhenAListenerKillsABuildThatNobodyElseHolds) {
  RunScene scene;
  const Ref<Projects> projects(&scene.build->Projects());
  Build* const build = scene.build.Get();
  scene.build = nullptr;
  scene.events.On("WillCompile B", [&](bool&) {
    build->RemoveSink(scene.events);
    build->Kill();
  });
  EXPECT_FALSE(projects->Build(false));
  EXPECT_EQ(scene.Compiled(), "A");
}

TEST(BuildRun, LivesOnWhenTheHostDropsEverythingDuringTheRun) {
  RunScene scene;
  scene.events.On("WillCompile B", [&](bool&) { scene.build = nullptr; });
  const Ref<Projects> projects(&scene.build->Projects());
  EXPECT_TRUE(projects->Build(false));
  EXPECT_EQ(scene.Compiled(), "ABC");
}

TEST(BuildRun, AListenerMayAddAProjectWhichIsNotCompiledInTheSameRun) {
  RunScene scene;
  scene.events.On("WillCompile A", [&](bool&) { scene.Add("D", "Exe"); });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.Compiled(), "ABC");
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.Compiled(), "ABCD");
}

TEST(BuildRun, AFailureWhileAResultIsStoredFailsTheProject) {
  RunScene scene;
  scene.events.On("WillCompile A", [&](bool&) {
    modDatabase::CloseDatabase();
    scene.WriteBytes("C:\\data\\Build.mdb", "damaged meanwhile, so that nothing can be stored any more");
  });
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "BuildFaild A other error: The database is unavailable.");
}

TEST(BuildRun, ProjectsWithoutABuildCanNotRunAndRaiseNothing) {
  const BuildScene scene;
  const Ref<Projects> projects(&scene.build->Projects());
  scene.build->Kill();
  EXPECT_FALSE(projects->Build(false));
}

TEST(BuildRun, ProgressOfScriptsIsCutAtAHundred) {
  RunScene scene;
  Variant cancel;
  scene.build->RaiseScriptNotify("far", cancel, 250);
  scene.build->RaiseScriptNotify("half", cancel, 50);
  scene.build->RaiseScriptNotify("back", cancel, -3);
  EXPECT_EQ(scene.events.heard,
            (Heard{"ScriptNotify 100 far", "ScriptNotify 50 half", "ScriptNotify -3 back"}));
  EXPECT_TRUE(cancel.IsEmpty());
}

TEST(BuildRun, AListenerCanCancelAScript) {
  RunScene scene;
  scene.events.On("ScriptNotify 1 go on?", [](bool& cancel) { cancel = true; });
  Variant cancel = Variant::FromBoolean(false);
  scene.build->RaiseScriptNotify("go on?", cancel, 1);
  EXPECT_TRUE(automation::ToBoolean(cancel));
}

TEST(BuildRun, AListenerMayBePartial) {
  const BuildScene scene;
  BuildEvents deaf;
  scene.build->AddSink(deaf);
  scene.Add("A", "Exe");
  EXPECT_TRUE(scene.build->Projects().Build(false));
  scene.build->RemoveSink(deaf);
}

TEST(BuildRun, ScriptsThatAreSwitchedOnButEmptyDoNotRun) {
  RunScene scene;
  scene.SetOption("RunScripts", "-1");
  EXPECT_TRUE(scene.Run());
  scene.FailOn("A");
  EXPECT_FALSE(scene.Run());
}

TEST(BuildRun, SettingsThatCanNotBeReadFailTheRun) {
  RunScene scene;
  scene.SetOption("Nonsense", "1");
  EXPECT_FALSE(scene.Run());
  ASSERT_GE(scene.events.heard.size(), 2U);
  EXPECT_NE(scene.events.heard[1].find("BuildFaild - other error: Object doesn't support"),
            std::string::npos);
}

}  // namespace
}  // namespace hearthmake
