#include "adapters/sqlite/SqliteWorkspace.hpp"

#include <sqlite3.h>

#include <utility>

#include "adapters/sqlite/ConnectionPool.hpp"
#include "adapters/sqlite/SqliteDatabase.hpp"

namespace hearthmake::sqlite {

void LeaveOutMemoryStatistics() { sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); }

SqliteWorkspace::SqliteWorkspace(PathMap toPosix, std::chrono::milliseconds busyTimeout)
    : m_toPosix(std::move(toPosix)), m_pool(std::make_shared<ConnectionPool>(busyTimeout)) {}

SqliteWorkspace::~SqliteWorkspace() = default;

std::shared_ptr<platform::Database> SqliteWorkspace::OpenDatabase(const std::string& path) {
  return std::make_shared<SqliteDatabase>(m_pool, m_pool->Acquire(m_toPosix(path), path));
}

void SqliteWorkspace::BeginTrans() { m_pool->Begin(); }

void SqliteWorkspace::CommitTrans() { m_pool->Commit(); }

void SqliteWorkspace::Rollback() { m_pool->Rollback(); }

}  // namespace hearthmake::sqlite
