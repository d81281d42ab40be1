#include <sqlite3.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/Disk.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/sqlite/SqliteError.hpp"

namespace hearthmake::sqlite {

namespace {

constexpr int kBusyMilliseconds = 5000;

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

bool IsBusy(int result) { return (result & 0xFF) == SQLITE_BUSY || (result & 0xFF) == SQLITE_LOCKED; }

// Keeps everybody else out of a database, and takes its log in: one that is left behind would be read as
// part of the new file. Nothing, where the old file is of no use to anybody.
Handle LockOld(const std::string& path) {
  sqlite3* db = nullptr;
  int result = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  Handle handle(db, &sqlite3_close);
  if (result == SQLITE_OK) sqlite3_busy_timeout(db, kBusyMilliseconds);
  for (const char* sql : {"PRAGMA journal_mode=DELETE", "BEGIN EXCLUSIVE"}) {
    if (result == SQLITE_OK) result = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
  }
  if (IsBusy(result)) {
    RaiseDao(DaoError::FileInUse, kWorkspaceSource, "Could not use '" + path + "'; file already in use.");
  }
  return handle;
}

}  // namespace

void NewBuildDatabase::PublishReplacing() const {
  Handle old(nullptr, &sqlite3_close);
  if (DetectFormat(m_target) == FileFormat::Sqlite) old = LockOld(m_target);
  for (const char* suffix : {"-journal", "-wal", "-shm"}) disk::Remove(m_target + suffix);
  if (std::rename(m_path.c_str(), m_target.c_str()) != 0) {
    RaiseDao(DaoError::CannotOpen, kWorkspaceSource,
             "Could not replace '" + m_target + "': " + std::generic_category().message(errno) + ".");
  }
  disk::FlushFolderOf(m_target);
}

}  // namespace hearthmake::sqlite
