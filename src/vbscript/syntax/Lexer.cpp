#include "vbscript/syntax/Lexer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Dates.hpp"

namespace hearthmake::vbscript {

namespace {

using automation::VariantType;

constexpr std::string_view kKeywords[] = {
    "and",     "byref",    "byval",  "call",   "case",     "class",    "const",   "default",  "dim",
    "do",      "each",     "else",   "elseif", "empty",    "end",      "eqv",     "erase",    "error",
    "exit",    "explicit", "false",  "for",    "function", "get",      "goto",    "if",       "imp",
    "in",      "is",       "let",    "loop",   "me",       "mod",      "new",     "next",     "not",
    "nothing", "null",     "on",     "option", "or",       "preserve", "private", "property", "public",
    "redim",   "rem",      "resume", "select", "set",      "step",     "stop",    "sub",      "then",
    "to",      "true",     "until",  "wend",   "while",    "with",     "xor",
};
constexpr std::size_t kKeywordCount = std::size(kKeywords);
static_assert(kKeywordCount ==
              static_cast<std::size_t>(TokenKind::Xor) - static_cast<std::size_t>(TokenKind::And) + 1);
constexpr std::size_t kLongestKeyword = 8;

// No keyword is longer than eight letters, so a word in question is one number and found in one look.
class KeywordTable {
 public:
  constexpr KeywordTable() {
    for (std::size_t i = 0; i < kKeywordCount; ++i) {
      std::uint64_t packed = 0;
      for (const char letter : kKeywords[i]) packed = packed << 8 | static_cast<unsigned char>(letter);
      std::size_t slot = Slot(packed);
      while (m_slots[slot].packed != 0) slot = (slot + 1) % kSlots;
      m_slots[slot] = {packed, static_cast<TokenKind>(static_cast<std::size_t>(TokenKind::And) + i)};
    }
  }

  constexpr TokenKind Find(std::uint64_t packed) const {
    for (std::size_t slot = Slot(packed); m_slots[slot].packed != 0; slot = (slot + 1) % kSlots) {
      if (m_slots[slot].packed == packed) return m_slots[slot].kind;
    }
    return TokenKind::Identifier;
  }

