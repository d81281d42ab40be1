#pragma once

#include <string>

#include "host/Session.hpp"
#include "host/doctor/Findings.hpp"

namespace hearthmake::host {

// Looks at everything that a build stands on, and changes nothing: the machine, and with the id or name of a
// build (may be empty) that build too. HostError when the machine is well enough to look, and there is no
// such build.
Findings Examine(Session& session, const std::string& build);

}  // namespace hearthmake::host
