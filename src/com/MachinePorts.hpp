#pragma once

#include <memory>
#include <string>

#include "adapters/vbs/VbsScriptEngines.hpp"
#include "platform/Platform.hpp"

namespace hearthmake::com {

// The ports with the adapters of a Windows machine, alike for the library and the command. The folder (a DOS
// path) is where the database stands; empty for that of the running module. Null are the processes and the
// events, which depend on who waits for a child, and the scripts, which want the other ports first.
platform::Platform MachinePorts(std::string dataFolder = {});

// The engines of the kind that the user has chosen. The ports are complete but for them.
std::shared_ptr<platform::ScriptEngines> MachineScripts(const platform::Platform& ports,
                                                        vbs::Services services);

}  // namespace hearthmake::com
