#include "adapters/sqlite/SqliteDatabase.hpp"

#include <sqlite3.h>

#include <type_traits>
#include <utility>
#include <variant>

#include "adapters/sqlite/Cell.hpp"
#include "adapters/sqlite/JetSql.hpp"
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
  const JetSql query(sql, kDatabaseSource);
  if (query.Kind() != StatementKind::Select) {
    RaiseDao(DaoError::InvalidOperation, kDatabaseSource,
             "Invalid operation: a recordset is opened on a SELECT statement.");
  }
  Connection& connection = Use(kDatabaseSource);
  bool hasKey = false;
  Statement& statement = PrepareSelect(connection, query, hasKey);
  const StatementReset reset(statement);
  BindLiterals(statement, query);

  RowBuffer rows;
  bool isRow = connection.Step(statement, kDatabaseSource, query.Table());
  // Looked at behind the first step, which prepares the statement anew if tables have changed.
  if (!statement.plan || !statement.plan->IsOf(statement.Handle())) {
    statement.plan = std::make_shared<SelectPlan>(connection.Handle(), statement.Handle(), hasKey);
  }
  const int columns = sqlite3_column_count(statement.Handle());
  for (; isRow; isRow = connection.Step(statement, kDatabaseSource, query.Table())) {
    rows.Append(statement.Handle(), columns);
  }
  return std::make_unique<SqliteRecordset>(shared_from_this(), statement.plan, std::move(rows),
                                           connection.CurrentState());
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
  const JetSql command(sql, kDatabaseSource);
  if (command.Kind() == StatementKind::Select) {
    RaiseDao(DaoError::SelectInExecute, kDatabaseSource, "Cannot execute a select query.");
  }
  Connection& connection = UseForWriting(kDatabaseSource);
  Statement& statement = connection.Prepare(command.Text(), kDatabaseSource, command.Table());
  const StatementReset reset(statement);
  BindLiterals(statement, command);
  connection.Run(statement, kDatabaseSource, command.Table());
}

}  // namespace hearthmake::sqlite
