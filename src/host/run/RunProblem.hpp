#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/Session.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// Something wrong that a run met, with its place in the sources.
struct RunProblem {
  std::string file;      // the system's path; the project file where nothing better is known, or empty
  std::size_t line = 0;  // from 1; 0 when it is not known
  std::string text;
  std::string project;  // its name; empty: the build's own
  bool isCompileError = false;
};

// What made the project fail: the errors of the compiler's log, or the one that ended the run there. Nothing
// for a project that did not fail.
std::vector<RunProblem> ProblemsOf(Session& session, const ProjectRecord& project);
// Those of all projects in the order of the record, then the failures of the build itself.
std::vector<RunProblem> ProblemsOf(Session& session, const RunRecord& record);

}  // namespace hearthmake::host
