#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/builds/ChosenProjects.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/commands/Commands.hpp"
#include "host/graph/DotText.hpp"
#include "host/graph/GraphvizDot.hpp"
#include "host/page/LastRun.hpp"
#include "host/run/ChangeFinder.hpp"
#include "host/run/RewrittenFiles.hpp"
#include "host/text/Json.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

// What is drawn: projects by id, their references, and those that a picture may leave out.
struct Selection {
  ProjectList projects;
  Digraph references;
};

Digraph::Nodes IndexesOf(const ProjectList& projects, const ProjectList& chosen) {
  Digraph::Nodes indexes;
  for (const auto& project : chosen) {
    const auto at = std::find(projects.begin(), projects.end(), project);
    indexes.push_back(static_cast<std::size_t>(at - projects.begin()));
  }
  return indexes;
}

// By id, so that the picture does not change with the order that the list happens to have.
ProjectList ProjectsById(Build& build) {
  ProjectList projects = AllProjects(build);
  std::sort(projects.begin(), projects.end(), [](const auto& a, const auto& b) { return a->Id() < b->Id(); });
  return projects;
}

Selection Select(Build& build, const GraphArguments& arguments) {
  ProjectList all = ProjectsById(build);
  Digraph references(ProjectGraph(all).Targets());
  if (arguments.projects.empty()) return {std::move(all), std::move(references)};
  const Digraph::Nodes chosen = IndexesOf(all, ChosenProjects(build, arguments.projects));
  Digraph::Nodes nodes = references.ReachableFrom(chosen);
  if (arguments.users) {
    const Digraph::Nodes users = references.Reversed().ReachableFrom(chosen);
    nodes.insert(nodes.end(), users.begin(), users.end());
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
  }
  ProjectList projects;
  for (const std::size_t node : nodes) projects.push_back(all[node]);
  return {std::move(projects), references.Part(nodes)};
}

// What a build of what changed would compile; nothing where a cycle leaves no order to compile in.
std::set<std::int32_t> ChangedProjects(Session& session, Build& build) {
  const ProjectList projects = AllProjects(build);
  if (!ProjectGraph(projects).FindCycle().empty()) return {};
  build.Projects().SetCompileOrder();
  const ProjectList inOrder = AllProjects(build);
  const std::string path = session.Settings().DataFolder() + "/" + RewrittenFiles::FileName(build.Id());
  const RewrittenFiles rewritten(*Ports().files, session.DosPath(path));
  ChangeFinder finder(*Ports().files, rewritten,
                      [&session](const std::string& dosPath) { return session.PosixPath(dosPath); });
  RunPlan plan(inOrder);
  finder.LeaveOutUpToDate(plan, inOrder, ProjectGraph(inOrder));
  const std::vector<std::int32_t> changed = plan.RunningIds();
  return {changed.begin(), changed.end()};
}

LastOutcome OutcomeOf(const std::optional<LastRun>& run, std::int32_t idProject) {
  const RememberedProject* project = run ? run->Find(idProject) : nullptr;
  if (project == nullptr) return LastOutcome::Unknown;
  switch (project->outcome) {
    case RememberedProject::Outcome::Unknown: return LastOutcome::Unknown;
    case RememberedProject::Outcome::Compiled: return LastOutcome::Compiled;
    case RememberedProject::Outcome::Failed: return LastOutcome::Failed;
  }
  return LastOutcome::Unknown;
}

// A row of a damaged database may have no known type; the picture is drawn all the same.
ProjectTypes TypeOf(const Project& project) {
  try {
    return project.ProjectType();
  } catch (const automation::Error&) {
    return ProjectTypes::StandardExe;
  }
}

PicturedProject Pictured(Project& project, const std::optional<LastRun>& run) {
  PicturedProject pictured;
  pictured.name = project.Name();
  pictured.type = TypeOf(project);
  pictured.last = OutcomeOf(run, project.Id());
  return pictured;
}

DotPicture PictureOf(Session& session, Build& build, const Selection& selection, bool isReduced) {
  DotPicture picture{build.Name(), {}, isReduced ? selection.references.Reduced() : selection.references, 0};
  picture.implied = selection.references.EdgeCount() - picture.references.EdgeCount();
  const auto run =
      ReadLastRun(session.DosPath(session.Settings().DataFolder() + "/" + LastRunFileName(build.Id())));
  const std::set<std::int32_t> changed = ChangedProjects(session, build);
  for (const auto& project : selection.projects) {
    picture.projects.push_back(Pictured(*project, run));
    picture.projects.back().isChanged = changed.contains(project->Id());
  }
  return picture;
}

