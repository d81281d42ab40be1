#include "adapters/win32/ReplacementFile.hpp"

#include <atomic>
#include <utility>

#include "adapters/win32/FileFailure.hpp"
#include "adapters/win32/FileStreams.hpp"
#include "adapters/win32/SystemPath.hpp"

namespace hearthmake::win32 {

namespace {

constexpr int kNames = 100;  // names left behind by killed processes with our id
constexpr int kAttempts = 20;
constexpr DWORD kPause = 10;  // milliseconds

// Short whatever the target is called, so that a name of full length can be replaced too.
std::wstring TemporaryName(const std::wstring& target) {
  static std::atomic<unsigned> counter = 0;
  return FolderOf(target) + L".hearthmake-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
         std::to_wstring(counter++) + L".tmp";
}

bool IsPassing(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
         error == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

// Whether somebody has the file and lets nobody replace it. ReplaceFile would find out as well, but Wine's
// leaves files of its own behind then.
bool IsHeld(const std::wstring& file) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle probe(CreateFileW(file.c_str(), DELETE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
  return !probe && GetLastError() == ERROR_SHARING_VIOLATION;
}

// File systems that keep no permissions, and folders whose owner is another, know no ReplaceFile.
bool IsUnableToReplace(DWORD error) { return !IsPassing(error) && error != ERROR_DISK_FULL; }

}  // namespace

ReplacementFile::ReplacementFile(const std::wstring& target, std::string_view dosPath)
    : m_target(AsOnDisk(target)), m_dosPath(dosPath) {
  MakeTemporary();
}

void ReplacementFile::MakeTemporary() {
  for (int attempt = 0; attempt < kNames && !m_file; ++attempt) {
    const std::wstring name = TemporaryName(m_target);
    m_file = Handle(
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (m_file) {
      m_temporary = name;
    } else if (GetLastError() != ERROR_FILE_EXISTS) {
      break;
    }
  }
  if (!m_file) Fail(GetLastError());
}

ReplacementFile::~ReplacementFile() {
  m_file.Reset();
  if (m_temporary.empty()) return;
  SetFileAttributesW(m_temporary.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(m_temporary.c_str());
}

void ReplacementFile::Write(std::string_view bytes) {
  if (const DWORD error = WriteAll(m_file.Get(), bytes); error != ERROR_SUCCESS) Fail(error);
}

void ReplacementFile::CopyFrom(const std::wstring& source) {
  m_file.Reset();
  if (CopyFileW(source.c_str(), m_temporary.c_str(), FALSE) == 0) Fail(GetLastError());
  // Wine copies a file without them.
  SetFileAttributesW(m_temporary.c_str(), GetFileAttributesW(source.c_str()));
}

template <class Attempt>
void ReplacementFile::Persist(Attempt attempt) {
  m_file.Reset();
  for (int i = 1;; ++i) {
    if (attempt()) break;
    const DWORD error = GetLastError();
    if (!IsPassing(error) || i == kAttempts) Fail(error);
    Sleep(kPause);
  }
  m_temporary.clear();
}

void ReplacementFile::CommitKeepingOld() {
  bool isAble = true;
  // ReplaceFile does this itself, but neither Wine's nor the plain move.
  const DWORD attributes = GetFileAttributesW(m_target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) SetFileAttributesW(m_temporary.c_str(), attributes);
  Persist([&] {
    constexpr DWORD kFlags = REPLACEFILE_IGNORE_MERGE_ERRORS;
    if (IsHeld(m_target)) return false;
    if (isAble && ReplaceFileW(m_target.c_str(), m_temporary.c_str(), nullptr, kFlags, nullptr, nullptr) != 0)
      return true;
    isAble = isAble && !IsUnableToReplace(GetLastError());
    return !isAble && MoveFileExW(m_temporary.c_str(), m_target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  });
}

void ReplacementFile::Commit() {
  Persist([&] { return MoveFileExW(m_temporary.c_str(), m_target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0; });
}

void ReplacementFile::Fail(DWORD error) const { RaiseSystemError(error, m_dosPath); }

}  // namespace hearthmake::win32
