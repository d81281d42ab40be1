#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/win32/LateObject.hpp"
#include "adapters/win32/ObjectBorder.hpp"
#include "platform/ScriptEngine.hpp"

namespace hearthmake::scriptcontrol {

// The Microsoft Script Control. What its scripts fail with is raised with the number, source and description
// of the control's Error object, whose place Fault keeps.
class ScriptControlEngine final : public platform::ScriptEngine {
 public:
  static constexpr const char* kProgId = "MSScriptControl.ScriptControl";

  // Objects of scripts and of ours cross the border, which outlives the engine. Error 429 where there is no
  // control.
  explicit ScriptControlEngine(win32::ObjectBorder& border, std::string progId = kProgId);

  void SetLanguage(std::string_view language) override;
  void SetTimeout(std::int32_t milliseconds) override;
  void SetState(std::int32_t state) override;
  void AddObject(std::string_view name, automation::Ref<automation::Object> object, bool addMembers) override;
  void AddCode(std::string_view code) override;
  void ExecuteStatement(std::string_view code) override;
  automation::Variant Run(std::string_view procedure, std::span<automation::Variant> arguments) override;
  void Check(std::string_view code) override;
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override;
  const platform::ScriptFault& Fault() const override { return m_fault; }
  void ClearFault() override;
  void Reset() override;

 private:
  automation::Variant Guarded(const win32::LateObject& control,
                              const std::function<automation::Variant()>& run);

  win32::ObjectBorder& m_border;
  std::string m_progId;
  win32::LateObject m_control;
  std::string m_language;
  platform::ScriptFault m_fault;
};

}  // namespace hearthmake::scriptcontrol
