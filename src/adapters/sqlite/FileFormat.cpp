#include "adapters/sqlite/FileFormat.hpp"

#include <sqlite3.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>
#include <string_view>

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

// Through SQLite's own file layer: closing a descriptor of ours would drop the locks that every other
// connection of the process holds on the file, as POSIX has it.
FileFormat ReadHeader(const std::string& posixPath) {
  sqlite3* handle = nullptr;
  const int opened =
      sqlite3_open_v2(posixPath.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(handle, &sqlite3_close);
  sqlite3_file* file = nullptr;
  if (opened != SQLITE_OK ||
      sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr) {
    return FileFormat::Unreadable;
  }
  std::array<char, 32> header{};  // a file that is shorter leaves zeros
  const int read = file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
  if (read != SQLITE_OK && read != SQLITE_IOERR_SHORT_READ) return FileFormat::Unreadable;
  return FormatOfHeader({header.data(), header.size()});
}

}  // namespace

FileFormat DetectFormat(const std::string& posixPath) {
  struct stat status {};
  if (stat(posixPath.c_str(), &status) != 0) {
    return errno == ENOENT || errno == ENOTDIR ? FileFormat::Missing : FileFormat::Unreadable;
  }
  if (!S_ISREG(status.st_mode)) return FileFormat::Folder;
  if (status.st_size == 0) return FileFormat::Empty;
  return ReadHeader(posixPath);
}

}  // namespace hearthmake::sqlite
