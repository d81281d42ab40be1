#pragma once

#include "adapters/vbs/VbsScriptEngines.hpp"
#include "vbscript/Engine.hpp"
#include "vbscript/Host.hpp"

namespace hearthmake::vbs {

// The engine's view of the program around it.
class ServiceHost final : public vbscript::Host {
 public:
  ServiceHost(const platform::Platform& ports, const Services& services)
      : m_ports(ports), m_services(services) {}

  const platform::Platform& Platform() override { return m_ports; }
  std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) override;
  std::string AskForText(std::string_view prompt, std::string_view title,
                         std::string_view defaultText) override;
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override;
  automation::Ref<automation::Object> GetObject(std::string_view path, std::string_view progId) override;

 private:
  platform::Platform m_ports;
  Services m_services;
};

class VbsScriptEngine final : public platform::ScriptEngine {
 public:
  VbsScriptEngine(const platform::Platform& ports, const Services& services)
      : m_host(ports, services), m_engine(m_host) {
    m_engine.SharedContext().budget.SetStopCheck(services.isStopWanted);
  }

  void SetLanguage(std::string_view language) override { m_engine.SetLanguage(language); }
  void SetTimeout(std::int32_t milliseconds) override { m_engine.SetTimeout(milliseconds); }
  void SetState(std::int32_t /*state*/) override {}  // Fault follows the engine's errors in every state
  void AddObject(std::string_view name, automation::Ref<automation::Object> object, bool addMembers) override;
  void AddCode(std::string_view code) override;
  void ExecuteStatement(std::string_view code) override;
  automation::Variant Run(std::string_view procedure, std::span<automation::Variant> arguments) override;
  void Check(std::string_view code) override;
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override;
  const platform::ScriptFault& Fault() const override;
  void ClearFault() override { m_engine.ClearError(); }
  void Reset() override { m_engine.Reset(); }

 private:
  ServiceHost m_host;
  vbscript::Engine m_engine;
  mutable platform::ScriptFault m_fault;
};

}  // namespace hearthmake::vbs
