#include "adapters/sqlite/Disk.hpp"

#include <windows.h>

#include <atomic>
#include <string_view>

#include "automation/Utf.hpp"

namespace hearthmake::sqlite::disk {

namespace {

constexpr int kAttempts = 100;  // names left behind by processes with our id that were killed
constexpr std::int64_t kNanosecondsPerTick = 100;

std::wstring Wide(std::string_view text) {
  const std::u16string units = automation::Utf8ToUtf16(text);
  return std::wstring(units.begin(), units.end());
}

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

bool IsMissing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
         error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME;
}

std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

}  // namespace

Kind KindOf(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(Wide(path).c_str(), GetFileExInfoStandard, &data) == 0) {
    return IsMissing(GetLastError()) ? Kind::Missing : Kind::Unreadable;
  }
  if ((data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0) return Kind::Other;
  return data.nFileSizeHigh == 0 && data.nFileSizeLow == 0 ? Kind::EmptyFile : Kind::File;
}

FileStamp StampOf(const std::string& path) {
  const HANDLE file =
      CreateFileW(Wide(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  BY_HANDLE_FILE_INFORMATION information{};
  const bool isKnown = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  if (!isKnown) return {};
  const std::uint64_t ticks =
      Joined(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime);
  return {information.dwVolumeSerialNumber, Joined(information.nFileIndexHigh, information.nFileIndexLow),
          static_cast<std::int64_t>(Joined(information.nFileSizeHigh, information.nFileSizeLow)),
          static_cast<std::int64_t>(ticks) * kNanosecondsPerTick};
}

bool Exists(const std::string& path) {
  return GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string MakeTemporary(const std::string& path, std::error_code& error) {
  static std::atomic<unsigned> counter = 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::string name =
        path + ".new-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++);
    const HANDLE file = CreateFileW(Wide(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
      CloseHandle(file);
      return name;
    }
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  error = LastError();
  return {};
}

void Remove(const std::string& path) { DeleteFileW(Wide(path).c_str()); }

std::error_code MoveWithoutReplacing(const std::string& from, const std::string& to) {
  if (MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0) return {};
  const DWORD error = GetLastError();
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) {
    return std::make_error_code(std::errc::file_exists);
  }
  return {static_cast<int>(error), std::system_category()};
}

// The move was written through.
void FlushFolderOf(const std::string& /*path*/) {}

bool IsFull(int systemError) {
  return systemError == ERROR_DISK_FULL || systemError == ERROR_HANDLE_DISK_FULL;
}

bool OpenFilesCanBeReplaced() { return false; }

}  // namespace hearthmake::sqlite::disk
