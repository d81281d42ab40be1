#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/sqlite/Cell.hpp"
#include "adapters/sqlite/Disk.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/sqlite/KnownRows.hpp"
#include "adapters/sqlite/SqlTranslations.hpp"
#include "adapters/sqlite/Statement.hpp"

struct sqlite3;

namespace hearthmake::sqlite {

class SelectPlan;

// One open SQLite file with its prepared statements and its part in the workspace's transaction. All
// the databases that a workspace has open on the file share it.
//
// Writers are kept apart by SQLite (WAL, a busy time-out), also those of other processes. A
// transaction takes the write lock when it is first used, so that it never has to give up half-way
// because someone else has written since it first read.
class Connection {
 public:
  // Opens the existing file at posixPath; it is never created. dosPath is its name in messages.
  // Errors ("DAO.Workspace"): 3024 missing, 3043 disk error, 3045 in use, 3051 can't be opened,
  // 3343 no SQLite file or a damaged one.
  Connection(std::string posixPath, std::string dosPath, std::chrono::milliseconds busyTimeout);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  sqlite3* Handle() const { return m_db; }
  const std::string& PosixPath() const { return m_posixPath; }

  // The prepared statement of a translated text; raises what SQLite says against it.
  Statement& Prepare(std::string_view sql, const char* source, std::string_view table);
  // As Prepare, but null when SQLite refuses the text.
  Statement* TryPrepare(std::string_view sql);
  // One step: true on a row, false at the end; raises on failure.
  bool Step(Statement& statement, const char* source, std::string_view table);
  // Steps to the end.
  void Run(Statement& statement, const char* source, std::string_view table);

  // The key that the next row of plan's table gets. Where keys are counted it is taken for good, so
  // that no other process gets it as well; else it is one more than the largest.
  std::int64_t ReserveKey(const SelectPlan& plan, const char* source);
  // The value of a column of plan's table in a new row.
  Cell DefaultOf(SelectPlan& plan, std::size_t column);

  // Translates what is sent to this file.
  SqlTranslations& Translations() { return m_translations; }

  // --- rows that need not be read again ---

  // Rows of lists that were read; whoever writes through the connection tells.
  KnownRows& Known() { return m_known; }
  // Whether the file is such that a changed row of the table is all that its UPDATE changes: nothing is set
  // off by it, and no other row has to go for it.
  bool ChangesRowsAlone(const std::string& table);
  // A number that stays the same while no other connection, of whatever process, changes the file; nothing
  // where it can't be had, which raises nothing.
  std::optional<std::int64_t> DataVersion();

  // --- transactions: levels count from 1, each within the one before it ---

  // Begins what is missing up to the level. Raises 3260 when another process keeps the write lock, and
  // 3146 when the engine has given the running transaction up.
  void EnterTransactions(int level);
  void Commit(int level);
  void Rollback(int level) noexcept;

  // --- views: the reads of a time see one state of the file and take its lock once ---

  // No effect within a transaction, which is a view itself.
  void BeginView();
  void EndView() noexcept;

  // Stands for the state of the file within the running transaction: what was read under a state is
  // still so while the connection gives the same one. Outside of a transaction others may write at any
  // time, and none is equal.
  struct State {
    std::uint64_t epoch = 0;  // 0 outside of a transaction
    std::int64_t changes = 0;

    bool IsStill(const State& now) const {
      return epoch != 0 && epoch == now.epoch && changes == now.changes;
    }
  };
  State CurrentState() const;
  bool IsInTransaction() const { return m_depth > 0; }

  // --- between two uses of the connection ---

  // Rolls back what is open and brings all that was written into the file itself, so that a copy of it
  // is whole while the connection waits for its next use. False when it is of no more use.
  bool Park() noexcept;
  // Whether the path still leads to the file as Park left it.
  bool IsParkedOn(const FileStamp& now) const { return m_stampIsSure && m_stamp == now; }
  // Whether the path leads to the file that is open.
  bool IsOpenOn(const FileStamp& now) const { return m_stamp.IsSameFile(now); }

 private:
  void Open();
  bool OpenHandle(const std::string& name, int flags);
  int Configure();
  std::string ModeAfter(const char* pragma);
  int OpenImmutable();
  [[noreturn]] void RaiseNoDatabase(FileFormat format);
  [[noreturn]] void RaiseOpening(int code);
  [[noreturn]] void Fail(int code, const char* source, std::string_view table);
  int Exec(const char* sql) noexcept;
  // The same for what is run again and again.
  int ExecPrepared(const std::string& sql);
  static int Authorize(void* self, int action, const char* first, const char* second, const char* schema,
                       const char* trigger);
  static int Written(void* self, sqlite3* db, const char* schema, int pages);

  std::string m_posixPath;
  std::string m_dosPath;
  std::chrono::milliseconds m_busyTimeout;
  sqlite3* m_db = nullptr;
  StatementCache m_statements;
  SqlTranslations m_translations;
  KnownRows m_known;
  // Set while SQL of this class runs, which may use more of SQLite than a host's.
  bool m_isOwnSql = false;
  int m_depth = 0;
  std::uint64_t m_epoch = 0;  // counts transactions and rollbacks
  bool m_isViewing = false;
  bool m_isTransactionLost = false;
  bool m_isDamaged = false;
  // Whether the WAL may hold pages that the file lacks; it may when someone died before us.
  bool m_isWalUsed = true;
  FileStamp m_stamp;
  bool m_stampIsSure = false;
};

}  // namespace hearthmake::sqlite
