#include "adapters/sqlite/BuildSchema.hpp"

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <string_view>
#include <system_error>

#include "adapters/sqlite/Connection.hpp"
#include "adapters/sqlite/Disk.hpp"
#include "adapters/sqlite/JetSql.hpp"
#include "adapters/sqlite/SqliteError.hpp"
#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

// Jet compares texts without regard to case.
constexpr const char* kCounter = "INTEGER PRIMARY KEY AUTOINCREMENT";
constexpr const char* kText = "TEXT COLLATE NOCASE";
constexpr const char* kMemo = "TEXT";
constexpr const char* kLong = "INTEGER";
// Jet stores No where Null is given.
constexpr const char* kYesNo = "BOOLEAN NOT NULL ON CONFLICT REPLACE DEFAULT 0";
constexpr const char* kDate = "REAL";

// "Htmk": tells a build database from other SQLite files, also to file(1).
constexpr int kApplicationId = 0x48746D6B;
constexpr int kSchemaVersion = 1;

struct Column {
  const char* name;
  const char* type;
};

struct Table {
  const char* name;
  std::vector<Column> columns;
  std::vector<const char*> indexed;  // columns that rows are looked up by
};

const std::vector<Table>& Tables() {
  static const std::vector<Table> tables = {
      {"Build", {{"Id", kCounter}, {"Name", kText}, {"StartDllBaseAddress", kLong}}, {}},
      {"Project",
       {{"Id", kCounter},
        {"idBuild", kLong},
        {"ProjectPath", kText},
        {"CopyPath", kText},
        {"Compile", kYesNo},
        {"MTSPackage", kLong},
        {"PreserveBinary", kYesNo},
        {"CheckInBinary", kYesNo},
        {"CheckInVBP", kYesNo},
        {"LastCompiled", kDate},
        {"Name", kText},
        {"Startup", kText},
        {"HelpFile", kText},
        {"ProjectType", kText},
        {"Title", kText},
        {"ExeName32", kText},
        {"Command32", kText},
        {"HelpContextID", kText},
        {"CompatibleMode", kText},
        {"CompatibleEXE32", kText},
        {"MajorVer", kText},
        {"MinorVer", kText},
        {"RevisionVer", kText},
        {"AutoIncrementVer", kText},
        {"ServerSupportFiles", kText},
        {"VersionComments", kText},
        {"VersionCompanyName", kText},
        {"VersionLegalCopyRight", kText},
        {"VersionProductName", kText},
        {"CompilationType", kText},
        {"OptimizationType", kText},
        {"FavorPentiumPro", kText},
        {"CodeViewDebugInfo", kText},
        {"NoAliasing", kText},
        {"BoundsCheck", kText},
        {"OverflowCheck", kText},
        {"FlPointCheck", kText},
        {"FDIVCheck", kText},
        {"UnroundedFP", kText},
        {"StartMode", kText},
        {"Unattended", kText},
        {"Retained", kText},
        {"ThreadPerObject", kText},
        {"MaxNumberOfThreads", kText},
        {"Path32", kText},
        {"DllBaseAddress", kText},
        {"VersionFileDescription", kText},
        {"VersionLegalTrademarks", kText},
        {"CondComp", kText},
        {"Description", kText},
        {"RemoveUnusedControlInfo", kText},
        {"ThreadingModel", kText},
        {"NoControlUpgrade", kText}},
       {"idBuild"}},
      {"References", {{"idReferencing", kLong}, {"idReferenced", kLong}}, {"idReferencing", "idReferenced"}},
      {"ExternalReferences",
       {{"TypeLibGUID", kText},
        {"BinaryVersion", kText},
        {"Description", kText},
        {"Path", kText},
        {"ProjectID", kLong},
        {"Type", kText}},
       {"ProjectID"}},
      {"SSProjects",
       {{"Id", kCounter},
        {"idBuild", kLong},
        {"Database", kText},
        {"SrcSafeIni", kText},
        {"User", kText},
        {"Password", kText},
        {"Project", kText},
        {"Flags", kLong},
        {"WorkingFolder", kText}},
       {"idBuild"}},
      {"MTSPackages",
       {{"Id", kCounter},
        {"idBuild", kLong},
        {"Name", kText},
        {"User", kText},
        {"Password", kText},
        {"Description", kText},
        // A yes/no for a package, a level for an application: a number holds both.
        {"Autentication", kLong},
        {"LeaveRunningIdle", kYesNo},
        {"Shutdowntime", kLong},
        {"DisableDelete", kYesNo},
        {"DisableChanges", kYesNo},
        {"LibraryPackage", kYesNo},
        {"ExportFile", kText},
        {"CreateFlags", kYesNo},
        {"IsSystem", kYesNo},
        {"AccessChecksLevel", kLong},
        {"ApplicationAccessChecksEnabled", kYesNo},
        {"CommandLine", kText},
        {"ImpersonationLevel", kLong},
        {"CRMEnabled", kYesNo},
        {"CRMLogFile", kText},
        {"GigSupportEnabled", kYesNo},
        {"AuthenticationCapability", kLong},
        {"QueuingEnabled", kYesNo},
        {"QueueListenerEnabled", kYesNo},
        {"EventsEnabled", kYesNo},
        {"ApplicationProxy", kYesNo},
        {"ApplicationProxyServerName", kText},
        {"ExportFlags", kLong}},
       {"idBuild"}},
      {"Scripts",
       {{"BuildID", kLong},
        {"BeforeSSafe", kMemo},
        {"BeforeCompile", kMemo},
        {"BuildFailed", kMemo},
        {"ComplieComplete", kMemo},
        {"AfterMTS", kMemo}},
       {"BuildID"}},
  };
  return tables;
}

