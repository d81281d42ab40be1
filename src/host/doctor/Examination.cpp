#include "host/doctor/Examination.hpp"

#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

struct MachineCheck {
  const char* name;
  void (*look)(Session& session, Findings& findings);
};

struct BuildCheck {
  const char* name;
  void (*look)(Session& session, const ExaminedBuild& examined, Findings& findings);
  const char* fine;  // what is said when it finds nothing
};

constexpr MachineCheck kMachineChecks[] = {{"settings", &CheckSettings}, {"data", &CheckDataFolder},
                                           {"database", &CheckDatabase}, {"temporary", &CheckTemporaryFolder},
                                           {"compiler", &CheckCompiler}, {"wine", &CheckWinePrefix},
                                           {"tools", &CheckTools}};

constexpr BuildCheck kBuildChecks[] = {
    {"files", &CheckProjectFiles, "The project files and their sources are there."},
    {"names", &CheckNames, "No two projects have one name or one binary."},
    {"order", &CheckCycles, "The references have a compile order."},
    {"references", &CheckReferences, "The libraries that the projects reference are found."},
    {"output", &CheckOutputFolders, "The output folders are there and can be written."},
    {"compatibility", &CheckCompatibility, "The binaries to stay compatible with are there."},
    {"bases", &CheckBaseAddresses, "No two libraries want the same addresses."},
    {"registration", &CheckRegistration, "Every component that is there is registered."},
    {"sources", &CheckSourceProjects, "The source projects can be reached."}};

// What ends a check is a finding of its own. False then.
template <class Look>
bool Guarded(Findings& findings, const Look& look) {
  try {
    look();
    return true;
  } catch (const HostError& error) {
    findings.Fail(error.what(), "", error.Advice());
  } catch (const automation::Error& error) {
    findings.Fail(Printable(error.Description()), error.Source());
  }
  return false;
}

bool ExamineMachine(Session& session, Findings& findings) {
  // Without it nothing else can be looked at: a Wine prefix that is none, a drive that can't be.
  findings.Begin("host");
  if (!Guarded(findings, [&] { session.Library(); })) return false;
  bool areSettingsFine = false;
  for (const MachineCheck& check : kMachineChecks) {
    // Junk in the settings is told once.
    if (check.look == &CheckCompiler && !areSettingsFine) continue;
    findings.Begin(check.name);
    const bool isThrough = Guarded(findings, [&] { check.look(session, findings); });
    if (check.look == &CheckSettings) areSettingsFine = isThrough;
  }
  return true;
}

bool HasUsableDatabase(Session& session) {
  try {
    session.Database().Require();
    return true;
  } catch (const HostError&) {
    return false;  // which the check of the database has told
  }
}

void ExamineBuild(Session& session, const std::string& idOrName, Findings& findings) {
  const auto build = session.OpenBuild(idOrName);
  const ExaminedBuild examined{*build, AllProjects(*build), ShellQuote(build->Name())};
  for (const BuildCheck& check : kBuildChecks) {
    findings.Begin(check.name);
    const std::size_t before = findings.All().size();
    Guarded(findings, [&] { check.look(session, examined, findings); });
    if (findings.All().size() == before) findings.Ok(check.fine);
  }
}

}  // namespace

Findings Examine(Session& session, const std::string& build) {
  Findings findings;
  if (!ExamineMachine(session, findings) || build.empty()) return findings;
  if (HasUsableDatabase(session)) ExamineBuild(session, build, findings);
  return findings;
}

}  // namespace hearthmake::host
