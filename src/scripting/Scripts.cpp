#include "scripting/Scripts.hpp"

#include "build/Build.hpp"

namespace hearthmake {

Scripts::Scripts(Build& build) { SetOwner(&build); }

// The place of a run at which a script is executed; no event has one yet.
void Scripts::RunEvent(BuildScripts /*event*/, Project* /*objProject*/) {}

}  // namespace hearthmake
