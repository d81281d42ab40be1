#include "foundation/mSettings.hpp"

#include "foundation/Apartment.hpp"

namespace hearthmake::mSettings {

Settings& GetSettings() {
  auto& slot = Apartment::Current().SettingsSlot();
  if (!slot) slot = automation::Make<Settings>();
  return *slot;
}

void ResetSettings() { Apartment::Current().SettingsSlot() = nullptr; }

std::string VBExe() { return GetSettings().VBExe(); }
bool SetProjectCompatible() { return GetSettings().SetProjectCompatible(); }
bool MakeFilesWriteable() { return GetSettings().MakeFilesWriteable(); }
bool RunScripts() { return GetSettings().RunScripts(); }
bool CreateReport() { return GetSettings().CreateReport(); }
std::string BuildReport() { return GetSettings().BuildReport(); }
bool IgnoreScriptError() { return GetSettings().IgnoreScriptError(); }
std::int32_t ScriptTimeOut() { return GetSettings().ScriptTimeOut(); }

}  // namespace hearthmake::mSettings
