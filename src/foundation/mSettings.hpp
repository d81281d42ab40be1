#pragma once

#include <cstdint>
#include <string>

#include "foundation/Settings.hpp"

// The apartment's cached settings.
namespace hearthmake::mSettings {

// Loads them at first use.
Settings& GetSettings();
// The next access loads afresh.
void ResetSettings();

std::string VBExe();
bool SetProjectCompatible();
bool MakeFilesWriteable();
bool RunScripts();
bool CreateReport();
std::string BuildReport();
bool IgnoreScriptError();
std::int32_t ScriptTimeOut();

}  // namespace hearthmake::mSettings
