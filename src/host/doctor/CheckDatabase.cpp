#include <fmt/format.h>

#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/sqlite/Integrity.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"
#include "host/text/Numbers.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

void CheckDatabase(Session& session, Findings& findings) {
  const BuildDatabase database = session.Database();
  const std::string& path = database.Path();
  switch (sqlite::DetectFormat(path)) {
    case sqlite::FileFormat::Missing:
      findings.Note("There is no build database yet.", path, "hearthmake new NAME");
      return;
    case sqlite::FileFormat::Jet:
      findings.Fail("This is a Jet database, which is never changed here: its builds can be taken over.",
                    path, fmt::format("hearthmake import {} --into NEW_DATA_FOLDER", ShellQuote(path)));
      return;
    default: break;
  }
  database.Require();  // tells of every other file that is no database, and of one that lacks something
  for (const std::string& problem : sqlite::IntegrityProblems(path)) {
    findings.Fail(fmt::format("The database is damaged: {}", problem), path, "Put a good copy in its place.");
  }
  std::string why;
  if (!IsWritable(path, why)) {
    findings.Fail(fmt::format("The database can't be written: {}.", why), path,
                  "chmod u+rw " + ShellQuote(path));
  }
  if (findings.Count(Severity::Error) == 0) {
    const std::string builds = Counted(session.ListBuilds().size(), "build");
    findings.Ok(fmt::format("The database is sound; it has {}.", builds), path);
  }
}

}  // namespace hearthmake::host
