#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/Cell.hpp"

struct sqlite3_stmt;

namespace hearthmake::sqlite {

// The rows of a selection, packed in the order they came, to be walked once. A packed row takes hardly
// more than its texts, and memory goes back as the walk passes: tens of thousands of projects are held
// in some tens of megabytes. Holding the rows instead of a running statement keeps no read lock on the
// file, so that rows can be written, and the database closed by others, in the middle of a walk.
class RowBuffer {
 public:
  RowBuffer() = default;
  // Of one row, as Append packed it.
  explicit RowBuffer(std::string_view packedRow);

  // Adds the current row of the statement. The result is the row as it is packed, until the next call.
  std::string_view Append(sqlite3_stmt* statement, int columns);
  // Unpacks the next row into cells, whose number is that of the columns; false behind the last one.
  // The texts are valid until the next call.
  bool Next(std::vector<Cell>& cells);
  void Clear();

 private:
  std::vector<std::string> m_chunks;
  std::size_t m_chunk = 0;
  std::size_t m_at = 0;
};

}  // namespace hearthmake::sqlite
