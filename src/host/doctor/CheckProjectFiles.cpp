#include <fmt/format.h>

#include "foundation/Apartment.hpp"
#include "host/builds/ProjectSources.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"
#include "host/text/Numbers.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

// Enough to see which folder or branch is missing.
constexpr std::size_t kFilesShown = 5;

void CheckSources(Session& session, Project& project, Findings& findings) {
  const std::string bytes = Ports().files->Read(project.ProjectPath());
  std::string missing;
  std::size_t count = 0;
  for (const ProjectSource& source : SourcesOf(bytes, project.Folder())) {
    if (source.mayBeMissing || Ports().files->FileExists(source.path)) continue;
    if (++count <= kFilesShown) missing += (count == 1 ? "" : ", ") + session.PosixPath(source.path);
  }
  if (count == 0) return;
  if (count > kFilesShown) missing += fmt::format(" and {} more", count - kFilesShown);
  const std::string what = fmt::format("{} of {} missing.", Counted(count, "file"),
                                       project.Name() + (count == 1 ? " is" : " are"));
  const std::string mend = fmt::format("Put them there, or take their rows out of {}",
                                       ShellQuote(session.PosixPath(project.ProjectPath())));
  // One that is not compiled fails no build.
  project.CompileMe() ? findings.Fail(what, missing, mend) : findings.Note(what, missing, mend);
}

}  // namespace

void CheckProjectFiles(Session& session, const ExaminedBuild& examined, Findings& findings) {
  for (const auto& project : examined.projects) {
    const std::string path = session.PosixPath(project->ProjectPath());
    if (!Ports().files->FileExists(project->ProjectPath())) {
      findings.Fail(fmt::format("The project file of {} is missing.", project->Name()), path,
                    fmt::format("hearthmake remove {} {}", examined.name, ShellQuote(project->Name())));
      continue;
    }
    std::string why;
    if (!IsWritable(path, why)) {
      findings.Warn(
          fmt::format("The project file of {} can't be brought up to date: {}.", project->Name(), why), path,
          "chmod u+w " + ShellQuote(path));
    }
    CheckSources(session, *project, findings);
  }
}

}  // namespace hearthmake::host
