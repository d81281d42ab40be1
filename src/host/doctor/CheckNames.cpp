#include <fmt/format.h>

#include <functional>
#include <map>

#include "automation/Text.hpp"
#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

using Groups = std::map<std::string, ProjectList>;  // by a text without regard to case

Groups GroupBy(const ProjectList& projects, const std::function<std::string(Project&)>& text) {
  Groups groups;
  for (const auto& project : projects) groups[automation::Lower(text(*project))].push_back(project);
  std::erase_if(groups, [](const auto& group) { return group.second.size() < 2; });
  return groups;
}

std::string Names(const ProjectList& projects) {
  std::string text;
  for (const auto& project : projects) {
    text += fmt::format("{}{} (id {})", text.empty() ? "" : ", ", project->Name(), project->Id());
  }
  return text;
}

}  // namespace

void CheckNames(Session& session, const ExaminedBuild& examined, Findings& findings) {
  for (const auto& [name, projects] : GroupBy(examined.projects, [](Project& p) { return p.Name(); })) {
    findings.Warn(fmt::format("Several projects have one name: {}.", Names(projects)),
                  session.PosixPath(projects.back()->ProjectPath()),
                  fmt::format("hearthmake remove {} {}", examined.name, projects.back()->Id()));
  }
  for (const auto& [binary, projects] :
       GroupBy(examined.projects, [](Project& p) { return p.BinaryPath(); })) {
    findings.Fail(fmt::format("Several projects write one binary: {}.", Names(projects)),
                  session.PosixPath(projects.back()->BinaryPath()),
                  fmt::format("hearthmake set {} {} ExeName32 NAME", examined.name, projects.back()->Id()));
  }
}

}  // namespace hearthmake::host
