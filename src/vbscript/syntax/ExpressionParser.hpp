#pragma once

#include <vector>

#include "vbscript/Errors.hpp"
#include "vbscript/syntax/Lexer.hpp"
#include "vbscript/syntax/NameCache.hpp"

namespace hearthmake::vbscript {

// Reads tokens, one ahead, and makes trees of expressions. The statements are its heir's.
//
// Two things are kept from growing: the recursion of the parser itself (Nesting) and the height of the
// trees that it makes, so that whoever walks one may do it by recursion, but for the left side of Binary.
class ExpressionParser {
 public:
  ExpressionParser(Script& script, Symbols& symbols);
  ExpressionParser(const ExpressionParser&) = delete;
  ExpressionParser& operator=(const ExpressionParser&) = delete;

  // A whole expression; error 1023 when none begins here.
  Expression* ParseExpression();
  bool IsAt(TokenKind kind) const { return m_token.kind == kind; }
  const Token& Current() const { return m_token; }
  void Advance();
  [[noreturn]] void Fail(CompileErrorNumber number) const { FailAt(number, m_token.offset); }
  [[noreturn]] static void FailAt(CompileErrorNumber number, Offset offset) {
    throw CompileError(number, offset);
  }

 protected:
  // One more level of anything that nests. Error 1001 when it is one too many.
  class Nesting {
   public:
    explicit Nesting(ExpressionParser& parser) : m_parser(parser) {
      if (++parser.m_nesting > kDeepest) {
        --parser.m_nesting;
        parser.Fail(CompileErrorNumber::OutOfMemory);
      }
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --m_parser.m_nesting; }

   private:
    static const int kDeepest;
    ExpressionParser& m_parser;
  };

  bool Accept(TokenKind kind);
  void Expect(TokenKind kind, CompileErrorNumber otherwise);
  // The token behind the current one.
  Token Peek() const;
  bool IsAtName() const;
  // Error 1010 when there is no name here.
  Symbol ExpectName();
  bool IsAtEndOfStatement() const;
  bool IsBehindSeparator() const {
    return m_previous == TokenKind::EndOfLine || m_previous == TokenKind::Colon;
  }
  bool CanStartExpression() const;
  // A dot that belongs to what comes behind it: `f .x` inside With.
  bool IsAtWithDot() const { return IsAt(TokenKind::Dot) && m_token.isAfterBlank && m_withNesting > 0; }

  // name, .name, Me and what hangs on it: members, parentheses.
  Expression* ParseReference();
  // The beginning of a reference, without what hangs on it.
  Expression* ParseReferenceHead();
  Expression* ParseMember(Expression* object);
  Expression* ParseLiteral();
  // ( arguments ); the current token is the parenthesis.
  std::span<Expression*> ParseArguments();
  // arguments until the end of the statement, with the ones there are already.
  std::span<Expression*> ParseBareArguments(std::vector<Expression*> arguments);
  // What operators behind an operand that was read already make of it.
  Expression* ParseOperatorsBehind(Expression* left) { return ParseOperatorsBehind(left, 0); }

  template <class Node>
  Node* Make(ExpressionKind kind, Offset offset) {
    Node* node = m_script.Make<Node>();
    node->kind = kind;
    node->offset = offset;
    return node;
  }
  Expression* MakeCall(Expression* callee, std::span<Expression*> arguments);
  Expression* MakeParenthesized(Expression* inner, Offset offset);

  Script& m_script;
  int m_withNesting = 0;
  // Of the expression that was made last.
  int m_height = 0;

 private:
  Expression* ParseBinary(int lowestPrecedence);
  Expression* ParseOperatorsBehind(Expression* left, int lowestPrecedence);
  Expression* ParseOperand(int lowestPrecedence);
  Expression* ParseUnary(UnaryOperator op, int precedence);
  Expression* ParseNew();
  Expression* ParseParentheses();
  Expression* ParseTail(Expression* head);
  Expression* MakeOmitted();
  void Grow(int height);

  NameCache m_names;
  Lexer m_lexer;
  Token m_token;
  TokenKind m_previous = TokenKind::EndOfLine;
  int m_nesting = 0;
};

}  // namespace hearthmake::vbscript
