// The scripts of a build: as a host runs them, and at their places in a run.

#include "scripting/Scripts.hpp"

#include <gtest/gtest.h>

#include "automation/Text.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Ref;
using automation::Variant;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;
using Heard = std::vector<std::string>;

constexpr BuildScripts kEvents[] = {BuildScripts::BS_BEFORESOURCESAFE,
                                    BuildScripts::BS_BEFORECOMPILE,
                                    BuildScripts::BS_BEFORE_PROJECT_COMPILE,
                                    BuildScripts::BS_AFTER_PROJECT_COMPILE,
                                    BuildScripts::BS_BUILDFAILED,
                                    BuildScripts::BS_BUILDCOMPLETE,
                                    BuildScripts::BS_AFTERMTS};

// A stored build with scripts switched on. What scripts say with Say arrives in events.
class ScriptScene : public BuildScene {
 public:
  ScriptScene() {
    SetOption("RunScripts", "-1");
    build->AddSink(events);
  }
  Scripts& Of() const { return build->Scripts(); }
  // Runs a text; gives it back expanded.
  std::string Execute(std::string text) const {
    EXPECT_TRUE(Of().Execute(text));
    return text;
  }
  void Fails(std::string text, BuildErrors number, const std::string& source,
             const std::string& description) const {
    ExpectError([&] { Of().Execute(text); }, number, source, description);
  }
  void FailsInScript(const std::string& text, const std::string& description) const {
    Fails(text, BuildErrors::beScriptSyntaxError, "Scripts.Execute", "Script Error: " + description);
  }
  // The value of an expression of the scripts, as text.
  std::string Value(const std::string& expression) {
    events.heard.clear();
    Execute("Scripts.Notify CStr(" + expression + ")");
    return events.heard.empty() ? "" : events.heard.back().substr(std::string("ScriptNotify 0 ").size());
  }
  bool Run(bool bResume = false) {
    events.heard.clear();
    return build->Projects().Build(bResume);
  }
  // The column as it is stored, or stored as it is wanted.
  std::string Column(const std::string& name) const {
    return modDatabase::OpenRow("SELECT * FROM Scripts WHERE BUildID = ", build->Id())->GetText(name);
  }
  void StoreRow(const std::function<void(platform::Recordset&)>& fill) const {
    const auto row = modDatabase::OpenRow("SELECT * FROM Scripts WHERE BUildID = ", build->Id());
    row->AddNew();
    row->SetLong("BuildID", build->Id());
    fill(*row);
    row->Update();
    row->Close();
  }

  support::RecordingEvents events;
};

std::string Say(const std::string& text) { return "Scripts.Notify \"" + text + "\""; }

TEST(ScriptTexts, AreEmptyWithoutARow) {
  const ScriptScene scene;
  for (const BuildScripts event : kEvents) EXPECT_EQ(scene.Of().Text(event), "");
}

TEST(ScriptTexts, AreStoredInOneRow) {
  const ScriptScene scene;
  for (const BuildScripts event : kEvents)
    scene.Of().SetText(event, std::string("é ") + EventName(event) + "\r\nEnd");
  scene.Of().Save();
  scene.Of().Save();
  EXPECT_EQ(BuildScene::CountRows("Scripts"), 1);
  const auto other = BuildScene::Loaded(scene.build->Id());
  for (const BuildScripts event : kEvents)
    EXPECT_EQ(other->Scripts().Text(event), std::string("é ") + EventName(event) + "\r\nEnd");
  EXPECT_EQ(scene.Column("BeforeSSafe"), "é Before SourceSafe\r\nEnd");
  EXPECT_EQ(scene.Column("ComplieComplete"), "é Compile Complete\r\nEnd");
  EXPECT_EQ(scene.Column("BuildFailed"), "é Build Failed\r\nEnd");
  EXPECT_EQ(scene.Column("AfterMTS"), "é After MTS\r\nEnd");
}

TEST(ScriptTexts, ThreeOfThemShareAColumn) {
  const ScriptScene scene;
  scene.StoreRow([](platform::Recordset& row) { row.SetText("BeforeCompile", "A[||]B"); });
  EXPECT_EQ(scene.Of().BeforeComplie(), "A");
  EXPECT_EQ(scene.Of().BeforeProjectComplie(), "B");
  EXPECT_EQ(scene.Of().AfterProjectCompile(), "");
  scene.Of().Save();
  EXPECT_EQ(scene.Column("BeforeCompile"), "A[||]B[||]");
}

