#include "vbscript/objects/ScriptEventSink.hpp"

namespace hearthmake::vbscript {

void ScriptEventSink::Raise(std::string_view event, std::span<automation::Variant> arguments) {
  const std::string procedure = m_prefix + std::string(event);
  if (m_engine.HasProcedure(procedure)) m_engine.Run(procedure, arguments);
}

}  // namespace hearthmake::vbscript
