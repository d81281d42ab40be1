#include "adapters/win32/Win32FileSystem.hpp"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

#include "adapters/win32/FileFailure.hpp"
#include "adapters/win32/FileStreams.hpp"
#include "adapters/win32/Handle.hpp"
#include "adapters/win32/ReplacementFile.hpp"
#include "adapters/win32/SystemPath.hpp"
#include "adapters/win32/SystemTime.hpp"
#include "adapters/win32/WideText.hpp"

namespace hearthmake::win32 {

namespace {

using automation::RuntimeError;
using platform::FileStamp;
using platform::FolderEntry;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kNothing = INVALID_FILE_ATTRIBUTES;
// The attributes that the port tells of; they have the system's values.
constexpr DWORD kKnownAttributes =
    platform::kReadOnly | platform::kHidden | platform::kSystem | platform::kFolder | platform::kArchive;
constexpr DWORD kSettableAttributes = kKnownAttributes & ~std::uint32_t{platform::kFolder};
constexpr std::size_t kChunk = 64U << 10U;
// What a string of Visual Basic could hold at most.
constexpr std::uint64_t kLargestText = std::numeric_limits<std::int32_t>::max();

constexpr std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; }

bool IsFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
bool IsReadOnly(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_READONLY) != 0; }

std::wstring RequirePath(std::string_view path) {
  std::optional<std::wstring> systemPath = ToSystemPath(path);
  if (!systemPath) RaiseFileFailure(RuntimeError::PathNotFound, path);
  return std::move(*systemPath);
}

DWORD AttributesOf(const std::wstring& systemPath) { return GetFileAttributesW(systemPath.c_str()); }
DWORD AttributesOf(std::string_view path) {
  const std::optional<std::wstring> systemPath = ToSystemPath(path);
  return systemPath ? AttributesOf(*systemPath) : kNothing;
}

// The failure of a call that wants a file. The system refuses folders and read-only files in the same words
// as what one has no right to; there the difference is looked up.
[[noreturn]] void RaiseOpening(DWORD error, std::string_view path, const std::wstring& systemPath,
                               bool isToWrite) {
  if (error == ERROR_ACCESS_DENIED) {
    const DWORD attributes = AttributesOf(systemPath);
    const bool isThere = attributes != kNothing;
    if (isThere && (IsFolder(attributes) || (isToWrite && IsReadOnly(attributes)))) {
      RaiseFileFailure(RuntimeError::PathFileAccess, path);
    }
  }
  RaiseSystemError(error, path);
}

[[noreturn]] void RaiseForFolder(DWORD error, std::string_view path) {
  RaiseSystemError(
      error == ERROR_FILE_NOT_FOUND || error == ERROR_INVALID_NAME ? ERROR_PATH_NOT_FOUND : error, path);
}

// Root under Wine is let through where the system would refuse.
void RequireWritable(const std::wstring& systemPath, std::string_view path) {
  const DWORD attributes = AttributesOf(systemPath);
  if (attributes != kNothing && (IsFolder(attributes) || IsReadOnly(attributes))) {
    RaiseFileFailure(RuntimeError::PathFileAccess, path);
  }
}

void RequireOnDisk(const Handle& file, std::string_view path) {
  if (GetFileType(file.Get()) != FILE_TYPE_DISK) RaiseFileFailure(RuntimeError::PathFileAccess, path);
}

