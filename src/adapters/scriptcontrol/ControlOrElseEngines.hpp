#pragma once

#include <memory>
#include <string_view>

#include "adapters/win32/ObjectBorder.hpp"
#include "platform/ScriptEngine.hpp"

namespace hearthmake::scriptcontrol {

// Which engine runs the scripts of a machine.
enum class Choice {
  Automatic,  // the Script Control where there is one that works, else the other engine
  Control,    // the Script Control, or an error
  Other,
};

// "control", "own" or "" (automatic), without regard to case: how a host's setting says it. Error 5 for
// another text.
Choice ParseChoice(std::string_view text);

// Whether an engine does what build scripts live on: assign to an item of a dictionary of ours, call a
// procedure with arguments and get its result. Wine's Script Control can be created and does not.
bool DoesTheBasics(platform::ScriptEngine& engine);

// Engines by choice. The Script Control is tried out once in a process.
class ControlOrElseEngines final : public platform::ScriptEngines {
 public:
  // The border outlives the engines.
  ControlOrElseEngines(Choice choice, win32::ObjectBorder& border,
                       std::shared_ptr<platform::ScriptEngines> otherwise);

  std::unique_ptr<platform::ScriptEngine> Create() override;

 private:
  bool UsesControl();

  Choice m_choice;
  win32::ObjectBorder& m_border;
  std::shared_ptr<platform::ScriptEngines> m_otherwise;
};

}  // namespace hearthmake::scriptcontrol
