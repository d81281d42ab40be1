#include "adapters/scriptcontrol/ControlOrElseEngines.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/scriptcontrol/ScriptControlEngine.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "doubles/BorderDouble.hpp"
#include "doubles/ClassDouble.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::scriptcontrol {
namespace {

// An engine that does nothing of what it is told, and says that all is well.
class IdleEngine final : public platform::ScriptEngine {
 public:
  void SetLanguage(std::string_view) override {}
  void SetTimeout(std::int32_t) override {}
  void SetState(std::int32_t) override {}
  void AddObject(std::string_view, automation::Ref<automation::Object>, bool) override {}
  void AddCode(std::string_view) override {}
  void ExecuteStatement(std::string_view) override {}
  automation::Variant Run(std::string_view, std::span<automation::Variant>) override { return {}; }
  void Check(std::string_view) override {}
  automation::Ref<automation::Object> CreateObject(std::string_view) override { return nullptr; }
  const platform::ScriptFault& Fault() const override { return m_fault; }
  void ClearFault() override {}
  void Reset() override {}

 private:
  platform::ScriptFault m_fault;
};

class ControlOrElseEnginesTest : public testing::Test {
 protected:
  static std::shared_ptr<platform::ScriptEngines> Own() {
    return std::make_shared<vbs::VbsScriptEngines>(platform::Platform(), vbs::Services());
  }
  std::unique_ptr<platform::ScriptEngine> Create(Choice choice) {
    return ControlOrElseEngines(choice, border, Own()).Create();
  }
  static bool IsControl(platform::ScriptEngine& engine) {
    return dynamic_cast<ScriptControlEngine*>(&engine) != nullptr;
  }

  doubles::ComThread com;
  doubles::BorderDouble border;
};

TEST_F(ControlOrElseEnginesTest, TakesTheEngineThatWasChosen) {
  EXPECT_TRUE(IsControl(*Create(Choice::Control)));
  EXPECT_FALSE(IsControl(*Create(Choice::Other)));
}

TEST_F(ControlOrElseEnginesTest, TakesAControlThatDoesTheBasicsOnly) {
  ScriptControlEngine control(border);
  EXPECT_EQ(IsControl(*Create(Choice::Automatic)), DoesTheBasics(control));
}

TEST_F(ControlOrElseEnginesTest, SeesWhetherAnEngineDoesTheBasics) {
  EXPECT_TRUE(DoesTheBasics(*Own()->Create()));
  IdleEngine idle;
  EXPECT_FALSE(DoesTheBasics(idle));
}

TEST(Choice, IsReadFromASetting) {
  EXPECT_EQ(ParseChoice(""), Choice::Automatic);
  EXPECT_EQ(ParseChoice("Control"), Choice::Control);
  EXPECT_EQ(ParseChoice("own"), Choice::Other);
  support::ExpectError(
      [] { ParseChoice("perl"); }, 5, "ScriptEngine",
      "Invalid procedure call or argument: \"perl\" is no script engine; \"control\" and \"own\" are");
}

}  // namespace
}  // namespace hearthmake::scriptcontrol
