#include "host/HostSettings.hpp"

namespace hearthmake::host {

bool HostSettings::ChoosesDrives() { return true; }

const std::vector<HostSettings::Key>& HostSettings::Keys() {
  static const std::vector<Key> kKeys = {
      {kWinePrefixKey, "Wine prefix whose drives and registry are used"},
      {kWineProgramKey, "program that runs Windows programs (wine)"},
      {kOsVersionKey, "major version of Windows that the library sees (of the prefix, else 10)"},
      {kTemporaryFolderKey, "folder for temporary files, without blanks ($TMPDIR or /tmp)"}};
  return kKeys;
}

}  // namespace hearthmake::host
