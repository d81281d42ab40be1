#include "adapters/sqlite/Connection.hpp"

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <utility>

#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/sqlite/SelectPlan.hpp"
#include "adapters/sqlite/SqliteError.hpp"
#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

constexpr std::size_t kStatements = 64;
// Pages that gather in the WAL before they go into the file: each time costs two flushes of the disk,
// so a scan of some hundred projects should get by with one.
constexpr int kCheckpointPages = 4000;
// File systems stamp with the clock of the timer tick; a younger file could change without a new stamp.
constexpr std::int64_t kStampGranularity = 20'000'000;

std::int64_t NanosecondsNow() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

class FlagScope {
 public:
  explicit FlagScope(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;
  ~FlagScope() { m_flag = m_before; }

 private:
  bool& m_flag;
  bool m_before;
};

bool IsInternalTable(const char* name) {
  return name != nullptr &&
         (sqlite3_strnicmp(name, "sqlite_", 7) == 0 || sqlite3_strnicmp(name, "pragma_", 7) == 0);
}

// A read-only file behind "immutable" is read without locks and without the WAL, so there must be
// nothing in it that a reader would miss.
bool HasPendingWal(const std::string& posixPath) { return disk::StampOf(posixPath + "-wal").size > 0; }

std::string ImmutableUri(const std::string& posixPath) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string uri = "file:";
  for (const char c : posixPath) {
    if (c == '%' || c == '?' || c == '#') {
      uri += '%';
      uri += kHex[static_cast<unsigned char>(c) >> 4];
      uri += kHex[static_cast<unsigned char>(c) & 15];
    } else {
      uri += c;
    }
  }
  return uri + "?immutable=1";
}

}  // namespace

Connection::Connection(std::string posixPath, std::string dosPath, std::chrono::milliseconds busyTimeout)
    : m_posixPath(std::move(posixPath)),
      m_dosPath(std::move(dosPath)),
      m_busyTimeout(busyTimeout),
      m_statements(kStatements) {
  try {
    Open();
  } catch (...) {
    sqlite3_close_v2(m_db);
    throw;
  }
}

Connection::~Connection() {
  m_statements.Clear();
  sqlite3_close_v2(m_db);
}

void Connection::Open() {
  if (const auto format = FormatBySize(m_posixPath)) RaiseNoDatabase(*format);
  int result = SQLITE_CANTOPEN;
  if (OpenHandle(m_posixPath, SQLITE_OPEN_READWRITE)) {
    if (const FileFormat format = FormatByHeader(m_db); format != FileFormat::Sqlite) RaiseNoDatabase(format);
    result = Configure();
  }
  const int primary = result & 0xFF;
  if (primary == SQLITE_CANTOPEN || primary == SQLITE_READONLY || primary == SQLITE_IOERR) {
    // No WAL can be kept here (a read-only folder, some network file systems): reading is still of use.
    if (!HasPendingWal(m_posixPath)) result = OpenImmutable();
  }
  if (result != SQLITE_OK) RaiseOpening(result);
  m_stamp = disk::StampOf(m_posixPath);
}

void Connection::RaiseNoDatabase(FileFormat format) {
  switch (format) {
    case FileFormat::Missing:
      RaiseDao(DaoError::FileMissing, kWorkspaceSource, "Could not find file '" + m_dosPath + "'.");
    case FileFormat::Folder:
      RaiseDao(DaoError::CannotOpen, kWorkspaceSource,
               "Could not open '" + m_dosPath + "': it is not a file.");
    case FileFormat::Unreadable: RaiseOpening(SQLITE_CANTOPEN);
    case FileFormat::Jet:
      RaiseDao(DaoError::UnknownFormat, kWorkspaceSource,
               "Unrecognized database format '" + m_dosPath + "': it is a Jet database.");
    case FileFormat::Empty:
    case FileFormat::Other:
    case FileFormat::Sqlite: break;
  }
  RaiseDao(DaoError::UnknownFormat, kWorkspaceSource, "Unrecognized database format '" + m_dosPath + "'.");
}

