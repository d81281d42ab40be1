#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/Cell.hpp"
#include "adapters/sqlite/Connection.hpp"
#include "adapters/sqlite/RowBuffer.hpp"
#include "adapters/sqlite/SelectPlan.hpp"
#include "platform/Database.hpp"

namespace hearthmake::sqlite {

class SqliteDatabase;

// A selection walked from its first row to its last. Rows of a plain "SELECT * FROM table" can be
// edited and added to; what is added does not show in the walk.
//
// Errors ("DAO.Recordset"), beside those of the port: 6 overflow and 13 type mismatch of a read, 3021 no
// current record, 3027 read-only, 3164 an AutoNumber column of an existing row is assigned, 3167 the row
// is gone, 3420 closed, 3421 a value that the column's type can't hold.
class SqliteRecordset : public platform::Recordset {
 public:
  // state is the connection's when the rows were read.
  SqliteRecordset(std::shared_ptr<SqliteDatabase> database, std::shared_ptr<SelectPlan> plan, RowBuffer rows,
                  Connection::State state);

  bool AtEnd() const override;
  void MoveNext() override;
  void AddNew() override;
  void Edit() override;
  // Writes the assigned columns in one statement; not those of which it is sure that the row has the value
  // already, which spares the indexes over them. When it fails the row stays open for another try.
  void Update() override;
  void Close() override;

  bool IsNull(std::string_view column) const override;
  std::string GetText(std::string_view column) const override;
  std::int32_t GetLong(std::string_view column) const override;
  bool GetBoolean(std::string_view column) const override;
  double GetDate(std::string_view column) const override;

  void SetNull(std::string_view column) override;
  void SetText(std::string_view column, std::string_view value) override;
  void SetLong(std::string_view column, std::int32_t value) override;
  void SetBoolean(std::string_view column, bool value) override;
  void SetDate(std::string_view column, double value) override;

 private:
  enum class Mode { Reading, Adding, Editing };

  // A value assigned since AddNew or Edit; a text lies in m_editText.
  struct Assignment {
    Cell cell;
    std::size_t textAt = 0;
  };

  void RequireOpen() const;
  void RequireEditable() const;
  void StartEdit(Mode mode);
  std::size_t Find(std::string_view column) const;
  Cell Read(std::string_view column) const;
  bool IsAssigned(std::size_t column) const { return m_assignmentOf[column] != 0; }
  // The assignment of a column, made where there is none.
  Assignment& AssignmentOf(std::size_t column) const;
  // The value of a column that is assigned.
  Cell AssignedCell(std::size_t column) const;
  Cell ReadNewRow(std::size_t column) const;
  void Assign(std::string_view column, const Cell& value);
  Cell Converted(std::size_t column, const Cell& value) const;
  std::vector<std::size_t> ColumnsToWrite(const Connection& connection) const;
  std::string InsertText(const std::vector<std::size_t>& columns) const;
  std::string UpdateText(const std::vector<std::size_t>& columns) const;
  void WriteRow();
  void KeepAssigned();

  std::shared_ptr<SqliteDatabase> m_database;
  std::shared_ptr<SelectPlan> m_plan;
  RowBuffer m_rows;
  Connection::State m_state;
  std::vector<Cell> m_row;  // the row's key, if it has one, behind the columns
  bool m_isAtEnd = false;
  mutable std::size_t m_lastColumn;

  Mode m_mode = Mode::Reading;
  // A save assigns some columns of many: the numbers of their assignments, from 1, and 0 for the others.
  mutable std::vector<std::uint16_t> m_assignmentOf;
  mutable std::vector<Assignment> m_assignments;
  std::vector<char> m_editText;
  std::vector<std::vector<char>> m_keptTexts;  // texts of the current row that Update has written
};

}  // namespace hearthmake::sqlite
