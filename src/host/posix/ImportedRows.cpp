#include "host/posix/ImportedRows.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "adapters/jet/Failure.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::host {

namespace {

using sqlite::ColumnKind;
using sqlite::ColumnSchema;
using sqlite::TableSchema;

// Rows between two words about the progress.
constexpr std::size_t kStep = 256;

// Without these it is a database, but not one of builds.
struct Needed {
  const char* table;
  const char* column;
};
constexpr Needed kNeeded[] = {{"Build", "Id"},
                              {"Build", "Name"},
                              {"Project", "Id"},
                              {"Project", "idBuild"},
                              {"Project", "ProjectPath"}};

bool IsSame(std::string_view a, std::string_view b) { return automation::EqualsIgnoreCaseAscii(a, b); }

const TableSchema& SchemaOf(const std::string& name) {
  const auto& tables = sqlite::BuildTables();
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const TableSchema& t) { return IsSame(t.name, name); });
  if (found == tables.end()) jet::RaiseDamaged("a table comes that was not asked for: " + name);
  return *found;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "none" : text;
}

}  // namespace

void ImportedRows::BeginTable(const std::string& name, const std::vector<std::string>& columns) {
  m_table = &SchemaOf(name);
  m_targets.assign(columns.size(), std::nullopt);
  m_count = 0;
  for (const ColumnSchema& column : m_table->columns) {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const std::string& theirs) { return IsSame(theirs, column.name); });
    if (found == columns.end()) {
      m_summary.missing.push_back(fmt::format("{}.{}", m_table->name, column.name));
    } else {
      m_targets[static_cast<std::size_t>(found - columns.begin())] = column;
    }
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!m_targets[i]) m_summary.leftOut.push_back(fmt::format("{}.{}", m_table->name, columns[i]));
  }
  CountOf(m_table->name);
  m_rows = m_database.OpenRecordset(fmt::format("SELECT * FROM {}", m_table->name),
                                    platform::RecordsetType::Dynaset);
}

void ImportedRows::Row(const std::vector<jet::Value>& values) {
  ++m_count;
  try {
    m_rows->AddNew();
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (m_targets[i]) Store(*m_targets[i], values[i]);
    }
    m_rows->Update();
  } catch (const automation::Error& error) {
    automation::Raise(error.Number(), jet::kSource,
                      fmt::format("Row {} of the table {}: {}", m_count, m_table->name, error.Description()));
  }
  if (IsSame(m_table->name, "Build")) RememberBuild(values);
  ++CountOf(m_table->name);
  if (m_progress && m_count % kStep == 1) m_progress(m_table->name, m_count);
}

void ImportedRows::Store(const ColumnSchema& column, const jet::Value& value) const {
  std::visit(
      [&](const auto& item) {
        using Item = std::decay_t<decltype(item)>;
        if constexpr (std::is_same_v<Item, std::monostate>) {
          if (column.kind == ColumnKind::Counter) jet::RaiseDamaged("it has no id.");
          m_rows->SetNull(column.name);
        } else if constexpr (std::is_same_v<Item, bool>) {
          m_rows->SetBoolean(column.name, item);
        } else if constexpr (std::is_same_v<Item, double>) {
          m_rows->SetDate(column.name, item);
        } else if constexpr (std::is_same_v<Item, std::string>) {
          m_rows->SetText(column.name, item);
        } else {
          m_rows->SetLong(column.name, item);
        }
      },
      value);
}

void ImportedRows::RememberBuild(const std::vector<jet::Value>& values) {
  std::pair<std::int32_t, std::string> build;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!m_targets[i]) continue;
    if (IsSame(m_targets[i]->name, "Id")) {
      if (const auto* id = std::get_if<std::int32_t>(&values[i])) build.first = *id;
    } else if (IsSame(m_targets[i]->name, "Name")) {
      if (const auto* name = std::get_if<std::string>(&values[i])) build.second = *name;
    }
  }
  m_summary.builds.push_back(std::move(build));
}

std::size_t& ImportedRows::CountOf(const std::string& table) {
  auto& tables = m_summary.tables;
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const auto& item) { return item.first == table; });
  return found != tables.end() ? found->second : tables.emplace_back(table, 0).second;
}

JetSummary ImportedRows::Finish() {
  m_rows.reset();
  const auto hasTable = [&](const char* name) {
    return std::any_of(m_summary.tables.begin(), m_summary.tables.end(),
                       [&](const auto& item) { return item.first == name; });
  };
  for (const Needed& needed : kNeeded) {
    const std::string column = fmt::format("{}.{}", needed.table, needed.column);
    const auto& missing = m_summary.missing;
    const bool isThere =
        hasTable(needed.table) && std::find(missing.begin(), missing.end(), column) == missing.end();
    if (isThere) continue;
    automation::Raise(jet::kForeignFormat, jet::kSource,
                      fmt::format("It is no build database: {} is missing. Its other tables: {}.",
                                  hasTable(needed.table) ? "the column " + column
                                                         : std::string("the table ") + needed.table,
                                  Joined(m_summary.leftOut)));
  }
  for (const TableSchema& table : sqlite::BuildTables()) {
    if (!hasTable(table.name)) m_summary.missing.emplace_back(table.name);
  }
  return std::move(m_summary);
}

}  // namespace hearthmake::host
