#include "adapters/sqlite/FileFormat.hpp"

#include <sqlite3.h>

#include <array>
#include <memory>
#include <string_view>

#include "adapters/sqlite/Disk.hpp"

namespace hearthmake::sqlite {

namespace {

FileFormat FormatOfHeader(std::string_view header) {
  using namespace std::string_view_literals;
  if (header.starts_with("SQLite format 3\0"sv)) return FileFormat::Sqlite;
  if (header.starts_with("\0\1\0\0Standard Jet DB"sv) || header.starts_with("\0\1\0\0Standard ACE DB"sv)) {
    return FileFormat::Jet;
  }
  return FileFormat::Other;
}

}  // namespace

std::optional<FileFormat> FormatBySize(const std::string& posixPath) {
  switch (disk::KindOf(posixPath)) {
    case disk::Kind::Missing: return FileFormat::Missing;
    case disk::Kind::Unreadable: return FileFormat::Unreadable;
    case disk::Kind::EmptyFile: return FileFormat::Empty;
    case disk::Kind::Other: return FileFormat::Folder;
    case disk::Kind::File: break;
  }
  return std::nullopt;
}

FileFormat FormatByHeader(sqlite3* db) {
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
      file->pMethods == nullptr) {
    return FileFormat::Unreadable;
  }
  std::array<char, 32> header{};  // a file that is shorter leaves zeros
  const int read = file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
  if (read != SQLITE_OK && read != SQLITE_IOERR_SHORT_READ) return FileFormat::Unreadable;
  return FormatOfHeader({header.data(), header.size()});
}

// Through SQLite's own file layer: closing a descriptor of ours would drop the locks that every other
// connection of the process holds on the file, as POSIX has it.
FileFormat DetectFormat(const std::string& posixPath) {
  if (const auto format = FormatBySize(posixPath)) return *format;
  sqlite3* handle = nullptr;
  const int opened =
      sqlite3_open_v2(posixPath.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(handle, &sqlite3_close);
  return opened == SQLITE_OK ? FormatByHeader(handle) : FileFormat::Unreadable;
}

}  // namespace hearthmake::sqlite
