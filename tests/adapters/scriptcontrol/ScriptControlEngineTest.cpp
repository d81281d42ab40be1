#include "adapters/scriptcontrol/ScriptControlEngine.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "automation/Declare.hpp"
#include "doubles/BorderDouble.hpp"
#include "doubles/ClassDouble.hpp"
#include "doubles/DispatchDouble.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::scriptcontrol {
namespace {

using automation::Ref;
using automation::Variant;
using support::ErrorOf;

// An object of ours in which scripts leave what they have.
class Box final : public automation::Object {
 public:
  const automation::Interface& Declaration() const override {
    static const automation::Interface kInterface = automation::Declare("Box", "_Box", "", "")
                                                        .let<&Box::SetContent>("Content")
                                                        .get<&Box::Content>("Content")
                                                        .build();
    return kInterface;
  }
  std::string Content() const { return content; }
  void SetContent(const std::string& value) { content = value; }

  std::string content;
};

// The Script Control of the machine: Wine has one of its own.
class ScriptControlEngineTest : public testing::Test {
 protected:
  void SetUp() override {
    engine.emplace(border);
    engine->SetLanguage("VBScript");
    engine->AddObject("Box", box, false);
  }

  doubles::ComThread com;
  doubles::BorderDouble border;
  Ref<Box> box = automation::Make<Box>();
  std::optional<ScriptControlEngine> engine;
};

TEST_F(ScriptControlEngineTest, KeepsVariablesAndProcedures) {
  engine->AddCode("Dim x\r\nFunction Twice(a)\r\n  Twice = 2 * a\r\nEnd Function");
  engine->ExecuteStatement("x = Twice(21)");
  engine->ExecuteStatement("Box.Content = x");
  EXPECT_EQ(box->content, "42");
}

TEST_F(ScriptControlEngineTest, GivesScriptsTheTextsAsTheyAre) {
  engine->ExecuteStatement("Box.Content = \"Prüf é 漢\"");
  EXPECT_EQ(box->content, "Prüf é 漢");
}

TEST_F(ScriptControlEngineTest, MakesMembersVisibleWithoutTheName) {
  engine->AddObject("Global", box, true);
  engine->ExecuteStatement("Content = \"by name\"");
  EXPECT_EQ(box->content, "by name");
}

TEST_F(ScriptControlEngineTest, RefusesALanguageThatItDoesNotSpeak) {
  EXPECT_EQ(ErrorOf([&] { engine->SetLanguage("Basic"); }).Number(), 380);
}

TEST_F(ScriptControlEngineTest, TellsWhatAScriptFailsWithAndWhere) {
  const automation::Error error = ErrorOf(
      [&] { engine->ExecuteStatement("x = 1\r\ny = 2 : Err.Raise 45, \"The script\", \"went wrong\""); });
  EXPECT_EQ(error.Number(), 45);
  EXPECT_EQ(error.Source(), "The script");
  EXPECT_EQ(error.Description(), "went wrong");
  EXPECT_EQ(engine->Fault().number, 45);
  EXPECT_EQ(engine->Fault().source, "The script");
  EXPECT_EQ(engine->Fault().description, "went wrong");
  EXPECT_EQ(engine->Fault().line, 2);
  EXPECT_EQ(engine->Fault().column, 9);
}

TEST_F(ScriptControlEngineTest, ForgetsAFaultWhenAsked) {
  ErrorOf([&] { engine->ExecuteStatement("Err.Raise 45"); });
  engine->ExecuteStatement("x = 1");
  EXPECT_EQ(engine->Fault().number, 45);
  engine->ClearFault();
  EXPECT_EQ(engine->Fault().number, 0);
  EXPECT_EQ(engine->Fault().line, 0);
}

TEST_F(ScriptControlEngineTest, TellsASyntaxErrorByItsPlace) {
  const automation::Error error = ErrorOf([&] { engine->AddCode("x = 1\r\n\r\ny = = 2"); });
  EXPECT_NE(error.Number(), 0);
  EXPECT_EQ(engine->Fault().line, 3);
  EXPECT_EQ(engine->Fault().column, 5);
}

TEST_F(ScriptControlEngineTest, ChecksCodeWithoutRunningIt) {
  engine->Check("Box.Content = \"was run\"\r\nNoSuch.Thing\r\nFunction F()\r\nEnd Function");
  EXPECT_EQ(box->content, "");
  EXPECT_EQ(engine->Fault().number, 0);
  engine->Check("Option Explicit\r\nx = 1");
  engine->ExecuteStatement("F = 1");  // no procedure has come of the check
}

TEST_F(ScriptControlEngineTest, FindsTheSyntaxErrorOfCheckedCode) {
  ErrorOf([&] { engine->Check("x = = 2"); });
  EXPECT_EQ(engine->Fault().line, 1);
  EXPECT_EQ(engine->Fault().column, 5);
  ErrorOf([&] { engine->Check("Option Explicit\r\n\r\nDim 5"); });
  EXPECT_EQ(engine->Fault().line, 3);
  EXPECT_EQ(engine->Fault().column, 5);
}

TEST_F(ScriptControlEngineTest, MakesObjectsOfTheMachine) {
  const auto dictionary = engine->CreateObject("Scripting.Dictionary");
  engine->AddObject("Session", dictionary, false);
  engine->ExecuteStatement("Session.Add \"a\", \"of the script\"");
  EXPECT_EQ(automation::ToText(dictionary->Get("Item", {Variant::FromText("a")})), "of the script");
  const automation::Error error = ErrorOf([&] { engine->CreateObject("No.Such.Class"); });
  EXPECT_EQ(error.Number(), 429);
  EXPECT_THAT(error.Description(), testing::HasSubstr("No.Such.Class"));
}

TEST_F(ScriptControlEngineTest, GivesObjectsUpAtReset) {
  engine->Reset();
  engine->SetLanguage("VBScript");
  ErrorOf([&] { engine->ExecuteStatement("Box.Content = \"still known\""); });
  EXPECT_EQ(box->content, "");
}

// Stands in for the control where calls are looked at that Wine's control does not take.
class ControlDouble final : public doubles::DispatchDouble {
 public:
  explicit ControlDouble(std::shared_ptr<doubles::CallLog> log)
      : DispatchDouble("ScriptControl", std::move(log)) {
    using doubles::Answer;
    using doubles::CallArguments;
    Get("Error", [this] { return MakeError(); });
    Method("Run", 1, 9,
           [](CallArguments a) { return Variant::FromLong(static_cast<std::int32_t>(a.size())); });
    Let("Timeout", 1, [](CallArguments) { return Answer(); });
    Let("State", 1, [](CallArguments) { return Answer(); });
  }

