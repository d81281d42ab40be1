#pragma once

#include "adapters/scriptcontrol/ControlOrElseEngines.hpp"

namespace hearthmake::scriptcontrol {

// What the user of the machine has chosen: by the environment variable HEARTHMAKE_SCRIPT_ENGINE, else by the
// setting ScriptEngine of the command (`hearthmake settings --host ScriptEngine own`). A text that says
// nothing leaves the choice automatic: a library has nobody to complain to.
Choice ChosenEngine();

}  // namespace hearthmake::scriptcontrol
