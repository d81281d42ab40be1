#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace hearthmake::sqlite {

// One value of a row, as SQLite stores it. A text belongs to whoever made the cell.
struct Cell {
  enum class Kind : std::uint8_t { Null, Integer, Real, Text };

  Kind kind = Kind::Null;
  union {
    std::int64_t integer = 0;
    double real;
  };
  std::string_view text;

  static Cell OfInteger(std::int64_t value);
  static Cell OfReal(double value);
  static Cell OfText(std::string_view value);
  // Column index of the statement's current row; valid until the statement moves.
  static Cell OfColumn(sqlite3_stmt* statement, int index);
};

// Whether both are stored as the same bytes.
bool IsSameCell(const Cell& a, const Cell& b);

// The value in a host's type, as Visual Basic converts it. Null reads as "", 0 and false.
// Errors, with "DAO.Recordset" as source: 6 overflow, 13 type mismatch; both name the column.
std::string CellText(const Cell& cell);
std::int32_t CellLong(const Cell& cell, std::string_view column);
bool CellBoolean(const Cell& cell, std::string_view column);
double CellDate(const Cell& cell, std::string_view column);

// Whether the text is a number as a whole, blanks around it allowed; the number is then in value.
bool ParseNumber(std::string_view text, double& value);
// Whether the text is one of the words for a yes/no value or a number; the value is then in value.
bool ParseBoolean(std::string_view text, bool& value);

// Binds the cell to the parameter (from 1). Text is not copied: it must live until the statement is
// reset. Returns SQLite's code.
int BindCell(sqlite3_stmt* statement, int parameter, const Cell& cell);

}  // namespace hearthmake::sqlite
