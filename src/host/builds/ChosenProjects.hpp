#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// What became of one project: a line for people. A project that there is nothing to do for has not failed.
struct Outcome {
  std::string text;
  bool isFailure = false;
};

// The projects of the build that were named, each once in the order of their names; all in compile order (or
// list order where there is none) when none was named. HostError when one is unknown.
ProjectList ChosenProjects(Build& build, const std::vector<std::string>& names);

// Does something to each of the projects and prints a line for each. Failures of one, automation::Error
// included, don't keep it from the others; with any the status is Failed.
ExitStatus DoForEach(Session& session, const ProjectList& projects,
                     const std::function<Outcome(Project&)>& action);

}  // namespace hearthmake::host
