// Project: what happens to a binary after its compile. The steps have their places in Compile and in the
// build run; registration, distribution and check-in are not carried out yet.

#include "project/Project.hpp"

namespace hearthmake {

void Project::Register() {}

void Project::CheckInAfterCompile() {}

bool Project::DistributeBinaryFile() { return true; }

}  // namespace hearthmake
