#include "adapters/sqlite/JetSql.hpp"

#include <array>
#include <charconv>
#include <chrono>
#include <utility>

#include "automation/Error.hpp"

namespace hearthmake::sqlite {

namespace {

using automation::Raise;

constexpr std::int32_t kSyntaxError = 3075;
constexpr std::int32_t kUndefinedFunction = 3085;
constexpr std::int32_t kNoStatement = 3129;
constexpr std::int32_t kTextAfterEnd = 3142;

// A word of at most eight letters packed into a number, in capitals: keywords are then compared, and
// switched on, as integers. Longer words give 0.
constexpr std::uint64_t Pack(std::string_view word) {
  if (word.size() > 8) return 0;
  std::uint64_t packed = 0;
  for (const char c : word) {
    const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    packed = packed << 8 | static_cast<unsigned char>(upper);
  }
  return packed;
}

constexpr std::array kKeywords = {
    Pack("SELECT"), Pack("FROM"),  Pack("WHERE"),  Pack("INSERT"),  Pack("INTO"),  Pack("VALUES"),
    Pack("UPDATE"), Pack("SET"),   Pack("DELETE"), Pack("AND"),     Pack("OR"),    Pack("NOT"),
    Pack("IN"),     Pack("IS"),    Pack("NULL"),   Pack("BETWEEN"), Pack("ORDER"), Pack("BY"),
    Pack("ASC"),    Pack("DESC"),  Pack("GROUP"),  Pack("HAVING"),  Pack("AS"),    Pack("DISTINCT"),
    Pack("ON"),     Pack("INNER"), Pack("LEFT"),   Pack("JOIN"),    Pack("UNION"), Pack("ALL"),
    Pack("EXISTS"), Pack("TRUE"),  Pack("FALSE"),
};
constexpr std::array kFunctions = {Pack("COUNT"), Pack("SUM"), Pack("MIN"), Pack("MAX"), Pack("AVG")};

template <std::size_t N>
bool Contains(const std::array<std::uint64_t, N>& words, std::uint64_t word) {
  for (const std::uint64_t w : words) {
    if (w == word) return true;
  }
  return false;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsWordPart(char c) { return IsWordStart(c) || IsDigit(c); }

enum class TokenKind { Word, Name, Literal, Symbol, End };

struct Token {
  TokenKind kind = TokenKind::End;
  std::uint64_t word = 0;  // of a Word: its packed form
  std::string_view text;   // a Name without its brackets; anything else as it stands
  std::size_t literal = 0;
};

bool ReadNumber(std::string_view text, std::size_t& at, int maximumDigits, int& value) {
  const std::size_t begin = at;
  value = 0;
  while (at < text.size() && IsDigit(text[at]) && at - begin < static_cast<std::size_t>(maximumDigits)) {
    value = value * 10 + (text[at++] - '0');
  }
  return at > begin;
}

bool SkipCharacter(std::string_view text, std::size_t& at, char c) {
  if (at >= text.size() || text[at] != c) return false;
  ++at;
  return true;
}

void SkipBlanks(std::string_view text, std::size_t& at) {
  while (at < text.size() && IsBlank(text[at])) ++at;
}

bool ParseDay(std::string_view text, std::size_t& at, double& days) {
  std::array<int, 3> part{};
  if (!ReadNumber(text, at, 4, part[0]) || at >= text.size()) return false;
  const char separator = text[at];
  if (separator != '/' && separator != '-') return false;
  const bool yearFirst = part[0] > 31;
  for (std::size_t i = 1; i < part.size(); ++i) {
    if (!SkipCharacter(text, at, separator) || !ReadNumber(text, at, 4, part[i])) return false;
  }
  const int year = yearFirst ? part[0] : part[2];
  const int month = yearFirst ? part[1] : part[0];
  const int day = yearFirst ? part[2] : part[1];
  if (year < 100 || year > 9999 || month > 12 || day > 31) return false;
  const std::chrono::year_month_day date{std::chrono::year{year},
                                         std::chrono::month{static_cast<unsigned>(month)},
                                         std::chrono::day{static_cast<unsigned>(day)}};
  if (!date.ok()) return false;
  constexpr std::chrono::sys_days kZero{std::chrono::year{1899} / 12 / 30};
  days = static_cast<double>((std::chrono::sys_days{date} - kZero).count());
  return true;
}

bool ParseTime(std::string_view text, std::size_t& at, double& fraction) {
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!ReadNumber(text, at, 2, hour) || !SkipCharacter(text, at, ':') || !ReadNumber(text, at, 2, minute)) {
    return false;
  }
  if (SkipCharacter(text, at, ':') && !ReadNumber(text, at, 2, second)) return false;
  SkipBlanks(text, at);
  const std::uint64_t half = Pack(text.substr(at, 2));
  if (half == Pack("AM") || half == Pack("PM")) {
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (half == Pack("PM") ? 12 : 0);
    at += 2;
  }
  if (hour > 23 || minute > 59 || second > 59) return false;
  fraction = (hour * 3600 + minute * 60 + second) / 86400.0;
  return true;
}

}  // namespace

bool ParseJetDate(std::string_view text, double& date) {
  std::size_t at = 0;
  SkipBlanks(text, at);
  double days = 0;
  double fraction = 0;
  const bool timeAlone = text.substr(0, at + 3).find(':') != std::string_view::npos;
  if (!timeAlone) {
    if (!ParseDay(text, at, days)) return false;
    SkipBlanks(text, at);
  }
  if (at < text.size() && !ParseTime(text, at, fraction)) return false;
  if (timeAlone && at == 0) return false;
  SkipBlanks(text, at);
  if (at < text.size()) return false;
  // Before day 0 an OLE date counts its time away from zero, not forwards.
  date = days < 0 ? days - fraction : days + fraction;
  return true;
}

std::string QuoteName(std::string_view name) {
  std::string quoted;
  quoted.reserve(name.size() + 2);
  quoted += '"';
  for (const char c : name) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  quoted += '"';
  return quoted;
}

// Makes a JetSql out of a text: first its tokens, then the words that SQLite is to see.
class JetTranslator {
 public:
  JetTranslator(std::string_view sql, const char* source, JetSql& result)
      : m_sql(sql), m_source(source), m_result(result) {}

