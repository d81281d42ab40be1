#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace hearthmake::sqlite {

enum class StatementKind { Select, Insert, Update, Delete };

// The OLE date that the inside of a #…# literal names: m/d/yyyy or yyyy-mm-dd, with or without
// h:mm[:ss] [AM|PM]; or a time alone (the day is then 0, 30 December 1899). False when it names none.
bool ParseJetDate(std::string_view text, double& date);

// One statement of Jet's dialect, translated for SQLite. The words of the text are told apart by a
// tokenizer that knows literals, so that nothing inside one is ever taken for SQL:
// - names of tables and columns come out quoted, whether or not SQLite has a keyword of that name;
// - literals become parameters, so that texts which differ in their values alone share one prepared
//   statement;
// - a result column without a name gets Jet's: Expr1000 for the first column, Expr1001 for the second;
// - a plain "SELECT * FROM table" also selects the row's key, behind the other columns.
// What is no word of the dialect (PRAGMA, ATTACH, a comment, a parameter, a function but COUNT, SUM,
// MIN, MAX and AVG) never reaches SQLite as such.
class JetSql {
 public:
  using Literal = std::variant<std::int64_t, double, std::string>;

  // Translates sql. Errors, with the given source: 3075 syntax error, 3085 undefined function, 3129 not
  // one of the four statements, 3142 characters after the end of the statement.
  JetSql(std::string_view sql, const char* source);

  StatementKind Kind() const { return m_kind; }
  const std::string& Text() const { return m_text; }
  // The values of the parameters of Text(), in their order.
  const std::vector<Literal>& Literals() const { return m_literals; }
  // The table named first, as the text spells it.
  const std::string& Table() const { return m_table; }
  // Whether the rows can be edited: a plain "SELECT * FROM table", with or without WHERE and ORDER BY.
  bool SelectsKey() const { return m_keyEnd != 0; }
  // Text() without the row's key, for what has none (a view).
  std::string TextWithoutKey() const;
  // Of "SELECT * FROM table WHERE column = number" the column, as the text spells it; else empty.
  const std::string& SoughtColumn() const { return m_soughtColumn; }

  // Whether the text ends in a whole number which became the last parameter. It can be set then, as if the
  // text had ended in that one.
  bool EndsInNumber() const;
  std::int64_t EndNumber() const { return std::get<std::int64_t>(m_literals.back()); }
  void SetEndNumber(std::int64_t number) { m_literals.back() = number; }

 private:
  std::string m_text;
  std::vector<Literal> m_literals;
  std::string m_table;
  std::string m_soughtColumn;
  StatementKind m_kind = StatementKind::Select;
  std::size_t m_keyBegin = 0;
  std::size_t m_keyEnd = 0;

  friend class JetTranslator;
};

// name as SQLite quotes it.
std::string QuoteName(std::string_view name);

}  // namespace hearthmake::sqlite
