#pragma once

#include "build/Build.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// Takes projects out of their build, users before the libraries that they reference; where these
// reference each other in a cycle, references are dropped first. HostError, before anything is removed,
// when a project that stays references one of them.
void RemoveProjects(Build& build, const ProjectList& projects);

}  // namespace hearthmake::host
