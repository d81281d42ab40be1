#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/page/ProjectFacts.hpp"
#include "host/page/RunFacts.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// What is remembered of a project until the next run: how its last compile went, and what came out.
struct RememberedProject {
  enum class Outcome { Unknown, Compiled, Failed };

  std::int32_t id = 0;
  std::string name;
  Outcome outcome = Outcome::Unknown;
  double seconds = 0;  // that its last compile took, when it compiled; else 0
  ProjectFacts facts;
};

// A run as it is remembered in the data folder, one file a build.
struct LastRun {
  std::int64_t began = 0;  // seconds since 1970, UTC
  double seconds = 0;
  std::vector<RememberedProject> projects;

  // Null for an unknown id.
  const RememberedProject* Find(std::int32_t id) const;
};

// What the file of a build is called in the data folder.
std::string LastRunFileName(std::int32_t idBuild);

// This run, and of the projects that it did not come to what the last one knew.
LastRun Remember(const RunRecord& record, const RunFacts& facts, const LastRun* last);

std::string LastRunText(const LastRun& run);
// Nothing for a text that is none.
std::optional<LastRun> ParseLastRun(const std::string& text);
// By DOS path; nothing when there is no such file, or it is none.
std::optional<LastRun> ReadLastRun(const std::string& path);

// How a project differs from what it was after the last run.
struct ProjectChange {
  enum class Kind { None, NewProject, NewlyFailing, StillFailing, Fixed };

  Kind kind = Kind::None;
  bool hasNewLibrary = false;         // another id: whoever was built against the old one is broken
  bool hasNewLibraryVersion = false;  // the same id
  bool hasNewVersion = false;
  std::int64_t sizeChange = 0;  // bytes; 0 where one of both is not known
  double secondsChange = 0;     // 0 where one of both is not known, or when it is not worth a word
  RememberedProject last;

  bool IsAny() const;
};

// By the project's id where both runs have it; the outcome is that of this run.
ProjectChange CompareWithLast(const RememberedProject& now, ProjectOutcome outcome, const LastRun& last);
// Names of projects that the build had and has no more.
std::vector<std::string> GoneProjects(const LastRun& now, const LastRun& last);

}  // namespace hearthmake::host
