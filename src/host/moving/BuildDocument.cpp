#include "host/moving/BuildDocument.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string_view>

#include "adapters/sqlite/BuildSchema.hpp"
#include "automation/Text.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using sqlite::ColumnKind;

bool IsLink(std::string_view table, std::string_view column) {
  if (column == "idBuild" || column == "BuildID" || column == "ProjectID") return true;
  return table == "Project" && column == "MTSPackage";
}

ValueType TypeOf(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::YesNo: return ValueType::YesNo;
    case ColumnKind::Counter:
    case ColumnKind::Long: return ValueType::Long;
    case ColumnKind::Date: return ValueType::Date;
    default: return ValueType::Text;
  }
}

}  // namespace

std::vector<DocumentColumn> DocumentColumns(const std::string& table) {
  std::vector<DocumentColumn> columns;
  for (const sqlite::TableSchema& schema : sqlite::BuildTables()) {
    if (schema.name != table) continue;
    for (const sqlite::ColumnSchema& column : schema.columns) {
      const bool isValue = column.kind != ColumnKind::Counter && !IsLink(table, column.name);
      if (isValue) columns.push_back({column.name, TypeOf(column.kind)});
    }
  }
  return columns;
}

std::size_t ColumnPlace(const std::string& table, const std::string& column) {
  const auto columns = DocumentColumns(table);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == column) return i;
  }
  throw std::logic_error("no column " + table + "." + column);
}

std::string NameOf(const std::string& table, const StoredRow& row) {
  const auto* text = std::get_if<std::string>(&row.at(ColumnPlace(table, "Name")));
  if (text == nullptr) return {};
  const std::string_view name = *text;
  const bool isQuoted = name.size() >= 2 && name.starts_with('"') && name.ends_with('"');
  return std::string(isQuoted ? name.substr(1, name.size() - 2) : name);
}

std::vector<std::string> UniqueNames(const std::string& table, const std::vector<StoredRow>& rows) {
  std::vector<std::string> names;
  std::map<std::string, int> uses;
  for (const StoredRow& row : rows) {
    names.push_back(NameOf(table, row));
    ++uses[automation::Lower(names.back())];
  }
  for (std::string& name : names) {
    if (uses[automation::Lower(name)] > 1) name.clear();
  }
  return names;
}

std::string SizeText(const BuildDocument& document) {
  return fmt::format("{}, {}, {}", Counted(document.projects.size(), "project"),
                     Counted(document.packages.size(), "package"),
                     Counted(document.sourceProjects.size(), "source project"));
}

}  // namespace hearthmake::host
