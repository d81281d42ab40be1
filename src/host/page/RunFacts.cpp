#include "host/page/RunFacts.hpp"

#include "host/Session.hpp"

namespace hearthmake::host {

void RunFacts::WillCompile(Project& objProject, bool& /*bCancel*/) {
  m_projects.try_emplace(objProject.Id(), Pair{ReadFacts(objProject), {}});
}

void RunFacts::Complete(Build& build) {
  for (const auto& project : AllProjects(build)) {
    const auto [at, isNew] = m_projects.try_emplace(project->Id());
    at->second.after = ReadFacts(*project);
    if (isNew) at->second.before = at->second.after;
  }
}

}  // namespace hearthmake::host
