#include "adapters/sqlite/BuildSchema.hpp"

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "adapters/sqlite/Connection.hpp"
#include "adapters/sqlite/Disk.hpp"
#include "adapters/sqlite/JetSql.hpp"
#include "adapters/sqlite/SqliteError.hpp"
#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

const char* SqlType(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Counter: return "INTEGER PRIMARY KEY AUTOINCREMENT";
    // Jet compares texts without regard to case.
    case ColumnKind::Text: return "TEXT COLLATE NOCASE";
    case ColumnKind::Memo: return "TEXT";
    case ColumnKind::Long: return "INTEGER";
    // Jet stores No where Null is given.
    case ColumnKind::YesNo: return "BOOLEAN NOT NULL ON CONFLICT REPLACE DEFAULT 0";
    case ColumnKind::Date: break;
  }
  return "REAL";
}

// "Htmk": tells a build database from other SQLite files, also to file(1).
constexpr int kApplicationId = 0x48746D6B;
constexpr int kSchemaVersion = 1;

std::string SchemaSql() {
  std::string sql = "BEGIN;";
  for (const TableSchema& table : BuildTables()) {
    std::string columns;
    for (const ColumnSchema& column : table.columns) {
      if (!columns.empty()) columns += ", ";
      columns += QuoteName(column.name) + ' ' + SqlType(column.kind);
    }
    sql += "CREATE TABLE " + QuoteName(table.name) + " (" + columns + ");";
    for (const char* column : table.indexed) {
      sql += "CREATE INDEX " + QuoteName(std::string(table.name) + '_' + column) + " ON " +
             QuoteName(table.name) + " (" + QuoteName(column) + ");";
    }
  }
  sql += "PRAGMA application_id=" + std::to_string(kApplicationId) + ";";
  sql += "PRAGMA user_version=" + std::to_string(kSchemaVersion) + ";";
  return sql + "COMMIT;";
}

void WriteSchema(const std::string& path) {
  sqlite3* handle = nullptr;
  int result = sqlite3_open_v2(path.c_str(), &handle,
                               SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(handle, &sqlite3_close);
  if (result == SQLITE_OK) result = sqlite3_exec(handle, SchemaSql().c_str(), nullptr, nullptr, nullptr);
  // The mode is kept in the file. Where no WAL can be had the file does without.
  if (result == SQLITE_OK) sqlite3_exec(handle, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) RaiseSqlite(handle, result, kWorkspaceSource, {});
}

// What a lost database of that name has left behind would be read as part of the new one.
void RemoveOrphans(const std::string& posixPath) {
  for (const char* suffix : {"-journal", "-wal", "-shm"}) {
    const std::string orphan = posixPath + suffix;
    // In this order: one that is there before its database is not that of somebody who is just as
    // busy making it.
    if (disk::Exists(orphan) && !disk::Exists(posixPath)) disk::Remove(orphan);
  }
}

}  // namespace

