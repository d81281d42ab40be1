#include "adapters/win32/SystemPath.hpp"

#include <windows.h>

#include "adapters/win32/WideText.hpp"

namespace hearthmake::win32 {

namespace {

// A folder's path must leave room for a name of the old 8.3 form, so the limit of folders is the lower one.
constexpr std::size_t kShortPath = MAX_PATH - 12;
constexpr std::size_t kLongestPath = 32'000;

std::wstring WithoutLimit(const std::wstring& path) {
  if (path.starts_with(LR"(\\?\)") || path.starts_with(LR"(\\.\)")) return path;
  if (path.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + path.substr(1);
  return LR"(\\?\)" + path;
}

}  // namespace

std::optional<std::wstring> ToSystemPath(std::string_view dosPath) {
  if (dosPath.empty() || dosPath.size() > 4 * kLongestPath) return std::nullopt;
  if (dosPath.find('\0') != std::string_view::npos) return std::nullopt;
  const std::wstring typed = ToWide(dosPath);
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = GetFullPathNameW(typed.c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
  if (length >= path.size()) {
    path.resize(length);
    length = GetFullPathNameW(typed.c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
  }
  if (length == 0 || length >= path.size() || length > kLongestPath) return std::nullopt;
  path.resize(length);
  return path.size() < kShortPath ? path : WithoutLimit(path);
}

std::wstring FolderOf(const std::wstring& systemPath) {
  return systemPath.substr(0, systemPath.rfind(L'\\') + 1);
}

std::wstring AsOnDisk(const std::wstring& systemPath) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(systemPath.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return systemPath;
  FindClose(search);
  return FolderOf(systemPath) + found.cFileName;
}

}  // namespace hearthmake::win32
