#include "vbscript/Engine.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "automation/Utf.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Error;
using automation::Make;
using automation::Object;
using automation::Ref;
using automation::ToLong;
using automation::ToText;
using automation::Variant;

// An engine with a recorder whose members are global.
class EngineFixture : public ::testing::Test {
 protected:
  EngineFixture() { m_engine.AddObject("Recorder", m_recorder, true); }

  const std::vector<std::string>& Lines() const { return m_recorder->Lines(); }
  void Add(std::string_view code) { m_engine.AddCode(automation::Utf8ToUtf16(code)); }
  Variant Eval(std::string_view text) { return m_engine.Eval(automation::Utf8ToUtf16(text)); }
  // The number of the error that code ends with; 0 for none.
  std::int32_t Fail(std::string_view code) {
    try {
      Add(code);
    } catch (const Error& error) {
      return error.Number();
    }
    return 0;
  }

  ScriptHost m_host;
  Ref<Recorder> m_recorder = Make<Recorder>();
  Engine m_engine{m_host};
};

using EngineTest = EngineFixture;

TEST_F(EngineTest, KeepsWhatCodeDeclaresForLaterCode) {
  Add("Dim total : total = 40\nFunction Twice(n) : Twice = n * 2 : End Function");
  Add("total = total + Twice(1)");
  EXPECT_EQ(ToLong(Eval("total")), 42);
}

TEST_F(EngineTest, SeesProceduresThatCodeReplaces) {
  Add("Function F : F = 1 : End Function\nFunction G : G = F + 10 : End Function");
  EXPECT_EQ(ToLong(Eval("G")), 11);
  Add("Function F : F = 2 : End Function");
  EXPECT_EQ(ToLong(Eval("G")), 12);
}

TEST_F(EngineTest, PrefersAScriptsOwnProcedureToAnIntrinsicEvenLater) {
  Add("Function Measure(s) : Measure = Len(s) : End Function");
  EXPECT_EQ(ToLong(Eval("Measure(\"abc\")")), 3);
  Add("Function Len(s) : Len = 99 : End Function");
  EXPECT_EQ(ToLong(Eval("Measure(\"abc\")")), 99);
}

TEST_F(EngineTest, TakesALaterGlobalForTheLocalOfAProcedure) {
  Add("Sub P : counter = counter + 1 : End Sub\nP");
  Add("Dim counter : counter = 5");
  Add("P");
  EXPECT_EQ(ToLong(Eval("counter")), 6);
}

TEST_F(EngineTest, RunsAProcedureWithArgumentsByReference) {
  Add("Function Change(a, ByVal b) : a = a + b : b = 0 : Change = \"done\" : End Function");
  Variant value = Variant::FromLong(1);
  Variant arguments[] = {Variant::ByReference(&value), Variant::FromLong(2)};
  EXPECT_EQ(ToText(m_engine.Run("change", arguments)), "done");
  EXPECT_EQ(ToLong(value), 3);
}

TEST_F(EngineTest, RaisesWhereThereIsNoProcedureOrTheArgumentsDoNotFit) {
  Add("Sub P(a) : End Sub");
  EXPECT_TRUE(m_engine.HasProcedure("p"));
  EXPECT_FALSE(m_engine.HasProcedure("q"));
  try {
    m_engine.Run("q", {});
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), number::kMemberNotFound);
  }
  try {
    m_engine.Run("P", {});
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), number::kWrongNumberOfArguments);
    EXPECT_EQ(error.Description(), "Wrong number of arguments or invalid property assignment: 'P'");
  }
}

TEST_F(EngineTest, RefusesAnotherLanguageAndATakenName) {
  m_engine.SetLanguage("vbscript");
  EXPECT_THROW(m_engine.SetLanguage("JScript"), Error);
  EXPECT_THROW(m_engine.AddObject("recorder", m_recorder, false), Error);
  EXPECT_THROW(m_engine.AddObject("", m_recorder, false), Error);
}

TEST_F(EngineTest, KeepsThePlaceOfAnError) {
  EXPECT_EQ(Fail("Dim a\n\n  a = 1\n  b = a / 0 ' here\n"), number::kDivisionByZero);
  const ErrorRecord& record = m_engine.LastError();
  EXPECT_EQ(record.number, 11);
  EXPECT_EQ(record.line, 4);
  EXPECT_EQ(record.column, 3);
  EXPECT_EQ(record.text, "  b = a / 0 ' here");
  EXPECT_EQ(record.source, kRuntimeErrorSource);
  EXPECT_FALSE(record.isCompileError);
  m_engine.ClearError();
  EXPECT_EQ(m_engine.LastError().number, 0);
}

