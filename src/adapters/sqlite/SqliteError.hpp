#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;

namespace hearthmake::sqlite {

inline constexpr const char* kDatabaseSource = "DAO.Database";
inline constexpr const char* kRecordsetSource = "DAO.Recordset";
inline constexpr const char* kWorkspaceSource = "DAO.Workspace";

// The numbers of DAO that hosts compare against.
enum class DaoError : std::int32_t {
  NoCurrentRecord = 3021,
  NotEditing = 3020,
  DuplicateKey = 3022,
  FileMissing = 3024,
  DiskFull = 3026,
  ReadOnly = 3027,
  NoTransaction = 3034,
  DiskError = 3043,
  FileInUse = 3045,
  CannotLock = 3050,
  CannotOpen = 3051,
  ColumnInQuery = 3061,
  SelectInExecute = 3065,
  SyntaxError = 3075,
  TableMissing = 3078,
  NoPermission = 3112,
  ColumnInInsert = 3127,
  TooLong = 3163,
  FieldNotUpdatable = 3164,
  RecordDeleted = 3167,
  InvalidOperation = 3219,
  RecordLocked = 3260,
  ItemNotFound = 3265,
  NullNotAllowed = 3314,
  ConstraintFailed = 3317,
  UnknownFormat = 3343,
  ValueCount = 3346,
  ObjectClosed = 3420,
  Conversion = 3421,
  EngineFailed = 3146,
};

[[noreturn]] void RaiseDao(DaoError number, const char* source, std::string description);

// Raises what SQLite has just reported on db (code is an extended result code) in DAO's terms: the
// number of DAO's error, the engine's own words and, where they don't name it, the table.
// file, where not empty, is the database's path as its user knows it.
[[noreturn]] void RaiseSqlite(sqlite3* db, int code, const char* source, std::string_view table,
                              std::string_view file = {});

// The errors of an object that was closed, and of a transaction that the engine has given up.
[[noreturn]] void RaiseClosed(const char* source);

}  // namespace hearthmake::sqlite
