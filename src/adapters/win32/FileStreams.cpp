#include "adapters/win32/FileStreams.hpp"

#include <algorithm>

#include "adapters/win32/FileFailure.hpp"

namespace hearthmake::win32 {

namespace {

// What one call moves at most: its count has 32 bits, and drivers have refused larger ones.
constexpr std::size_t kLargestMove = std::size_t{16} << 20U;

}  // namespace

DWORD WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = static_cast<DWORD>(std::min(bytes.size(), kLargestMove));
    DWORD written = 0;
    if (WriteFile(file, bytes.data(), count, &written, nullptr) == 0) return GetLastError();
    if (written == 0) return ERROR_WRITE_FAULT;
    bytes.remove_prefix(written);
  }
  return ERROR_SUCCESS;
}

DWORD ReadFully(HANDLE file, void* buffer, std::size_t count, std::size_t& done) {
  for (done = 0; done < count;) {
    const auto wanted = static_cast<DWORD>(std::min(count - done, kLargestMove));
    DWORD got = 0;
    if (ReadFile(file, static_cast<char*>(buffer) + done, wanted, &got, nullptr) == 0) return GetLastError();
    if (got == 0) break;
    done += got;
  }
  return ERROR_SUCCESS;
}

void FileOutput::Write(std::string_view bytes) {
  if (const DWORD error = WriteAll(m_file.Get(), bytes); error != ERROR_SUCCESS) {
    RaiseSystemError(error, m_dosPath);
  }
}

std::size_t FileOutput::WriteSome(std::string_view bytes, std::chrono::milliseconds /*timeout*/) {
  Write(bytes);  // a disk takes everything at once
  return bytes.size();
}

std::size_t OpenFile::Read(std::uint64_t offset, void* buffer, std::size_t count) {
  if (offset >= m_size) return 0;
  const auto room = static_cast<std::size_t>(std::min<std::uint64_t>(count, m_size - offset));
  LARGE_INTEGER place{};
  place.QuadPart = static_cast<LONGLONG>(offset);
  if (SetFilePointerEx(m_file.Get(), place, nullptr, FILE_BEGIN) == 0) {
    RaiseSystemError(GetLastError(), m_dosPath);
  }
  std::size_t done = 0;
  if (const DWORD error = ReadFully(m_file.Get(), buffer, room, done); error != ERROR_SUCCESS) {
    RaiseSystemError(error, m_dosPath);
  }
  return done;
}

}  // namespace hearthmake::win32
