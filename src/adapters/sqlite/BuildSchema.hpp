#pragma once

#include <string>
#include <vector>

namespace hearthmake::sqlite {

// The tables of a build database: Build, Project, References, ExternalReferences, SSProjects,
// MTSPackages (which holds the COM+ applications as well) and Scripts.

enum class ColumnKind {
  Counter,  // a number that a new row gets by itself
  Text,
  Memo,
  Long,
  YesNo,
  Date,
};

struct ColumnSchema {
  const char* name;
  ColumnKind kind;
};

struct TableSchema {
  const char* name;
  std::vector<ColumnSchema> columns;
  std::vector<const char*> indexed;  // columns that rows are looked up by
};

const std::vector<TableSchema>& BuildTables();

// A build database without rows, under a name of its own beside the one that it is for: it can be filled
// before anybody sees it. Nothing is left of it where it is not published.
class NewBuildDatabase {
 public:
  // Errors ("DAO.Workspace"): 3026 disk full, 3051 the folder can't be written.
  explicit NewBuildDatabase(std::string posixPath);
  NewBuildDatabase(const NewBuildDatabase&) = delete;
  NewBuildDatabase& operator=(const NewBuildDatabase&) = delete;
  ~NewBuildDatabase();

  // Where it is until then.
  const std::string& Path() const { return m_path; }

  // It takes its place, which nobody may have open any more. Errors: 58 a file is there already, 3051.
  void Publish() const;
  // The same in the place of what is there, if anything is: a database that nobody else uses, or any other
  // file. Errors: 3045 the old one is in use, 3051.
  void PublishReplacing() const;

 private:
  void RemoveFiles() const;

  std::string m_target;
  std::string m_path;
};

// Makes a new build database, whole or not at all: it appears under its name when it is finished. An
// existing file is never overwritten.
// Errors ("DAO.Workspace"): 58 the file exists already, 3026 disk full, 3051 the folder can't be written.
void CreateBuildDatabase(const std::string& posixPath);

// What a file lacks of those tables: "Table" for a whole table, "Table.Column" for a column, in the
// order of the schema; names are matched without regard to case. Errors are those of opening a database.
std::vector<std::string> MissingColumns(const std::string& posixPath);

}  // namespace hearthmake::sqlite
