#include <fmt/format.h>

#include "host/builds/BinaryState.hpp"
#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

void CheckRegistration(Session& session, const ExaminedBuild& examined, Findings& findings) {
  std::size_t missing = 0;
  for (const auto& project : examined.projects) {
    const BinaryState state = ReadBinary(*project);
    if (!state.isThere) {
      ++missing;
      continue;
    }
    if (!state.isComponent || state.IsRegistered()) continue;
    const std::string path = session.PosixPath(state.path);
    if (!state.problem.empty()) {
      findings.Warn(
          fmt::format("The binary of {} can't be read: {}", project->Name(), Printable(state.problem)), path,
          fmt::format("hearthmake build {}", examined.name));
    } else {
      findings.Warn(
          state.registeredPath.empty() ? fmt::format("{} is not registered.", project->Name())
                                       : fmt::format("{} is registered elsewhere: {}", project->Name(),
                                                     Printable(session.PosixPath(state.registeredPath))),
          path, fmt::format("hearthmake register {} {}", examined.name, ShellQuote(project->Name())));
    }
  }
  if (missing > 0) {
    findings.Note(fmt::format("{} of {} binaries are not there yet.", missing, examined.projects.size()), "",
                  fmt::format("hearthmake build {}", examined.name));
  }
}

}  // namespace hearthmake::host
