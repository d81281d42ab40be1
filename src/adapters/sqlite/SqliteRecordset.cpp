#include "adapters/sqlite/SqliteRecordset.hpp"

#include <sqlite3.h>

#include <cmath>
#include <utility>

#include "adapters/sqlite/JetSql.hpp"
#include "adapters/sqlite/SqliteDatabase.hpp"
#include "adapters/sqlite/SqliteError.hpp"

namespace hearthmake::sqlite {

namespace {

constexpr std::size_t kUsualAssignments = 16;

}  // namespace

SqliteRecordset::SqliteRecordset(std::shared_ptr<SqliteDatabase> database, std::shared_ptr<SelectPlan> plan,
                                 RowBuffer rows, Connection::State state)
    : m_database(std::move(database)),
      m_plan(std::move(plan)),
      m_rows(std::move(rows)),
      m_state(state),
      m_row(m_plan->Names().Count() + (m_plan->HasKey() ? 1 : 0)),
      // What follows the last column is the first.
      m_lastColumn(m_plan->Names().Count() - 1) {
  m_isAtEnd = !m_rows.Next(m_row);
}

void SqliteRecordset::RequireOpen() const {
  if (!m_database) RaiseClosed(kRecordsetSource);
}

bool SqliteRecordset::AtEnd() const {
  RequireOpen();
  return m_isAtEnd;
}

void SqliteRecordset::MoveNext() {
  RequireOpen();
  if (m_isAtEnd) RaiseDao(DaoError::NoCurrentRecord, kRecordsetSource, "No current record.");
  m_mode = Mode::Reading;
  m_keptTexts.clear();
  m_isAtEnd = !m_rows.Next(m_row);
}

void SqliteRecordset::Close() {
  m_database.reset();
  m_rows.Clear();
  m_mode = Mode::Reading;
}

// --- reading ---

std::size_t SqliteRecordset::Find(std::string_view column) const {
  RequireOpen();
  const std::size_t index = m_plan->Names().Find(column, m_lastColumn);
  if (index == ColumnNames::kNotFound) {
    RaiseDao(DaoError::ItemNotFound, kRecordsetSource,
             "Item not found in this collection. (" + std::string(column) + ")");
  }
  return index;
}

Cell SqliteRecordset::Read(std::string_view column) const {
  const std::size_t index = Find(column);
  if (m_mode != Mode::Reading && IsAssigned(index)) return AssignedCell(index);
  if (m_mode == Mode::Adding) return ReadNewRow(index);
  if (m_isAtEnd) RaiseDao(DaoError::NoCurrentRecord, kRecordsetSource, "No current record.");
  return m_row[index];
}

SqliteRecordset::Assignment& SqliteRecordset::AssignmentOf(std::size_t column) const {
  std::uint16_t& number = m_assignmentOf[column];
  if (number == 0) {
    m_assignments.emplace_back();
    number = static_cast<std::uint16_t>(m_assignments.size());
  }
  return m_assignments[number - 1U];
}

Cell SqliteRecordset::AssignedCell(std::size_t column) const {
  const Assignment& assignment = m_assignments[m_assignmentOf[column] - 1U];
  if (assignment.cell.kind != Cell::Kind::Text) return assignment.cell;
  return Cell::OfText({m_editText.data() + assignment.textAt, assignment.cell.text.size()});
}

Cell SqliteRecordset::ReadNewRow(std::size_t column) const {
  Connection& connection = m_database->UseForWriting(kRecordsetSource);
  if (!m_plan->IsAutoNumber(column)) return connection.DefaultOf(*m_plan, column);
  // From here on the key is the row's: Update writes it as any assigned value.
  const Cell key = Cell::OfInteger(connection.ReserveKey(*m_plan, kRecordsetSource));
  return AssignmentOf(column).cell = key;
}

bool SqliteRecordset::IsNull(std::string_view column) const { return Read(column).kind == Cell::Kind::Null; }

std::string SqliteRecordset::GetText(std::string_view column) const { return CellText(Read(column)); }

std::int32_t SqliteRecordset::GetLong(std::string_view column) const {
  return CellLong(Read(column), column);
}

bool SqliteRecordset::GetBoolean(std::string_view column) const { return CellBoolean(Read(column), column); }

double SqliteRecordset::GetDate(std::string_view column) const { return CellDate(Read(column), column); }

// --- writing ---

void SqliteRecordset::RequireEditable() const {
  RequireOpen();
  if (!m_plan->IsEditable()) {
    RaiseDao(DaoError::ReadOnly, kRecordsetSource, "Cannot update. Database or object is read-only.");
  }
}

void SqliteRecordset::StartEdit(Mode mode) {
  m_mode = mode;
  m_assignmentOf.assign(m_plan->Names().Count(), 0);
  m_assignments.clear();
  m_assignments.reserve(kUsualAssignments);
  m_editText.clear();
}

void SqliteRecordset::AddNew() {
  RequireEditable();
  StartEdit(Mode::Adding);
}

void SqliteRecordset::Edit() {
  RequireEditable();
  if (m_isAtEnd) RaiseDao(DaoError::NoCurrentRecord, kRecordsetSource, "No current record.");
  StartEdit(Mode::Editing);
}

void SqliteRecordset::SetNull(std::string_view column) { Assign(column, {}); }

void SqliteRecordset::SetText(std::string_view column, std::string_view value) {
  Assign(column, Cell::OfText(value));
}

void SqliteRecordset::SetLong(std::string_view column, std::int32_t value) {
  Assign(column, Cell::OfInteger(value));
}

void SqliteRecordset::SetBoolean(std::string_view column, bool value) {
  Assign(column, Cell::OfInteger(value ? -1 : 0));
}

void SqliteRecordset::SetDate(std::string_view column, double value) { Assign(column, Cell::OfReal(value)); }

void SqliteRecordset::Assign(std::string_view column, const Cell& value) {
  const std::size_t index = Find(column);
  if (m_mode == Mode::Reading) {
    RaiseDao(DaoError::NotEditing, kRecordsetSource, "Update or CancelUpdate without AddNew or Edit.");
  }
  if (m_mode == Mode::Editing && m_plan->IsAutoNumber(index)) {
    RaiseDao(DaoError::FieldNotUpdatable, kRecordsetSource,
             "Field cannot be updated. (" + std::string(column) + ")");
  }
  const Cell cell = Converted(index, value);
  Assignment& assignment = AssignmentOf(index);
  assignment.cell = cell;
  if (assignment.cell.kind != Cell::Kind::Text) return;
  assignment.textAt = m_editText.size();
  m_editText.insert(m_editText.end(), value.text.begin(), value.text.end());
}

Cell SqliteRecordset::Converted(std::size_t column, const Cell& value) const {
  const ColumnType type = m_plan->Type(column);
  if (type == ColumnType::Text || type == ColumnType::Any) return value;
  bool isTrue = false;
  double number = 0;
  switch (value.kind) {
    // A yes/no column holds one or the other, never Null.
    case Cell::Kind::Null: return type == ColumnType::Boolean ? Cell::OfInteger(0) : value;
    case Cell::Kind::Integer:
      return type == ColumnType::Boolean ? Cell::OfInteger(value.integer != 0 ? -1 : 0) : value;
    case Cell::Kind::Real: number = value.real; break;
    case Cell::Kind::Text:
      if (type == ColumnType::Boolean && ParseBoolean(value.text, isTrue))
        return Cell::OfInteger(isTrue ? -1 : 0);
      if (ParseNumber(value.text, number)) break;
      if (type == ColumnType::Date && ParseJetDate(value.text, number)) break;
      RaiseDao(DaoError::Conversion, kRecordsetSource,
               "Data type conversion error. (" + m_plan->Names().Name(column) + ")");
  }
  if (type == ColumnType::Boolean) return Cell::OfInteger(number != 0 ? -1 : 0);
  if (type == ColumnType::Long)
    return Cell::OfInteger(CellLong(Cell::OfReal(number), m_plan->Names().Name(column)));
  return Cell::OfReal(number);
}

// The assigned columns that the statement has to name: of a row that is still as it was read, those with
// another value.
std::vector<std::size_t> SqliteRecordset::ColumnsToWrite(const Connection& connection) const {
  const bool isRowKnown = m_mode == Mode::Editing && m_state.IsStill(connection.CurrentState());
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i < m_assignmentOf.size(); ++i) {
    if (IsAssigned(i) && (!isRowKnown || !IsSameCell(AssignedCell(i), m_row[i]))) columns.push_back(i);
  }
  return columns;
}

