#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "automation/Error.hpp"

namespace hearthmake::test {

// A folder of its own that goes with its scope.
class SqliteTestFolder {
 public:
  SqliteTestFolder()
      : m_path((std::filesystem::temp_directory_path() / "hearthmake-sqlite-XXXXXX").string()) {
    if (mkdtemp(m_path.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", m_path, {});
  }
  SqliteTestFolder(const SqliteTestFolder&) = delete;
  SqliteTestFolder& operator=(const SqliteTestFolder&) = delete;
  ~SqliteTestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  const std::string& Path() const { return m_path; }
  std::string operator/(const std::string& name) const { return m_path + '/' + name; }

 private:
  std::string m_path;
};

inline std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// SQL straight to the file, as another program would send it. The result is the first value, if any.
inline std::string RawSql(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  std::string result;
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
  sqlite3_busy_timeout(db, 5000);
  const auto first = [](void* text, int count, char** values, char**) {
    auto& out = *static_cast<std::string*>(text);
    if (out.empty() && count > 0 && values[0] != nullptr) out = values[0];
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(db, sql.c_str(), first, &result, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
  sqlite3_close(db);
  return result;
}

// The number of the error that the call raises, 0 when it raises none.
template <typename Call>
int ErrorOf(Call call, std::string* description = nullptr, std::string* source = nullptr) {
  try {
    call();
  } catch (const automation::Error& error) {
    if (description != nullptr) *description = error.Description();
    if (source != nullptr) *source = error.Source();
    return error.Number();
  }
  return 0;
}

}  // namespace hearthmake::test
