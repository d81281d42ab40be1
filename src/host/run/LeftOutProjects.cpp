#include "host/run/LeftOutProjects.hpp"

#include "automation/Error.hpp"

namespace hearthmake::host {

void LeftOutProjects::Add(Project& project) {
  if (!project.CompileMe()) return;
  try {
    m_edits.push_back(std::make_unique<EditCycle<Project>>(project));
  } catch (const automation::Error&) {
    // Its compile failed while it was being stored and has left it in edit mode: an edit stands open already.
  }
  project.SetCompileMe(false);
}

}  // namespace hearthmake::host
