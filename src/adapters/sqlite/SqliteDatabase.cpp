#include "adapters/sqlite/SqliteDatabase.hpp"

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "adapters/sqlite/Cell.hpp"
#include "adapters/sqlite/ColumnNames.hpp"
#include "adapters/sqlite/JetSql.hpp"
#include "adapters/sqlite/KnownRows.hpp"
#include "adapters/sqlite/RowBuffer.hpp"
#include "adapters/sqlite/SelectPlan.hpp"
#include "adapters/sqlite/SqliteError.hpp"
#include "adapters/sqlite/SqliteRecordset.hpp"

namespace hearthmake::sqlite {

namespace {

Cell CellOf(const JetSql::Literal& literal) {
  return std::visit(
      [](const auto& value) {
        using Value = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, std::int64_t>) return Cell::OfInteger(value);
        if constexpr (std::is_same_v<Value, double>) return Cell::OfReal(value);
        if constexpr (std::is_same_v<Value, std::string>) return Cell::OfText(value);
      },
      literal);
}

void BindLiterals(Statement& statement, const JetSql& sql) {
  int parameter = 0;
  for (const JetSql::Literal& literal : sql.Literals()) {
    BindCell(statement.Handle(), ++parameter, CellOf(literal));
  }
}

class ConnectionView : public platform::ReadView {
 public:
  explicit ConnectionView(std::shared_ptr<Connection> connection) : m_connection(std::move(connection)) {
    m_connection->BeginView();
  }
  ~ConnectionView() override { m_connection->EndView(); }

 private:
  std::shared_ptr<Connection> m_connection;
};

// Makes the rows of a list known while it is read.
class ListMemory {
 public:
  ListMemory(Connection& connection, const JetSql& query, const Statement& statement, bool hasKey)
      : m_connection(connection), m_query(query) {
    // What is read within a transaction may be rolled back.
    if (!hasKey || connection.IsInTransaction()) return;
    if (statement.plan && !IsList(*statement.plan)) return;
    // Asked before the first row is read: what somebody writes in between makes the rows seem old, not new.
    m_version = connection.DataVersion();
  }

  void Begin(const std::shared_ptr<SelectPlan>& plan) {
    if (!m_version) return;
    if (!IsList(*plan) || !m_connection.ChangesRowsAlone(plan->Table())) return m_version.reset();
    m_connection.Known().Begin(plan, *m_version);
  }

  void Add(sqlite3_stmt* statement, int keyColumn, std::string_view row) {
    if (m_version) m_connection.Known().Add(sqlite3_column_int64(statement, keyColumn), row);
  }

 private:
  // Rows with keys, and not one row by its key. What is named may be a view of the table.
  bool IsList(const SelectPlan& plan) const {
    return !plan.KeyName().empty() && SameName(m_query.Table(), plan.Table()) &&
           !SameName(m_query.SoughtColumn(), plan.KeyName());
  }

  Connection& m_connection;
  const JetSql& m_query;
  std::optional<std::int64_t> m_version;
};

}  // namespace

SqliteDatabase::SqliteDatabase(std::shared_ptr<ConnectionPool> pool, std::shared_ptr<Connection> connection)
    : m_pool(std::move(pool)), m_connection(std::move(connection)) {}

SqliteDatabase::~SqliteDatabase() { SqliteDatabase::Close(); }

void SqliteDatabase::Close() {
  if (m_connection) m_pool->Release(std::exchange(m_connection, nullptr));
}

Connection& SqliteDatabase::Use(const char* source) {
  if (!m_connection) RaiseClosed(source);
  m_connection->EnterTransactions(m_pool->Level());
  return *m_connection;
}

Connection& SqliteDatabase::UseForWriting(const char* source) {
  Connection& connection = Use(source);
  connection.EndView();
  return connection;
}

std::unique_ptr<platform::ReadView> SqliteDatabase::HoldView() {
  if (!m_connection) RaiseClosed(kDatabaseSource);
  return std::make_unique<ConnectionView>(m_connection);
}