  void Run() {
    ReadStatement();
    m_result.m_kind = KindOf(m_tokens.front());
    FindTable();
    m_result.m_text.reserve(m_sql.size() + 32);
    for (m_at = 0; m_tokens[m_at].kind != TokenKind::End; ++m_at) WriteToken();
    EndSelectList();
  }

 private:
  // --- tokens ---

  void ReadStatement() {
    m_tokens.reserve(m_sql.size() / 3 + 8);
    for (;;) {
      SkipBlanks(m_sql, m_read);
      if (m_read >= m_sql.size()) break;
      if (m_sql[m_read] == ';') {
        RefuseTextAfterEnd();
        break;
      }
      ReadToken();
    }
    if (m_tokens.empty()) RaiseNoStatement();
    m_tokens.emplace_back();
  }

  void RefuseTextAfterEnd() {
    ++m_read;
    SkipBlanks(m_sql, m_read);
    if (m_read < m_sql.size()) {
      Raise(kTextAfterEnd, m_source, "Characters found after end of SQL statement.");
    }
  }

  void ReadToken() {
    const char c = m_sql[m_read];
    if (IsWordStart(c)) return ReadWord();
    if (IsDigit(c) ||
        (c == '.' && m_read + 1 < m_sql.size() && IsDigit(m_sql[m_read + 1]) && !FollowsName())) {
      return ReadNumberLiteral();
    }
    switch (c) {
      case '\'':
      case '"': return ReadText(c);
      case '#': return ReadDate();
      case '[': return ReadBracketed();
      case '&': return ReadHexadecimal();
      default: return ReadSymbol();
    }
  }

  bool FollowsName() const {
    return !m_tokens.empty() &&
           (m_tokens.back().kind == TokenKind::Word || m_tokens.back().kind == TokenKind::Name);
  }

  void ReadWord() {
    const std::size_t begin = m_read;
    while (m_read < m_sql.size() && IsWordPart(m_sql[m_read])) ++m_read;
    const std::string_view text = m_sql.substr(begin, m_read - begin);
    m_tokens.push_back({TokenKind::Word, Pack(text), text, 0});
  }

