#pragma once

#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// Asks on the terminal into which package of the build each of the projects goes that are server components,
// and stores the answers. Nothing is asked unless the setting AskForMTSPackage is on, where no terminal is,
// and where the build has no packages; the end of the input leaves the rest without.
void AskForPackages(Session& session, Build& build, const ProjectList& projects);

}  // namespace hearthmake::host
