#include "host/system/SystemTexts.hpp"

namespace hearthmake::host {

const SystemTexts& Texts() {
  static const SystemTexts kTexts = {
      "data folder (else $HEARTHMAKE_DATA, $XDG_DATA_HOME/hearthmake, ~/.local/share/hearthmake)",
      "the settings of this command (Wine prefix, drives, ...), kept in the data folder; an\n"
      "empty value takes one out",
      "Register the ActiveX components of a build: in the registry of the data folder, or by running\n"
      "them under Wine (which is not waited for). Exit status 1 when one could not be registered.",
      "Show what is installed in the catalog; with BUILD, where it differs from what a deployment\n"
      "of the build would make of an empty one (exit status 1 when it does).",
      [](const std::string& folder) { return "mkdir -p '" + folder + "'"; }};
  return kTexts;
}

}  // namespace hearthmake::host
