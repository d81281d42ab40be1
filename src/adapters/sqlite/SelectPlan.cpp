#include "adapters/sqlite/SelectPlan.hpp"

#include <sqlite3.h>

#include <memory>
#include <string_view>

#include "adapters/sqlite/JetSql.hpp"

namespace hearthmake::sqlite {

namespace {

using StatementHandle = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

StatementHandle Prepare(sqlite3* db, const std::string& sql) {
  sqlite3_stmt* handle = nullptr;
  sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &handle, nullptr);
  return {handle, &sqlite3_finalize};
}

std::vector<std::string> NamesOf(sqlite3_stmt* statement, bool hasKey) {
  std::vector<std::string> names;
  const int count = sqlite3_column_count(statement) - (hasKey ? 1 : 0);
  for (int i = 0; i < count; ++i) {
    const char* name = sqlite3_column_name(statement, i);
    names.emplace_back(name == nullptr ? "" : name);
  }
  return names;
}

ColumnType TypeOf(const char* declared) {
  if (declared == nullptr) return ColumnType::Any;
  const std::string_view type = declared;
  if (SameName(type, "BOOLEAN")) return ColumnType::Boolean;
  if (SameName(type, "TEXT")) return ColumnType::Text;
  if (SameName(type, "INTEGER")) return ColumnType::Long;
  if (SameName(type, "REAL")) return ColumnType::Date;
  return ColumnType::Any;
}

}  // namespace

SelectPlan::SelectPlan(sqlite3* db, sqlite3_stmt* statement, bool hasKey)
    : m_names(NamesOf(statement, hasKey)),
      m_prepared(sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0)),
      m_hasKey(hasKey) {
  for (std::size_t i = 0; i < m_names.Count(); ++i) {
    m_quotedNames.push_back(QuoteName(m_names.Name(i)));
    m_types.push_back(TypeOf(sqlite3_column_decltype(statement, static_cast<int>(i))));
  }
  if (hasKey) DescribeTable(db, statement);
}

bool SelectPlan::IsOf(sqlite3_stmt* statement) const {
  return sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0) == m_prepared;
}

void SelectPlan::DescribeTable(sqlite3* db, sqlite3_stmt* statement) {
  const char* table = sqlite3_column_table_name(statement, static_cast<int>(m_names.Count()));
  if (table == nullptr) return;
  m_table = table;
  m_quotedTable = QuoteName(m_table);
  for (std::size_t i = 0; i < m_names.Count(); ++i) {
    int isKey = 0;
    int counts = 0;
    // SQLite's integer primary key is the row's key by another name.
    if (m_types[i] != ColumnType::Long ||
        sqlite3_table_column_metadata(db, "main", m_table.c_str(), m_names.Name(i).c_str(), nullptr, nullptr,
                                      nullptr, &isKey, &counts) != SQLITE_OK ||
        isKey == 0) {
      continue;
    }
    m_autoNumber = i;
    m_countsKeys = counts != 0;
  }
}

Cell SelectPlan::Default(sqlite3* db, std::size_t column) {
  if (!m_defaults) ReadDefaults(db);
  const DefaultValue& value = (*m_defaults)[column];
  return value.cell.kind == Cell::Kind::Text ? Cell::OfText(value.text) : value.cell;
}

void SelectPlan::ReadDefaults(sqlite3* db) {
  m_defaults.emplace(m_names.Count());
  const StatementHandle list = Prepare(db, "PRAGMA main.table_info(" + m_quotedTable + ")");
  while (list && sqlite3_step(list.get()) == SQLITE_ROW) {
    const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(list.get(), 1));
    const auto* expression = reinterpret_cast<const char*>(sqlite3_column_text(list.get(), 4));
    std::size_t column = 0;
    column = name == nullptr ? ColumnNames::kNotFound : m_names.Find(name, column);
    if (expression == nullptr || column == ColumnNames::kNotFound) continue;
    const StatementHandle value = Prepare(db, "SELECT (" + std::string(expression) + ")");
    if (!value || sqlite3_step(value.get()) != SQLITE_ROW) continue;
    DefaultValue& slot = (*m_defaults)[column];
    slot.cell = Cell::OfColumn(value.get(), 0);
    slot.text.assign(slot.cell.text);
  }
}

}  // namespace hearthmake::sqlite
