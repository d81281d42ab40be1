#include "adapters/vbs/VbsScriptEngines.hpp"

#include "adapters/vbs/VbsScriptEngine.hpp"

namespace hearthmake::vbs {

VbsScriptEngines::VbsScriptEngines(platform::Platform ports, Services services)
    : m_ports(std::move(ports)), m_services(std::move(services)) {}

std::unique_ptr<platform::ScriptEngine> VbsScriptEngines::Create() {
  return std::make_unique<VbsScriptEngine>(m_ports, m_services);
}

}  // namespace hearthmake::vbs