std::string SchemaSql() {
  std::string sql = "BEGIN;";
  for (const Table& table : Tables()) {
    std::string columns;
    for (const Column& column : table.columns) {
      if (!columns.empty()) columns += ", ";
      columns += QuoteName(column.name) + ' ' + column.type;
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

// A file beside the one to make, of which nothing is left when its scope ends.
class TemporaryDatabase {
 public:
  explicit TemporaryDatabase(const std::string& posixPath) {
    std::error_code error;
    m_path = disk::MakeTemporary(posixPath, error);
    if (!error) return;
    RaiseDao(disk::IsFull(error.value()) ? DaoError::DiskFull : DaoError::CannotOpen, kWorkspaceSource,
             "Could not create '" + posixPath + "': " + error.message() + ".");
  }
  TemporaryDatabase(const TemporaryDatabase&) = delete;
  TemporaryDatabase& operator=(const TemporaryDatabase&) = delete;
  ~TemporaryDatabase() {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) disk::Remove(m_path + suffix);
  }

  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

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

void CreateBuildDatabase(const std::string& posixPath) {
  using automation::RuntimeError;
  if (disk::Exists(posixPath)) {
    automation::Raise(RuntimeError::FileAlreadyExists, kWorkspaceSource, posixPath);
  }
  const TemporaryDatabase temporary(posixPath);
  WriteSchema(temporary.Path());
  RemoveOrphans(posixPath);
  const std::error_code error = disk::MoveWithoutReplacing(temporary.Path(), posixPath);
  if (error == std::errc::file_exists) {
    automation::Raise(RuntimeError::FileAlreadyExists, kWorkspaceSource, posixPath);
  }
  if (error) {
    RaiseDao(DaoError::CannotOpen, kWorkspaceSource,
             "Could not create '" + posixPath + "': " + error.message() + ".");
  }
  disk::FlushFolderOf(posixPath);
}

std::vector<std::string> MissingColumns(const std::string& posixPath) {
  const Connection connection(posixPath, posixPath, std::chrono::seconds(5));
  std::vector<std::string> missing;
  const auto has = [&](const char* table, const char* column) {
    return sqlite3_table_column_metadata(connection.Handle(), "main", table, column, nullptr, nullptr,
                                         nullptr, nullptr, nullptr) == SQLITE_OK;
  };
  for (const Table& table : Tables()) {
    if (!has(table.name, nullptr)) {
      missing.emplace_back(table.name);
      continue;
    }
    for (const Column& column : table.columns) {
      if (!has(table.name, column.name)) missing.push_back(std::string(table.name) + '.' + column.name);
    }
  }
  return missing;
}

}  // namespace hearthmake::sqlite
