#include "host/system/Places.hpp"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "adapters/posix/IniSettingsStore.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

std::string EnvironmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string ProgramPath() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : "/";
}

std::string AbsoluteSystemPath(std::string_view typed) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(std::filesystem::path(typed), error);
  if (error) throw HostError("The current folder can't be found: " + error.message() + ".");
  std::string text = path.lexically_normal().string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

std::string DefaultDataFolder() {
  // The XDG rules: a relative path there is to be ignored.
  if (const std::string folder = EnvironmentValue("XDG_DATA_HOME"); folder.starts_with('/')) {
    return folder + "/hearthmake";
  }
  const std::string home = EnvironmentValue("HOME");
  if (home.empty()) {
    throw HostError("There is no place for the data: HOME is not set.", "Say where it goes with --data DIR.");
  }
  return home + "/.local/share/hearthmake";
}

std::string HostStorePlace(const std::string& dataFolder) { return dataFolder + "/host.ini"; }

std::unique_ptr<platform::SettingsStore> OpenHostStore(const std::string& dataFolder) {
  return std::make_unique<posix::IniSettingsStore>(HostStorePlace(dataFolder));
}

std::string LibrarySettingsPlace() { return posix::IniSettingsStore::DefaultPath(); }

bool OpensJet(const std::string& /*path*/) { return false; }

// Without Wine they are registered for them, at once.
bool RegistersInBackground(const std::string& winePrefix) { return !winePrefix.empty(); }

bool IsWritable(const std::string& path, std::string& why) {
  if (access(path.c_str(), W_OK) == 0) return true;
  why = std::generic_category().message(errno);
  return false;
}

void RemoveFile(const std::string& path) { unlink(path.c_str()); }

}  // namespace hearthmake::host