TEST(ScriptTexts, PartsBeyondTheThirdAreIgnored) {
  const ScriptScene scene;
  scene.StoreRow([](platform::Recordset& row) { row.SetText("BeforeCompile", "[||]B[||]C[||]D"); });
  EXPECT_EQ(scene.Of().BeforeComplie(), "");
  EXPECT_EQ(scene.Of().BeforeProjectComplie(), "B");
  EXPECT_EQ(scene.Of().AfterProjectCompile(), "C");
}

TEST(ScriptTexts, ANullColumnIsAnEmptyText) {
  const ScriptScene scene;
  scene.StoreRow([](platform::Recordset&) {});
  for (const BuildScripts event : kEvents) EXPECT_EQ(scene.Of().Text(event), "");
}

TEST(ScriptTexts, GoWithTheirBuild) {
  const ScriptScene scene;
  scene.Of().Save();
  scene.build->BeginEdit();
  scene.build->Delete();
  scene.build->ApplyEdit();
  EXPECT_EQ(BuildScene::CountRows("Scripts"), 0);
}

TEST(ScriptsExecute, AnEmptyScriptRuns) {
  const ScriptScene scene;
  EXPECT_EQ(scene.Execute(""), "");
}

TEST(ScriptsExecute, GivesTheExpandedTextBack) {
  const ScriptScene scene;
  scene.Write("C:\\src\\lib.vbs", "x = \"%Build.Name%\"");
  EXPECT_EQ(scene.Execute("'Include<C:\\src\\lib.vbs>"), "'\r\nx = \"Suite\"\r\n");
}

TEST(ScriptsExecute, ADirectiveWithoutCommentMarkReachesTheEngine) {
  const ScriptScene scene;
  scene.Write("C:\\src\\lib.vbs", "x = 1");
  const auto error = ErrorOf([&] { scene.Execute("Include<C:\\src\\lib.vbs>"); });
  EXPECT_EQ(error.Number(), static_cast<std::int32_t>(BuildErrors::beScriptSyntaxError));
  EXPECT_TRUE(error.Description().ends_with("\r\nInclude<C:\\src\\lib.vbs>")) << error.Description();
}

TEST(ScriptsExecute, WhatOneScriptDefinesLaterOnesSee) {
  ScriptScene scene;
  scene.Execute("n = 20\r\nFunction Twice(x)\r\nTwice = 2 * x\r\nEnd Function");
  scene.Execute("Session(\"answer\") = Twice(n + 1)");
  EXPECT_EQ(scene.Value("Session(\"answer\")"), "42");
}

TEST(ScriptsExecute, AFreshBuildHasAFreshEngine) {
  ScriptScene scene;
  scene.Execute("n = 1 : Session(\"k\") = 1");
  scene.build->RemoveSink(scene.events);
  scene.build = BuildScene::Loaded(scene.build->Id());
  scene.build->AddSink(scene.events);
  EXPECT_EQ(scene.Value("IsEmpty(n) & Session.Count"), "True0");
}

TEST(ScriptsExecute, WithoutProjectsNoneIsActive) {
  const ScriptScene scene;
  EXPECT_TRUE(ErrorOf([&] { scene.Execute("x = Project().Name"); })
                  .Description()
                  .starts_with("Script Error: Object required"));
}

TEST(ScriptsExecute, TheFirstProjectIsActiveAtFirst) {
  ScriptScene scene;
  scene.Add("First");
  const auto second = scene.Add("Second");
  EXPECT_EQ(scene.Value("Project().Name & \" \" & Project.Name"), "First First");
  scene.Of().MakeActive(*second);
  EXPECT_EQ(scene.Value("Project.Name"), "Second");
  scene.Execute("hearthmake_SetActiveProject Projects(1)");
  EXPECT_EQ(scene.Value("Project.Name"), "First");
}

