#pragma once

#include <string>
#include <vector>

#include "adapters/jet/RowSink.hpp"

namespace hearthmake::support {

struct CollectedTables {
  struct Table {
    std::string name;
    std::vector<std::string> columns;
    std::vector<std::vector<jet::Value>> rows;
  };

  std::vector<Table> tables;
  std::vector<std::string> others;
};

// Keeps all that is read of a Jet database.
struct CollectedRows final : jet::RowSink, CollectedTables {
  void BeginTable(const std::string& name, const std::vector<std::string>& columns) override {
    tables.push_back({name, columns, {}});
  }
  void Row(const std::vector<jet::Value>& values) override { tables.back().rows.push_back(values); }
  void OtherTable(const std::string& name) override { others.push_back(name); }
};

}  // namespace hearthmake::support
