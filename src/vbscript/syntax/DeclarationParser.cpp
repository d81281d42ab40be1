// The part of StatementParser that reads what declares names: variables, constants, procedures, classes.

#include <algorithm>
#include <utility>

#include "vbscript/syntax/StatementParser.hpp"

namespace hearthmake::vbscript {

Statement* StatementParser::ParseOptionExplicit(bool isFirst) {
  if (!isFirst) Fail(CompileErrorNumber::ExpectedStatement);
  Advance();
  Expect(TokenKind::Explicit, CompileErrorNumber::SyntaxError);
  m_script.hasOptionExplicit = true;
  return nullptr;
}

// ---- Variables and constants

// The names behind Dim, Public and Private, which have been read.
Statement* StatementParser::ParseDim(Visibility visibility, Offset offset) {
  auto* statement = MakeStatement<Dim>(StatementKind::Dim, offset);
  statement->visibility = visibility;
  std::vector<Declarator> names;
  do {
    names.push_back(ParseDeclarator());
    CurrentScope().Declare(names.back().name, names.back().offset);
  } while (Accept(TokenKind::Comma));
  statement->names = m_script.Keep(names);
  return statement;
}

Declarator StatementParser::ParseDeclarator() {
  Declarator declarator{Current().offset, ExpectName(), false, {}};
  if (IsAt(TokenKind::LeftParenthesis)) {
    declarator.isArray = true;
    declarator.upperBounds = ParseFixedBounds();
  }
  return declarator;
}

// Numbers in parentheses, or nothing between them.
std::span<const std::int32_t> StatementParser::ParseFixedBounds() {
  Advance();
  if (Accept(TokenKind::RightParenthesis)) return {};
  std::vector<std::int32_t> bounds;
  do {
    const Token& bound = Current();
    if (bound.kind != TokenKind::Number || bound.type == automation::VariantType::Double) {
      Fail(CompileErrorNumber::ExpectedIntegerConstant);
    }
    bounds.push_back(bound.whole);
    Advance();
  } while (Accept(TokenKind::Comma));
  Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
  return m_script.Keep(bounds);
}

Const* StatementParser::ParseConst(Visibility visibility, Offset offset) {
  auto* statement = MakeStatement<Const>(StatementKind::Const, offset);
  statement->visibility = visibility;
  Advance();
  std::vector<Const::Constant> constants;
  do {
    Const::Constant constant{Current().offset, ExpectName(), nullptr};
    CurrentScope().Declare(constant.name, constant.offset);
    Expect(TokenKind::Equal, CompileErrorNumber::ExpectedEqual);
    constant.value = ParseConstantValue();
    constants.push_back(constant);
  } while (Accept(TokenKind::Comma));
  statement->constants = m_script.Keep(constants);
  return statement;
}

// A literal with signs and parentheses. No names: those of other constants are not accepted either.
Expression* StatementParser::ParseConstantValue() {
  const Nesting nesting(*this);
  const Offset offset = Current().offset;
  switch (Current().kind) {
    case TokenKind::LeftParenthesis: {
      Advance();
      Expression* inner = ParseConstantValue();
      Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
      return MakeParenthesized(inner, offset);
    }
    case TokenKind::Minus:
    case TokenKind::Plus: {
      auto* node = Make<Unary>(ExpressionKind::Unary, offset);
      node->op = IsAt(TokenKind::Minus) ? UnaryOperator::Negate : UnaryOperator::Plus;
      Advance();
      node->operand = ParseConstantValue();
      return node;
    }
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
    case TokenKind::True:
    case TokenKind::False:
    case TokenKind::Empty:
    case TokenKind::Null:
    case TokenKind::Nothing: return ParseLiteral();
    default: Fail(CompileErrorNumber::ExpectedLiteralConstant);
  }
}

// Public or Private at the level of statements.
Statement* StatementParser::ParsePublicOrPrivate() {
  RequireGlobalLevel();
  const Offset offset = Current().offset;
  const Visibility visibility = IsAt(TokenKind::Public) ? Visibility::Public : Visibility::Private;
  Advance();
  switch (Current().kind) {
    case TokenKind::Const: return ParseConst(visibility, offset);
    case TokenKind::Sub:
    case TokenKind::Function: return ParseGlobalProcedure(visibility);
    case TokenKind::Property:
      if (IsAtPropertyDeclaration()) Fail(CompileErrorNumber::MustBeDefinedInsideClass);
      return ParseDim(visibility, offset);
    case TokenKind::Default:
      if (IsDeclarationBehindDefault()) Fail(CompileErrorNumber::MustBeDefinedInsideClass);
      return ParseDim(visibility, offset);
    default: return ParseDim(visibility, offset);
  }
}

bool StatementParser::IsAtPropertyDeclaration() const {
  if (!IsAt(TokenKind::Property)) return false;
  const TokenKind next = Peek().kind;
  return next == TokenKind::Get || next == TokenKind::Let || next == TokenKind::Set;
}

// Whether Default is no name here.
bool StatementParser::IsDeclarationBehindDefault() const {
  const TokenKind next = Peek().kind;
  return next == TokenKind::Sub || next == TokenKind::Function || next == TokenKind::Property;
}

// Procedures and classes stand in no block, no line of an If and no procedure.
void StatementParser::RequireGlobalLevel() const {
  if (m_around.isInProcedure || m_around.block != BlockKind::Body) Fail(CompileErrorNumber::SyntaxError);
}

// ---- Procedures

Statement* StatementParser::ParseGlobalProcedure(Visibility visibility) {
  RequireGlobalLevel();
  Procedure* procedure = ParseProcedure(visibility, false);
  m_script.procedures.push_back(procedure);
  return procedure;
}

// Sub, Function or Property with its body; the current token is that word.
Procedure* StatementParser::ParseProcedure(Visibility visibility, bool isDefault) {
  auto* procedure = MakeStatement<Procedure>(StatementKind::Procedure, Current().offset);
  procedure->visibility = visibility;
  procedure->isDefault = isDefault;
  procedure->procedure = ParseProcedureKind();
  const Offset nameOffset = Current().offset;
  procedure->name = ExpectName();
  m_locals.Clear();
  if (IsFunctionLike(procedure->procedure)) m_locals.Declare(procedure->name, nameOffset);
  if (IsAt(TokenKind::LeftParenthesis)) procedure->parameters = ParseParameters();
  DeclareProcedure(*procedure, nameOffset);
  ParseProcedureBody(*procedure);
  return procedure;
}

ProcedureKind StatementParser::ParseProcedureKind() {
  if (Accept(TokenKind::Sub)) return ProcedureKind::Sub;
  if (Accept(TokenKind::Function)) return ProcedureKind::Function;
  Advance();
  if (Accept(TokenKind::Get)) return ProcedureKind::PropertyGet;
  if (Accept(TokenKind::Let)) return ProcedureKind::PropertyLet;
  if (Accept(TokenKind::Set)) return ProcedureKind::PropertySet;
  Fail(CompileErrorNumber::ExpectedLetOrSetOrGet);
}

// Whether the name of the procedure is the variable of its result.
bool StatementParser::IsFunctionLike(ProcedureKind kind) {
  return kind == ProcedureKind::Function || kind == ProcedureKind::PropertyGet;
}

std::span<ParameterNode> StatementParser::ParseParameters() {
  Advance();
  if (Accept(TokenKind::RightParenthesis)) return {};
  std::vector<ParameterNode> parameters;
  do {
    parameters.push_back(ParseParameter());
    m_locals.Declare(parameters.back().name, parameters.back().offset);
  } while (Accept(TokenKind::Comma));
  Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
  return m_script.Keep(parameters);
}

ParameterNode StatementParser::ParseParameter() {
  const bool isByValue = Accept(TokenKind::ByVal);
  if (!isByValue) Accept(TokenKind::ByRef);
  ParameterNode parameter{Current().offset, ExpectName(), isByValue, false};
  if (Accept(TokenKind::LeftParenthesis)) {
    Expect(TokenKind::RightParenthesis, CompileErrorNumber::ExpectedRightParenthesis);
    parameter.isArray = true;
  }
  return parameter;
}

void StatementParser::DeclareProcedure(const Procedure& procedure, Offset nameOffset) {
  if (IsInClass()) {
    DeclareMember(procedure, nameOffset);
  } else {
    m_globals.DeclareProcedure(procedure.name, nameOffset);
  }
}

void StatementParser::ParseProcedureBody(Procedure& procedure) {
  Surroundings surroundings;
  surroundings.isInProcedure = true;
  surroundings.procedure = procedure.procedure;
  // The body may follow its head on the same line, and then its End does too.
  if (!IsAtEndOfStatement()) surroundings.singleLines = 1;
  const Surroundings outer = std::exchange(m_around, std::move(surroundings));
  procedure.body = ParseBlock(BlockKind::Body);
  m_around = outer;
  procedure.endOffset = Current().offset;
  switch (procedure.procedure) {
    case ProcedureKind::Sub: ExpectEnd(TokenKind::Sub, CompileErrorNumber::ExpectedSub); break;
    case ProcedureKind::Function: ExpectEnd(TokenKind::Function, CompileErrorNumber::ExpectedFunction); break;
    default: ExpectEnd(TokenKind::Property, CompileErrorNumber::ExpectedProperty); break;
  }
}

// ---- Classes

struct StatementParser::ClassParts {
  std::vector<Class::Field> fields;
  std::vector<Procedure*> procedures;
  std::vector<Const*> constants;
};

Statement* StatementParser::ParseClass() {
  RequireGlobalLevel();
  auto* statement = MakeStatement<Class>(StatementKind::Class, Current().offset);
  Advance();
  const Offset nameOffset = Current().offset;
  statement->name = ExpectName();
  m_globals.Declare(statement->name, nameOffset);
  RequireEndOfStatement();
  ClassScope scope;
  ClassParts parts;
  m_class = &scope;
  for (SkipSeparators(); !IsAt(TokenKind::End); SkipSeparators()) {
    if (IsAt(TokenKind::EndOfSource)) Fail(CompileErrorNumber::ExpectedEnd);
    ParseMemberDeclaration(parts);
    RequireEndOfStatement();
  }
  m_class = nullptr;
  ExpectEnd(TokenKind::Class, CompileErrorNumber::ExpectedClass);
  statement->fields = m_script.Keep(parts.fields);
  statement->procedures = m_script.Keep(parts.procedures);
  statement->constants = m_script.Keep(parts.constants);
  m_script.classes.push_back(statement);
  return statement;
}

void StatementParser::ParseMemberDeclaration(ClassParts& parts) {
  const Offset offset = Current().offset;
  Visibility visibility = Visibility::Public;
  const bool isDim = Accept(TokenKind::Dim);
  const bool isPublic = !isDim && Accept(TokenKind::Public);
  if (!isDim && !isPublic && Accept(TokenKind::Private)) visibility = Visibility::Private;
  const bool isPlain = Current().offset == offset;
  if (isDim) return ParseFields(parts, visibility);
  bool isDefault = false;
  if (IsAt(TokenKind::Default)) {
    if (!isPublic) Fail(CompileErrorNumber::DefaultMustBePublic);
    if (IsFieldNamedDefault()) return ParseFields(parts, visibility);
    if (m_class->hasDefault) Fail(CompileErrorNumber::CannotHaveMultipleDefaults);
    m_class->hasDefault = isDefault = true;
    Advance();
    const bool isProcedure = IsAt(TokenKind::Sub) || IsAt(TokenKind::Function) || IsAt(TokenKind::Property);
    if (!isProcedure) Fail(CompileErrorNumber::DefaultMustBeOnPropertyFunctionOrSub);
  }
  switch (Current().kind) {
    case TokenKind::Sub:
    case TokenKind::Function:
    case TokenKind::Property: parts.procedures.push_back(ParseProcedure(visibility, isDefault)); break;
    case TokenKind::Const: parts.constants.push_back(ParseConst(visibility, offset)); break;
    default:
      if (isPlain) Fail(CompileErrorNumber::SyntaxError);
      ParseFields(parts, visibility);
  }
}

bool StatementParser::IsFieldNamedDefault() const {
  switch (Peek().kind) {
    case TokenKind::Comma:
    case TokenKind::LeftParenthesis:
    case TokenKind::Colon:
    case TokenKind::EndOfLine:
    case TokenKind::EndOfSource: return true;
    default: return false;
  }
}

void StatementParser::ParseFields(ClassParts& parts, Visibility visibility) {
  do {
    const Declarator declarator = ParseDeclarator();
    m_class->names.Declare(declarator.name, declarator.offset);
    parts.fields.push_back({visibility, declarator});
  } while (Accept(TokenKind::Comma));
}

// Checks a member against those before it.
void StatementParser::DeclareMember(const Procedure& procedure, Offset nameOffset) {
  if (procedure.procedure == ProcedureKind::Sub || procedure.procedure == ProcedureKind::Function) {
    const bool isEvent = procedure.name == m_initialize || procedure.name == m_terminate;
    if (isEvent && procedure.procedure == ProcedureKind::Sub && !procedure.parameters.empty()) {
      FailAt(CompileErrorNumber::ClassInitializeHasArguments, nameOffset);
    }
    m_class->names.Declare(procedure.name, nameOffset);
    return;
  }
  const bool isGet = procedure.procedure == ProcedureKind::PropertyGet;
  const bool isLet = procedure.procedure == ProcedureKind::PropertyLet;
  std::size_t indexes = procedure.parameters.size();
  if (!isGet) {
    if (procedure.isDefault) FailAt(CompileErrorNumber::DefaultOnlyOnPropertyGet, nameOffset);
    if (indexes == 0) FailAt(CompileErrorNumber::PropertySetNeedsArgument, nameOffset);
    --indexes;
  }
  const auto [entry, isNew] = m_class->properties.try_emplace(procedure.name);
  ClassScope::Property& property = entry->second;
  if (isNew) {
    m_class->names.Declare(procedure.name, nameOffset);
    property.indexes = indexes;
  }
  bool& isThere = isGet ? property.hasGet : isLet ? property.hasLet : property.hasSet;
  if (std::exchange(isThere, true)) FailAt(CompileErrorNumber::NameRedefined, nameOffset);
  if (property.indexes != indexes) FailAt(CompileErrorNumber::ArgumentCountMustBeConsistent, nameOffset);
}

}  // namespace hearthmake::vbscript