Handle OpenWith(const std::wstring& systemPath, DWORD access, DWORD disposition) {
  return Handle(CreateFileW(systemPath.c_str(), access, kShareAll, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

Handle OpenForReading(std::string_view path, DWORD disposition = OPEN_EXISTING) {
  const std::wstring systemPath = RequirePath(path);
  Handle file = OpenWith(systemPath, GENERIC_READ, disposition);
  if (!file) RaiseOpening(GetLastError(), path, systemPath, false);
  RequireOnDisk(file, path);
  return file;
}

std::uint64_t SizeOf(const Handle& file, std::string_view path) {
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file.Get(), &size) == 0) RaiseSystemError(GetLastError(), path);
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::string ReadAll(const Handle& file, std::string_view path) {
  const std::uint64_t size = SizeOf(file, path);
  if (size > kLargestText) RaiseFileFailure(RuntimeError::OutOfMemory, path);
  std::string bytes;
  try {
    bytes.resize(static_cast<std::size_t>(size));
  } catch (const std::bad_alloc&) {
    RaiseFileFailure(RuntimeError::OutOfMemory, path);
  }
  std::size_t done = 0;
  const DWORD error = ReadFully(file.Get(), bytes.data(), bytes.size(), done);
  if (error != ERROR_SUCCESS) RaiseSystemError(error, path);
  bytes.resize(done);
  return bytes;
}

bool HasBytes(const Handle& file, std::string_view path, std::string_view bytes) {
  if (SizeOf(file, path) != bytes.size()) return false;
  std::array<char, kChunk> buffer;
  while (!bytes.empty()) {
    const std::size_t count = std::min(bytes.size(), buffer.size());
    std::size_t done = 0;
    if (ReadFully(file.Get(), buffer.data(), count, done) != ERROR_SUCCESS || done != count) return false;
    if (std::memcmp(buffer.data(), bytes.data(), count) != 0) return false;
    bytes.remove_prefix(count);
  }
  return true;
}

std::optional<BY_HANDLE_FILE_INFORMATION> Look(std::string_view path) {
  const std::optional<std::wstring> systemPath = ToSystemPath(path);
  if (!systemPath) return std::nullopt;
  const Handle file(CreateFileW(systemPath->c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION information{};
  if (!file || GetFileType(file.Get()) != FILE_TYPE_DISK ||
      GetFileInformationByHandle(file.Get(), &information) == 0) {
    return std::nullopt;
  }
  return information;
}

bool IsSameFile(std::string_view left, std::string_view right) {
  const auto a = Look(left);
  const auto b = Look(right);
  return a && b && a->dwVolumeSerialNumber == b->dwVolumeSerialNumber &&
         a->nFileIndexHigh == b->nFileIndexHigh && a->nFileIndexLow == b->nFileIndexLow;
}

bool Move(const std::wstring& from, const std::wstring& to) {
  return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED) != 0;
}

bool IsSameName(const std::wstring& left, const std::wstring& right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

// A folder on the way of CreateFolders.
bool MakeFolder(const std::wstring& systemPath) {
  return CreateDirectoryW(systemPath.c_str(), nullptr) != 0 || GetLastError() == ERROR_ALREADY_EXISTS;
}

// The system shows a box when a drive has no disk in it; here that is just an answer.
class NoErrorBoxes {
 public:
  NoErrorBoxes() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_old); }
  NoErrorBoxes(const NoErrorBoxes&) = delete;
  NoErrorBoxes& operator=(const NoErrorBoxes&) = delete;
  ~NoErrorBoxes() { SetThreadErrorMode(m_old, nullptr); }

 private:
  DWORD m_old = 0;
};

platform::VolumeKind KindOf(UINT driveType) {
  switch (driveType) {
    case DRIVE_REMOVABLE: return platform::VolumeKind::Removable;
    case DRIVE_FIXED: return platform::VolumeKind::Fixed;
    case DRIVE_REMOTE: return platform::VolumeKind::Network;
    case DRIVE_CDROM: return platform::VolumeKind::CdRom;
    case DRIVE_RAMDISK: return platform::VolumeKind::RamDisk;
    default: return platform::VolumeKind::Unknown;
  }
}

class CloseSearch {
 public:
  explicit CloseSearch(HANDLE search) : m_search(search) {}
  CloseSearch(const CloseSearch&) = delete;
  CloseSearch& operator=(const CloseSearch&) = delete;
  ~CloseSearch() { FindClose(m_search); }

 private:
  HANDLE m_search;
};

FolderEntry ToEntry(const WIN32_FIND_DATAW& found, std::string name) {
  const bool isReparsePoint = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  const bool isLink = isReparsePoint && (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                                         found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
  return {std::move(name), IsFolder(found.dwFileAttributes), isLink};
}

}  // namespace

bool Win32FileSystem::FileExists(std::string_view path) {
  const DWORD attributes = AttributesOf(path);
  return attributes != kNothing && !IsFolder(attributes) && (attributes & FILE_ATTRIBUTE_DEVICE) == 0;
}

bool Win32FileSystem::FolderExists(std::string_view path) {
  const DWORD attributes = AttributesOf(path);
  return attributes != kNothing && IsFolder(attributes);
}

FileStamp Win32FileSystem::Stamp(std::string_view path) {
  const auto found = Look(path);
  if (!found || IsFolder(found->dwFileAttributes)) return {};
  // Indices are unique on one volume only; the odd factor keeps those of two volumes apart.
  return {Joined(found->nFileIndexHigh, found->nFileIndexLow) +
              found->dwVolumeSerialNumber * std::uint64_t{0x9E3779B97F4A7C15U},
          static_cast<std::int64_t>(Joined(found->nFileSizeHigh, found->nFileSizeLow)),
          ToUnixNanoseconds(found->ftLastWriteTime)};
}

platform::FileDetails Win32FileSystem::Details(std::string_view path) {
  const std::wstring systemPath = RequirePath(path);
  WIN32_FILE_ATTRIBUTE_DATA found{};
  if (GetFileAttributesExW(systemPath.c_str(), GetFileExInfoStandard, &found) == 0) {
    RaiseSystemError(GetLastError(), path);
  }
  platform::FileDetails details;
  details.isFolder = IsFolder(found.dwFileAttributes);
  details.attributes = found.dwFileAttributes & kKnownAttributes;
  details.size = details.isFolder ? 0 : Joined(found.nFileSizeHigh, found.nFileSizeLow);
  details.created = ToLocalOleDate(found.ftCreationTime);
  details.accessed = ToLocalOleDate(found.ftLastAccessTime);
  details.modified = ToLocalOleDate(found.ftLastWriteTime);
  return details;
}

std::uint32_t Win32FileSystem::Attributes(std::string_view path) {
  const DWORD attributes = AttributesOf(RequirePath(path));
  if (attributes == kNothing) RaiseSystemError(GetLastError(), path);
  return attributes & kKnownAttributes;
}

void Win32FileSystem::SetAttributes(std::string_view path, std::uint32_t attributes) {
  const std::wstring systemPath = RequirePath(path);
  // An empty set has a value of its own.
  const DWORD wanted = attributes & kSettableAttributes;
  if (SetFileAttributesW(systemPath.c_str(), wanted == 0 ? FILE_ATTRIBUTE_NORMAL : wanted) == 0) {
    RaiseSystemError(GetLastError(), path);
  }
}

std::string Win32FileSystem::Read(std::string_view path) { return ReadAll(OpenForReading(path), path); }

std::string Win32FileSystem::ReadOrCreate(std::string_view path) {
  return ReadAll(OpenForReading(path, OPEN_ALWAYS), path);
}

std::unique_ptr<platform::RandomAccessFile> Win32FileSystem::Open(std::string_view path) {
  Handle file = OpenForReading(path);
  const std::uint64_t size = SizeOf(file, path);
  return std::make_unique<OpenFile>(std::move(file), size, std::string(path));
}

void Win32FileSystem::Replace(std::string_view path, std::string_view bytes) {
  const std::wstring systemPath = RequirePath(path);
  const DWORD attributes = AttributesOf(systemPath);
  if (attributes != kNothing) {
    RequireWritable(systemPath, path);
    const Handle old = OpenWith(systemPath, GENERIC_READ, OPEN_EXISTING);
    if (old) RequireOnDisk(old, path);
    // A file that we may not read can still be replaced.
    if (old && HasBytes(old, path, bytes)) return;
  }
  ReplacementFile replacement(systemPath, path);
  replacement.Write(bytes);
  if (attributes == kNothing) {
    replacement.Commit();
  } else {
    replacement.CommitKeepingOld();
  }
}

void Win32FileSystem::Append(std::string_view path, std::string_view bytes) {
  const std::wstring systemPath = RequirePath(path);
  RequireWritable(systemPath, path);
  Handle file = OpenWith(systemPath, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS);
  if (!file) RaiseOpening(GetLastError(), path, systemPath, true);
  RequireOnDisk(file, path);
  const std::uint64_t before = SizeOf(file, path);
  const DWORD error = WriteAll(file.Get(), bytes);
  if (error == ERROR_SUCCESS) return;
  file.Reset();
  // Who may only append can't cut.
  if (const Handle again = OpenWith(systemPath, GENERIC_WRITE, OPEN_EXISTING)) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(before);
    if (SetFilePointerEx(again.Get(), end, nullptr, FILE_BEGIN) != 0) SetEndOfFile(again.Get());
  }
  RaiseSystemError(error, path);
}

std::unique_ptr<platform::OutputStream> Win32FileSystem::OpenForWriting(std::string_view path,
                                                                        const platform::WriteMode& mode) {
  const std::wstring systemPath = RequirePath(path);
  if (mode.mayReplace) RequireWritable(systemPath, path);
  const DWORD access =
      mode.isAppended ? FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE : DWORD{GENERIC_WRITE};
  const DWORD disposition = !mode.mayReplace ? CREATE_NEW : mode.mayCreate ? OPEN_ALWAYS : OPEN_EXISTING;
  Handle file = OpenWith(systemPath, access, disposition);
  if (!file) RaiseOpening(GetLastError(), path, systemPath, true);
  RequireOnDisk(file, path);
  if (!mode.isAppended && SetEndOfFile(file.Get()) == 0) RaiseSystemError(GetLastError(), path);
  return std::make_unique<FileOutput>(std::move(file), std::string(path));
}

void Win32FileSystem::Remove(std::string_view path) {
  const std::wstring systemPath = RequirePath(path);
  RequireWritable(systemPath, path);
  if (DeleteFileW(systemPath.c_str()) == 0) RaiseOpening(GetLastError(), path, systemPath, true);
}

void Win32FileSystem::Copy(std::string_view from, std::string_view to) {
  // Whose fault a failed copy is the system does not say: the source is looked at first.
  OpenForReading(from);
  const std::wstring target = RequirePath(to);
  const DWORD attributes = AttributesOf(target);
  if (attributes != kNothing) {
    if (IsSameFile(from, to)) RaiseFileFailure(RuntimeError::PermissionDenied, to);
    RequireWritable(target, to);
  }
  ReplacementFile copy(target, to);
  copy.CopyFrom(RequirePath(from));
  copy.Commit();
}

void Win32FileSystem::Rename(std::string_view from, std::string_view to) {
  const std::wstring source = RequirePath(from);
  if (AttributesOf(source) == kNothing) RaiseSystemError(GetLastError(), from);
  const std::wstring target = RequirePath(to);
  if (!Move(source, target)) RaiseForFolder(GetLastError(), to);
  if (!IsSameName(source, target) || AsOnDisk(target) == target) return;
  // Wine takes a new spelling for the same name: it has to go by way of another.
  const std::wstring between = target + L".renamed";
  if (!Move(source, between) || !Move(between, target)) RaiseForFolder(GetLastError(), to);
}

void Win32FileSystem::CreateFolders(std::string_view path) {
  std::wstring folder = RequirePath(path);
  while (folder.size() > 1 && folder.back() == L'\\') folder.pop_back();
  const DWORD attributes = AttributesOf(folder);
  if (attributes != kNothing) {
    if (!IsFolder(attributes)) RaiseFileFailure(RuntimeError::PathFileAccess, path);
    return;
  }
  // Down from the first folder that is missing.
  std::vector<std::wstring> missing = {folder};
  while (true) {
    const std::size_t end = missing.back().rfind(L'\\');
    if (end == std::wstring::npos || end == 0) break;
    std::wstring above = missing.back().substr(0, end);
    if (above.back() == L':' || AttributesOf(above) != kNothing) break;
    missing.push_back(std::move(above));
  }
  for (auto part = missing.rbegin(); part != missing.rend(); ++part) {
    if (!MakeFolder(*part)) RaiseForFolder(GetLastError(), path);
  }
  if (!FolderExists(path)) RaiseFileFailure(RuntimeError::PathFileAccess, path);
}

void Win32FileSystem::CreateFolder(std::string_view path) {
  if (CreateDirectoryW(RequirePath(path).c_str(), nullptr) == 0) RaiseForFolder(GetLastError(), path);
}

void Win32FileSystem::RemoveFolder(std::string_view path) {
  if (RemoveDirectoryW(RequirePath(path).c_str()) == 0) RaiseForFolder(GetLastError(), path);
}

std::vector<FolderEntry> Win32FileSystem::List(std::string_view folder) {
  std::wstring pattern = RequirePath(folder);
  if (pattern.back() != L'\\') pattern += L'\\';
  pattern += L'*';
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                         nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    // The root of an empty drive has not even the dots.
    if (error == ERROR_FILE_NOT_FOUND && FolderExists(folder)) return {};
    RaiseForFolder(error, folder);
  }
  const CloseSearch close(search);
  std::vector<FolderEntry> entries;
  do {
    std::string name = ToUtf8(found.cFileName);
    if (name != "." && name != "..") entries.push_back(ToEntry(found, std::move(name)));
  } while (FindNextFileW(search, &found) != 0);
  if (GetLastError() != ERROR_NO_MORE_FILES) RaiseSystemError(GetLastError(), folder);
  return entries;
}

