#pragma once

#include <string_view>

#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript {

enum class TokenKind : std::uint8_t {
  EndOfSource,
  EndOfLine,
  Colon,
  Identifier,  // also a bracketed name, and any word behind a dot
  Number,      // Integer, Long or Double
  Text,
  Date,
  LeftParenthesis,
  RightParenthesis,
  Comma,
  Dot,
  Plus,
  Minus,
  Asterisk,
  Slash,
  Backslash,
  Caret,
  Ampersand,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessOrEqual,
  GreaterOrEqual,
  // Keywords, in the order of the lexer's table.
  And,
  ByRef,
  ByVal,
  Call,
  Case,
  Class,
  Const,
  Default,
  Dim,
  Do,
  Each,
  Else,
  ElseIf,
  Empty,
  End,
  Eqv,
  Erase,
  Error,
  Exit,
  Explicit,
  False,
  For,
  Function,
  Get,
  GoTo,
  If,
  Imp,
  In,
  Is,
  Let,
  Loop,
  Me,
  Mod,
  New,
  Next,
  Not,
  Nothing,
  Null,
  On,
  Option,
  Or,
  Preserve,
  Private,
  Property,
  Public,
  ReDim,
  Rem,
  Resume,
  Select,
  Set,
  Step,
  Stop,
  Sub,
  Then,
  To,
  True,
  Until,
  Wend,
  While,
  With,
  Xor,
};

struct Token {
  TokenKind kind = TokenKind::EndOfSource;
  bool isAfterBlank = false;  // a blank or a continued line stands before it
  automation::VariantType type = automation::VariantType::Empty;  // of a number
  Offset offset = 0;
  std::u16string_view text;  // a name as it is spelled; what a text literal says
  union {
    std::int32_t whole = 0;  // Integer, Long
    double number;           // Double, date
  };
};

// Cuts a source into tokens, one at a time. Comments and continued lines vanish. A copy of the lexer reads
// on from where it is, which is how the parser looks ahead.
// Errors: CompileError for what is no token.
class Lexer {
 public:
  // The longest name, in units.
  static constexpr std::size_t kLongestName = 255;

  // Text literals with doubled quotes are kept in the script's arena.
  explicit Lexer(Script& script) : m_script(&script), m_source(script.text) {}

  // The next token; EndOfSource again and again at the end.
  Token Next();

 private:
  bool SkipBlanks();
  bool SkipContinuation();
  void SkipComment();
  bool StartsStatement() const;
  bool EndsOperand() const;

  Token Scan();
  Token Word();
  Token BracketedName();
  Token TextLiteral();
  Token DateLiteral();
  Token DecimalNumber();
  bool IsPrefixedNumber() const;
  Token PrefixedNumber();
  Token Punctuation();
  Token LineEnd();

  Token Make(TokenKind kind, std::size_t length);
  char16_t At(std::size_t ahead) const {
    return m_position + ahead < m_source.size() ? m_source[m_position + ahead] : u'\0';
  }
  bool IsAtEnd() const { return m_position >= m_source.size(); }

  Script* m_script;
  std::u16string_view m_source;
  std::size_t m_position = 0;
  TokenKind m_previous = TokenKind::EndOfLine;
};

}  // namespace hearthmake::vbscript
