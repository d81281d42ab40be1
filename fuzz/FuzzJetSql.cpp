// SQL texts. Whatever the text was, what comes out is at most one statement over the tables, with a
// parameter for each value and no other part of SQLite in it.

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "adapters/posix/TemporaryDirectory.hpp"
#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/JetSql.hpp"
#include "automation/Error.hpp"

namespace {

using hearthmake::sqlite::JetSql;
using hearthmake::sqlite::StatementKind;

bool IsFunctionOfJet(std::string_view name) {
  for (const char* known : {"count", "sum", "min", "max", "avg"}) {
    if (sqlite3_stricmp(std::string(name).c_str(), known) == 0) return true;
  }
  return false;
}

// SQLite asks before each thing that a statement would do.
int Authorize(void* user, int action, const char* /*table*/, const char* name, const char* /*database*/,
              const char* /*trigger*/) {
  const StatementKind kind = *static_cast<const StatementKind*>(user);
  bool isExpected = false;
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ: isExpected = true; break;
    case SQLITE_FUNCTION: isExpected = IsFunctionOfJet(name); break;
    case SQLITE_INSERT: isExpected = kind == StatementKind::Insert; break;
    case SQLITE_UPDATE: isExpected = kind == StatementKind::Update; break;
    case SQLITE_DELETE: isExpected = kind == StatementKind::Delete; break;
    default: break;
  }
  if (!isExpected) std::abort();
  return SQLITE_OK;
}

// An empty build database.
class Database {
 public:
  Database() {
    const std::string path = m_folder.Path() + "/Build.mdb";
    hearthmake::sqlite::CreateBuildDatabase(path);
    if (sqlite3_open(path.c_str(), &m_handle) != SQLITE_OK) std::abort();
    sqlite3_set_authorizer(m_handle, &Authorize, &m_kind);
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() { sqlite3_close(m_handle); }

  void Prepare(const std::string& text, const JetSql& sql) {
    m_kind = sql.Kind();
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int code =
        sqlite3_prepare_v2(m_handle, text.data(), static_cast<int>(text.size()), &statement, &rest);
    if (code == SQLITE_OK) {
      const bool isOne = rest == text.data() + text.size();
      const auto parameters = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement));
      if (!isOne || parameters != sql.Literals().size()) std::abort();
    }
    sqlite3_finalize(statement);
  }

 private:
  hearthmake::posix::TemporaryDirectory m_folder;
  sqlite3* m_handle = nullptr;
  StatementKind m_kind = StatementKind::Select;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Database database;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  double date = 0;
  hearthmake::sqlite::ParseJetDate(text, date);
  try {
    const JetSql sql(text, "fuzz");
    database.Prepare(sql.Text(), sql);
    if (sql.SelectsKey()) database.Prepare(sql.TextWithoutKey(), sql);
  } catch (const hearthmake::automation::Error&) {
  }
  return 0;
}
