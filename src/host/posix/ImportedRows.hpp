#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/jet/RowSink.hpp"
#include "adapters/sqlite/BuildSchema.hpp"
#include "host/moving/JetImport.hpp"
#include "platform/Database.hpp"

namespace hearthmake::host {

// Stores the rows of a foreign database in an empty build database, as its schema has the tables and columns.
// What the schema does not know is left out, what the foreign one lacks gets its default.
class ImportedRows final : public jet::RowSink {
 public:
  ImportedRows(platform::Database& database, const JetProgress& progress)
      : m_database(database), m_progress(progress) {}

  // Errors: those of the database; 3343 a table without which there is no build.
  void BeginTable(const std::string& name, const std::vector<std::string>& columns) override;
  void Row(const std::vector<jet::Value>& values) override;
  void OtherTable(const std::string& name) override { m_summary.leftOut.push_back(name); }

  // When all rows have come. Error 3343 where they are no builds.
  JetSummary Finish();

 private:
  using Target = std::optional<sqlite::ColumnSchema>;  // nothing for a column that is left out

  void Store(const sqlite::ColumnSchema& column, const jet::Value& value) const;
  void RememberBuild(const std::vector<jet::Value>& values);
  std::size_t& CountOf(const std::string& table);

  platform::Database& m_database;
  const JetProgress& m_progress;
  const sqlite::TableSchema* m_table = nullptr;
  std::vector<Target> m_targets;  // for each column of the foreign table
  std::unique_ptr<platform::Recordset> m_rows;
  std::size_t m_count = 0;
  JetSummary m_summary;
};

}  // namespace hearthmake::host
