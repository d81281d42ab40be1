#include <fmt/format.h>

#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "foundation/Apartment.hpp"
#include "host/builds/EditCycle.hpp"
#include "host/commands/Commands.hpp"
#include "host/sources/SourceFlagNames.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/system/PasswordPrompt.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using automation::Variant;

// A text that would not be stored whole is refused: half a path or password helps nobody.
void SetText(SSProject& source, const char* property, const std::string& value) {
  source.Let(property, {Variant::FromText(value)});
  if (automation::ToText(source.Get(property)) == value) return;
  throw HostError(fmt::format("{} can't have this value.", property),
                  "It has at most 255 characters, and no blanks around it.");
}

bool EndsInSeparator(std::string_view path) { return path.ends_with('\\') || path.ends_with('/'); }

std::string WithoutSeparators(std::string path) {
  while (EndsInSeparator(path)) path.pop_back();
  return path;
}

// What is behind the working folder in the path of a file follows the project's path as it is. So both or
// none of them end in a separator.
void LetEndsAgree(SSProject& source) {
  const std::string project = source.Project();
  const std::string folder = WithoutSeparators(source.WorkingFolder());
  if (folder.empty()) return;
  const bool isDriveRoot = folder.size() == 2 && folder[1] == ':';
  const bool endsOpen = EndsInSeparator(project) || isDriveRoot;
  SetText(source, "WorkingFolder", endsOpen ? folder + "\\" : folder);
  if (endsOpen && !EndsInSeparator(project)) SetText(source, "Project", project + "/");
}

void RefuseWrongPath(const std::string& project) {
  if (project.starts_with("$/") || project.starts_with("$\\")) return;
  throw HostError(fmt::format("'{}' is no path inside a source-control database.", project),
                  "Such a path begins at its root: '$/Suite/Lib'");
}

void SetProperties(Session& session, SSProject& source, const SourceprojectsArguments& arguments) {
  if (arguments.ini) SetText(source, "SrcSafeIni", session.DosPath(*arguments.ini));
  if (arguments.user) SetText(source, "User", *arguments.user);
  if (arguments.database) SetText(source, "Database", *arguments.database);
  if (arguments.flags) source.SetFlags(ParseSourceFlags(*arguments.flags));
  if (arguments.folder) {
    SetText(source, "WorkingFolder", arguments.folder->empty() ? "" : session.DosPath(*arguments.folder));
  }
  if (arguments.project) {
    RefuseWrongPath(*arguments.project);
    SetText(source, "Project", *arguments.project);
  }
  if (arguments.folder || arguments.project) LetEndsAgree(source);
  if (arguments.passwordStdin) {
    SetText(source, "Password", ReadPassword());
  } else if (arguments.password) {
    SetText(source, "Password",
            AskPassword(session.Out(), fmt::format("Password for {}: ", Printable(source.Project()))));
  }
}

// A project of which the files in its own working folder would be taken for another one's: letters count
// when the file of a check-in is looked for, not folders.
void WarnOfWrongPlaces(const Session& session, Build& build) {
  for (const auto& source : AllSources(build)) {
    const std::string folder = WithoutSeparators(source->WorkingFolder());
    if (folder.empty()) continue;
    const auto place = build.SSProjects().FindPlace(folder + "\\FILE");
    if (!place || place->project == source) continue;
    session.Out().Note(
        fmt::format("A file in {} itself would be checked in as {}, through {}.\nLet the outer project come "
                    "first and its path end in a slash: '{}/'",
                    Printable(folder), Printable(place->spec), Printable(place->project->Project()),
                    Printable(WithoutSeparators(source->Project()))));
  }
}

void NoteMissingIni(Session& session, const SSProject& source) {
  if (Ports().files->FileExists(source.SrcSafeIni())) return;
  session.Out().Note(fmt::format("There is no file {} yet.", session.PosixPath(source.SrcSafeIni())));
}

ExitStatus List(Session& session, Build& build, bool asJson) {
  if (asJson) {
    session.Out().Out(JsonText(SourcesJson(build), 2) + "\n");
    return ExitStatus::Done;
  }
  const std::string lines = SourceLines(session, build);
  session.Out().Out(lines.empty() ? "No source projects yet. See: hearthmake sourceprojects --help\n"
                                  : lines);
  return ExitStatus::Done;
}

ExitStatus Store(Session& session, Build& build, SSProject& source, const SourceprojectsArguments& arguments,
                 const char* done) {
  EditCycle edit(source);
  SetProperties(session, source, arguments);
  edit.Apply();
  session.Out().Out(fmt::format("{} {}, id {}\n", done, Printable(source.Project()), source.Id()));
  NoteMissingIni(session, source);
  WarnOfWrongPlaces(session, build);
  return ExitStatus::Done;
}

ExitStatus Add(Session& session, Build& build, SourceprojectsArguments arguments) {
  if (!arguments.project && !arguments.source.empty()) arguments.project = arguments.source;
  if (!arguments.project || !arguments.ini) {
    throw HostError(
        "A source project needs its path and the ini file of its database.",
        fmt::format("hearthmake sourceprojects '{}' add '$/Suite' --ini FILE --folder DIR", build.Name()));
  }
  const auto source = build.SSProjects().Create();
  source->SetFlags(platform::SourceFlags::kRecursiveYes);  // a suite has folders
  return Store(session, build, *source, arguments, "Added");
}

ExitStatus Remove(Session& session, SSProject& source) {
  EditCycle edit(source);
  source.Delete();
  edit.Apply();
  session.Out().Out(fmt::format("Removed {}. Its database and its working folder are untouched.\n",
                                Printable(source.Project())));
  return ExitStatus::Done;
}

}  // namespace

ExitStatus SourceprojectsCommand(Session& session, const SourceprojectsArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  if (arguments.action == "list") return List(session, *build, arguments.json);
  if (arguments.action == "add") return Add(session, *build, arguments);
  if (arguments.source.empty())
    throw HostError("Which source project?",
                    fmt::format("List them with: hearthmake sourceprojects '{}'", build->Name()));
  const auto source = FindSource(*build, arguments.source);
  if (arguments.action == "remove") return Remove(session, *source);
  return Store(session, *build, *source, arguments, "Changed");
}

}  // namespace hearthmake::host