  void ReadBracketed() {
    const std::size_t end = m_sql.find(']', m_read);
    if (end == std::string_view::npos || end == m_read + 1) RaiseSyntax("Invalid bracketing of name", m_read);
    m_tokens.push_back({TokenKind::Name, 0, m_sql.substr(m_read + 1, end - m_read - 1), 0});
    m_read = end + 1;
  }

  void ReadText(char quote) {
    const std::size_t begin = m_read++;
    std::string value;
    for (;;) {
      const std::size_t end = m_sql.find(quote, m_read);
      if (end == std::string_view::npos) RaiseSyntax("Syntax error in string", begin);
      value.append(m_sql, m_read, end - m_read);
      m_read = end + 1;
      if (m_read >= m_sql.size() || m_sql[m_read] != quote) break;
      value += quote;
      ++m_read;
    }
    AddLiteral(begin, std::move(value));
  }

  void ReadDate() {
    const std::size_t begin = m_read;
    const std::size_t end = m_sql.find('#', begin + 1);
    double date = 0;
    if (end == std::string_view::npos || !ParseJetDate(m_sql.substr(begin + 1, end - begin - 1), date)) {
      RaiseSyntax("Syntax error in date", begin);
    }
    m_read = end + 1;
    AddLiteral(begin, date);
  }

  void ReadNumberLiteral() {
    const std::size_t begin = m_read;
    const char* first = m_sql.data() + begin;
    const char* last = m_sql.data() + m_sql.size();
    std::int64_t whole = 0;
    auto parsed = std::from_chars(first, last, whole);
    const bool isWhole =
        parsed.ec == std::errc{} &&
        (parsed.ptr == last || (*parsed.ptr != '.' && *parsed.ptr != 'e' && *parsed.ptr != 'E'));
    double real = 0;
    if (!isWhole) {
      parsed = std::from_chars(first, last, real);
      if (parsed.ec != std::errc{}) RaiseSyntax("Syntax error in number", begin);
    }
    m_read = static_cast<std::size_t>(parsed.ptr - m_sql.data());
    RefuseWordAfterNumber(begin);
    if (isWhole) {
      AddLiteral(begin, whole);
    } else {
      AddLiteral(begin, real);
    }
  }

  void ReadHexadecimal() {
    const std::size_t begin = m_read;
    const std::size_t digits = begin + 2;
    if (digits >= m_sql.size() || (m_sql[begin + 1] != 'H' && m_sql[begin + 1] != 'h')) {
      RaiseSyntax("Syntax error", begin);
    }
    std::uint32_t value = 0;
    const auto parsed = std::from_chars(m_sql.data() + digits, m_sql.data() + m_sql.size(), value, 16);
    if (parsed.ec != std::errc{}) RaiseSyntax("Syntax error in number", begin);
    m_read = static_cast<std::size_t>(parsed.ptr - m_sql.data());
    RefuseWordAfterNumber(begin);
    AddLiteral(begin, static_cast<std::int64_t>(static_cast<std::int32_t>(value)));
  }

  void RefuseWordAfterNumber(std::size_t begin) {
    if (m_read < m_sql.size() && IsWordPart(m_sql[m_read])) RaiseSyntax("Syntax error in number", begin);
  }

  void ReadSymbol() {
    constexpr std::string_view kSingle = "=<>+-*/(),.";
    const std::size_t begin = m_read;
    const std::string_view pair = m_sql.substr(begin, 2);
    if (pair == "--" || pair == "/*" || kSingle.find(m_sql[begin]) == std::string_view::npos) {
      RaiseSyntax("Syntax error", begin);
    }
    const std::size_t length = pair == "<=" || pair == ">=" || pair == "<>" ? 2 : 1;
    m_read += length;
    m_tokens.push_back({TokenKind::Symbol, 0, m_sql.substr(begin, length), 0});
  }

  void AddLiteral(std::size_t begin, JetSql::Literal value) {
    m_values.push_back(std::move(value));
    m_tokens.push_back({TokenKind::Literal, 0, m_sql.substr(begin, m_read - begin), m_values.size() - 1});
  }

  // --- translation ---

