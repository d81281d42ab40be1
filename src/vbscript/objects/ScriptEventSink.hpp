#pragma once

#include <string>
#include <utility>

#include "automation/Events.hpp"
#include "vbscript/Engine.hpp"

namespace hearthmake::vbscript {

// Hands the events of an object to a script: event E of a source connected with prefix P calls the script's
// procedure PE, where there is one.
class ScriptEventSink final : public automation::EventSink {
 public:
  // The engine outlives the sink.
  ScriptEventSink(Engine& engine, std::string prefix) : m_engine(engine), m_prefix(std::move(prefix)) {}

  void Raise(std::string_view event, std::span<automation::Variant> arguments) override;

 private:
  Engine& m_engine;
  std::string m_prefix;
};

}  // namespace hearthmake::vbscript
