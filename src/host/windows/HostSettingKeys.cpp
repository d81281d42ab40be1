#include "host/HostSettings.hpp"

namespace hearthmake::host {

// Drives, versions and temporary files are those of the system.
bool HostSettings::ChoosesDrives() { return false; }

const std::vector<HostSettings::Key>& HostSettings::Keys() {
  static const std::vector<Key> kKeys = {
      {kScriptEngineKey,
       "what runs the scripts of builds: 'control' (the Script Control), 'own', or nothing for\n"
       "                   the control where one works; Hearthmake.dll follows it too"}};
  return kKeys;
}

}  // namespace hearthmake::host
