#include "host/system/LockedFile.hpp"

#include <windows.h>

#include "adapters/win32/FileStreams.hpp"
#include "adapters/win32/Handle.hpp"
#include "adapters/win32/WideText.hpp"

namespace hearthmake::host {

namespace {

std::error_code ErrorOf(DWORD number) { return {static_cast<int>(number), std::system_category()}; }

DWORD MoveTo(HANDLE file, std::int64_t offset, DWORD from) {
  LARGE_INTEGER place{};
  place.QuadPart = offset;
  return SetFilePointerEx(file, place, nullptr, from) != 0 ? DWORD{ERROR_SUCCESS} : GetLastError();
}

}  // namespace

struct LockedFile::System {
  win32::Handle file;
  std::wstring path;
};

LockedFile::LockedFile() : m_system(std::make_unique<System>()) {}
LockedFile::~LockedFile() = default;

// Nobody else may write it or open it to write: that is the lock. It may be read and removed.
LockedFile::Outcome LockedFile::Open(const std::string& path, std::error_code& error) {
  m_system->path = win32::ToWide(path);
  m_system->file = win32::Handle(CreateFileW(m_system->path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                                             FILE_ATTRIBUTE_NORMAL, nullptr));
  if (m_system->file) return Outcome::Opened;
  const DWORD number = GetLastError();
  error = ErrorOf(number);
  return number == ERROR_SHARING_VIOLATION ? Outcome::Held : Outcome::Failed;
}

std::int64_t LockedFile::Size() const {
  LARGE_INTEGER size{};
  const bool isFile = GetFileType(m_system->file.Get()) == FILE_TYPE_DISK;
  return isFile && GetFileSizeEx(m_system->file.Get(), &size) != 0 ? size.QuadPart : -1;
}

std::string LockedFile::Read(std::size_t count) const {
  std::string bytes(count, '\0');
  std::size_t done = 0;
  MoveTo(m_system->file.Get(), 0, FILE_BEGIN);
  win32::ReadFully(m_system->file.Get(), bytes.data(), bytes.size(), done);
  bytes.resize(done);
  return bytes;
}

std::error_code LockedFile::Cut(std::int64_t size) const {
  if (const DWORD error = MoveTo(m_system->file.Get(), size, FILE_BEGIN); error != ERROR_SUCCESS) {
    return ErrorOf(error);
  }
  return SetEndOfFile(m_system->file.Get()) != 0 ? std::error_code() : ErrorOf(GetLastError());
}

std::error_code LockedFile::Append(std::string_view bytes) const {
  if (const DWORD error = MoveTo(m_system->file.Get(), 0, FILE_END); error != ERROR_SUCCESS) {
    return ErrorOf(error);
  }
  const DWORD error = win32::WriteAll(m_system->file.Get(), bytes);
  return error == ERROR_SUCCESS ? std::error_code() : ErrorOf(error);
}

void LockedFile::Remove() const { DeleteFileW(m_system->path.c_str()); }

}  // namespace hearthmake::host
