#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/graph/Digraph.hpp"
#include "host/page/LastRun.hpp"
#include "host/page/RunFacts.hpp"
#include "host/page/SourceExcerpt.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// An error of a compiler's log with the source around it.
struct PageError {
  CompilerError error;
  SourceExcerpt excerpt;
};

// A project as the page tells of it.
struct PageProject {
  ProjectRecord record;
  std::string path;  // of the project file, for people
  RunFacts::Pair facts;
  std::optional<ProjectChange> change;  // nothing without a last run
  std::vector<PageError> errors;
  std::string advice;  // what to do about a failure; may be empty
};

// All that the page of a run tells.
struct RunPage {
  std::string buildName;
  RunResult result = RunResult::Cancelled;
  std::int64_t began = 0;  // seconds since 1970, UTC
  double seconds = 0;
  std::vector<PageProject> projects;  // in compile order
  Digraph references{{}};             // by their places
  std::vector<std::string> failures;  // that belong to no project
  std::vector<RunMessage> messages;
  std::size_t lostMessages = 0;
  std::optional<std::int64_t> lastBegan;  // of the run that this one is compared with
  std::vector<std::string> gone;          // projects of that run
};

// The page: one file of HTML that needs nothing else, neither a network nor, for the lists and logs, scripts.
std::string RunPageText(const RunPage& page);

}  // namespace hearthmake::host
