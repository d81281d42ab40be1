#pragma once

#include "build/Build.hpp"
#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// Shows what a run would do: the projects in compile order with the reasons, and how each project file would
// change. Nothing is written. Failed when the compiler could not be started for one of them.
struct DryRunOptions {
  bool why = false;  // also of those that are left out; JSON always has them
  bool json = false;
};
ExitStatus ShowDryRun(Session& session, Build& build, const RunPlan& plan, const DryRunOptions& options);

}  // namespace hearthmake::host
