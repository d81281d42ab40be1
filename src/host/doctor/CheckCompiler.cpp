#include <fmt/format.h>

#include "foundation/Settings.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Programs.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

constexpr const char* kMend = "hearthmake settings VBExe PATH";

void CheckWineProgram(Session& session, const std::string& compiler, Findings& findings) {
  const std::string wine = session.Settings().WineProgram();
  const std::string found = FindTool(wine);
  if (found.empty()) {
    findings.Fail(fmt::format("The compiler is a Windows program, and {} to run it is not found.", wine),
                  compiler, "Install Wine, or say where it is: hearthmake settings --host WineProgram PATH");
    return;
  }
  findings.Ok(fmt::format("The compiler is a Windows program; {} runs it.", found), compiler);
  if (!session.Settings().WinePrefix().empty()) return;
  findings.Warn(
      "No Wine prefix is said: the compiler runs in Wine's own, whose drives and registry may be others.",
      compiler, "hearthmake settings --host WinePrefix DIR");
}

}  // namespace

void CheckCompiler(Session& session, Findings& findings) {
  const std::string setting = session.LibrarySettings()->VBExe();
  if (setting.empty()) {
    findings.Fail("No compiler is set.", "VBExe", kMend);
    return;
  }
  const FoundProgram program = FindProgram(session, setting);
  switch (program.kind) {
    case ProgramKind::Missing:
      findings.Fail(fmt::format("The compiler is not there, or can't be started: {}", setting), "VBExe",
                    kMend);
      return;
    case ProgramKind::Native: findings.Ok("The compiler is a program of this system.", program.path); return;
    case ProgramKind::NeedsWine: CheckWineProgram(session, program.path, findings);
  }
}

}  // namespace hearthmake::host