bool Connection::OpenHandle(const std::string& name, int flags) {
  sqlite3_close_v2(std::exchange(m_db, nullptr));
  const int result =
      sqlite3_open_v2(name.c_str(), &m_db, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  if (result != SQLITE_OK) return false;
  sqlite3_busy_timeout(m_db, static_cast<int>(m_busyTimeout.count()));
  // A name that no column has must not be read as a text.
  sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  // What a foreign file's triggers and views may do is limited.
  sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(m_db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_limit(m_db, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_set_authorizer(m_db, &Connection::Authorize, this);
  sqlite3_wal_hook(m_db, &Connection::Written, this);
  return true;
}

int Connection::Configure() {
  const FlagScope own(m_isOwnSql);
  Exec("PRAGMA cell_size_check=ON");
  Exec("PRAGMA cache_size=-8000");
  Exec("PRAGMA temp_store=MEMORY");
  // The first look at the file: shows whether it can be used at all.
  if (const int result = Exec("SELECT COUNT(*) FROM sqlite_master"); result != SQLITE_OK) return result;
  bool isWal = ModeAfter("PRAGMA journal_mode") == "wal";
  if (!isWal) {
    // Refused where no WAL can be kept. It is refused as well while someone reads in the old mode;
    // that is no harm and not worth waiting for.
    sqlite3_busy_timeout(m_db, 0);
    isWal = ModeAfter("PRAGMA journal_mode=WAL") == "wal";
    sqlite3_busy_timeout(m_db, static_cast<int>(m_busyTimeout.count()));
  }
  // Without WAL only FULL, the default, keeps a transaction whole through a power cut.
  return isWal ? Exec("PRAGMA synchronous=NORMAL") : SQLITE_OK;
}

std::string Connection::ModeAfter(const char* pragma) {
  std::string mode;
  const auto first = [](void* out, int, char** values, char**) {
    if (values[0] != nullptr) *static_cast<std::string*>(out) = values[0];
    return 0;
  };
  sqlite3_exec(m_db, pragma, first, &mode, nullptr);
  return mode;
}

int Connection::OpenImmutable() {
  m_statements.Clear();
  if (!OpenHandle(ImmutableUri(m_posixPath), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI)) {
    return SQLITE_CANTOPEN;
  }
  const FlagScope own(m_isOwnSql);
  return Exec("SELECT COUNT(*) FROM sqlite_master");
}

void Connection::RaiseOpening(int code) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      RaiseDao(DaoError::FileInUse, kWorkspaceSource,
               "Could not use '" + m_dosPath + "'; file already in use.");
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_READONLY:
      RaiseDao(DaoError::CannotOpen, kWorkspaceSource,
               "Could not open '" + m_dosPath + "': permission to read it is missing.");
    default: RaiseSqlite(m_db, code, kWorkspaceSource, {}, m_dosPath);
  }
}

int Connection::Exec(const char* sql) noexcept { return sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr); }

int Connection::ExecPrepared(const std::string& sql) {
  int result = SQLITE_OK;
  Statement* statement = m_statements.Get(m_db, sql, result);
  if (statement == nullptr) return result;
  sqlite3_step(statement->Handle());
  return sqlite3_reset(statement->Handle());
}

Statement* Connection::TryPrepare(std::string_view sql) {
  int result = SQLITE_OK;
  return m_statements.Get(m_db, sql, result);
}

Statement& Connection::Prepare(std::string_view sql, const char* source, std::string_view table) {
  int result = SQLITE_OK;
  Statement* statement = m_statements.Get(m_db, sql, result);
  if (statement == nullptr) Fail(result, source, table);
  return *statement;
}

bool Connection::Step(Statement& statement, const char* source, std::string_view table) {
  const int result = sqlite3_step(statement.Handle());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) Fail(result, source, table);
  return false;
}

void Connection::Run(Statement& statement, const char* source, std::string_view table) {
  while (Step(statement, source, table)) {
  }
}

void Connection::Fail(int code, const char* source, std::string_view table) {
  const int primary = code & 0xFF;
  m_isDamaged |= primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || primary == SQLITE_IOERR;
  // After a full disk and the like SQLite rolls the whole transaction back by itself. Going on would
  // commit the rest of it alone.
  m_isTransactionLost |= m_depth > 0 && sqlite3_get_autocommit(m_db) != 0;
  const bool concernsFile = primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
  RaiseSqlite(m_db, code, source, table, concernsFile ? std::string_view(m_dosPath) : std::string_view{});
}

std::int64_t Connection::ReserveKey(const SelectPlan& plan, const char* source) {
  const FlagScope own(m_isOwnSql);
  std::int64_t key = 0;
  if (!plan.CountsKeys()) {
    Statement& largest =
        Prepare("SELECT COALESCE(MAX(_rowid_),0)+1 FROM " + plan.QuotedTable(), source, plan.Table());
    const StatementReset reset(largest);
    if (Step(largest, source, plan.Table())) key = sqlite3_column_int64(largest.Handle(), 0);
    return key;
  }
  constexpr std::array kCount = {
      std::string_view("UPDATE sqlite_sequence SET seq=seq+1 WHERE name=?1 RETURNING seq"),
      // A table that has never had a row has no counter yet; another process may be as quick as we.
      std::string_view("INSERT INTO sqlite_sequence(name,seq) SELECT ?1,0 "
                       "WHERE NOT EXISTS(SELECT 1 FROM sqlite_sequence WHERE name=?1)"),
      std::string_view("UPDATE sqlite_sequence SET seq=seq+1 WHERE name=?1 RETURNING seq"),
  };
  for (const std::string_view sql : kCount) {
    Statement& count = Prepare(sql, source, plan.Table());
    const StatementReset reset(count);
    sqlite3_bind_text(count.Handle(), 1, plan.Table().c_str(), -1, SQLITE_STATIC);
    while (Step(count, source, plan.Table())) key = sqlite3_column_int64(count.Handle(), 0);
    if (key != 0) return key;
  }
  return key;
}

Cell Connection::DefaultOf(SelectPlan& plan, std::size_t column) {
  const FlagScope own(m_isOwnSql);
  return plan.Default(m_db, column);
}

