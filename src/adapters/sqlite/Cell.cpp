#include "adapters/sqlite/Cell.hpp"

#include <sqlite3.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "adapters/sqlite/ColumnNames.hpp"
#include "adapters/sqlite/JetSql.hpp"
#include "adapters/sqlite/SqliteError.hpp"
#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

using automation::Raise;
using automation::RuntimeError;

std::string RealText(double value) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

std::int32_t LongOfInteger(std::int64_t value, std::string_view column) {
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
    Raise(RuntimeError::Overflow, kRecordsetSource, std::string(column));
  }
  return static_cast<std::int32_t>(value);
}

std::int32_t LongOfReal(double value, std::string_view column) {
  // nearbyint rounds halves to the even number, as Visual Basic's conversions do.
  const double whole = std::nearbyint(value);
  if (!(whole >= std::numeric_limits<std::int32_t>::min() &&
        whole <= std::numeric_limits<std::int32_t>::max())) {
    Raise(RuntimeError::Overflow, kRecordsetSource, std::string(column));
  }
  return static_cast<std::int32_t>(whole);
}

[[noreturn]] void RaiseMismatch(std::string_view column) {
  Raise(RuntimeError::TypeMismatch, kRecordsetSource, std::string(column));
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

}  // namespace

Cell Cell::OfInteger(std::int64_t value) {
  Cell cell;
  cell.kind = Kind::Integer;
  cell.integer = value;
  return cell;
}

Cell Cell::OfReal(double value) {
  Cell cell;
  cell.kind = Kind::Real;
  cell.real = value;
  return cell;
}

Cell Cell::OfText(std::string_view value) {
  Cell cell;
  cell.kind = Kind::Text;
  cell.text = value;
  return cell;
}

Cell Cell::OfColumn(sqlite3_stmt* statement, int index) {
  // Looked up once. Such a value may not be used by two threads, and a connection never is.
  sqlite3_value* value = sqlite3_column_value(statement, index);
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL: return {};
    case SQLITE_INTEGER: return OfInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT: return OfReal(sqlite3_value_double(value));
    default: break;
  }
  // As a blob the bytes are had where they are; a text would be copied to get its final zero.
  const bool isUtf8 = sqlite3_value_encoding(value) == SQLITE_UTF8;
  const void* data = isUtf8 ? sqlite3_value_blob(value) : sqlite3_value_text(value);
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
  return OfText(data == nullptr ? std::string_view{}
                                : std::string_view{static_cast<const char*>(data), size});
}

bool IsSameCell(const Cell& a, const Cell& b) {
  if (a.kind != b.kind) return false;
  switch (a.kind) {
    case Cell::Kind::Null: return true;
    // A real's bits too: 0 and -0 are equal, and yet not the same.
    case Cell::Kind::Integer:
    case Cell::Kind::Real: return a.integer == b.integer;
    case Cell::Kind::Text: break;
  }
  return a.text == b.text;
}

bool ParseNumber(std::string_view text, double& value) {
  text = Trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  return parsed.ec == std::errc{} && parsed.ptr == text.data() + text.size() && std::isfinite(value);
}

bool ParseBoolean(std::string_view text, bool& value) {
  text = Trimmed(text);
  for (const std::string_view word : {"True", "Yes", "On"}) {
    if (SameName(text, word)) return value = true;
  }
  for (const std::string_view word : {"False", "No", "Off"}) {
    if (SameName(text, word)) {
      value = false;
      return true;
    }
  }
  double number = 0;
  if (!ParseNumber(text, number)) return false;
  value = number != 0;
  return true;
}

std::string CellText(const Cell& cell) {
  switch (cell.kind) {
    case Cell::Kind::Null: return {};
    case Cell::Kind::Integer: return std::to_string(cell.integer);
    case Cell::Kind::Real: return RealText(cell.real);
    case Cell::Kind::Text: break;
  }
  return std::string(cell.text);
}

std::int32_t CellLong(const Cell& cell, std::string_view column) {
  switch (cell.kind) {
    case Cell::Kind::Null: return 0;
    case Cell::Kind::Integer: return LongOfInteger(cell.integer, column);
    case Cell::Kind::Real: return LongOfReal(cell.real, column);
    case Cell::Kind::Text: break;
  }
  double number = 0;
  if (!ParseNumber(cell.text, number)) RaiseMismatch(column);
  return LongOfReal(number, column);
}

bool CellBoolean(const Cell& cell, std::string_view column) {
  switch (cell.kind) {
    case Cell::Kind::Null: return false;
    case Cell::Kind::Integer: return cell.integer != 0;
    case Cell::Kind::Real: return cell.real != 0;
    case Cell::Kind::Text: break;
  }
  bool value = false;
  if (!ParseBoolean(cell.text, value)) RaiseMismatch(column);
  return value;
}

double CellDate(const Cell& cell, std::string_view column) {
  switch (cell.kind) {
    case Cell::Kind::Null: return 0;
    case Cell::Kind::Integer: return static_cast<double>(cell.integer);
    case Cell::Kind::Real: return cell.real;
    case Cell::Kind::Text: break;
  }
  double date = 0;
  if (!ParseNumber(cell.text, date) && !ParseJetDate(cell.text, date)) RaiseMismatch(column);
  return date;
}

int BindCell(sqlite3_stmt* statement, int parameter, const Cell& cell) {
  switch (cell.kind) {
    case Cell::Kind::Null: return sqlite3_bind_null(statement, parameter);
    case Cell::Kind::Integer: return sqlite3_bind_int64(statement, parameter, cell.integer);
    case Cell::Kind::Real: return sqlite3_bind_double(statement, parameter, cell.real);
    case Cell::Kind::Text: break;
  }
  // An empty text without an address would be bound as Null.
  const char* data = cell.text.data() == nullptr ? "" : cell.text.data();
  return sqlite3_bind_text64(statement, parameter, data, cell.text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

}  // namespace hearthmake::sqlite