const std::vector<TableSchema>& BuildTables() {
  using enum ColumnKind;
  static const std::vector<TableSchema> tables = {
      {"Build", {{"Id", Counter}, {"Name", Text}, {"StartDllBaseAddress", Long}}, {}},
      {"Project",
       {{"Id", Counter},
        {"idBuild", Long},
        {"ProjectPath", Text},
        {"CopyPath", Text},
        {"Compile", YesNo},
        {"MTSPackage", Long},
        {"PreserveBinary", YesNo},
        {"CheckInBinary", YesNo},
        {"CheckInVBP", YesNo},
        {"LastCompiled", Date},
        {"Name", Text},
        {"Startup", Text},
        {"HelpFile", Text},
        {"ProjectType", Text},
        {"Title", Text},
        {"ExeName32", Text},
        {"Command32", Text},
        {"HelpContextID", Text},
        {"CompatibleMode", Text},
        {"CompatibleEXE32", Text},
        {"MajorVer", Text},
        {"MinorVer", Text},
        {"RevisionVer", Text},
        {"AutoIncrementVer", Text},
        {"ServerSupportFiles", Text},
        {"VersionComments", Text},
        {"VersionCompanyName", Text},
        {"VersionLegalCopyRight", Text},
        {"VersionProductName", Text},
        {"CompilationType", Text},
        {"OptimizationType", Text},
        {"FavorPentiumPro", Text},
        {"CodeViewDebugInfo", Text},
        {"NoAliasing", Text},
        {"BoundsCheck", Text},
        {"OverflowCheck", Text},
        {"FlPointCheck", Text},
        {"FDIVCheck", Text},
        {"UnroundedFP", Text},
        {"StartMode", Text},
        {"Unattended", Text},
        {"Retained", Text},
        {"ThreadPerObject", Text},
        {"MaxNumberOfThreads", Text},
        {"Path32", Text},
        {"DllBaseAddress", Text},
        {"VersionFileDescription", Text},
        {"VersionLegalTrademarks", Text},
        {"CondComp", Text},
        {"Description", Text},
        {"RemoveUnusedControlInfo", Text},
        {"ThreadingModel", Text},
        {"NoControlUpgrade", Text}},
       {"idBuild"}},
      {"References", {{"idReferencing", Long}, {"idReferenced", Long}}, {"idReferencing", "idReferenced"}},
      {"ExternalReferences",
       {{"TypeLibGUID", Text},
        {"BinaryVersion", Text},
        {"Description", Text},
        {"Path", Text},
        {"ProjectID", Long},
        {"Type", Text}},
       {"ProjectID"}},
      {"SSProjects",
       {{"Id", Counter},
        {"idBuild", Long},
        {"Database", Text},
        {"SrcSafeIni", Text},
        {"User", Text},
        {"Password", Text},
        {"Project", Text},
        {"Flags", Long},
        {"WorkingFolder", Text}},
       {"idBuild"}},
      {"MTSPackages",
       {{"Id", Counter},
        {"idBuild", Long},
        {"Name", Text},
        {"User", Text},
        {"Password", Text},
        {"Description", Text},
        // A yes/no for a package, a level for an application: a number holds both.
        {"Autentication", Long},
        {"LeaveRunningIdle", YesNo},
        {"Shutdowntime", Long},
        {"DisableDelete", YesNo},
        {"DisableChanges", YesNo},
        {"LibraryPackage", YesNo},
        {"ExportFile", Text},
        {"CreateFlags", YesNo},
        {"IsSystem", YesNo},
        {"AccessChecksLevel", Long},
        {"ApplicationAccessChecksEnabled", YesNo},
        {"CommandLine", Text},
        {"ImpersonationLevel", Long},
        {"CRMEnabled", YesNo},
        {"CRMLogFile", Text},
        {"GigSupportEnabled", YesNo},
        {"AuthenticationCapability", Long},
        {"QueuingEnabled", YesNo},
        {"QueueListenerEnabled", YesNo},
        {"EventsEnabled", YesNo},
        {"ApplicationProxy", YesNo},
        {"ApplicationProxyServerName", Text},
        {"ExportFlags", Long}},
       {"idBuild"}},
      {"Scripts",
       {{"BuildID", Long},
        {"BeforeSSafe", Memo},
        {"BeforeCompile", Memo},
        {"BuildFailed", Memo},
        {"ComplieComplete", Memo},
        {"AfterMTS", Memo}},
       {"BuildID"}},
  };
  return tables;
}

NewBuildDatabase::NewBuildDatabase(std::string posixPath) : m_target(std::move(posixPath)) {
  std::error_code error;
  m_path = disk::MakeTemporary(m_target, error);
  if (error) {
    RaiseDao(disk::IsFull(error.value()) ? DaoError::DiskFull : DaoError::CannotOpen, kWorkspaceSource,
             "Could not create '" + m_target + "': " + error.message() + ".");
  }
  try {
    WriteSchema(m_path);
  } catch (...) {
    RemoveFiles();
    throw;
  }
}

NewBuildDatabase::~NewBuildDatabase() { RemoveFiles(); }

void NewBuildDatabase::RemoveFiles() const {
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) disk::Remove(m_path + suffix);
}

void NewBuildDatabase::Publish() const {
  using automation::RuntimeError;
  RemoveOrphans(m_target);
  const std::error_code error = disk::MoveWithoutReplacing(m_path, m_target);
  if (error == std::errc::file_exists) {
    automation::Raise(RuntimeError::FileAlreadyExists, kWorkspaceSource, m_target);
  }
  if (error) {
    RaiseDao(DaoError::CannotOpen, kWorkspaceSource,
             "Could not create '" + m_target + "': " + error.message() + ".");
  }
  disk::FlushFolderOf(m_target);
}

void CreateBuildDatabase(const std::string& posixPath) {
  if (disk::Exists(posixPath)) {
    automation::Raise(automation::RuntimeError::FileAlreadyExists, kWorkspaceSource, posixPath);
  }
  NewBuildDatabase(posixPath).Publish();
}

std::vector<std::string> MissingColumns(const std::string& posixPath) {
  const Connection connection(posixPath, posixPath, std::chrono::seconds(5));
  std::vector<std::string> missing;
  const auto has = [&](const char* table, const char* column) {
    return sqlite3_table_column_metadata(connection.Handle(), "main", table, column, nullptr, nullptr,
                                         nullptr, nullptr, nullptr) == SQLITE_OK;
  };
  for (const TableSchema& table : BuildTables()) {
    if (!has(table.name, nullptr)) {
      missing.emplace_back(table.name);
      continue;
    }
    for (const ColumnSchema& column : table.columns) {
      if (!has(table.name, column.name)) missing.push_back(std::string(table.name) + '.' + column.name);
    }
  }
  return missing;
}

}  // namespace hearthmake::sqlite