  StatementKind KindOf(const Token& first) const {
    switch (first.kind == TokenKind::Word ? first.word : 0) {
      case Pack("SELECT"): return StatementKind::Select;
      case Pack("INSERT"): return StatementKind::Insert;
      case Pack("UPDATE"): return StatementKind::Update;
      case Pack("DELETE"): return StatementKind::Delete;
      default: RaiseNoStatement();
    }
  }

  bool IsKeyword(std::size_t at, std::string_view word) const {
    return m_tokens[at].kind == TokenKind::Word && m_tokens[at].word == Pack(word);
  }
  bool IsSymbol(std::size_t at, std::string_view symbol) const {
    return m_tokens[at].kind == TokenKind::Symbol && m_tokens[at].text == symbol;
  }
  // A word in one of these places names a table, even where it is written against a bracket.
  bool NamesTable(std::size_t at) const {
    return at > 0 && (IsKeyword(at - 1, "FROM") || IsKeyword(at - 1, "INTO") || IsKeyword(at - 1, "JOIN") ||
                      IsKeyword(at - 1, "UPDATE"));
  }

  void FindTable() {
    for (std::size_t at = 1; at + 1 < m_tokens.size(); ++at) {
      const TokenKind kind = m_tokens[at].kind;
      if (!NamesTable(at) || (kind != TokenKind::Word && kind != TokenKind::Name)) continue;
      m_result.m_table.assign(m_tokens[at].text);
      m_selectsWholeRows = SelectsWholeRows(at);
      if (m_selectsWholeRows) FindSoughtColumn(at + 1);
      return;
    }
  }

  bool SelectsWholeRows(std::size_t table) const {
    if (m_result.m_kind != StatementKind::Select || table != 3 || !IsSymbol(1, "*")) return false;
    const std::size_t next = table + 1;
    if (m_tokens[next].kind == TokenKind::End) return true;
    if (!IsKeyword(next, "WHERE") && !IsKeyword(next, "ORDER")) return false;
    for (std::size_t at = next; at + 1 < m_tokens.size(); ++at) {
      if (IsKeyword(at, "UNION") || IsKeyword(at, "GROUP")) return false;
    }
    return true;
  }

  // Of the one condition behind the table, if it is "column = number".
  void FindSoughtColumn(std::size_t where) {
    if (m_tokens.size() != where + 5 || !IsKeyword(where, "WHERE") || !IsSymbol(where + 2, "=")) return;
    const Token& column = m_tokens[where + 1];
    const Token& number = m_tokens[where + 3];
    const bool isColumn = column.kind == TokenKind::Name ||
                          (column.kind == TokenKind::Word && !Contains(kKeywords, column.word));
    if (!isColumn || number.kind != TokenKind::Literal) return;
    if (std::holds_alternative<std::int64_t>(m_values[number.literal])) {
      m_result.m_soughtColumn.assign(column.text);
    }
  }

  void WriteToken() {
    const Token& token = m_tokens[m_at];
    switch (token.kind) {
      case TokenKind::Word: return WriteWord(token);
      case TokenKind::Name: CountInItem(true); return Write(QuoteName(token.text));
      case TokenKind::Literal: CountInItem(false); return WriteLiteral(token);
      case TokenKind::Symbol: return WriteSymbol(token);
      case TokenKind::End: return;
    }
  }

  void WriteWord(const Token& token) {
    const bool isName = NamesTable(m_at) || (m_at > 0 && IsSymbol(m_at - 1, "."));
    if (!isName && Contains(kKeywords, token.word)) return WriteKeyword(token);
    if (!isName && IsSymbol(m_at + 1, "(")) return WriteFunction(token);
    CountInItem(true);
    Write(QuoteName(token.text));
  }

  void WriteKeyword(const Token& token) {
    switch (token.word) {
      case Pack("TRUE"): CountInItem(false); return Write("-1");
      case Pack("FALSE"): CountInItem(false); return Write("0");
      case Pack("SELECT"):
        if (m_at == 0) m_inSelectList = true;
        break;
      case Pack("FROM"):
        if (m_depth == 0) EndSelectList();
        break;
      case Pack("AS"):
        if (m_inSelectList && m_depth == 0) m_itemHasName = true;
        break;
      // A number in these clauses is the position of a column; as a parameter it would be a constant.
      case Pack("ORDER"):
      case Pack("GROUP"): m_numbersStand = true; break;
      case Pack("DISTINCT"):
      case Pack("ALL"): break;
      default: CountInItem(false);
    }
    Write(token.text);
  }

