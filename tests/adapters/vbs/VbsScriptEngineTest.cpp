#include "adapters/vbs/VbsScriptEngine.hpp"

#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"
#include "support/ScriptHost.hpp"

namespace hearthmake::vbs {
namespace {

using automation::Make;
using automation::Ref;
using automation::Variant;
using support::ErrorOf;
using vbscript::Recorder;

class VbsScriptEngineTest : public testing::Test {
 protected:
  VbsScriptEngineTest() : recorder(Make<Recorder>()) {
    services.createObject = [this](std::string_view progId) -> Ref<automation::Object> {
      return progId == "Own.Recorder" ? Ref<automation::Object>(recorder) : nullptr;
    };
    engine = VbsScriptEngines({}, services).Create();
  }
  // What Print was given while the code ran.
  std::vector<std::string> Printed(const std::string& code) {
    const std::size_t before = recorder->Lines().size();
    engine->ExecuteStatement(code);
    return {recorder->Lines().begin() + static_cast<std::ptrdiff_t>(before), recorder->Lines().end()};
  }
  using Lines = std::vector<std::string>;

  Services services;
  Ref<Recorder> recorder;
  std::unique_ptr<platform::ScriptEngine> engine;
};

TEST_F(VbsScriptEngineTest, SpeaksVbscriptOnly) {
  engine->SetLanguage("vbscript");
  EXPECT_EQ(ErrorOf([&] { engine->SetLanguage("JScript"); }).Number(), 380);
}

TEST_F(VbsScriptEngineTest, EndsAScriptWhenTheProgramWantsToStop) {
  services.isStopWanted = [] { return true; };
  engine = VbsScriptEngines({}, services).Create();
  const auto error = ErrorOf([&] { engine->ExecuteStatement("On Error Resume Next\r\nDo\r\nLoop"); });
  EXPECT_EQ(error.Number(), vbscript::Engine::kTimedOut);
}

TEST_F(VbsScriptEngineTest, KnowsObjectsByNameAndTheirMembersWhenWanted) {
  engine->AddObject("Named", recorder, false);
  EXPECT_EQ(Printed("Named.Print \"é\""), Lines{"é"});
  EXPECT_NE(ErrorOf([&] { engine->ExecuteStatement("Print 1"); }).Number(), 0);
  engine->AddObject("Open", recorder, true);
  EXPECT_EQ(Printed("Print 1"), Lines{"1"});
}

TEST_F(VbsScriptEngineTest, KeepsCodeAndVariablesAndRunsProcedures) {
  engine->AddObject("Open", recorder, true);
  engine->AddCode("Dim n : n = 20\r\nFunction Add(x)\r\nn = n + x : x = 0 : Add = n\r\nEnd Function");
  Variant value = Variant::FromLong(22);
  Variant argument = Variant::ByReference(&value);
  EXPECT_EQ(automation::ToText(engine->Run("add", {&argument, 1})), "42");
  EXPECT_EQ(automation::ToText(value), "0") << "by reference";
  EXPECT_EQ(Printed("Print n"), Lines{"42"});
  EXPECT_EQ(ErrorOf([&] { engine->Run("Nosuch", {}); }).Number(), 438);
}

TEST_F(VbsScriptEngineTest, KeepsThePlaceOfAnErrorUntilItIsCleared) {
  EXPECT_EQ(ErrorOf([&] { engine->ExecuteStatement("a = 1\r\n  b = a / 0"); }).Number(), 11);
  EXPECT_EQ(engine->Fault().number, 11);
  EXPECT_EQ(engine->Fault().line, 2);
  EXPECT_EQ(engine->Fault().text, "  b = a / 0");
  EXPECT_EQ(engine->Fault().description, "Division by zero");
  engine->ClearFault();
  EXPECT_EQ(engine->Fault().number, 0);
  EXPECT_EQ(engine->Fault().line, 0);
  EXPECT_EQ(engine->Fault().text, "");
}

TEST_F(VbsScriptEngineTest, ChecksWithoutRunningOrDeclaring) {
  engine->AddObject("Open", recorder, true);
  engine->Check("Print 1\r\nFunction F\r\nEnd Function");
  EXPECT_TRUE(recorder->Lines().empty());
  EXPECT_EQ(ErrorOf([&] { engine->Run("F", {}); }).Number(), 438);
  ErrorOf([&] { engine->Check("x = 1\r\nEnd If"); });
  EXPECT_EQ(engine->Fault().line, 2);
}

TEST_F(VbsScriptEngineTest, StopsAScriptAtItsTimeAndGoesOn) {
  engine->SetTimeout(30);
  EXPECT_EQ(ErrorOf([&] { engine->ExecuteStatement("On Error Resume Next\r\nDo\r\nLoop"); }).Number(),
            static_cast<std::int32_t>(0x80004004));
  engine->SetTimeout(-1);
  engine->ExecuteStatement("For i = 1 To 10000 : Next");
}

TEST_F(VbsScriptEngineTest, CreatesItsOwnObjectsAndThoseOfTheProgram) {
  EXPECT_EQ(engine->CreateObject("Own.Recorder"), Ref<automation::Object>(recorder));
  EXPECT_EQ(engine->CreateObject("scripting.dictionary")->Declaration().Name(), "Dictionary");
  EXPECT_EQ(ErrorOf([&] { engine->CreateObject("No.Such"); }).Number(), 429);
  engine->ExecuteStatement("CreateObject(\"Own.Recorder\").Print \"made\"");
  EXPECT_EQ(recorder->Lines(), Lines{"made"});
}

TEST_F(VbsScriptEngineTest, AnswersAsTheProgramDoesOrByDefault) {
  engine->AddObject("Open", recorder, true);
  EXPECT_EQ(Printed("Print MsgBox(\"?\") & InputBox(\"?\", , \"given\")"), Lines{"1given"});
  services.showMessage = [](std::string_view prompt, std::int32_t, std::string_view) {
    return prompt == "sure?" ? 6 : 7;
  };
  services.askForText = [](std::string_view, std::string_view, std::string_view) { return "typed"; };
  engine = VbsScriptEngines({}, services).Create();
  engine->AddObject("Open", recorder, true);
  EXPECT_EQ(Printed("Print MsgBox(\"sure?\", 4) & InputBox(\"?\")"), Lines{"6typed"});
}

TEST_F(VbsScriptEngineTest, ResetGivesUpObjectsVariablesAndProcedures) {
  engine->AddObject("Open", recorder, true);
  engine->ExecuteStatement("n = 1 : Set r = Open\r\nSub S\r\nEnd Sub");
  engine->Reset();
  engine->AddObject("Open", recorder, true);
  EXPECT_EQ(Printed("Print IsEmpty(n)"), Lines{"True"});
  EXPECT_EQ(ErrorOf([&] { engine->Run("S", {}); }).Number(), 438);
}

}  // namespace
}  // namespace hearthmake::vbs
