#include "host/builds/AddedProjects.hpp"

#include <fmt/format.h>

#include "host/Session.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

void AddedProjects::ProjectAdded(Project& NewProject) {
  m_projects.emplace_back(&NewProject);
  m_console.Out(fmt::format("Added {}  {}\n", Printable(NewProject.Name()), NewProject.ProjectPath()));
}

std::string SizeText(Build& build) {
  std::size_t references = 0;
  for (const auto& project : AllProjects(build)) {
    for (const auto& reference : AllReferences(*project)) references += reference->IsExternal() ? 0 : 1;
  }
  return fmt::format("{}, {} between them",
                     Counted(static_cast<std::size_t>(build.Projects().Count()), "project"),
                     Counted(references, "reference"));
}

}  // namespace hearthmake::host