TEST(ScriptsExecute, MembersOfBuildAndAppAreNamesOfTheirOwn) {
  ScriptScene scene;
  EXPECT_EQ(scene.Value("Build.Name & Name & Id & Projects.Count"), "SuiteSuite10");
  EXPECT_EQ(scene.Value("App.EXEName & EXEName"), "HearthmakeHearthmake");
  EXPECT_EQ(scene.Value("App.Path"), "C:\\data");
  EXPECT_EQ(scene.Value("TypeName(App.Major) & TypeName(Minor) & TypeName(Revision) & TypeName(ThreadID)"),
            "IntegerIntegerIntegerLong");
  EXPECT_EQ(scene.Value("Len(App.Title) > 0 And Len(ProductName) > 0"), "True");
  EXPECT_EQ(scene.Value("TypeName(Session)"), "Dictionary");
}

TEST(ScriptsExecute, ErrorsOfTheLibraryArriveInErrAsTheyWereRaised) {
  ScriptScene scene;
  scene.Execute(
      "On Error Resume Next\r\nBuild.Load 99\r\n"
      "Scripts.Notify Hex(Err.Number) & \"|\" & Err.Source & \"|\" & Err.Description");
  EXPECT_EQ(scene.events.heard, (Heard{"ScriptNotify 0 80040010|Build.Load|Build not found!"}));
}

TEST(ScriptsExecute, AnErrorIsWrappedWithTheSourceLine) {
  const ScriptScene scene;
  scene.FailsInScript("a = 1\r\nx = 1 / 0\r\nb = 2", "Division by zero\r\nx = 1 / 0");
  EXPECT_EQ(scene.Of().ErrorText(), "x = 1 / 0");
  EXPECT_EQ(scene.Of().ErrorLine(), 2);
}

TEST(ScriptsExecute, ASyntaxErrorIsWrappedTheSameWayAndNothingRuns) {
  ScriptScene scene;
  scene.FailsInScript(Say("before") + "\r\nIf", "Expected expression\r\nIf");
  EXPECT_EQ(scene.Of().ErrorLine(), 2);
  EXPECT_TRUE(scene.events.heard.empty());
}

TEST(ScriptsExecute, ErrorsOfTheLibraryAndOfTheScriptAreWrapped) {
  const ScriptScene scene;
  scene.FailsInScript("Build.Load 99", "Build not found!\r\nBuild.Load 99");
  scene.FailsInScript("Err.Raise 1234, \"me\", \"my words\"",
                      "my words\r\nErr.Raise 1234, \"me\", \"my words\"");
}

TEST(ScriptsExecute, AMissingIncludeFileIsAScriptErrorWithoutAPlace) {
  const ScriptScene scene;
  scene.FailsInScript("x = 1 / 0", "Division by zero\r\nx = 1 / 0");
  scene.FailsInScript("'Include<C:\\no.vbs>", "Could not open include file C:\\no.vbs\r\n");
  EXPECT_EQ(scene.Of().ErrorText(), "");
  EXPECT_EQ(scene.Of().ErrorLine(), 0);
}

TEST(ScriptsExecute, AnIncludeFileThatIncludesItselfIsOutOfMemory) {
  const ScriptScene scene;
  scene.Write("C:\\src\\me.vbs", std::string(10000, '\'') + "'Include<C:\\src\\me.vbs>\n");
  scene.FailsInScript("'Include<C:\\src\\me.vbs>", "Out of memory\r\n");
}

TEST(ScriptsExecute, AValueThatCanNotBeReadPassesUnchanged) {
  const ScriptScene scene;
  scene.Fails("x = \"%Build.Nosuch%\"", BuildErrors::beEvaluateInternalsFaild, "Scripts.EvaluateInternals",
              "Method Nosuch failed");
}

TEST(ScriptsExecute, APlaceholderWithoutEndIsTextOfTheScript) {
  const ScriptScene scene;
  EXPECT_EQ(scene.Execute("x = \"%Build.Name\""), "x = \"%Build.Name\"");
}

TEST(ScriptsExecute, AScriptThatRunsTooLongIsStoppedAsAnError) {
  const ScriptScene scene;
  scene.SetOption("ScriptTimeOut", "30");
  const auto error = ErrorOf([&] { scene.Execute("On Error Resume Next\r\nDo\r\nx = x + 1\r\nLoop"); });
  EXPECT_EQ(error.Number(), static_cast<std::int32_t>(BuildErrors::beScriptSyntaxError));
  EXPECT_EQ(error.Source(), "Scripts.Execute");
  EXPECT_TRUE(error.Description().starts_with("Script Error: The script was stopped"));
  scene.Execute("y = 1");
}

