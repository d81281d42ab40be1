#include "host/system/Programs.hpp"

#include "adapters/posix/ProgramFinder.hpp"
#include "foundation/Apartment.hpp"
#include "host/posix/HostDrives.hpp"

namespace hearthmake::host {

using posix::ProgramFinder;

FoundProgram FindProgram(Session& session, const std::string& commandLine) {
  session.Library();
  ProgramFinder finder(DrivesOf(session.Settings()), Ports().system->SystemFolder());
  const auto match = finder.Find(commandLine);
  if (!match) return {};
  const bool isWindows = match->program->kind == ProgramFinder::Kind::Windows;
  return {isWindows ? ProgramKind::NeedsWine : ProgramKind::Native, match->program->path};
}

std::string FindTool(const std::string& name) { return ProgramFinder::FindNative(name); }

}  // namespace hearthmake::host
