#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace hearthmake::sqlite {

// The names that a build database holds, for one who only offers them. It reads and never writes, waits
// for nobody and raises nothing: what can't be read is left out.
class NameReader {
 public:
  struct Entry {
    std::int32_t id = 0;
    std::string name;
  };

  // A file that is missing or no database has no names.
  explicit NameReader(const std::string& posixPath);
  NameReader(const NameReader&) = delete;
  NameReader& operator=(const NameReader&) = delete;
  ~NameReader();

  std::vector<Entry> Builds() const;
  // Of one build.
  std::vector<Entry> Projects(std::int32_t build) const;
  std::vector<Entry> Packages(std::int32_t build) const;
  // Their paths inside the source-control database.
  std::vector<Entry> SourceProjects(std::int32_t build) const;

 private:
  std::vector<Entry> Select(const char* sql, std::int32_t build) const;

  sqlite3* m_db = nullptr;  // null when there is nothing to read
};

}  // namespace hearthmake::sqlite