TEST(ScriptsExecute, NoTimeOutAndMinusOneAreNoLimit) {
  for (const char* none : {"0", "-1"}) {
    const ScriptScene scene;
    scene.SetOption("ScriptTimeOut", none);
    scene.Execute("For i = 1 To 20000 : x = x + i : Next");
  }
}

TEST(ScriptsExecute, ObjectsOfTheHostAreKnownByTheirNames) {
  ScriptScene scene;
  const auto other = BuildScene::Stored("Other");
  scene.Of().AddObject(other.Get(), "Twin");
  EXPECT_EQ(scene.Value("Twin.Name & Name"), "OtherSuite");
  EXPECT_EQ(ErrorOf([&] { scene.Of().AddObject(other.Get(), "Twin"); }).Number(), 5);
}

TEST(ScriptsNotify, TheHostsAnswerComesBackBeforeTheScriptGoesOn) {
  ScriptScene scene;
  scene.events.On("ScriptNotify 7 go on?", [](bool& cancel) { cancel = true; });
  scene.Execute("c = False\r\nScripts.Notify \"go on?\", c, 7\r\nScripts.Notify CStr(c)");
  EXPECT_EQ(scene.events.heard, (Heard{"ScriptNotify 7 go on?", "ScriptNotify 0 True"}));
}

TEST(ScriptsNotify, WithoutCancelTheAnswerGoesNowhere) {
  ScriptScene scene;
  scene.events.On("ScriptNotify 0 well", [](bool& cancel) { cancel = true; });
  scene.Execute("Build.Scripts.Notify \"well\"");
  EXPECT_EQ(scene.events.heard, Heard{"ScriptNotify 0 well"});
}

TEST(ScriptsNotify, ProgressIsCutAtAHundred) {
  ScriptScene scene;
  scene.Execute("Scripts.Notify \"a\", , 99 : Scripts.Notify \"b\", , 250");
  EXPECT_EQ(scene.events.heard, (Heard{"ScriptNotify 99 a", "ScriptNotify 100 b"}));
}

// Engines that fail so many times before the library's own come.
class FailingEngines final : public platform::ScriptEngines {
 public:
  FailingEngines(std::shared_ptr<ScriptEngines> real, int failures)
      : m_real(std::move(real)), m_failures(failures) {}
  std::unique_ptr<platform::ScriptEngine> Create() override {
    if (m_failures-- > 0) automation::Raise(automation::RuntimeError::CantCreateObject, "", "no engine");
    return m_real->Create();
  }

 private:
  std::shared_ptr<ScriptEngines> m_real;
  int m_failures;
};

class PreparationScene : public ScriptScene {
 public:
  explicit PreparationScene(int failures) : m_apartment(PortsWith(failures)) {}

 private:
  static platform::Platform PortsWith(int failures) {
    platform::Platform ports = hearthmake::Ports();
    ports.scripts = std::make_shared<FailingEngines>(ports.scripts, failures);
    return ports;
  }
  Apartment m_apartment;
};

TEST(ScriptsPreparation, AFailureHasItsOwnNumberAndTheNextCallTriesAgain) {
  const PreparationScene scene(2);
  const auto number = static_cast<std::int32_t>(BuildErrors::bePrepareScriptControl);
  EXPECT_EQ(ErrorOf([&] { scene.Execute("x = 1"); }).Number(), number);
  EXPECT_EQ(ErrorOf([&] { scene.Of().AddObject(scene.build.Get(), "Me"); }).Number(), number);
  scene.Execute("x = 1");
}

TEST(ScriptsPreparation, AFailureInAnEventIsRaisedOrIgnoredAsItsOwn) {
  PreparationScene scene(2);
  EXPECT_EQ(ErrorOf([&] { scene.Of().RunEvent(BuildScripts::BS_AFTERMTS); }).Number(),
            static_cast<std::int32_t>(BuildErrors::bePrepareScriptControl));
  scene.SetOption("IgnoreScriptError", "True");
  Apartment::Current().SettingsSlot() = nullptr;
  EXPECT_FALSE(scene.Of().RunEvent(BuildScripts::BS_AFTERMTS));
  ASSERT_EQ(scene.events.heard.size(), 1U);
  EXPECT_TRUE(scene.events.heard[0].starts_with("Error Script error in event After MTS. "));
}

