#pragma once

#include <cstdint>
#include <map>

#include "build/Build.hpp"
#include "build/BuildEvents.hpp"
#include "host/page/ProjectFacts.hpp"

namespace hearthmake::host {

// What the projects of a run are before and after it.
class RunFacts final : public BuildEvents {
 public:
  struct Pair {
    ProjectFacts before;
    ProjectFacts after;
  };

  // Looks at the projects that the run has come to once more, and at the others for the first time.
  void Complete(Build& build);
  // By the project's id; after Complete for each project of the build.
  const std::map<std::int32_t, Pair>& Projects() const { return m_projects; }

  void WillCompile(Project& objProject, bool& bCancel) override;

 private:
  std::map<std::int32_t, Pair> m_projects;
};

}  // namespace hearthmake::host
