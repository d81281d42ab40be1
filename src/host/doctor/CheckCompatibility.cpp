#include <fmt/format.h>

#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

// Where the file is missing a compile takes no compatibility at all: the component gets new identities, and
// the programs that know the old ones do not find it any more.
void CheckCompatibility(Session& session, const ExaminedBuild& examined, Findings& findings) {
  std::string fresh;
  for (const auto& project : examined.projects) {
    const std::string compatible = project->CompatibleEXE32();
    const bool isAsked = project->CompatibleMode() != CompatibleModes::NoCompatibility;
    if (!project->ISActiveX() || compatible.empty() || !isAsked) continue;
    const std::string path = AbsolutePath(project->Folder(), compatible);
    if (Ports().files->FileExists(path)) continue;
    if (automation::EqualsIgnoreCase(path, project->BinaryPath())) {
      fresh += (fresh.empty() ? "" : ", ") + project->Name();
      continue;
    }
    findings.Warn(
        fmt::format("The binary that {} is to stay compatible with is gone: the next compile gives it "
                    "new identities.",
                    project->Name()),
        session.PosixPath(path),
        fmt::format("Put the last shipped binary there, or: hearthmake set {} {} CompatibleMode "
                    "NoCompatibility",
                    examined.name, ShellQuote(project->Name())));
  }
  if (fresh.empty()) return;
  findings.Note(
      "These are to stay compatible with their own binaries, which are not there: the next compile gives "
      "them new identities.",
      fresh, fmt::format("hearthmake build {}", examined.name));
}

}  // namespace hearthmake::host
