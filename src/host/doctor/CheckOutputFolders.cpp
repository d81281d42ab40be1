#include <fmt/format.h>

#include <set>

#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

void CheckOutputFolders(Session& session, const ExaminedBuild& examined, Findings& findings) {
  std::set<std::string> seen;
  for (const auto& project : examined.projects) {
    const std::string dosFolder(FolderPart(project->BinaryPath()));
    const std::string folder = session.PosixPath(dosFolder);
    std::string why;
    if (seen.insert(dosFolder).second) {
      if (!Ports().files->FolderExists(dosFolder)) {
        findings.Fail(fmt::format("The output folder of {} is missing.", project->Name()), folder,
                      "mkdir -p " + ShellQuote(folder));
      } else if (!IsWritable(folder, why)) {
        findings.Fail(fmt::format("The output folder of {} can't be written: {}.", project->Name(), why),
                      folder, "chmod u+rwx " + ShellQuote(folder));
      }
    }
    const std::string copies = project->CopyPath();
    if (copies.empty() || !seen.insert(copies).second || Ports().files->FolderExists(copies)) continue;
    findings.Warn(fmt::format("The folder to which {} is copied is missing.", project->Name()),
                  session.PosixPath(copies), "mkdir -p " + ShellQuote(session.PosixPath(copies)));
  }
}

}  // namespace hearthmake::host