TEST_F(EngineTest, KeepsThePlaceOfAnErrorInAProcedureOfOlderCode) {
  Add("Sub P\n  x = CInt(\"x\")\nEnd Sub");
  EXPECT_EQ(Fail("P"), number::kTypeMismatch);
  EXPECT_EQ(m_engine.LastError().line, 2);
  EXPECT_EQ(m_engine.LastError().text, "  x = CInt(\"x\")");
}

TEST_F(EngineTest, KeepsThePlaceOfACompileError) {
  EXPECT_EQ(Fail("x = 1\nIf x"), static_cast<std::int32_t>(CompileErrorNumber::ExpectedThen));
  EXPECT_TRUE(m_engine.LastError().isCompileError);
  EXPECT_EQ(m_engine.LastError().line, 2);
}

TEST_F(EngineTest, EndsAScriptThatRunsOutOfItsTime) {
  m_engine.SetTimeout(50);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Fail("On Error Resume Next\nDo : Loop"), Engine::kTimedOut);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  m_engine.SetTimeout(Engine::kNoTimeout);
  EXPECT_EQ(ToLong(Eval("1 + 1")), 2);
}

TEST_F(EngineTest, LeavesNothingBehindWhenItIsStoppedDeepInside) {
  Add("Dim ended\nClass C : Private Sub Class_Terminate : ended = ended + 1 : End Sub : End Class\n"
      "Sub Dive(n) : Dim c : Set c = New C : If n = 0 Then\n Do : Loop\n Else\n Dive n - 1\n End If : End "
      "Sub");
  m_engine.SetTimeout(30);
  EXPECT_EQ(Fail("Dive 100"), Engine::kTimedOut);
  m_engine.SetTimeout(Engine::kNoTimeout);
  EXPECT_EQ(ToText(Eval("TypeName(ended) <> \"\"")), "True");
}

TEST_F(EngineTest, RaisesOutOfStackSpaceForRecursionWithoutEnd) {
  EXPECT_EQ(Fail("Sub F(n) : F n + 1 : End Sub\nF 1"), number::kOutOfStackSpace);
  EXPECT_EQ(
      Fail("Class C : Private Sub Class_Initialize : Set x = New C : End Sub : End Class\nSet o = New C"),
      number::kOutOfStackSpace);
  EXPECT_EQ(Fail("Function G(s) : G = Eval(\"G(s)\") : End Function\nG 1"), number::kOutOfStackSpace);
  EXPECT_EQ(ToLong(Eval("2")), 2);
}

TEST_F(EngineTest, FreesLongChainsWithoutDeepRecursion) {
  Add("Class Node : Public NextOne : End Class\nDim first, n, i : Set first = Nothing\n"
      "For i = 1 To 300000 : Set n = New Node : Set n.NextOne = first : Set first = n : Next\n"
      "Set n = Nothing : Set first = Nothing : first = Empty\n"
      "For i = 1 To 300000 : first = Array(first) : Next : first = Empty");
  EXPECT_TRUE(Eval("first").IsEmpty());
}

TEST_F(EngineTest, EndsObjectsThatReferToEachOtherWithItself) {
  auto engine = std::make_unique<Engine>(m_host);
  engine->AddCode(
      u"Class N : Public other : End Class\nSet a = New N : Set b = New N\n"
      u"Set a.other = b : Set b.other = a : a = 1");
  engine.reset();
  SUCCEED() << "the sanitizer's leak check is the judge";
}

TEST_F(EngineTest, TerminatesObjectsThatReferToEachOtherWhileNamedObjectsAreThere) {
  Add("Class N : Public other : Private Sub Class_Terminate : Recorder.Print \"gone\" : End Sub : End Class\n"
      "Set a = New N : Set b = New N : Set a.other = b : Set b.other = a");
  m_engine.Reset();
  EXPECT_EQ(Lines(), (std::vector<std::string>{"gone", "gone"}));
}

TEST_F(EngineTest, EndsThoughTheEndOfEachObjectMakesTheNext) {
  auto engine = std::make_unique<Engine>(m_host);
  engine->AddCode(
      u"Dim kept\nClass C : Private Sub Class_Terminate : Set kept = New C : End Sub : End Class\n"
      u"Set kept = New C");
  engine.reset();
  SUCCEED() << "it came back";
}

