#include "host/system/Places.hpp"

#include <windows.h>

#include <filesystem>
#include <system_error>

#include "adapters/dao/JetOrElseWorkspace.hpp"
#include "adapters/win32/RegistrySettingsStore.hpp"
#include "adapters/win32/WideText.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

std::string EnvironmentValue(const char* name) {
  return win32::Win32SystemInfo().EnvironmentVariable(name).value_or("");
}

std::string ProgramPath() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return win32::ToUtf8(path);
}

std::string AbsoluteSystemPath(std::string_view typed) {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(win32::ToWide(typed), error);
  if (error) throw HostError("The current folder can't be found: " + error.message() + ".");
  std::string text = win32::ToUtf8(path.lexically_normal().native());
  while (text.size() > 3 && text.back() == '\\') text.pop_back();
  return text;
}

// Beside the program, where the library's own server has its data too.
std::string DefaultDataFolder() { return win32::Win32SystemInfo().ComponentFolder(); }

std::string HostStorePlace(const std::string& /*dataFolder*/) {
  return "HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Host\\Settings";
}

std::unique_ptr<platform::SettingsStore> OpenHostStore(const std::string& /*dataFolder*/) {
  return std::make_unique<win32::RegistrySettingsStore>();
}

std::string LibrarySettingsPlace() {
  return "HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Hearthmake\\VB";
}

bool OpensJet(const std::string& path) { return dao::HasEngineFor(path); }

bool RegistersInBackground(const std::string& /*winePrefix*/) { return true; }

bool IsWritable(const std::string& path, std::string& why) {
  const DWORD attributes = GetFileAttributesW(win32::ToWide(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    why = std::system_category().message(static_cast<int>(GetLastError()));
    return false;
  }
  const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (isFolder || (attributes & FILE_ATTRIBUTE_READONLY) == 0) return true;
  why = "The file is read-only";
  return false;
}

void RemoveFile(const std::string& path) { DeleteFileW(win32::ToWide(path).c_str()); }

}  // namespace hearthmake::host
