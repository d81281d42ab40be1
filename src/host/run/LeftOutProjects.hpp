#pragma once

#include <memory>
#include <vector>

#include "host/builds/EditCycle.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

// Projects that the library is not to compile in this run, though they are switched on: they are switched off
// by edits that are never stored and are cancelled when this goes.
class LeftOutProjects {
 public:
  void Add(Project& project);

 private:
  std::vector<std::unique_ptr<EditCycle<Project>>> m_edits;
};

}  // namespace hearthmake::host
