#pragma once

#include <string>
#include <vector>

namespace hearthmake::sqlite {

// The tables of a build database: Build, Project, References, ExternalReferences, SSProjects,
// MTSPackages (which holds the COM+ applications as well) and Scripts.

// Makes a new build database, whole or not at all: it appears under its name when it is finished. An
// existing file is never overwritten.
// Errors ("DAO.Workspace"): 58 the file exists already, 3026 disk full, 3051 the folder can't be written.
void CreateBuildDatabase(const std::string& posixPath);

// What a file lacks of those tables: "Table" for a whole table, "Table.Column" for a column, in the
// order of the schema; names are matched without regard to case. Errors are those of opening a database.
std::vector<std::string> MissingColumns(const std::string& posixPath);

}  // namespace hearthmake::sqlite
