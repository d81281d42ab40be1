#include <fmt/format.h>

#include <filesystem>

#include "foundation/Apartment.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

namespace fs = std::filesystem;

void CheckDrives(Session& session, Findings& findings) {
  for (const char letter : Ports().files->DriveLetters()) {
    const std::string root = std::string(1, letter) + ":\\";
    std::error_code ignored;
    const std::string folder = session.PosixPath(root);
    if (fs::is_directory(folder, ignored)) continue;
    // The built-in C: is made when something goes there.
    findings.Note(fmt::format("Drive {}: leads to a folder that is not there.", letter), folder,
                  fmt::format("mkdir -p {}", ShellQuote(folder)));
  }
}

}  // namespace

void CheckWinePrefix(Session& session, Findings& findings) {
  const std::string prefix = session.Settings().WinePrefix();
  CheckDrives(session, findings);
  if (RegistersInBackground({})) {
    findings.Ok("Drives and registry are those of the system.");
    return;
  }
  if (prefix.empty()) {
    findings.Ok("There is no Wine prefix: drives and registry are those of the data folder.",
                session.Settings().DataFolder());
    return;
  }
  std::error_code ignored;
  const std::string make = fmt::format("WINEPREFIX={} wineboot", ShellQuote(prefix));
  if (!fs::is_directory(prefix + "/drive_c", ignored)) {
    findings.Fail("The Wine prefix has no drive C.", prefix, make);
  } else if (!fs::is_regular_file(prefix + "/system.reg", ignored)) {
    findings.Fail("The Wine prefix has no registry.", prefix, make);
  } else if (!Ports().registry->KeyExists(platform::RegistryRoot::ClassesRoot, "TypeLib")) {
    findings.Warn("The registry of the Wine prefix knows no type library.", prefix, make);
  } else {
    findings.Ok("The Wine prefix has its drives and its registry.", prefix);
  }
}

}  // namespace hearthmake::host
