#pragma once

#include "build/Build.hpp"
#include "host/HostError.hpp"
#include "host/RunPlan.hpp"
#include "host/Session.hpp"

namespace hearthmake::host {

// Shows what a run would do: the projects in compile order with the reasons, and how each project file would
// change. Nothing is written. Failed when the compiler could not be started for one of them.
ExitStatus ShowDryRun(Session& session, Build& build, const RunPlan& plan, bool asJson);

}  // namespace hearthmake::host