  void WriteFunction(const Token& token) {
    if (!Contains(kFunctions, token.word)) {
      Raise(kUndefinedFunction, m_source,
            "Undefined function '" + std::string(token.text) + "' in expression.");
    }
    CountInItem(false);
    Write(token.text);
  }

  void WriteLiteral(const Token& token) {
    JetSql::Literal& value = m_values[token.literal];
    if (m_numbersStand && std::holds_alternative<std::int64_t>(value)) return Write(token.text);
    m_result.m_literals.push_back(std::move(value));
    Write("?");
  }

  void WriteSymbol(const Token& token) {
    const char c = token.text.front();
    if (c == '(') ++m_depth;
    if (c == ')') --m_depth;
    if (c == ',' && m_depth == 0 && m_inSelectList) {
      EndItem();
    } else if (c == '*') {
      // Jet writes "DELETE * FROM".
      if (m_at == 1 && m_result.m_kind == StatementKind::Delete) return;
      const bool ends =
          m_at + 1 < m_tokens.size() && (IsSymbol(m_at + 1, ",") || IsKeyword(m_at + 1, "FROM"));
      CountInItem(ends);
    } else if (c != '.') {
      CountInItem(false);
    }
    Write(token.text);
    if (c == '*' && m_selectsWholeRows && m_at == 1) WriteRowKey();
  }

  void WriteRowKey() {
    m_result.m_keyBegin = m_result.m_text.size();
    m_result.m_text += ",_rowid_";
    m_result.m_keyEnd = m_result.m_text.size();
  }

  // --- names of the select list ---

  void CountInItem(bool isPlainName) {
    if (!m_inSelectList) return;
    if (!isPlainName) m_itemIsExpression = true;
  }

  void EndItem() {
    if (m_itemIsExpression && !m_itemHasName) {
      Write("AS \"Expr" + std::to_string(1000 + m_itemIndex) + '"');
    }
    ++m_itemIndex;
    m_itemIsExpression = false;
    m_itemHasName = false;
  }

  void EndSelectList() {
    if (!m_inSelectList) return;
    EndItem();
    m_inSelectList = false;
  }

  // A blank between all words but around the dot, so that texts that differ in blanks alone are one.
  void Write(std::string_view text) {
    std::string& out = m_result.m_text;
    if (!out.empty() && out.back() != '.' && text != ".") out += ' ';
    out += text;
  }

  [[noreturn]] void RaiseSyntax(const char* what, std::size_t at) const {
    constexpr std::size_t kShown = 60;
    std::string shown(m_sql.substr(at, kShown));
    if (m_sql.size() - at > kShown) shown += "...";
    Raise(kSyntaxError, m_source, std::string(what) + " in query expression '" + shown + "'.");
  }

  [[noreturn]] void RaiseNoStatement() const {
    Raise(kNoStatement, m_source,
          "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', or 'UPDATE'.");
  }

  std::string_view m_sql;
  const char* m_source;
  JetSql& m_result;
  std::size_t m_read = 0;
  std::vector<Token> m_tokens;
  std::vector<JetSql::Literal> m_values;

  std::size_t m_at = 0;
  int m_depth = 0;
  bool m_selectsWholeRows = false;
  bool m_numbersStand = false;
  bool m_inSelectList = false;
  bool m_itemIsExpression = false;
  bool m_itemHasName = false;
  int m_itemIndex = 0;
};

JetSql::JetSql(std::string_view sql, const char* source) { JetTranslator(sql, source, *this).Run(); }

bool JetSql::EndsInNumber() const {
  return m_text.ends_with('?') && std::holds_alternative<std::int64_t>(m_literals.back());
}

std::string JetSql::TextWithoutKey() const { return m_text.substr(0, m_keyBegin) + m_text.substr(m_keyEnd); }

}  // namespace hearthmake::sqlite
