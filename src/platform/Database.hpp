#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace hearthmake::platform {

// The store of builds, in the shape of DAO: a workspace opens databases and spans transactions over
// them, a database runs SQL texts, a recordset walks and edits rows. SQL arrives as the persisting
// classes send it (Jet's dialect, names without regard to case); adapters translate.
//
// Every operation that fails throws automation::Error with the engine's own words as description
// and "DAO.Database", "DAO.Recordset" or "DAO.Workspace" as source.

enum class RecordsetType { Dynaset = 2 };

// The rows of one selection. The destructor closes it. Column names are matched without regard to
// case; an unknown one is error 3265, "Item not found in this collection.".
class Recordset {
 public:
  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;
  virtual ~Recordset() = default;

  // DAO's EOF (that word is a macro of the C library): no current row.
  virtual bool AtEnd() const = 0;
  virtual void MoveNext() = 0;
  // AddNew starts a new row with the columns' defaults, Edit opens the current one; Update writes
  // either. An AutoNumber column can be read between AddNew and Update.
  virtual void AddNew() = 0;
  virtual void Edit() = 0;
  virtual void Update() = 0;
  virtual void Close() = 0;

  // Reads of the current row, or of the row being added. Null reads as "", 0 and false.
  virtual bool IsNull(std::string_view column) const = 0;
  virtual std::string GetText(std::string_view column) const = 0;
  virtual std::int32_t GetLong(std::string_view column) const = 0;
  virtual bool GetBoolean(std::string_view column) const = 0;
  virtual double GetDate(std::string_view column) const = 0;

  // Writes need AddNew or Edit first (error 3020 otherwise).
  virtual void SetNull(std::string_view column) = 0;
  virtual void SetText(std::string_view column, std::string_view value) = 0;
  virtual void SetLong(std::string_view column, std::int32_t value) = 0;
  virtual void SetBoolean(std::string_view column, bool value) = 0;
  virtual void SetDate(std::string_view column, double value) = 0;
};

// Keeps a database's reads together for as long as it lives.
class ReadView {
 public:
  ReadView() = default;
  ReadView(const ReadView&) = delete;
  ReadView& operator=(const ReadView&) = delete;
  virtual ~ReadView() = default;
};

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database() = default;

  virtual std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, RecordsetType type) = 0;
  // Runs one statement; a second one behind ";" is refused (error 3142), as Jet refuses it.
  virtual void Execute(const std::string& sql) = 0;
  // For many reads in a row: they see the file as it is at the first of them, and each costs less. The
  // next write, transaction or Close ends it early.
  virtual std::unique_ptr<ReadView> HoldView() { return nullptr; }
  virtual void Close() = 0;
};

// Transactions nest: an inner one that is rolled back takes only its own changes with it. They span
// every database of the workspace, one that is opened while they run included; closing a database
// rolls its open transactions back.
class Workspace {
 public:
  Workspace() = default;
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  virtual ~Workspace() = default;

  // path is a DOS path. A file that is missing, locked, damaged or of another format throws.
  virtual std::shared_ptr<Database> OpenDatabase(const std::string& path) = 0;
  virtual void BeginTrans() = 0;
  // CommitTrans and Rollback without BeginTrans are error 3034.
  virtual void CommitTrans() = 0;
  virtual void Rollback() = 0;
};

}  // namespace hearthmake::platform