TEST(ScriptsRunEvent, RunsTheStoredTextAndLeavesItAsItIs) {
  ScriptScene scene;
  for (const BuildScripts event : kEvents) scene.Of().SetText(event, Say("%Build.Name%"));
  for (const BuildScripts event : kEvents) EXPECT_TRUE(scene.Of().RunEvent(event));
  EXPECT_EQ(scene.events.heard, Heard(7, "ScriptNotify 0 Suite"));
  EXPECT_EQ(scene.Of().AfterMTSpackage(), Say("%Build.Name%"));
}

TEST(ScriptsRunEvent, ValuesBeyondTheSevenRunNothingAndSucceed) {
  const PreparationScene scene(1);
  for (const std::int32_t value : {7, 8, 1000000, -1})
    EXPECT_TRUE(scene.Of().RunEvent(static_cast<BuildScripts>(value)));
}

TEST(ScriptsRunEvent, AnErrorIsRaisedAsExecuteWordsIt) {
  const ScriptScene scene;
  for (const BuildScripts event : kEvents) {
    scene.Of().SetText(event, "\r\nx = 1 / 0");
    ExpectError([&] { scene.Of().RunEvent(event); }, BuildErrors::beScriptSyntaxError, "Scripts.Execute",
                "Script Error: Division by zero\r\nx = 1 / 0");
    EXPECT_EQ(scene.Of().LastFailure()->event, event);
    EXPECT_EQ(scene.Of().LastFailure()->fault.line, 2);
  }
}

TEST(ScriptsRunEvent, OtherFailuresKeepOrGetTheirNumber) {
  const ScriptScene scene;
  const auto run = [&] { scene.Of().RunEvent(BuildScripts::BS_AFTERMTS); };
  scene.Of().SetAfterMTSpackage("a = \"%Build.Nosuch%\"");
  ExpectError(run, BuildErrors::beEvaluateInternalsFaild, "Scripts.Execute",
              "Script Error: Method Nosuch failed\r\n");
  scene.Of().SetAfterMTSpackage("'Include<C:\\no.vbs>");
  ExpectError(run, BuildErrors::beScriptSyntaxError, "Scripts.Execute",
              "Script Error: Could not open include file C:\\no.vbs\r\n");
  EXPECT_EQ(scene.Of().LastFailure()->fault.line, 0);
}

TEST(ScriptsRunEvent, AnErrorThatIsIgnoredIsAnEventOfTheBuild) {
  ScriptScene scene;
  scene.SetOption("IgnoreScriptError", "True");
  for (const BuildScripts event : kEvents) {
    scene.Of().SetText(event, "x = 1 / 0");
    scene.events.heard.clear();
    EXPECT_FALSE(scene.Of().RunEvent(event));
    EXPECT_EQ(scene.events.heard,
              Heard{std::string("Error Script error in event ") + EventName(event) + ". Division by zero"});
  }
}

TEST(ScriptsRunEvent, AScriptMayKillTheBuildAndFail) {
  ScriptScene scene;
  scene.SetOption("IgnoreScriptError", "True");
  scene.Of().SetAfterMTSpackage("Build.Kill : x = 1 / 0");
  const Ref<Scripts> scripts(&scene.Of());
  EXPECT_FALSE(scripts->RunEvent(BuildScripts::BS_AFTERMTS));
  EXPECT_EQ(scene.events.heard, Heard{"Error Script error in event After MTS. Division by zero"});
}

TEST(ScriptsRunEvent, AScriptMayBeTheLastToHoldTheBuild) {
  ScriptScene scene;
  scene.events.On("ScriptNotify 0 drop", [&](bool&) { scene.build = nullptr; });
  std::string text = Say("drop") + " : Build.Kill : x = 1 / 0";
  EXPECT_EQ(ErrorOf([&] { scene.Of().Execute(text); }).Description(),
            "Script Error: Division by zero\r\n" + text);
}

