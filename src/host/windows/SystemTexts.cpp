#include "host/system/SystemTexts.hpp"

namespace hearthmake::host {

const SystemTexts& Texts() {
  static const SystemTexts kTexts = {
      "data folder (else %HEARTHMAKE_DATA%, else the folder of this program)",
      "the settings of this command (the engine of scripts), kept in the registry for the user; an\n"
      "empty value takes one out",
      "Let the ActiveX components of a build register themselves (regsvr32, /RegServer), which is not\n"
      "waited for. Exit status 1 when one could not be registered.",
      "Not on Windows: this shows the catalog file that stands for component services elsewhere. Here\n"
      "deployments go to the machine's own catalog, which the window Component Services (dcomcnfg) shows.",
      [](const std::string& folder) { return "mkdir \"" + folder + '"'; }};
  return kTexts;
}

}  // namespace hearthmake::host
