#include "adapters/scriptcontrol/ChosenEngine.hpp"

#include <string>

#include "adapters/win32/RegistrySettingsStore.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::scriptcontrol {

namespace {

std::string ChosenText() {
  std::string text = win32::Win32SystemInfo().EnvironmentVariable("HEARTHMAKE_SCRIPT_ENGINE").value_or("");
  if (!text.empty()) return text;
  for (const auto& [name, value] : win32::RegistrySettingsStore().GetAll("Host", "Settings")) {
    if (automation::EqualsIgnoreCaseAscii(name, "ScriptEngine")) text = value;
  }
  return text;
}

}  // namespace

Choice ChosenEngine() {
  try {
    return ParseChoice(ChosenText());
  } catch (const automation::Error&) {
    return Choice::Automatic;
  }
}

}  // namespace hearthmake::scriptcontrol
