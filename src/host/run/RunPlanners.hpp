#pragma once

#include <string>
#include <vector>

#include "build/Build.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/run/RunJournal.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// The planners that ask nobody but the plan itself; ChangeFinder is another. The projects of the build are in
// compile order, as the plan is.

// Takes out all but the named projects. HostError that lists what there is for a wrong name.
void LeaveOutAllBut(RunPlan& plan, Build& build, const std::vector<std::string>& names);
// Takes out what comes before the named project in compile order. HostError as above.
void LeaveOutBefore(RunPlan& plan, Build& build, const std::string& name);
// Takes out what the stopped run has compiled, and what it was not asked for.
void LeaveOutDone(RunPlan& plan, const RunJournal& journal);

// Takes out what depends on a project that failed, however far away. graph is that of the build.
void LeaveOutUsersOf(RunPlan& plan, const ProjectGraph& graph, const Project& failed);

}  // namespace hearthmake::host
