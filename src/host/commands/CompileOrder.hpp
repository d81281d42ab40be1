#pragma once

#include "build/Build.hpp"

namespace hearthmake::host {

// Puts the projects of the build into compile order. HostError that names a cycle, with the status of a
// failed build.
void SetCompileOrder(Build& build);

}  // namespace hearthmake::host