 private:
  static constexpr std::size_t kSlots = 256;
  static constexpr std::size_t Slot(std::uint64_t packed) {
    return static_cast<std::size_t>((packed * 0x9E3779B97F4A7C15u) >> 56);
  }
  struct Entry {
    std::uint64_t packed = 0;
    TokenKind kind = TokenKind::Identifier;
  };
  std::array<Entry, kSlots> m_slots;
};

constexpr KeywordTable kKeywordTable;

// The kind of a word of letters, digits and underscores.
TokenKind KindOfWord(std::u16string_view word) {
  if (word.size() > kLongestKeyword) return TokenKind::Identifier;
  std::uint64_t packed = 0;
  for (const char16_t unit : word) packed = packed << 8 | (unit | 0x20u);
  return kKeywordTable.Find(packed);
}

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\v' || unit == u'\f'; }
bool IsLineEnd(char16_t unit) { return unit == u'\r' || unit == u'\n'; }
bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool IsOctalDigit(char16_t unit) { return unit >= u'0' && unit <= u'7'; }
// Letters of names are those of ASCII; any other stands in a bracketed name.
bool IsLetter(char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; }
bool IsNamePart(char16_t unit) { return IsLetter(unit) || IsDigit(unit) || unit == u'_'; }

int HexDigit(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  const int letter = (unit | 0x20) - u'a';
  return letter >= 0 && letter < 6 ? letter + 10 : -1;
}

[[noreturn]] void Fail(CompileErrorNumber number, std::size_t offset) {
  throw CompileError(number, static_cast<Offset>(offset));
}

// Whether a decimal number that no double can hold is too large, not too small: by the place of its first
// digit that counts.
bool IsTooLarge(std::string_view digits) {
  const std::size_t exponentAt = std::min(digits.find_first_of("eE"), digits.size());
  const std::string_view mantissa = digits.substr(0, exponentAt);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return false;
  const auto magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  if (exponentAt == digits.size()) return magnitude > 0;
  std::string_view exponentText = digits.substr(exponentAt + 1);
  if (exponentText.front() == '+') exponentText.remove_prefix(1);
  std::int64_t exponent = 0;
  const auto [end, error] =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (error == std::errc::result_out_of_range) return exponentText.front() != '-';
  return magnitude + exponent > 0;
}

// Nothing for a number that is too large.
std::optional<double> ParseDouble(std::u16string_view units) {
  const std::string digits(units.begin(), units.end());
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  if (IsTooLarge(digits)) return std::nullopt;
  return 0.0;
}

void SetWhole(Token& token, VariantType type, std::int32_t value) {
  token.type = type;
  token.whole = value;
}

void SetDouble(Token& token, double value) {
  token.type = VariantType::Double;
  token.number = value;
}

}  // namespace

Token Lexer::Next() {
  const bool isAfterBlank = SkipBlanks();
  Token token = Scan();
  token.isAfterBlank = isAfterBlank;
  m_previous = token.kind;
  return token;
}

// Skips blanks, continued lines and a comment; whether there was anything to skip.
bool Lexer::SkipBlanks() {
  const std::size_t start = m_position;
  while (!IsAtEnd()) {
    const char16_t unit = At(0);
    if (IsBlank(unit)) {
      ++m_position;
    } else if (unit == u'\'') {
      SkipComment();
    } else if (unit != u'_' || !SkipContinuation()) {
      break;
    }
  }
  return m_position != start;
}

// An underscore with nothing but blanks between it and the end of its line.
bool Lexer::SkipContinuation() {
  std::size_t ahead = 1;
  while (IsBlank(At(ahead))) ++ahead;
  if (m_position + ahead < m_source.size() && !IsLineEnd(At(ahead))) return false;
  if (At(ahead) == u'\r' && At(ahead + 1) == u'\n') ++ahead;
  m_position = std::min(m_position + ahead + 1, m_source.size());
  return true;
}

void Lexer::SkipComment() {
  while (!IsAtEnd() && !IsLineEnd(At(0))) ++m_position;
}

bool Lexer::StartsStatement() const {
  return m_previous == TokenKind::EndOfLine || m_previous == TokenKind::Colon ||
         m_previous == TokenKind::Then || m_previous == TokenKind::Else;
}

bool Lexer::EndsOperand() const {
  switch (m_previous) {
    case TokenKind::Identifier:
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
    case TokenKind::RightParenthesis:
    case TokenKind::True:
    case TokenKind::False:
    case TokenKind::Empty:
    case TokenKind::Null:
    case TokenKind::Nothing:
    case TokenKind::Me: return true;
    default: return false;
  }
}

Token Lexer::Make(TokenKind kind, std::size_t length) {
  Token token;
  token.kind = kind;
  token.offset = static_cast<Offset>(m_position);
  token.text = m_source.substr(m_position, length);
  m_position += length;
  return token;
}

Token Lexer::Scan() {
  if (IsAtEnd()) return Make(TokenKind::EndOfSource, 0);
  const char16_t unit = At(0);
  if (IsLetter(unit)) return Word();
  if (IsDigit(unit) || (unit == u'.' && IsDigit(At(1)))) return DecimalNumber();
  switch (unit) {
    case u'\r':
    case u'\n': return LineEnd();
    case u'"': return TextLiteral();
    case u'#': return DateLiteral();
    case u'[': return BracketedName();
    case u'&': return IsPrefixedNumber() ? PrefixedNumber() : Make(TokenKind::Ampersand, 1);
    default: return Punctuation();
  }
}

Token Lexer::LineEnd() { return Make(TokenKind::EndOfLine, At(0) == u'\r' && At(1) == u'\n' ? 2 : 1); }

Token Lexer::Word() {
  std::size_t length = 1;
  while (IsNamePart(At(length))) ++length;
  Token token = Make(TokenKind::Identifier, length);
  if (m_previous != TokenKind::Dot) token.kind = KindOfWord(token.text);
  if (token.kind == TokenKind::Rem && StartsStatement()) {
    SkipComment();
    return Scan();
  }
  if (length > kLongestName) Fail(CompileErrorNumber::IdentifierTooLong, token.offset);
  return token;
}

Token Lexer::BracketedName() {
  const std::size_t start = m_position;
  std::size_t length = 1;
  while (start + length < m_source.size() && At(length) != u']' && !IsLineEnd(At(length))) ++length;
  if (At(length) != u']') Fail(CompileErrorNumber::ExpectedRightBracket, start + length);
  if (length == 1) Fail(CompileErrorNumber::ExpectedIdentifier, start);
  if (length - 1 > kLongestName) Fail(CompileErrorNumber::IdentifierTooLong, start);
  Token token = Make(TokenKind::Identifier, length + 1);
  token.text = token.text.substr(1, length - 1);
  return token;
}

Token Lexer::TextLiteral() {
  const std::size_t start = m_position + 1;
  std::size_t end = start;
  bool hasQuotes = false;
  for (;; ++end) {
    if (end == m_source.size() || IsLineEnd(m_source[end])) {
      Fail(CompileErrorNumber::UnterminatedStringConstant, end);
    }
    if (m_source[end] != u'"') continue;
    if (end + 1 == m_source.size() || m_source[end + 1] != u'"') break;
    hasQuotes = true;
    ++end;
  }
  Token token = Make(TokenKind::Text, end + 1 - m_position);
  token.text = m_source.substr(start, end - start);
  if (!hasQuotes) return token;
  std::u16string text;
  text.reserve(token.text.size());
  for (std::size_t i = 0; i < token.text.size(); ++i) {
    text.push_back(token.text[i]);
    if (token.text[i] == u'"') ++i;
  }
  token.text = m_script->Keep(std::u16string_view(text));
  return token;
}

Token Lexer::DateLiteral() {
  std::size_t length = 1;
  while (m_position + length < m_source.size() && At(length) != u'#' && !IsLineEnd(At(length))) ++length;
  if (At(length) != u'#') Fail(CompileErrorNumber::SyntaxError, m_position);
  const std::optional<double> date = ParseDateLiteral(m_source.substr(m_position + 1, length - 1));
  if (!date) Fail(CompileErrorNumber::SyntaxError, m_position);
  Token token = Make(TokenKind::Date, length + 1);
  token.type = VariantType::Date;
  token.number = *date;
  return token;
}

Token Lexer::DecimalNumber() {
  std::size_t length = 0;
  std::uint64_t whole = 0;  // stays above the limit of a Long once it is there
  while (IsDigit(At(length))) {
    whole = std::min<std::uint64_t>(whole * 10 + (At(length) - u'0'), std::uint64_t{1} << 32);
    ++length;
  }
  bool isWhole = true;
  if (At(length) == u'.') {
    isWhole = false;
    ++length;
    while (IsDigit(At(length))) ++length;
  }
  if ((At(length) | 0x20) == u'e') {
    isWhole = false;
    ++length;
    if (At(length) == u'+' || At(length) == u'-') ++length;
    if (!IsDigit(At(length))) Fail(CompileErrorNumber::InvalidNumber, m_position);
    while (IsDigit(At(length))) ++length;
  }
  Token token = Make(TokenKind::Number, length);
  if (isWhole && whole <= std::numeric_limits<std::int32_t>::max()) {
    const bool isShort = whole <= std::numeric_limits<std::int16_t>::max();
    SetWhole(token, isShort ? VariantType::Integer : VariantType::Long, static_cast<std::int32_t>(whole));
    return token;
  }
  const std::optional<double> value = ParseDouble(token.text);
  if (!value) Fail(CompileErrorNumber::InvalidNumber, token.offset);
  SetDouble(token, *value);
  return token;
}

// &H1F, &O17 and, where an operand can stand, &17.
bool Lexer::IsPrefixedNumber() const {
  switch (At(1) | 0x20) {
    case u'h': return HexDigit(At(2)) >= 0;
    case u'o': return IsOctalDigit(At(2));
    default: return IsOctalDigit(At(1)) && !EndsOperand();
  }
}

Token Lexer::PrefixedNumber() {
  constexpr std::uint64_t kLimit = std::uint64_t{1} << 32;
  const bool isHex = (At(1) | 0x20) == u'h';
  std::size_t length = IsDigit(At(1)) ? 1 : 2;
  std::uint64_t value = 0;  // stays at the limit once it is there
  for (; isHex ? HexDigit(At(length)) >= 0 : IsOctalDigit(At(length)); ++length) {
    const auto digit = static_cast<std::uint64_t>(HexDigit(At(length)));
    value = std::min(value * (isHex ? 16 : 8) + digit, kLimit);
  }
  if (value == kLimit) Fail(CompileErrorNumber::InvalidNumber, m_position);
  const bool isMarkedLong = At(length) == u'&';
  Token token = Make(TokenKind::Number, isMarkedLong ? length + 1 : length);
  if (value <= 0xFFFF && !isMarkedLong) {
    SetWhole(token, VariantType::Integer, static_cast<std::int16_t>(value));
  } else {
    SetWhole(token, VariantType::Long, static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
  }
  return token;
}

Token Lexer::Punctuation() {
  switch (At(0)) {
    case u':': return Make(TokenKind::Colon, 1);
    case u'(': return Make(TokenKind::LeftParenthesis, 1);
    case u')': return Make(TokenKind::RightParenthesis, 1);
    case u',': return Make(TokenKind::Comma, 1);
    case u'.': return Make(TokenKind::Dot, 1);
    case u'+': return Make(TokenKind::Plus, 1);
    case u'-': return Make(TokenKind::Minus, 1);
    case u'*': return Make(TokenKind::Asterisk, 1);
    case u'/': return Make(TokenKind::Slash, 1);
    case u'\\': return Make(TokenKind::Backslash, 1);
    case u'^': return Make(TokenKind::Caret, 1);
    case u'=':
      if (At(1) == u'<') return Make(TokenKind::LessOrEqual, 2);
      if (At(1) == u'>') return Make(TokenKind::GreaterOrEqual, 2);
      return Make(TokenKind::Equal, 1);
    case u'<':
      if (At(1) == u'=') return Make(TokenKind::LessOrEqual, 2);
      if (At(1) == u'>') return Make(TokenKind::NotEqual, 2);
      return Make(TokenKind::Less, 1);
    case u'>':
      if (At(1) == u'=') return Make(TokenKind::GreaterOrEqual, 2);
      if (At(1) == u'<') return Make(TokenKind::NotEqual, 2);
      return Make(TokenKind::Greater, 1);
    default: Fail(CompileErrorNumber::InvalidCharacter, m_position);
  }
}

}  // namespace hearthmake::vbscript
