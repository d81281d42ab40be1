#include "foundation/Settings.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

void CheckSettings(Session& session, Findings& findings) {
  session.LibrarySettings();  // its error says which line is wrong
  findings.Ok("The settings can be read.", LibrarySettingsPlace());
}

}  // namespace hearthmake::host
