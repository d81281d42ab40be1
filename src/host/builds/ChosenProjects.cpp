#include "host/builds/ChosenProjects.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::host {

namespace {

void SortWherePossible(Build& build) {
  try {
    build.Projects().SetCompileOrder();
  } catch (const automation::Error& error) {
    if (error.Number() != static_cast<std::int32_t>(automation::BuildErrors::beCyclicReferences)) throw;
  }
}

// Messages of the library have several lines.
std::string OneLine(const std::string& text) {
  return automation::ReplaceAll(automation::ReplaceAll(text, ": \r\n", ": "), "\r\n", ". ");
}

Outcome Attempt(Project& project, const std::function<Outcome(Project&)>& action) {
  try {
    return action(project);
  } catch (const automation::Error& error) {
    return {error.Description(), true};
  }
}

}  // namespace

ProjectList ChosenProjects(Build& build, const std::vector<std::string>& names) {
  if (names.empty()) {
    SortWherePossible(build);
    return AllProjects(build);
  }
  ProjectList projects;
  for (const std::string& name : names) {
    auto project = FindProject(build, name);
    if (std::find(projects.begin(), projects.end(), project) == projects.end())
      projects.push_back(std::move(project));
  }
  return projects;
}

ExitStatus DoForEach(Session& session, const ProjectList& projects,
                     const std::function<Outcome(Project&)>& action) {
  ExitStatus status = ExitStatus::Done;
  for (const auto& project : projects) {
    const Outcome outcome = Attempt(*project, action);
    if (outcome.isFailure) status = ExitStatus::Failed;
    const std::string text = Printable(OneLine(outcome.text));
    session.Out().Out(fmt::format("{}: {}\n", Printable(project->Name()),
                                  outcome.isFailure ? session.Out().PaintOut(Colour::Red, text) : text));
  }
  return status;
}

}  // namespace hearthmake::host
