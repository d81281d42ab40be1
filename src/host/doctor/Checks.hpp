#pragma once

#include <string>

#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/doctor/Findings.hpp"

namespace hearthmake::host {

// What a check of a build looks at.
struct ExaminedBuild {
  Build& build;
  ProjectList projects;  // in list order
  std::string name;      // as a command line names the build, in quotes
};

// The checks, one file each. Each looks, changes nothing and adds what it finds. Errors that it meets become
// findings where it is called.

void CheckSettings(Session& session, Findings& findings);
void CheckDataFolder(Session& session, Findings& findings);
void CheckDatabase(Session& session, Findings& findings);
void CheckTemporaryFolder(Session& session, Findings& findings);
void CheckCompiler(Session& session, Findings& findings);
void CheckWinePrefix(Session& session, Findings& findings);
void CheckTools(Session& session, Findings& findings);

void CheckProjectFiles(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckNames(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckCycles(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckReferences(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckOutputFolders(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckCompatibility(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckBaseAddresses(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckRegistration(Session& session, const ExaminedBuild& examined, Findings& findings);
void CheckSourceProjects(Session& session, const ExaminedBuild& examined, Findings& findings);

}  // namespace hearthmake::host