// Two projects A and B, and a script that says its name at each of the seven events.
class RunScene : public ScriptScene {
 public:
  RunScene() {
    Add("A", "Exe");
    Add("B", "Exe");
    for (const BuildScripts event : kEvents)
      Of().SetText(event, "Scripts.Notify \"" + std::string(EventName(event)) + " \" & Project.Name");
  }
};

constexpr const char* kComPlus = "MTSEvent Shutting down COM+ Applications";

TEST(ScriptsOfARun, RunAtTheirPlacesWithTheProjectAtWork) {
  RunScene scene;
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", "ScriptNotify 0 Before Compile A", kComPlus,
                                       "WillCompile A", "ScriptNotify 0 Before Project Compile A",
                                       "ProjectCompiled A", "ScriptNotify 0 After Project Compile A",
                                       "WillCompile B", "ScriptNotify 0 Before Project Compile B",
                                       "ProjectCompiled B", "ScriptNotify 0 After Project Compile B",
                                       "ScriptNotify 0 Compile Complete B", "BuildComplete"}));
}

TEST(ScriptsOfARun, DoNotRunWhenTheyAreSwitchedOff) {
  RunScene scene;
  scene.SetOption("RunScripts", "0");
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", kComPlus, "WillCompile A", "ProjectCompiled A",
                                       "WillCompile B", "ProjectCompiled B", "BuildComplete"}));
}

TEST(ScriptsOfARun, TheScriptOfAFailureRunsAfterItsEventAndAResumedRunLeavesTheFirstOut) {
  RunScene scene;
  scene.FailOn("B");
  EXPECT_FALSE(scene.Run());
  ASSERT_GE(scene.events.heard.size(), 2U);
  EXPECT_TRUE(scene.events.heard[scene.events.heard.size() - 2].starts_with("BuildFaild B compile error"));
  EXPECT_EQ(scene.events.heard.back(), "ScriptNotify 0 Build Failed B");
  scene.FailOn("nothing");
  EXPECT_TRUE(scene.Run(true));
  EXPECT_EQ(scene.events.heard,
            (Heard{"BuildStart resume", "WillCompile B", "ScriptNotify 0 Before Project Compile B",
                   "ProjectCompiled B", "ScriptNotify 0 After Project Compile B",
                   "ScriptNotify 0 Compile Complete B", "BuildComplete"}));
}

