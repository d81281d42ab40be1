#include "adapters/scriptcontrol/ScriptControlEngine.hpp"

#include "adapters/scriptcontrol/CheckedCode.hpp"
#include "adapters/win32/AutomationFailure.hpp"
#include "automation/Error.hpp"

namespace hearthmake::scriptcontrol {

namespace {

using automation::Error;
using automation::Ref;
using automation::ToLong;
using automation::ToText;
using automation::Variant;
using platform::ScriptFault;
using win32::LateObject;

ScriptFault ReadFault(const LateObject& control) {
  const LateObject error = control.Object("Error");
  ScriptFault fault;
  fault.number = win32::ToNumber(ToLong(error.Call("Number")));
  if (fault.number == 0) return fault;
  fault.source = ToText(error.Call("Source"));
  fault.description = ToText(error.Call("Description"));
  fault.text = ToText(error.Call("Text"));
  fault.line = ToLong(error.Call("Line"));
  fault.column = ToLong(error.Call("Column")) + 1;  // the control counts from 0
  return fault;
}

void ClearError(const LateObject& control) { control.Object("Error").Call("Clear"); }

}  // namespace

ScriptControlEngine::ScriptControlEngine(win32::ObjectBorder& border, std::string progId)
    : m_border(border), m_progId(std::move(progId)), m_control(LateObject::Create(m_progId)) {}

void ScriptControlEngine::SetLanguage(std::string_view language) {
  m_control.Let("Language", {language});
  m_language = language;
}

void ScriptControlEngine::SetTimeout(std::int32_t milliseconds) { m_control.Let("Timeout", {milliseconds}); }

void ScriptControlEngine::SetState(std::int32_t state) { m_control.Let("State", {state}); }

void ScriptControlEngine::AddObject(std::string_view name, Ref<automation::Object> object, bool addMembers) {
  std::vector<Variant> arguments = {Variant::FromText(name), Variant::FromObject(std::move(object)),
                                    Variant::FromBoolean(addMembers)};
  m_control.Call("AddObject", arguments, m_border);
}

// A failure of a script stands in the control's Error object; one of the call itself passes.
Variant ScriptControlEngine::Guarded(const LateObject& control, const std::function<Variant()>& run) {
  ClearError(control);  // or an earlier failure would pass for this one
  try {
    return run();
  } catch (const Error&) {
    m_fault = ReadFault(control);
    if (m_fault.number == 0) throw;
    throw Error(m_fault.number, m_fault.source, m_fault.description);
  }
}

void ScriptControlEngine::AddCode(std::string_view code) {
  Guarded(m_control, [&] { return m_control.Call("AddCode", {code}); });
}

void ScriptControlEngine::ExecuteStatement(std::string_view code) {
  Guarded(m_control, [&] { return m_control.Call("ExecuteStatement", {code}); });
}

Variant ScriptControlEngine::Run(std::string_view procedure, std::span<Variant> arguments) {
  std::vector<Variant> all = {Variant::FromText(procedure)};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return Guarded(m_control, [&] { return m_control.Call("Run", all, m_border); });
}

// The control compiles only what it then runs. So another one does it, which the code leaves at once.
void ScriptControlEngine::Check(std::string_view code) {
  const auto control = LateObject::Create(m_progId);
  control.Let("Language", {m_language});
  const CheckedCode checked(code);
  try {
    Guarded(control, [&] { return control.Call("AddCode", {checked.Text()}); });
  } catch (const Error& error) {
    if (error.Number() == CheckedCode::kLeft) return ClearFault();
    m_fault.column -= checked.ColumnsBefore(m_fault.line);
    throw;
  }
}

Ref<automation::Object> ScriptControlEngine::CreateObject(std::string_view progId) {
  return m_border.Take(LateObject::Create(progId).Dispatch());
}

void ScriptControlEngine::ClearFault() {
  ClearError(m_control);
  m_fault = {};
}

void ScriptControlEngine::Reset() { m_control.Call("Reset"); }

}  // namespace hearthmake::scriptcontrol