TEST_F(EngineTest, StopsAChainOfObjectsThatMakeTheNextAtTheirEnd) {
  m_engine.LimitSteps(100'000);
  EXPECT_EQ(Fail("Class C : Private Sub Class_Terminate : Dim o : Set o = New C : End Sub : End Class\n"
                 "Dim o : Set o = New C : Set o = Nothing\nDo : Loop"),
            Engine::kTimedOut);
}

TEST_F(EngineTest, LetsAnObjectOutliveItButNotBeCalled) {
  auto engine = std::make_unique<Engine>(m_host);
  engine->AddCode(
      u"Class N : Public Function F : F = 3 : End Function : End Class\nFunction G : End Function");
  const Variant object = engine->Eval(u"New N");
  const Variant reference = engine->Eval(u"GetRef(\"G\")");
  EXPECT_EQ(ToLong(object.AsObject()->Call("F")), 3);
  engine.reset();
  EXPECT_THROW(object.AsObject()->Call("F"), Error);
  EXPECT_THROW(reference.AsObject()->Invoke(0, automation::InvokeKind::Call, {}), Error);
}

TEST_F(EngineTest, ForgetsEverythingOnReset) {
  Add("Class C : Private Sub Class_Terminate : Recorder.Print \"gone\" : End Sub : End Class\n"
      "Set o = New C : v = 5");
  m_engine.Reset();
  EXPECT_EQ(Lines(), std::vector<std::string>{"gone"});
  EXPECT_TRUE(Eval("v").IsEmpty());
}

TEST_F(EngineTest, AnswersNativeCallsOfScriptObjects) {
  Add("Class C\n Public field\n Private hidden\n Private m_x\n"
      " Public Property Get X(i) : X = m_x + i : End Property\n"
      " Public Property Let X(i, v) : m_x = v - i : End Property\n"
      " Public Default Function Self(n) : Self = n * 2 : End Function\nEnd Class");
  const Variant object = Eval("New C");
  Object& script = *object.AsObject();
  script.Let("field", {Variant::FromLong(7)});
  EXPECT_EQ(ToLong(script.Get("FIELD")), 7);
  script.Let("x", {Variant::FromLong(1), Variant::FromLong(10)});
  EXPECT_EQ(ToLong(script.Get("x", {Variant::FromLong(2)})), 11);
  EXPECT_THROW(script.Get("hidden"), Error);
  Variant arguments[] = {Variant::FromLong(4)};
  EXPECT_EQ(ToLong(script.Invoke(automation::kDefaultMember, automation::InvokeKind::Get, arguments)), 8);
  EXPECT_EQ(script.Declaration().Name(), "C");
}

// Calls the engine that calls it.
class Reentrant : public Object {
 public:
  explicit Reentrant(Engine& engine) : m_engine(engine) {}
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration = automation::Declare("Reentrant", "_Reentrant", "")
                                                         .method<&Reentrant::Again>("Again", {"code"})
                                                         .build();
    return declaration;
  }
  void Again(const std::string& code) { m_engine.AddCode(automation::Utf8ToUtf16(code)); }

 private:
  Engine& m_engine;
};

TEST_F(EngineTest, MayBeCalledWhileItRuns) {
  m_engine.AddObject("Host", Make<Reentrant>(m_engine), false);
  Add("Function Late : Late = 1 : End Function\n"
      "Function Work(n) : Dim i : For i = 1 To n : Host.Again \"hits = hits + Late\" : Next : Work = i : End "
      "Function");
  EXPECT_EQ(ToLong(Eval("Work(3)")), 4);
  EXPECT_EQ(ToLong(Eval("hits")), 3);
  EXPECT_EQ(
      Fail("On Error Resume Next\nHost.Again \"x = 1 / 0\"\nRecorder.Print Err.Number & Err.Description"), 0);
  EXPECT_EQ(Lines(), std::vector<std::string>{"11Division by zero"});
}

