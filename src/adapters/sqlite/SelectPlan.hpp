#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/Cell.hpp"
#include "adapters/sqlite/ColumnNames.hpp"

struct sqlite3;
struct sqlite3_stmt;

namespace hearthmake::sqlite {

// What a column was declared to hold. SQLite stores anything anywhere; writes are held to the type.
enum class ColumnType { Any, Text, Long, Boolean, Date };

// What is known of the rows of one prepared selection; shared by the recordsets opened on it.
class SelectPlan {
 public:
  // Of the statement as it is prepared now. With hasKey its last column is the row's key.
  SelectPlan(sqlite3* db, sqlite3_stmt* statement, bool hasKey);

  // Whether the statement is still the one described: SQLite prepares it anew when tables change.
  bool IsOf(sqlite3_stmt* statement) const;

  ColumnNames& Names() { return m_names; }
  const std::string& QuotedName(std::size_t column) const { return m_quotedNames[column]; }
  ColumnType Type(std::size_t column) const { return m_types[column]; }
  bool HasKey() const { return m_hasKey; }

  // Whether rows can be edited. The key of a view's row is Null in some builds of SQLite.
  bool IsEditable() const { return !m_table.empty(); }

  // The rest is known of editable selections only.
  const std::string& Table() const { return m_table; }
  const std::string& QuotedTable() const { return m_quotedTable; }
  bool IsAutoNumber(std::size_t column) const { return column == m_autoNumber; }
  // The column that is the row's key, empty when none is.
  std::string_view KeyName() const {
    return m_autoNumber == ColumnNames::kNotFound ? std::string_view() : m_names.Name(m_autoNumber);
  }
  // Whether the keys come from a counter that never gives one twice.
  bool CountsKeys() const { return m_countsKeys; }
  // The value of a column in a new row.
  Cell Default(sqlite3* db, std::size_t column);

 private:
  void DescribeTable(sqlite3* db, sqlite3_stmt* statement);
  void ReadDefaults(sqlite3* db);

  ColumnNames m_names;
  std::vector<std::string> m_quotedNames;
  std::vector<ColumnType> m_types;
  int m_prepared;
  bool m_hasKey;
  std::string m_table;
  std::string m_quotedTable;
  std::size_t m_autoNumber = ColumnNames::kNotFound;
  bool m_countsKeys = false;

  struct DefaultValue {
    Cell cell;
    std::string text;
  };
  std::optional<std::vector<DefaultValue>> m_defaults;
};

}  // namespace hearthmake::sqlite
