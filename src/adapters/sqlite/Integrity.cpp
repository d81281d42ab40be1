#include "adapters/sqlite/Integrity.hpp"

#include <sqlite3.h>

#include <memory>

namespace hearthmake::sqlite {

namespace {

struct Close {
  void operator()(sqlite3* db) const { sqlite3_close(db); }
};

int AddLine(void* lines, int count, char** values, char** /*names*/) {
  if (count > 0 && values[0] != nullptr)
    static_cast<std::vector<std::string>*>(lines)->emplace_back(values[0]);
  return 0;
}

}  // namespace

std::vector<std::string> IntegrityProblems(const std::string& posixPath) {
  sqlite3* handle = nullptr;
  int result = sqlite3_open_v2(posixPath.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, Close> db(handle);
  std::vector<std::string> lines;
  if (result == SQLITE_OK) {
    sqlite3_busy_timeout(handle, 5000);
    result = sqlite3_exec(handle, "PRAGMA quick_check(10)", &AddLine, &lines, nullptr);
  }
  if (result != SQLITE_OK) lines.emplace_back(handle == nullptr ? "out of memory" : sqlite3_errmsg(handle));
  if (lines.size() == 1 && lines.front() == "ok") lines.clear();
  return lines;
}

}  // namespace hearthmake::sqlite
