#pragma once

#include <functional>
#include <string>
#include <vector>

#include "build/Build.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// What a compile of one project would do before the compiler starts.
struct RehearsedCompile {
  const PlannedProject* planned = nullptr;  // of the plan
  std::string path;                         // of the project file, a DOS path
  std::string before;                       // the project file as it is
  std::string after;                        // and as the compiler would find it
  std::vector<std::string> notices;         // what the library has to say
  // Referenced projects by name that are compiled before: those that were never built, whose identity stands
  // as
  // "{not known yet}#?#" in after, and those whose identity may become another one than that of their binary.
  std::vector<std::string> unknown;
  std::vector<std::string> mayChange;
  std::string problem;  // why the compiler would not be started; empty when it would be
};

// Compiles the projects that the plan runs, in compile order, as far as the start of the compiler: over files
// in memory, in an apartment of its own, in which nothing can be started. Nothing is written anywhere, no
// event of a run is raised, no script runs. Tells of each as soon as it is done.
void RehearseCompiles(Build& build, const RunPlan& plan,
                      const std::function<void(const RehearsedCompile& compile)>& tell);

}  // namespace hearthmake::host