std::unique_ptr<platform::Recordset> SqliteDatabase::OpenRecordset(const std::string& sql,
                                                                   platform::RecordsetType) {
  if (!m_connection) RaiseClosed(kDatabaseSource);
  const JetSql& query = m_connection->Translations().Of(sql, kDatabaseSource);
  if (query.Kind() != StatementKind::Select) {
    RaiseDao(DaoError::InvalidOperation, kDatabaseSource,
             "Invalid operation: a recordset is opened on a SELECT statement.");
  }
  Connection& connection = Use(kDatabaseSource);
  if (auto known = OpenKnownRow(connection, query)) return known;
  bool hasKey = false;
  Statement& statement = PrepareSelect(connection, query, hasKey);
  RowBuffer rows = ReadRows(connection, query, statement, hasKey);
  return std::make_unique<SqliteRecordset>(shared_from_this(), statement.plan, std::move(rows),
                                           connection.CurrentState());
}

// Within a transaction, where nobody can change the row before it is written. Null when it has to be read.
std::unique_ptr<platform::Recordset> SqliteDatabase::OpenKnownRow(Connection& connection,
                                                                  const JetSql& query) {
  if (query.SoughtColumn().empty() || !connection.IsInTransaction()) return nullptr;
  KnownRows& known = connection.Known();
  const KnownRows::Row row = known.Find(query.Table(), query.SoughtColumn(), query.EndNumber());
  if (!row.plan) return nullptr;
  const auto version = connection.DataVersion();
  if (!version || !known.StandAt(*version)) return nullptr;
  return std::make_unique<SqliteRecordset>(shared_from_this(), row.plan, RowBuffer(row.packed),
                                           connection.CurrentState());
}

RowBuffer SqliteDatabase::ReadRows(Connection& connection, const JetSql& query, Statement& statement,
                                   bool hasKey) {
  const StatementReset reset(statement);
  BindLiterals(statement, query);
  ListMemory memory(connection, query, statement, hasKey);
  RowBuffer rows;
  bool isRow = connection.Step(statement, kDatabaseSource, query.Table());
  // Looked at behind the first step, which prepares the statement anew if tables have changed.
  if (!statement.plan || !statement.plan->IsOf(statement.Handle())) {
    statement.plan = std::make_shared<SelectPlan>(connection.Handle(), statement.Handle(), hasKey);
  }
  memory.Begin(statement.plan);
  const int columns = sqlite3_column_count(statement.Handle());
  for (; isRow; isRow = connection.Step(statement, kDatabaseSource, query.Table())) {
    const std::string_view row = rows.Append(statement.Handle(), columns);
    memory.Add(statement.Handle(), columns - 1, row);
  }
  return rows;
}

Statement& SqliteDatabase::PrepareSelect(Connection& connection, const JetSql& query, bool& hasKey) {
  if (query.SelectsKey()) {
    if (Statement* statement = connection.TryPrepare(query.Text()); statement != nullptr) {
      hasKey = true;
      return *statement;
    }
    // A view has no keys; anything else that is wrong shows again.
    return connection.Prepare(query.TextWithoutKey(), kDatabaseSource, query.Table());
  }
  return connection.Prepare(query.Text(), kDatabaseSource, query.Table());
}

void SqliteDatabase::Execute(const std::string& sql) {
  if (!m_connection) RaiseClosed(kDatabaseSource);
  const JetSql& command = m_connection->Translations().Of(sql, kDatabaseSource);
  if (command.Kind() == StatementKind::Select) {
    RaiseDao(DaoError::SelectInExecute, kDatabaseSource, "Cannot execute a select query.");
  }
  Connection& connection = UseForWriting(kDatabaseSource);
  Statement& statement = connection.Prepare(command.Text(), kDatabaseSource, command.Table());
  const StatementReset reset(statement);
  BindLiterals(statement, command);
  connection.Known().Clear();
  connection.Run(statement, kDatabaseSource, command.Table());
}

}  // namespace hearthmake::sqlite