TEST_F(EngineTest, GivesAnInnerCallTheTimeOfTheOuterOne) {
  m_engine.AddObject("Host", Make<Reentrant>(m_engine), false);
  m_engine.SetTimeout(50);
  EXPECT_EQ(Fail("On Error Resume Next\nHost.Again \"Do : Loop\"\nRecorder.Print \"never\""),
            Engine::kTimedOut);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(EngineTest, TerminatesAnObjectOnceThoughItStoresItself) {
  Add("Dim kept\nClass C\n Public n\n Private Sub Class_Terminate : Recorder.Print \"end\" : Set kept = Me : "
      "End Sub\n"
      "End Class\nDim o : Set o = New C : o.n = 4 : Set o = Nothing");
  EXPECT_EQ(ToLong(Eval("kept.n")), 4);
  Add("Set kept = Nothing");
  EXPECT_EQ(Lines(), std::vector<std::string>{"end"});
}

TEST_F(EngineTest, LocksAnArrayWhoseElementIsPassedByReference) {
  Add("Dim a() : ReDim a(2)\nSub Change(x) : On Error Resume Next : ReDim a(5) : Recorder.Print Err.Number : "
      "x = 8 : End Sub\n"
      "Change a(1)\nRecorder.Print a(1) : ReDim a(5) : Recorder.Print UBound(a)");
  EXPECT_EQ(Lines(), (std::vector<std::string>{"10", "8", "5"}));
}

TEST_F(EngineTest, CopiesALockedArray) {
  Add("Dim a(2), b\nSub Change(x) : b = a : x = 8 : End Sub\nChange a(1)\nRecorder.Print a(1) & \"/\" & "
      "b(1)");
  EXPECT_EQ(Lines(), std::vector<std::string>{"8/"});
}

TEST_F(EngineTest, ReleasesTheLockWhenTheCallFails) {
  Add("Dim a() : ReDim a(2)\nSub Fails(x) : Err.Raise 5 : End Sub\nOn Error Resume Next\nFails a(1)\n"
      "Err.Clear : ReDim a(3) : Recorder.Print Err.Number");
  EXPECT_EQ(Lines(), std::vector<std::string>{"0"});
}

TEST_F(EngineTest, ShowsAWriteThroughOneReferenceInTheOther) {
  Add("Sub Both(a, b) : b = 2 : Recorder.Print a : End Sub\nSub P : Dim v : v = 1 : Both v, v : End Sub\nP");
  EXPECT_EQ(Lines(), std::vector<std::string>{"2"});
}

TEST_F(EngineTest, StopsAfterSteps) {
  m_engine.LimitSteps(100'000);
  EXPECT_EQ(Fail("Do : Loop"), Engine::kTimedOut);
}

TEST_F(EngineTest, ChargesALoopOfFewInstructionsForWhatTheyMove) {
  for (const std::string statement :
       {"x = s & \"y\"", "x = (s = t)", "If s = t Then x = 1", "x = Mid(s, 2)", "x = UCase(s)",
        "x = Space(1000000)", "b = a : b(0) = 1", "ReDim a(100000)", "x = d.Items", "Execute c"}) {
    Engine engine(m_host);
    engine.AddCode(
        u"s = String(1000000, \"x\") : t = s & \"\" : ReDim a(100000) : c = Space(100000)\n"
        u"Set d = CreateObject(\"Scripting.Dictionary\") : For i = 1 To 20000 : d.Add i, i : Next");
    engine.LimitSteps(1'000'000);
    const std::string loop = "For i = 1 To 1000\n" + statement + "\nNext";
    EXPECT_THROW(engine.AddCode(automation::Utf8ToUtf16(loop)), Error) << statement;
    EXPECT_EQ(engine.LastError().number, Engine::kTimedOut) << statement;
  }
}

TEST_F(EngineTest, CompilesSourcesWithMoreThanSixteenBitsCanCount) {
  std::string code = "Dim s : s = 0\n";
  for (int i = 0; i < 40'000; ++i)
    code += "s = s + " + std::to_string(100'000 + i) + " : v" + std::to_string(i) + " = s\n";
  Add(code);
  EXPECT_EQ(ToText(Eval("v39999 = s")), "True");
  EXPECT_EQ(ToText(Eval("s")), "4799980000");
}

TEST_F(EngineTest, JumpsOverLongBlocks) {
  std::string code = "Sub P(n)\nIf n = 1 Then\n";
  for (int i = 0; i < 40'000; ++i) code += "n = n + 1\n";
  code += "End If\nRecorder.Print n\nEnd Sub\nP 0\nP 1";
  Add(code);
  EXPECT_EQ(Lines(), (std::vector<std::string>{"0", "40001"}));
}

TEST_F(EngineTest, GivesCodeBackItsOwnCompileErrors) {
  EXPECT_EQ(Fail("On Error Resume Next\nExecute \"Dim 5\"\nRecorder.Print Err.Number"), 0);
  EXPECT_EQ(Lines(), std::vector<std::string>{"1010"});
}

}  // namespace
}  // namespace hearthmake::vbscript
