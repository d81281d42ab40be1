#include "vbscript/syntax/ExpressionParser.hpp"

#include <algorithm>

#include "vbscript/syntax/Parser.hpp"

namespace hearthmake::vbscript {

namespace {

using automation::VariantType;

// What binds tighter has the higher number. Between the comparisons and the power stand the operators of
// arithmetic; the signs stand just below the power: -2^2 is -(2^2).
constexpr int kNotPrecedence = 6;
constexpr int kSignPrecedence = 13;

struct BinaryToken {
  BinaryOperator op;
  int precedence;  // 0: no operator
};

BinaryToken BinaryOf(TokenKind kind) {
  switch (kind) {
    case TokenKind::Imp: return {BinaryOperator::Imp, 1};
    case TokenKind::Eqv: return {BinaryOperator::Eqv, 2};
    case TokenKind::Xor: return {BinaryOperator::Xor, 3};
    case TokenKind::Or: return {BinaryOperator::Or, 4};
    case TokenKind::And: return {BinaryOperator::And, 5};
    case TokenKind::Equal: return {BinaryOperator::Equal, 7};
    case TokenKind::NotEqual: return {BinaryOperator::NotEqual, 7};
    case TokenKind::Less: return {BinaryOperator::Less, 7};
    case TokenKind::Greater: return {BinaryOperator::Greater, 7};
    case TokenKind::LessOrEqual: return {BinaryOperator::LessOrEqual, 7};
    case TokenKind::GreaterOrEqual: return {BinaryOperator::GreaterOrEqual, 7};
    case TokenKind::Is: return {BinaryOperator::Is, 7};
    case TokenKind::Ampersand: return {BinaryOperator::Concatenate, 8};
    case TokenKind::Plus: return {BinaryOperator::Add, 9};
    case TokenKind::Minus: return {BinaryOperator::Subtract, 9};
    case TokenKind::Mod: return {BinaryOperator::Modulo, 10};
    case TokenKind::Backslash: return {BinaryOperator::IntegerDivide, 11};
    case TokenKind::Asterisk: return {BinaryOperator::Multiply, 12};
    case TokenKind::Slash: return {BinaryOperator::Divide, 12};
    case TokenKind::Caret: return {BinaryOperator::Power, 14};
    default: return {BinaryOperator::Power, 0};
  }
}

// Words that mean something in one place only and are names everywhere else.
bool IsSafeKeyword(TokenKind kind) {
  switch (kind) {
    case TokenKind::Default:
    case TokenKind::Erase:
    case TokenKind::Error:
    case TokenKind::Explicit:
    case TokenKind::Property:
    case TokenKind::Step: return true;
    default: return false;
  }
}

}  // namespace

const int ExpressionParser::Nesting::kDeepest = kDeepestNesting;

ExpressionParser::ExpressionParser(Script& script, Symbols& symbols)
    : m_script(script), m_names(symbols), m_lexer(script), m_token(m_lexer.Next()) {}

// ---- Tokens

void ExpressionParser::Advance() {
  m_previous = m_token.kind;
  m_token = m_lexer.Next();
}

bool ExpressionParser::Accept(TokenKind kind) {
  if (!IsAt(kind)) return false;
  Advance();
  return true;
}

void ExpressionParser::Expect(TokenKind kind, CompileErrorNumber otherwise) {
  if (!Accept(kind)) Fail(otherwise);
}

Token ExpressionParser::Peek() const { return Lexer(m_lexer).Next(); }

bool ExpressionParser::IsAtName() const { return IsAt(TokenKind::Identifier) || IsSafeKeyword(m_token.kind); }

Symbol ExpressionParser::ExpectName() {
  if (!IsAtName()) Fail(CompileErrorNumber::ExpectedIdentifier);
  const Symbol symbol = m_names.Intern(m_token.text);
  Advance();
  return symbol;
}

bool ExpressionParser::IsAtEndOfStatement() const {
  return IsAt(TokenKind::EndOfLine) || IsAt(TokenKind::Colon) || IsAt(TokenKind::EndOfSource);
}

bool ExpressionParser::CanStartExpression() const {
  switch (m_token.kind) {
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
    case TokenKind::True:
    case TokenKind::False:
    case TokenKind::Empty:
    case TokenKind::Null:
    case TokenKind::Nothing:
    case TokenKind::Me:
    case TokenKind::New:
    case TokenKind::Not:
    case TokenKind::Plus:
    case TokenKind::Minus:
    case TokenKind::Dot:
    case TokenKind::LeftParenthesis: return true;
    default: return IsAtName();
  }
}

// ---- Operators

Expression* ExpressionParser::ParseExpression() {
  if (!CanStartExpression()) Fail(CompileErrorNumber::ExpectedExpression);
  return ParseBinary(0);
}

Expression* ExpressionParser::ParseBinary(int lowestPrecedence) {
  const Nesting nesting(*this);
  Expression* left = ParseOperand(lowestPrecedence);
  return ParseOperatorsBehind(left, lowestPrecedence);
}

// Operators of one precedence lean to the left, which takes no recursion however many they are; only the
// first one makes the tree higher for who walks its left side in a loop.
Expression* ExpressionParser::ParseOperatorsBehind(Expression* left, int lowestPrecedence) {
  int height = m_height;
  bool isFirst = true;
  for (;;) {
    const BinaryToken binary = BinaryOf(m_token.kind);
    if (binary.precedence == 0 || binary.precedence < lowestPrecedence) break;
    Advance();
    auto* node = Make<Binary>(ExpressionKind::Binary, left->offset);
    node->op = binary.op;
    node->left = left;
    node->right = ParseBinary(binary.precedence + 1);
    Grow(std::max(isFirst ? height + 1 : height, m_height + 1));
    height = m_height;
    isFirst = false;
    left = node;
  }
  m_height = height;
  return left;
}

// Notes the height of a tree that was just made.
void ExpressionParser::Grow(int height) {
  if (height > kDeepestNesting) Fail(CompileErrorNumber::OutOfMemory);
  m_height = height;
}

// An operand with its signs. To the right of a power a sign takes its operand alone, elsewhere all powers:
// 2^-1^3 is (2^(-1))^3.
Expression* ExpressionParser::ParseOperand(int lowestPrecedence) {
  switch (m_token.kind) {
    case TokenKind::Not: return ParseUnary(UnaryOperator::Not, kNotPrecedence);
    case TokenKind::Minus:
      return ParseUnary(UnaryOperator::Negate, std::max(lowestPrecedence, kSignPrecedence + 1));
    case TokenKind::Plus:
      return ParseUnary(UnaryOperator::Plus, std::max(lowestPrecedence, kSignPrecedence + 1));
    case TokenKind::LeftParenthesis: return ParseParentheses();
    case TokenKind::New: return ParseNew();
    case TokenKind::Me:
    case TokenKind::Dot: return ParseReference();
    default: return IsAtName() ? ParseReference() : ParseLiteral();
  }
}

Expression* ExpressionParser::ParseUnary(UnaryOperator op, int precedence) {
  auto* node = Make<Unary>(ExpressionKind::Unary, m_token.offset);
  Advance();
  node->op = op;
  node->operand = ParseBinary(precedence);
  Grow(m_height + 1);
  return node;
}

// ---- Operands

Expression* ExpressionParser::ParseLiteral() {
  auto* node = Make<Literal>(ExpressionKind::Literal, m_token.offset);
  switch (m_token.kind) {
    case TokenKind::Number:
      node->type = m_token.type;
      if (m_token.type == VariantType::Double) {
        node->number = m_token.number;
      } else {
        node->whole = m_token.whole;
      }
      break;
    case TokenKind::Date:
      node->type = VariantType::Date;
      node->number = m_token.number;
      break;
    case TokenKind::Text:
      node->type = VariantType::String;
      node->text = m_token.text;
      break;
    case TokenKind::True:
      node->type = VariantType::Boolean;
      node->whole = -1;
      break;
    case TokenKind::False: node->type = VariantType::Boolean; break;
    case TokenKind::Empty: node->type = VariantType::Empty; break;
    case TokenKind::Null: node->type = VariantType::Null; break;
    case TokenKind::Nothing: node->type = VariantType::Object; break;
    default: Fail(CompileErrorNumber::SyntaxError);  // an operator without its right side
  }
  Advance();
  m_height = 1;
  return node;
}

Expression* ExpressionParser::ParseNew() {
  auto* node = Make<New>(ExpressionKind::New, m_token.offset);
  Advance();
  node->className = ExpectName();
  m_height = 1;
  return node;
}

Expression* ExpressionParser::ParseParentheses() {
  const Offset offset = m_token.offset;
  Advance();
  Expression* inner = ParseExpression();
  Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
  return ParseTail(MakeParenthesized(inner, offset));
}

Expression* ExpressionParser::MakeParenthesized(Expression* inner, Offset offset) {
  auto* node = Make<Parenthesized>(ExpressionKind::Parenthesized, offset);
  node->inner = inner;
  Grow(m_height + 1);
  return node;
}

// ---- References

Expression* ExpressionParser::ParseReference() { return ParseTail(ParseReferenceHead()); }

Expression* ExpressionParser::ParseReferenceHead() {
  const Offset offset = m_token.offset;
  if (IsAt(TokenKind::Dot)) {
    if (m_withNesting == 0) Fail(CompileErrorNumber::InvalidOrUnqualifiedReference);
    m_height = 0;
    return ParseMember(nullptr);
  }
  m_height = 1;
  if (Accept(TokenKind::Me)) return Make<Expression>(ExpressionKind::Me, offset);
  auto* node = Make<Name>(ExpressionKind::Name, offset);
  node->symbol = ExpectName();
  return node;
}

Expression* ExpressionParser::ParseTail(Expression* head) {
  for (;;) {
    if (IsAt(TokenKind::Dot)) {
      head = ParseMember(head);
    } else if (IsAt(TokenKind::LeftParenthesis)) {
      const int height = m_height;
      const std::span<Expression*> arguments = ParseArguments();
      m_height = std::max(height, m_height);
      head = MakeCall(head, arguments);
    } else {
      return head;
    }
  }
}

Expression* ExpressionParser::ParseMember(Expression* object) {
  Advance();
  auto* node = Make<Member>(object == nullptr ? ExpressionKind::WithMember : ExpressionKind::Member,
                            object == nullptr ? m_token.offset : object->offset);
  node->object = object;
  node->member = ExpectName();
  Grow(m_height + 1);
  return node;
}

Expression* ExpressionParser::MakeCall(Expression* callee, std::span<Expression*> arguments) {
  auto* node = Make<Call>(ExpressionKind::Call, callee->offset);
  node->callee = callee;
  node->arguments = arguments;
  Grow(m_height + 1);
  return node;
}

Expression* ExpressionParser::MakeOmitted() {
  return Make<Expression>(ExpressionKind::Omitted, m_token.offset);
}

// Leaves the height of the highest argument.
std::span<Expression*> ExpressionParser::ParseArguments() {
  Advance();
  m_height = 0;
  if (Accept(TokenKind::RightParenthesis)) return {};
  std::vector<Expression*> arguments;
  int height = 1;
  do {
    if (IsAt(TokenKind::Comma) || IsAt(TokenKind::RightParenthesis)) {
      arguments.push_back(MakeOmitted());
    } else {
      arguments.push_back(ParseExpression());
      height = std::max(height, m_height);
    }
  } while (Accept(TokenKind::Comma));
  Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
  m_height = height;
  return m_script.Keep(arguments);
}

// Without the height: nothing is built upon a call statement.
std::span<Expression*> ExpressionParser::ParseBareArguments(std::vector<Expression*> arguments) {
  const bool goesOn = !arguments.empty();
  if (goesOn && !Accept(TokenKind::Comma)) return m_script.Keep(arguments);
  do {
    const bool isOmitted = IsAt(TokenKind::Comma) || !CanStartExpression();
    arguments.push_back(isOmitted ? MakeOmitted() : ParseExpression());
  } while (Accept(TokenKind::Comma));
  return m_script.Keep(arguments);
}

}  // namespace hearthmake::vbscript
