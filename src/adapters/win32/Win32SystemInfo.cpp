#include "adapters/win32/Win32SystemInfo.hpp"

#include <windows.h>
#include <winternl.h>
// A macro of the system's headers that has the name of a member.
#undef SetEnvironmentVariable

#include <utility>

#include "adapters/win32/WideText.hpp"

namespace hearthmake::win32 {

namespace {

// Calls what fills a buffer of some size and returns the length without the final zero, or the size that it
// would need; 0 on a failure.
template <class Fill>
std::wstring Filled(Fill fill) {
  std::wstring text(MAX_PATH + 1, L'\0');
  DWORD length = fill(text.data(), static_cast<DWORD>(text.size()));
  while (length >= text.size()) {
    text.resize(length + 1);
    length = fill(text.data(), static_cast<DWORD>(text.size()));
  }
  text.resize(length);
  return text;
}

// The root of a drive keeps its backslash: `C:` alone would be the current folder of the drive.
std::string WithoutBackslash(std::string folder) {
  while (folder.size() > 1 && folder.back() == '\\' && folder[folder.size() - 2] != ':') folder.pop_back();
  return folder;
}

std::string FolderOfThisModule() {
  HMODULE module = nullptr;
  constexpr DWORD kFlags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  // An address in this module tells which one it is.
  static const int kHere = 0;
  GetModuleHandleExW(kFlags, reinterpret_cast<LPCWSTR>(&kHere), &module);
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  // A path that is cut has the length of its buffer.
  while ((length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()))) == path.size()) {
    path.resize(path.size() * 2);
  }
  path.resize(length);
  return WithoutBackslash(ToUtf8(path.substr(0, path.rfind(L'\\') + 1)));
}

bool IsVariableName(std::string_view name) {
  return !name.empty() && name.find('=') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

}  // namespace

Win32SystemInfo::Win32SystemInfo(std::string componentFolder)
    : m_componentFolder(componentFolder.empty() ? FolderOfThisModule()
                                                : WithoutBackslash(std::move(componentFolder))) {}

std::string Win32SystemInfo::TemporaryFolder() {
  std::string folder = ToUtf8(Filled([](wchar_t* text, DWORD size) { return GetTempPathW(size, text); }));
  if (!folder.ends_with('\\')) folder += '\\';
  return folder;
}

std::string Win32SystemInfo::SystemFolder() {
  return WithoutBackslash(
      ToUtf8(Filled([](wchar_t* text, DWORD size) { return GetSystemDirectoryW(text, size); })));
}

std::string Win32SystemInfo::ComponentFolder() { return m_componentFolder; }

std::int32_t Win32SystemInfo::MajorVersion() {
  using RtlGetVersion = NTSTATUS(WINAPI*)(RTL_OSVERSIONINFOW*);
  const HMODULE kernel = GetModuleHandleW(L"ntdll.dll");
  // Through void, as no conversion between kinds of functions is meant.
  const auto getVersion =
      reinterpret_cast<RtlGetVersion>(reinterpret_cast<void*>(GetProcAddress(kernel, "RtlGetVersion")));
  RTL_OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (getVersion == nullptr || getVersion(&version) != 0) return 0;
  return static_cast<std::int32_t>(version.dwMajorVersion);
}

std::optional<std::string> Win32SystemInfo::EnvironmentVariable(std::string_view name) {
  if (!IsVariableName(name)) return std::nullopt;
  const std::wstring systemName = ToWide(name);
  SetLastError(ERROR_SUCCESS);
  const std::wstring value = Filled(
      [&](wchar_t* text, DWORD size) { return GetEnvironmentVariableW(systemName.c_str(), text, size); });
  if (value.empty() && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
  return ToUtf8(value);
}

std::vector<std::string> Win32SystemInfo::Environment() {
  std::vector<std::string> variables;
  wchar_t* const block = GetEnvironmentStringsW();
  if (block == nullptr) return variables;
  for (std::wstring_view variable = block; !variable.empty();
       variable = variable.data() + variable.size() + 1) {
    // The current folders of the drives are kept as variables "=C:".
    if (variable.front() != L'=') variables.push_back(ToUtf8(variable));
  }
  FreeEnvironmentStringsW(block);
  return variables;
}

void Win32SystemInfo::SetEnvironmentVariable(std::string_view name, const std::optional<std::string>& value) {
  if (!IsVariableName(name)) return;
  SetEnvironmentVariableW(ToWide(name).c_str(), value ? ToWide(*value).c_str() : nullptr);
}

std::string Win32SystemInfo::ComputerName() {
  std::wstring name(MAX_COMPUTERNAME_LENGTH + 1, L'\0');
  auto length = static_cast<DWORD>(name.size());
  if (GetComputerNameW(name.data(), &length) == 0) return "localhost";
  return ToUtf8(name.substr(0, length));
}

std::string Win32SystemInfo::UserName() {
  std::wstring name(257, L'\0');  // a user's name has at most 256 units
  auto length = static_cast<DWORD>(name.size());
  if (GetUserNameW(name.data(), &length) == 0) return EnvironmentVariable("USERNAME").value_or("");
  return ToUtf8(name.substr(0, length == 0 ? 0 : length - 1));
}

}  // namespace hearthmake::win32
