#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace hearthmake::jet {

// A stored value: Null, yes/no, a whole number, a number or date, a text in UTF-8.
using Value = std::variant<std::monostate, bool, std::int32_t, double, std::string>;

// Takes what is read of a database, table by table.
class RowSink {
 public:
  RowSink() = default;
  RowSink(const RowSink&) = delete;
  RowSink& operator=(const RowSink&) = delete;
  virtual ~RowSink() = default;

  // The rows that follow are of this table, with a value for each column.
  virtual void BeginTable(const std::string& name, const std::vector<std::string>& columns) = 0;
  virtual void Row(const std::vector<Value>& values) = 0;
  // A table that was not asked for: it is only named.
  virtual void OtherTable(const std::string& name) = 0;
};

}  // namespace hearthmake::jet