TEST(ScriptsOfARun, TheScriptBeforeAProjectRunsEvenWhenTheHostCancels) {
  RunScene scene;
  scene.events.On("WillCompile A", [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard,
            (Heard{"BuildStart fresh", "ScriptNotify 0 Before Compile A", kComPlus, "WillCompile A",
                   "ScriptNotify 0 Before Project Compile A", "BuildCancled A"}));
}

TEST(ScriptsOfARun, ARunWithNothingToCompileRunsTheFirstAndTheLast) {
  ScriptScene scene;
  scene.Of().SetBeforeComplie(Say("first"));
  scene.Of().SetCompileComplete(Say("last"));
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(scene.events.heard, (Heard{"BuildStart fresh", "ScriptNotify 0 first", kComPlus,
                                       "ScriptNotify 0 last", "BuildComplete"}));
}

TEST(ScriptsOfARun, AnErrorBeforeAProjectFailsItUncompiled) {
  RunScene scene;
  scene.Of().SetBeforeProjectComplie("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard,
            (Heard{"BuildStart fresh", "ScriptNotify 0 Before Compile A", kComPlus, "WillCompile A",
                   "BuildFaild A other error: Script Error: Division by zero\r\nx = 1 / 0",
                   "ScriptNotify 0 Build Failed A"}));
  EXPECT_FALSE(scene.build->FailedProject()->CompiledOK());
}

TEST(ScriptsOfARun, AnErrorAfterAProjectFailsTheRunButTheProjectIsCompiled) {
  RunScene scene;
  scene.Of().SetAfterProjectCompile("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.build->FailedProject()->Name(), "A");
  EXPECT_TRUE(scene.build->FailedProject()->CompiledOK());
}

TEST(ScriptsOfARun, AnErrorOfTheFirstOrTheLastFailsTheRunWithoutAProject) {
  RunScene scene;
  scene.Of().SetCompileComplete("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard[scene.events.heard.size() - 2],
            "BuildFaild - other error: Script Error: Division by zero\r\nx = 1 / 0");
  scene.Of().SetBeforeComplie("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard[1], "BuildFaild - other error: Script Error: Division by zero\r\nx = 1 / 0");
}

TEST(ScriptsOfARun, AFailureWhoseScriptFailsIsToldOnceMore) {
  RunScene scene;
  scene.FailOn("A");
  scene.Of().SetBuildFailed("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  ASSERT_GE(scene.events.heard.size(), 2U);
  EXPECT_TRUE(scene.events.heard[scene.events.heard.size() - 2].starts_with("BuildFaild A compile error"));
  EXPECT_EQ(scene.events.heard.back(),
            "BuildFaild A other error: Script Error: Division by zero\r\nx = 1 / 0");
}

TEST(ScriptsOfARun, WithErrorsIgnoredTheRunGoesOn) {
  RunScene scene;
  scene.SetOption("IgnoreScriptError", "True");
  for (const BuildScripts event : kEvents) scene.Of().SetText(event, "x = 1 / 0");
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(std::count_if(scene.events.heard.begin(), scene.events.heard.end(),
                          [](const auto& text) { return text.starts_with("Error Script error in event "); }),
            6);
  scene.FailOn("A");
  EXPECT_FALSE(scene.Run());
  EXPECT_EQ(scene.events.heard.back(), "Error Script error in event Build Failed. Division by zero");
}

TEST(ScriptsOfARun, AProcedureThatMakesTheProjectActiveMayBeTheUsersOwnAndFail) {
  RunScene scene;
  scene.SetOption("IgnoreScriptError", "True");
  scene.Of().SetBeforeComplie("Sub hearthmake_SetActiveProject(p)\r\nx = 1 / 0\r\nEnd Sub");
  EXPECT_TRUE(scene.Run());
  EXPECT_EQ(std::count(scene.events.heard.begin(), scene.events.heard.end(),
                       "Error Script error in event After Project Compile. Division by zero"),
            2);
}

TEST(ScriptsOfARun, AFailingProjectMakesTwoEntriesOfTheReport) {
  RunScene scene;
  scene.SetOption("CreateReport", "True");
  scene.Of().SetBeforeProjectComplie("x = 1 / 0");
  EXPECT_FALSE(scene.Run());
  scene.build->StopReporting(false);
  const std::string report = scene.Read("C:\\data\\BUILD_Suite.log");
  const std::size_t first = report.find("\r\nA (Time: ");
  ASSERT_NE(first, std::string::npos) << report;
  EXPECT_NE(report.find("\r\nA (Time: ", first + 1), std::string::npos) << report;
  EXPECT_NE(report.find("\r\nScript Error: Division by zero\r\nx = 1 / 0\r\n"), std::string::npos) << report;
  EXPECT_TRUE(report.ends_with("Build Stoped\r\n\r\n")) << report;
}

// Tells when it goes.
class Tracer final : public automation::Object {
 public:
  explicit Tracer(bool& isAlive) : m_isAlive(isAlive) { m_isAlive = true; }
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration("Tracer", "_Tracer", "", "");
    return declaration;
  }

 protected:
  ~Tracer() override { m_isAlive = false; }

 private:
  bool& m_isAlive;
};

TEST(ScriptsLife, KillFreesWhatTheScriptsHold) {
  const ScriptScene scene;
  bool isAlive = false;
  scene.Of().AddObject(automation::Make<Tracer>(isAlive).Get(), "Tracer");
  EXPECT_TRUE(isAlive);
  scene.build->Kill();
  EXPECT_FALSE(isAlive);
}

TEST(ScriptsLife, ABuildThatNobodyKilledIsFreedWithTheApartment) {
  bool isAlive = false;
  {
    ScriptScene scene;
    scene.Add("A");
    scene.Of().AddObject(automation::Make<Tracer>(isAlive).Get(), "Tracer");
    scene.Execute("Set Session(\"b\") = Build : Set p = Project");
    scene.build->RemoveSink(scene.events);
    scene.build = nullptr;
    EXPECT_TRUE(isAlive) << "the engine and the build hold each other until then";
  }
  EXPECT_FALSE(isAlive);
}

}  // namespace
}  // namespace hearthmake