std::string SqliteRecordset::InsertText(const std::vector<std::size_t>& columns) const {
  std::string names = "INSERT INTO " + m_plan->QuotedTable();
  std::string values;
  for (const std::size_t column : columns) {
    names += values.empty() ? '(' : ',';
    names += m_plan->QuotedName(column);
    values += values.empty() ? "?" : ",?";
  }
  if (values.empty()) return names + " DEFAULT VALUES";
  return names + ") VALUES(" + values + ')';
}

std::string SqliteRecordset::UpdateText(const std::vector<std::size_t>& columns) const {
  std::string text = "UPDATE " + m_plan->QuotedTable() + " SET ";
  bool isFirst = true;
  for (const std::size_t column : columns) {
    if (!std::exchange(isFirst, false)) text += ',';
    text += m_plan->QuotedName(column);
    text += "=?";
  }
  return text + " WHERE _rowid_=?";
}

void SqliteRecordset::Update() {
  RequireOpen();
  if (m_mode == Mode::Reading) {
    RaiseDao(DaoError::NotEditing, kRecordsetSource, "Update or CancelUpdate without AddNew or Edit.");
  }
  if (m_mode == Mode::Adding || !m_assignments.empty()) WriteRow();
  if (m_mode == Mode::Editing) KeepAssigned();
  m_mode = Mode::Reading;
}

void SqliteRecordset::WriteRow() {
  Connection& connection = m_database->UseForWriting(kRecordsetSource);
  const bool isNew = m_mode == Mode::Adding;
  const std::vector<std::size_t> columns = ColumnsToWrite(connection);
  if (!isNew && columns.empty()) return;
  Statement& statement = connection.Prepare(isNew ? InsertText(columns) : UpdateText(columns),
                                            kRecordsetSource, m_plan->Table());
  const StatementReset reset(statement);
  int parameter = 0;
  for (const std::size_t column : columns) {
    BindCell(statement.Handle(), ++parameter, AssignedCell(column));
  }
  if (!isNew) BindCell(statement.Handle(), ++parameter, m_row.back());
  if (!isNew) connection.Known().Forget(m_plan->Table(), m_row.back().integer);
  connection.Run(statement, kRecordsetSource, m_plan->Table());
  if (!isNew && sqlite3_changes(connection.Handle()) == 0) {
    RaiseDao(DaoError::RecordDeleted, kRecordsetSource, "Record is deleted. (" + m_plan->Table() + ")");
  }
}

// From now on the row reads as it was written.
void SqliteRecordset::KeepAssigned() {
  for (std::size_t i = 0; i < m_assignmentOf.size(); ++i) {
    if (IsAssigned(i)) m_row[i] = AssignedCell(i);
  }
  m_keptTexts.push_back(std::move(m_editText));
  m_editText = {};
}

}  // namespace hearthmake::sqlite
