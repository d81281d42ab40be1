#pragma once

#include <memory>
#include <string>

#include "adapters/sqlite/Connection.hpp"
#include "adapters/sqlite/ConnectionPool.hpp"
#include "platform/Database.hpp"

namespace hearthmake::sqlite {

class JetSql;
class RowBuffer;

// One open database of a SqliteWorkspace. After Close everything but Close is error 3420.
class SqliteDatabase : public platform::Database, public std::enable_shared_from_this<SqliteDatabase> {
 public:
  // Takes over a connection acquired from the pool.
  SqliteDatabase(std::shared_ptr<ConnectionPool> pool, std::shared_ptr<Connection> connection);
  ~SqliteDatabase() override;

  // A SELECT (3219 otherwise). Its rows are read at once: what is written afterwards does not show.
  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql,
                                                     platform::RecordsetType type) override;
  // An INSERT, UPDATE or DELETE; a SELECT is error 3065.
  void Execute(const std::string& sql) override;
  std::unique_ptr<platform::ReadView> HoldView() override;
  void Close() override;

  // The connection, in the workspace's transaction. Raises 3420 when the database is closed.
  Connection& Use(const char* source);
  // The same for a write, which no view may hold up.
  Connection& UseForWriting(const char* source);

 private:
  std::unique_ptr<platform::Recordset> OpenKnownRow(Connection& connection, const JetSql& query);
  RowBuffer ReadRows(Connection& connection, const JetSql& query, Statement& statement, bool hasKey);
  Statement& PrepareSelect(Connection& connection, const JetSql& query, bool& hasKey);

  std::shared_ptr<ConnectionPool> m_pool;
  std::shared_ptr<Connection> m_connection;
};

}  // namespace hearthmake::sqlite
