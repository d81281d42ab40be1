#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/SettingsStore.hpp"

namespace hearthmake::host {

// What each operating system keeps in a place of its own. Paths are the system's, in UTF-8.

// Of the process; empty when it is not set.
std::string EnvironmentValue(const char* name);
// The program that runs.
std::string ProgramPath();
// A typed path made absolute from the current folder, without a look at the disk.
std::string AbsoluteSystemPath(std::string_view typed);

// Where data lies when nobody says where. HostError when there is no place.
std::string DefaultDataFolder();
// The settings of the host itself, and what their place is called.
std::unique_ptr<platform::SettingsStore> OpenHostStore(const std::string& dataFolder);
std::string HostStorePlace(const std::string& dataFolder);
// What the place of the library's settings is called.
std::string LibrarySettingsPlace();

// Whether components register themselves, in a process that nobody waits for.
bool RegistersInBackground(const std::string& winePrefix);

// Whether this machine has an engine that works on the Jet file.
bool OpensJet(const std::string& path);

// Whether the folder or file can be written; else why not.
bool IsWritable(const std::string& path, std::string& why);
void RemoveFile(const std::string& path);

}  // namespace hearthmake::host
