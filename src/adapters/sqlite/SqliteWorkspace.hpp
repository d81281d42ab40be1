#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Database.hpp"

namespace hearthmake::sqlite {

class ConnectionPool;

// Switches SQLite's statistics of its memory off, which lock at each allocation and make most of the cost
// of a small statement. It is a matter of the whole process, so its host decides; of no effect once SQLite
// is in use.
void LeaveOutMemoryStatistics();

// The workspace over SQLite files. It and all that it opens belong to one thread.
//
// A closed database stays open underneath and is taken up again by the next OpenDatabase of the path,
// if the file is still as it was left: opening is then as cheap as a look at the file's stamp. What was
// written is in the file itself as soon as the database is closed.
//
// Databases opened on one file share its transactions, so closing one of them rolls back only when it
// is the last one. A transaction over several files is committed file by file.
class SqliteWorkspace : public platform::Workspace {
 public:
  using PathMap = std::function<std::string(std::string_view dosPath)>;

  // toPosix gives the POSIX path of a DOS path. busyTimeout is how long a lock held by another process
  // is waited for.
  explicit SqliteWorkspace(PathMap toPosix, std::chrono::milliseconds busyTimeout = std::chrono::seconds(5));
  ~SqliteWorkspace() override;

  // Errors: 3024 missing, 3043 disk error, 3045 in use, 3051 can't be opened, 3343 no SQLite file or a
  // damaged one. A file is never created, one that isn't SQLite's never written.
  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override;
  // Costs nothing until a database is used, which then takes the file's write lock.
  void BeginTrans() override;
  // When it fails the transaction is still open: Rollback ends it.
  void CommitTrans() override;
  void Rollback() override;

 private:
  PathMap m_toPosix;
  std::shared_ptr<ConnectionPool> m_pool;
};

}  // namespace hearthmake::sqlite