const char* WordOf(LastOutcome outcome) {
  switch (outcome) {
    case LastOutcome::Unknown: return nullptr;
    case LastOutcome::Compiled: return "compiled";
    case LastOutcome::Failed: return "failed";
  }
  return nullptr;
}

ordered_json JsonOf(const Selection& selection, const DotPicture& picture) {
  auto projects = ordered_json::array();
  auto references = ordered_json::array();
  const auto cyclic = selection.references.CyclicEdges();
  for (std::size_t from = 0; from < selection.projects.size(); ++from) {
    const PicturedProject& pictured = picture.projects[from];
    const char* last = WordOf(pictured.last);
    projects.push_back({{"id", selection.projects[from]->Id()},
                        {"name", pictured.name},
                        {"type", TypeName(pictured.type)},
                        {"last", last == nullptr ? ordered_json() : ordered_json(last)},
                        {"changed", pictured.isChanged}});
    const Digraph::Nodes& targets = selection.references.Targets(from);
    for (std::size_t i = 0; i < targets.size(); ++i) {
      references.push_back({{"from", selection.projects[from]->Id()},
                            {"to", selection.projects[targets[i]]->Id()},
                            {"implied", !picture.references.PointsTo(from, targets[i])},
                            {"cycle", bool{cyclic[from][i]}}});
    }
  }
  return {{"projects", std::move(projects)}, {"references", std::move(references)}};
}

// The formats that dot is asked for; nothing for its own text.
std::string FormatOf(const std::string& file) {
  const std::string lower = automation::Lower(file);
  for (const char* format : {"svg", "png", "pdf"}) {
    if (lower.ends_with(std::string(".") + format)) return format;
  }
  if (lower.ends_with(".dot") || lower.ends_with(".gv")) return {};
  throw HostError(fmt::format("What '{}' is to be can't be told from its name.", file),
                  "Let it end in .svg, .png or .pdf (drawn by Graphviz), or in .dot for the text.");
}

// The system's path of a file that need not be there, in a folder that is.
std::string SystemPath(Session& session, const std::string& dosPath) {
  const std::string folder = session.PosixPath(std::string(FolderPart(dosPath)));
  const bool hasEnd = folder.ends_with('/') || folder.ends_with('\\');
  return folder + (hasEnd ? "" : "/") + std::string(FileNamePart(dosPath));
}

// Drawn beside the file and put in its place, so that a failure leaves what was there.
void WriteDrawn(Session& session, const std::string& text, const std::string& format,
                const std::string& file) {
  const std::string dosPath = session.DosPath(file);
  const std::string drawn = dosPath + ".new";
  if (!Ports().files->FolderExists(FolderPart(dosPath)))
    throw HostError(fmt::format("There is no folder for the picture: {}", file));
  const auto clear = [&] {
    if (Ports().files->FileExists(drawn)) Ports().files->Remove(drawn);
  };
  try {
    DrawWithDot(text, format, SystemPath(session, drawn));
    Ports().files->Replace(dosPath, Ports().files->Read(drawn));
  } catch (...) {
    clear();
    throw;
  }
  clear();
}

std::string Summary(const DotPicture& picture) {
  const std::size_t all = picture.references.EdgeCount() + picture.implied;
  const std::string left =
      picture.implied == 0
          ? ""
          : fmt::format(", {} left out that others imply (--no-reduce draws them)", picture.implied);
  return fmt::format("{}, {}{}", Counted(picture.projects.size(), "project"), Counted(all, "reference"),
                     left);
}

}  // namespace

ExitStatus GraphCommand(Session& session, const GraphArguments& arguments) {
  if (arguments.users && arguments.projects.empty())
    throw HostError("--users asks who needs some projects.", "Name them behind the build.");
  const bool isText = arguments.file.empty() || arguments.json;
  const std::string format = isText ? "" : FormatOf(arguments.file);
  const auto build = session.OpenBuild(arguments.build);
  const Selection selection = Select(*build, arguments);
  const DotPicture picture = PictureOf(session, *build, selection, arguments.reduce);
  const std::string text = arguments.json ? JsonText(JsonOf(selection, picture), 2) + "\n" : DotText(picture);
  if (arguments.file.empty()) {
    session.Out().Out(text);
    if (picture.implied > 0 && !arguments.json) session.Out().Note(Summary(picture) + ".");
    return ExitStatus::Done;
  }
  if (format.empty()) {
    Ports().files->Replace(session.DosPath(arguments.file), text);
  } else {
    WriteDrawn(session, text, format, arguments.file);
  }
  session.Out().Out(fmt::format("{}: {}.\n", Printable(arguments.file), Summary(picture)));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
