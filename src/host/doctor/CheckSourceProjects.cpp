#include <fmt/format.h>

#include "foundation/Apartment.hpp"
#include "foundation/Settings.hpp"
#include "host/doctor/Checks.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

void CheckSourceProjects(Session& session, const ExaminedBuild& examined, Findings& findings) {
  const SourceList sources = AllSources(examined.build);
  if (sources.empty()) {
    findings.Ok("The build has no source projects.");
    return;
  }
  const bool isTaken = session.LibrarySettings()->TakeLatestFromVSS();
  for (const auto& source : sources) {
    const std::string edit =
        fmt::format("hearthmake sourceprojects {} edit {}", examined.name, ShellQuote(source->Project()));
    const std::string ini = source->SrcSafeIni();
    if (ini.empty() || !Ports().files->FileExists(ini)) {
      const std::string what =
          fmt::format("The ini file of the source project {} is missing.", source->Project());
      const std::string where = ini.empty() ? "" : session.PosixPath(ini);
      // Each build begins with it then.
      isTaken ? findings.Fail(what, where, edit + " --ini FILE")
              : findings.Warn(what, where, edit + " --ini FILE");
    }
    const std::string folder = source->WorkingFolder();
    if (folder.empty() || Ports().files->FolderExists(folder)) continue;
    findings.Note(fmt::format("The working folder of {} is not there; getting the sources makes it.",
                              source->Project()),
                  session.PosixPath(folder), fmt::format("hearthmake sources {}", examined.name));
  }
}

}  // namespace hearthmake::host
