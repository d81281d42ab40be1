#include "adapters/sqlite/SqliteError.hpp"

#include <sqlite3.h>

#include <utility>

#include "adapters/sqlite/Disk.hpp"
#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

bool Has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

// SQLITE_ERROR stands for everything that is wrong with a statement; only its words tell what.
DaoError NumberOfStatementError(std::string_view words) {
  if (words.starts_with("no such table")) return DaoError::TableMissing;
  if (words.starts_with("no such column")) return DaoError::ColumnInQuery;
  if (Has(words, "has no column named")) return DaoError::ColumnInInsert;
  if (Has(words, " values for ") || Has(words, " values were supplied")) return DaoError::ValueCount;
  if (Has(words, "syntax error") || words.starts_with("incomplete input") ||
      words.starts_with("unrecognized token") || words.starts_with("ambiguous column")) {
    return DaoError::SyntaxError;
  }
  return DaoError::EngineFailed;
}

DaoError NumberOfConstraint(int code) {
  switch (code) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
    case SQLITE_CONSTRAINT_UNIQUE: return DaoError::DuplicateKey;
    case SQLITE_CONSTRAINT_NOTNULL: return DaoError::NullNotAllowed;
    default: return DaoError::ConstraintFailed;
  }
}

DaoError NumberOfIoError(sqlite3* db, int code) {
  if (code == SQLITE_IOERR_LOCK || code == SQLITE_IOERR_SHMLOCK) return DaoError::CannotLock;
  const int cause = db == nullptr ? 0 : sqlite3_system_errno(db);
  return disk::IsFull(cause) ? DaoError::DiskFull : DaoError::DiskError;
}

DaoError NumberOf(sqlite3* db, int code, std::string_view words) {
  switch (code & 0xFF) {
    case SQLITE_ERROR: return NumberOfStatementError(words);
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return DaoError::RecordLocked;
    case SQLITE_PROTOCOL: return DaoError::CannotLock;
    case SQLITE_FULL: return DaoError::DiskFull;
    case SQLITE_READONLY: return DaoError::ReadOnly;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM: return DaoError::CannotOpen;
    case SQLITE_AUTH: return DaoError::NoPermission;
    case SQLITE_CONSTRAINT: return NumberOfConstraint(code);
    case SQLITE_MISMATCH: return DaoError::Conversion;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB: return DaoError::UnknownFormat;
    case SQLITE_TOOBIG: return DaoError::TooLong;
    case SQLITE_IOERR: return NumberOfIoError(db, code);
    default: return DaoError::EngineFailed;
  }
}

}  // namespace

void RaiseDao(DaoError number, const char* source, std::string description) {
  automation::Raise(static_cast<std::int32_t>(number), source, std::move(description));
}

void RaiseSqlite(sqlite3* db, int code, const char* source, std::string_view table, std::string_view file) {
  if ((code & 0xFF) == SQLITE_NOMEM) automation::Raise(automation::RuntimeError::OutOfMemory, source);
  std::string words = db == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(db);
  const DaoError number = NumberOf(db, code, words);
  if (number == DaoError::UnknownFormat && !file.empty()) {
    RaiseDao(number, source, "Unrecognized database format '" + std::string(file) + "': " + words + ".");
  }
  if (!table.empty() && !Has(words, table)) words += " (table " + std::string(table) + ")";
  if (!file.empty()) words += " (" + std::string(file) + ")";
  RaiseDao(number, source, std::move(words));
}

void RaiseClosed(const char* source) {
  RaiseDao(DaoError::ObjectClosed, source, "Object invalid or no longer set.");
}

}  // namespace hearthmake::sqlite