std::string Win32FileSystem::CurrentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
  if (length == 0 || length > folder.size()) RaiseForFolder(GetLastError(), ".");
  folder.resize(length);
  return ToUtf8(folder);
}

void Win32FileSystem::SetCurrentFolder(std::string_view path) {
  if (SetCurrentDirectoryW(RequirePath(path).c_str()) == 0) RaiseForFolder(GetLastError(), path);
}

std::string Win32FileSystem::DriveLetters() {
  const DWORD drives = GetLogicalDrives();
  std::string letters;
  for (int i = 0; i < 26; ++i) {
    if ((drives >> i & 1U) != 0) letters += static_cast<char>('A' + i);
  }
  return letters;
}

platform::VolumeDetails Win32FileSystem::Volume(char letter) {
  platform::VolumeDetails details;
  if (DriveLetters().find(static_cast<char>(letter & ~0x20)) == std::string::npos) return details;
  const std::wstring root = {static_cast<wchar_t>(letter), L':', L'\\'};
  details.kind = KindOf(GetDriveTypeW(root.c_str()));
  const NoErrorBoxes quiet;
  std::array<wchar_t, MAX_PATH + 1> fileSystem{};
  DWORD serialNumber = 0;
  ULARGE_INTEGER available{};
  ULARGE_INTEGER total{};
  ULARGE_INTEGER free{};
  details.isReady = GetVolumeInformationW(root.c_str(), nullptr, 0, &serialNumber, nullptr, nullptr,
                                          fileSystem.data(), static_cast<DWORD>(fileSystem.size())) != 0 &&
                    GetDiskFreeSpaceExW(root.c_str(), &available, &total, &free) != 0;
  if (!details.isReady) return details;
  details.totalBytes = total.QuadPart;
  details.freeBytes = free.QuadPart;
  details.availableBytes = available.QuadPart;
  details.fileSystem = ToUtf8(fileSystem.data());
  details.serialNumber = serialNumber;
  return details;
}

}  // namespace hearthmake::win32