bool Connection::ChangesRowsAlone(const std::string& table) {
  const FlagScope own(m_isOwnSql);
  // The index of a UNIQUE column has no text.
  Statement* other = TryPrepare(
      "SELECT 1 FROM sqlite_master WHERE type='trigger' OR type='index' AND tbl_name=?1 COLLATE NOCASE "
      "AND (sql IS NULL OR sql LIKE 'CREATE UNIQUE%')");
  if (other == nullptr) return false;
  const StatementReset reset(*other);
  sqlite3_bind_text64(other->Handle(), 1, table.data(), table.size(), SQLITE_STATIC, SQLITE_UTF8);
  return sqlite3_step(other->Handle()) == SQLITE_DONE;
}

std::optional<std::int64_t> Connection::DataVersion() {
  const FlagScope own(m_isOwnSql);
  Statement* version = TryPrepare("PRAGMA main.data_version");
  if (version == nullptr) return std::nullopt;
  const StatementReset reset(*version);
  if (sqlite3_step(version->Handle()) != SQLITE_ROW) return std::nullopt;
  return sqlite3_column_int64(version->Handle(), 0);
}

void Connection::EnterTransactions(int level) {
  if (m_isTransactionLost) {
    RaiseDao(DaoError::EngineFailed, kWorkspaceSource,
             "The transaction was rolled back after an error; roll it back before going on.");
  }
  if (m_depth >= level) return;
  EndView();
  const FlagScope own(m_isOwnSql);
  while (m_depth < level) {
    const bool isReadOnly = sqlite3_db_readonly(m_db, "main") != 0;
    const int result = m_depth > 0  ? ExecPrepared("SAVEPOINT level" + std::to_string(m_depth + 1))
                       : isReadOnly ? ExecPrepared("BEGIN")
                                    : ExecPrepared("BEGIN IMMEDIATE");
    if (result != SQLITE_OK) Fail(result, kWorkspaceSource, {});
    if (++m_depth == 1) ++m_epoch;
  }
}

void Connection::Commit(int level) {
  if (m_depth < level) return;
  EnterTransactions(level);  // raises when the engine has given the transaction up
  const FlagScope own(m_isOwnSql);
  const int result = ExecPrepared(level == 1 ? "COMMIT" : "RELEASE level" + std::to_string(level));
  if (result != SQLITE_OK) Fail(result, kWorkspaceSource, {});
  m_depth = level - 1;
}

void Connection::Rollback(int level) noexcept {
  if (m_depth < level) return;
  const FlagScope own(m_isOwnSql);
  m_depth = level - 1;
  ++m_epoch;
  if (!m_isTransactionLost) {
    if (level == 1) {
      Exec("ROLLBACK");
    } else {
      std::array<char, 64> sql{};
      sqlite3_snprintf(static_cast<int>(sql.size()), sql.data(), "ROLLBACK TO level%d;RELEASE level%d", level,
                       level);
      Exec(sql.data());
    }
  }
  if (m_depth == 0) m_isTransactionLost = false;
}

void Connection::BeginView() {
  if (m_depth > 0 || m_isViewing) return;
  const FlagScope own(m_isOwnSql);
  m_isViewing = ExecPrepared("BEGIN") == SQLITE_OK;
}

void Connection::EndView() noexcept {
  if (!std::exchange(m_isViewing, false)) return;
  const FlagScope own(m_isOwnSql);
  Exec("COMMIT");
}

Connection::State Connection::CurrentState() const {
  if (m_depth == 0 || m_isTransactionLost) return {};
  return {m_epoch, sqlite3_total_changes64(m_db)};
}

bool Connection::Park() noexcept {
  EndView();
  Rollback(1);
  if (m_isDamaged || sqlite3_get_autocommit(m_db) == 0) return false;
  if (m_isWalUsed) {
    // Emptied, not only copied: whoever puts another file in this one's place must not find our pages
    // beside it. A reader in another process prevents that, and is not waited for.
    sqlite3_busy_timeout(m_db, 0);
    m_isWalUsed =
        sqlite3_wal_checkpoint_v2(m_db, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr) != SQLITE_OK;
    sqlite3_busy_timeout(m_db, static_cast<int>(m_busyTimeout.count()));
  }
  m_stamp = disk::StampOf(m_posixPath);
  m_stampIsSure = NanosecondsNow() - m_stamp.modified > kStampGranularity;
  return true;
}

int Connection::Authorize(void* self, int action, const char* first, const char* second, const char*,
                          const char*) {
  if (static_cast<Connection*>(self)->m_isOwnSql) return SQLITE_OK;
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_RECURSIVE: return SQLITE_OK;
    case SQLITE_FUNCTION: return sqlite3_stricmp(second, "load_extension") == 0 ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_READ:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE: return IsInternalTable(first) ? SQLITE_DENY : SQLITE_OK;
    default: return SQLITE_DENY;
  }
}

int Connection::Written(void* self, sqlite3* db, const char*, int pages) {
  static_cast<Connection*>(self)->m_isWalUsed = true;
  if (pages >= kCheckpointPages) {
    sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
  }
  return SQLITE_OK;
}

}  // namespace hearthmake::sqlite
