#include "adapters/scriptcontrol/ControlOrElseEngines.hpp"

#include <array>
#include <atomic>
#include <string>
#include <utility>

#include "adapters/scriptcontrol/ScriptControlEngine.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::scriptcontrol {

namespace {

using automation::EqualsIgnoreCaseAscii;
using automation::Variant;

// What the trial found; no two threads can find different things.
enum class Trial { NotMade, Passed, Failed };
std::atomic<Trial> s_trial = Trial::NotMade;

bool ControlDoesTheBasics(win32::ObjectBorder& border) {
  try {
    ScriptControlEngine engine(border);
    return DoesTheBasics(engine);
  } catch (const automation::Error&) {
    return false;
  }
}

}  // namespace

Choice ParseChoice(std::string_view text) {
  if (text.empty()) return Choice::Automatic;
  if (EqualsIgnoreCaseAscii(text, "control")) return Choice::Control;
  if (EqualsIgnoreCaseAscii(text, "own")) return Choice::Other;
  automation::Raise(automation::RuntimeError::InvalidProcedureCall, "ScriptEngine",
                    '"' + std::string(text) + "\" is no script engine; \"control\" and \"own\" are");
}

bool DoesTheBasics(platform::ScriptEngine& engine) {
  try {
    engine.SetLanguage("VBScript");
    engine.AddObject("Session", engine.CreateObject("Scripting.Dictionary"), false);
    engine.AddCode("Function Sum(a, b)\r\n  Sum = a + b + Session(\"c\")\r\nEnd Function");
    engine.ExecuteStatement("Session(\"c\") = 3");
    std::array arguments = {Variant::FromLong(1), Variant::FromLong(2)};
    return automation::ToLong(engine.Run("Sum", arguments)) == 6;
  } catch (const automation::Error&) {
    return false;
  }
}

ControlOrElseEngines::ControlOrElseEngines(Choice choice, win32::ObjectBorder& border,
                                           std::shared_ptr<platform::ScriptEngines> otherwise)
    : m_choice(choice), m_border(border), m_otherwise(std::move(otherwise)) {}

bool ControlOrElseEngines::UsesControl() {
  if (m_choice != Choice::Automatic) return m_choice == Choice::Control;
  if (s_trial == Trial::NotMade) s_trial = ControlDoesTheBasics(m_border) ? Trial::Passed : Trial::Failed;
  return s_trial == Trial::Passed;
}

std::unique_ptr<platform::ScriptEngine> ControlOrElseEngines::Create() {
  if (UsesControl()) return std::make_unique<ScriptControlEngine>(m_border);
  return m_otherwise->Create();
}

}  // namespace hearthmake::scriptcontrol
