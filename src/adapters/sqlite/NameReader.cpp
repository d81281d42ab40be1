#include "adapters/sqlite/NameReader.hpp"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>

namespace hearthmake::sqlite {

namespace {

bool IsThere(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

// As SQLite wants file names in URIs, those with a drive letter included.
std::string UriOf(const std::string& path, bool isAtRest) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string uri = "file:";
  const std::string name = std::filesystem::path(path).generic_string();
  if (!name.starts_with('/')) uri += "///";
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '%' || c == '?' || c == '#') {
      uri += {'%', kHex[byte / 16], kHex[byte % 16]};
    } else {
      uri += c;
    }
  }
  return uri + (isAtRest ? "?mode=ro&immutable=1" : "?mode=ro");
}

}  // namespace

NameReader::NameReader(const std::string& posixPath) {
  // Also a reader would make the files that go with a database in WAL mode, unless it is told that nobody
  // writes; and without those files nobody does.
  const bool isAtRest = !IsThere(posixPath + "-wal") && !IsThere(posixPath + "-journal");
  const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
  const int result = sqlite3_open_v2(UriOf(posixPath, isAtRest).c_str(), &m_db, flags, nullptr);
  if (result == SQLITE_OK) return;
  sqlite3_close(m_db);
  m_db = nullptr;
}

NameReader::~NameReader() { sqlite3_close(m_db); }

std::vector<NameReader::Entry> NameReader::Builds() const {
  return Select("SELECT Id, Name FROM Build WHERE ?1 = 0 ORDER BY Id", 0);
}

std::vector<NameReader::Entry> NameReader::Projects(std::int32_t build) const {
  // The names of projects are stored as their files have them, in quotes.
  return Select("SELECT Id, trim(Name, '\"') FROM Project WHERE idBuild = ?1 ORDER BY Id", build);
}

std::vector<NameReader::Entry> NameReader::Packages(std::int32_t build) const {
  return Select("SELECT Id, Name FROM MTSPackages WHERE idBuild = ?1 ORDER BY Id", build);
}

std::vector<NameReader::Entry> NameReader::SourceProjects(std::int32_t build) const {
  return Select("SELECT Id, Project FROM SSProjects WHERE idBuild = ?1 ORDER BY Id", build);
}

std::vector<NameReader::Entry> NameReader::Select(const char* sql, std::int32_t build) const {
  std::vector<Entry> entries;
  sqlite3_stmt* statement = nullptr;
  if (m_db == nullptr || sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr) != SQLITE_OK) return entries;
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(statement, &sqlite3_finalize);
  sqlite3_bind_int(statement, 1, build);
  while (sqlite3_step(statement) == SQLITE_ROW) {
    const unsigned char* text = sqlite3_column_text(statement, 1);
    if (text == nullptr) continue;
    entries.push_back({sqlite3_column_int(statement, 0), reinterpret_cast<const char*>(text)});
  }
  return entries;
}

}  // namespace hearthmake::sqlite
