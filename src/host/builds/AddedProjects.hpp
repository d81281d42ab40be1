#pragma once

#include <cstddef>

#include "build/Build.hpp"
#include "build/BuildEvents.hpp"
#include "host/Console.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// Tells which projects came into a build, while it lives.
class AddedProjects final : public BuildEvents {
 public:
  AddedProjects(Build& build, const Console& console) : m_build(build), m_console(console) {
    build.AddSink(*this);
  }
  ~AddedProjects() override { m_build.RemoveSink(*this); }

  void ProjectAdded(Project& NewProject) override;
  std::size_t Count() const { return m_projects.size(); }
  const ProjectList& Projects() const { return m_projects; }

 private:
  Build& m_build;
  const Console& m_console;
  ProjectList m_projects;
};

// How many projects a build has, and how many references there are between them: "12 projects, 20
// references between them".
std::string SizeText(Build& build);

}  // namespace hearthmake::host
