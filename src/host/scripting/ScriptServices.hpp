#pragma once

#include "adapters/vbs/VbsScriptEngines.hpp"

namespace hearthmake::host {

// What the scripts of a build are answered. A run waits for nobody: a message is shown and gets the answer
// that it has ready.
vbs::Services MakeScriptServices();

}  // namespace hearthmake::host
