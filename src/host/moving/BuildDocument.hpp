#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace hearthmake::host {

// A build with all that the database has of it, apart from the database: rows refer to each other by their
// places here instead of by ids.

// Null, yes/no, a whole number, a date, a text.
using StoredValue = std::variant<std::monostate, bool, std::int32_t, double, std::string>;

// The values of a row, in the order of DocumentColumns.
using StoredRow = std::vector<StoredValue>;

struct StoredProject {
  StoredRow row;
  // The package, counted from 1; 0 for none, nothing where the column is Null.
  std::optional<std::size_t> package;
  std::vector<std::size_t> references;  // other projects, counted from 1
  std::vector<StoredRow> externalReferences;
};

struct BuildDocument {
  bool hasPasswords = false;  // else they read as Null
  StoredRow build;
  std::optional<StoredRow> scripts;
  std::vector<StoredRow> sourceProjects;
  std::vector<StoredRow> packages;
  std::vector<StoredProject> projects;
};

// For people: "2 projects, 1 package, 0 source projects".
std::string SizeText(const BuildDocument& document);

enum class ValueType { YesNo, Long, Date, Text };

struct DocumentColumn {
  std::string name;
  ValueType type;
};

// The columns of a table that hold values: not its key, nor those that refer to other rows.
std::vector<DocumentColumn> DocumentColumns(const std::string& table);

// The place of a column among them.
std::size_t ColumnPlace(const std::string& table, const std::string& column);

// What a row is called, without the quotes that project files have around names; empty for none. table is
// Build, Project or MTSPackages.
std::string NameOf(const std::string& table, const StoredRow& row);

// The name that people know each of the rows by, without regard to case; empty where it has none of its own.
std::vector<std::string> UniqueNames(const std::string& table, const std::vector<StoredRow>& rows);

}  // namespace hearthmake::host