 private:
  class ErrorDouble final : public DispatchDouble {
   public:
    explicit ErrorDouble(std::shared_ptr<doubles::CallLog> log) : DispatchDouble("Error", std::move(log)) {
      Method("Clear", 0, [](doubles::CallArguments) { return doubles::Answer(); });
    }
  };
  doubles::Answer MakeError() { return doubles::MakeDouble<ErrorDouble>(Log()); }
};

TEST(ScriptControlEngine, CallsTheControlByTheNamesOfItsMembers) {
  const doubles::ComThread com;
  const auto log = std::make_shared<doubles::CallLog>();
  const doubles::ClassDouble control("Hearthmake.Test.ScriptControl",
                                     [&] { return doubles::MakeDouble<ControlDouble>(log); });
  doubles::BorderDouble border;
  ScriptControlEngine engine(border, "Hearthmake.Test.ScriptControl");
  engine.SetTimeout(-1);
  engine.SetState(1);
  std::array arguments = {Variant::FromLong(1), Variant::FromText("two")};
  EXPECT_EQ(automation::ToLong(engine.Run("F", arguments)), 3);
  EXPECT_THAT(log->calls, testing::ElementsAre("ScriptControl.Timeout=(-1)", "ScriptControl.State=(1)",
                                               "ScriptControl.Error", "Error.Clear",
                                               "ScriptControl.Run(\"F\", 1, \"two\")"));
}

}  // namespace
}  // namespace hearthmake::scriptcontrol
