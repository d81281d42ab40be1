#include "adapters/vbs/VbsScriptEngine.hpp"

#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbs {

namespace {

using automation::Object;
using automation::Ref;
using automation::Utf8ToUtf16;

constexpr std::int32_t kFirstButton = 1;

}  // namespace

std::int32_t ServiceHost::ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) {
  return m_services.showMessage ? m_services.showMessage(prompt, style, title) : kFirstButton;
}

std::string ServiceHost::AskForText(std::string_view prompt, std::string_view title,
                                    std::string_view defaultText) {
  return m_services.askForText ? m_services.askForText(prompt, title, defaultText) : std::string(defaultText);
}

Ref<Object> ServiceHost::CreateObject(std::string_view progId) {
  return m_services.createObject ? m_services.createObject(progId) : nullptr;
}

Ref<Object> ServiceHost::GetObject(std::string_view path, std::string_view progId) {
  return m_services.getObject ? m_services.getObject(path, progId) : nullptr;
}

void VbsScriptEngine::AddObject(std::string_view name, Ref<Object> object, bool addMembers) {
  m_engine.AddObject(name, std::move(object), addMembers);
}

void VbsScriptEngine::AddCode(std::string_view code) { m_engine.AddCode(Utf8ToUtf16(code)); }
void VbsScriptEngine::ExecuteStatement(std::string_view code) {
  m_engine.ExecuteStatement(Utf8ToUtf16(code));
}
void VbsScriptEngine::Check(std::string_view code) { m_engine.Check(Utf8ToUtf16(code)); }

automation::Variant VbsScriptEngine::Run(std::string_view procedure,
                                         std::span<automation::Variant> arguments) {
  return m_engine.Run(procedure, arguments);
}

Ref<Object> VbsScriptEngine::CreateObject(std::string_view progId) {
  Ref<Object> object = m_host.CreateObject(progId);
  if (!object) object = vbscript::CreateStandardObject(progId, m_engine.SharedContext());
  if (!object)
    automation::Raise(automation::RuntimeError::CantCreateObject, "ScriptControl", std::string(progId));
  return object;
}

const platform::ScriptFault& VbsScriptEngine::Fault() const {
  const vbscript::ErrorRecord& error = m_engine.LastError();
  m_fault = {error.number, error.source, error.description, error.text, error.line, error.column};
  return m_fault;
}

}  // namespace hearthmake::vbs
