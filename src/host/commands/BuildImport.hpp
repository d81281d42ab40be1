#pragma once

#include "host/commands/Commands.hpp"

namespace hearthmake::host {

// Adds an exported build to a database, which is made where it is missing. HostError, and nothing changed,
// where the file is none or the build is there already and not to be replaced.
ExitStatus ImportBuild(Session& session, const ImportArguments& arguments);

}  // namespace hearthmake::host
