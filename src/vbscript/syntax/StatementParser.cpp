#include "vbscript/syntax/StatementParser.hpp"

#include <algorithm>
#include <utility>

namespace hearthmake::vbscript {

// What encloses the statements of a block, while the block is read.
class StatementParser::Enclosed {
 public:
  Enclosed(StatementParser& parser, BlockKind block)
      : m_nesting(parser), m_around(parser.m_around), m_outer(m_around.block) {
    m_around.block = block;
    Count(1);
  }
  Enclosed(const Enclosed&) = delete;
  Enclosed& operator=(const Enclosed&) = delete;
  ~Enclosed() {
    Count(-1);
    m_around.block = m_outer;
  }

 private:
  void Count(int step) {
    if (m_around.block == BlockKind::Do) m_around.doLoops += step;
    if (m_around.block == BlockKind::For) m_around.forLoops += step;
  }

  Nesting m_nesting;
  Surroundings& m_around;
  BlockKind m_outer;
};

StatementParser::StatementParser(Script& script, Symbols& symbols)
    : ExpressionParser(script, symbols),
      m_initialize(symbols.Intern(u"Class_Initialize")),
      m_terminate(symbols.Intern(u"Class_Terminate")) {}

void StatementParser::ParseSource() {
  const std::vector<Statement*> statements = ParseStatements();
  if (!IsAt(TokenKind::EndOfSource)) Fail(CompileErrorNumber::ExpectedStatement);
  m_script.body = m_script.Keep(statements);
}

void StatementParser::ParseSourceAsExpression() {
  auto* statement = MakeStatement<CallStatement>(StatementKind::Call, Current().offset);
  statement->call = ParseExpression();
  while (Accept(TokenKind::EndOfLine)) {
  }
  if (!IsAt(TokenKind::EndOfSource)) Fail(CompileErrorNumber::ExpectedEndOfStatement);
  m_script.body = m_script.Keep(std::vector<Statement*>{statement});
}

// ---- Blocks

void StatementParser::SkipSeparators() {
  while (IsAt(TokenKind::EndOfLine) || IsAt(TokenKind::Colon)) Advance();
}

void StatementParser::RequireEndOfStatement() {
  // An If on a single line reads the colon before an End that turns out not to be its own.
  if (IsAtEndOfStatement() || IsBehindSeparator()) return;
  const bool isClosed = IsAt(TokenKind::End) || IsAt(TokenKind::Else) || IsAt(TokenKind::ElseIf);
  if (m_around.singleLines > 0 && isClosed) return;
  Fail(CompileErrorNumber::ExpectedEndOfStatement);
}

// Whether the current token ends a block, be it the one that is read or one around it. Two that can't be
// the end of what is open have errors of their own.
bool StatementParser::EndsBlock() {
  switch (Current().kind) {
    case TokenKind::EndOfSource:
    case TokenKind::End:
    case TokenKind::Else:
    case TokenKind::ElseIf:
    case TokenKind::Case:
    case TokenKind::Wend: return true;
    case TokenKind::Loop:
      if (m_around.block != BlockKind::Do) Fail(CompileErrorNumber::LoopWithoutDo);
      return true;
    case TokenKind::Next:
      if (m_around.block != BlockKind::For) Fail(CompileErrorNumber::UnexpectedNext);
      return true;
    default: return false;
  }
}

std::vector<Statement*> StatementParser::ParseStatements() {
  std::vector<Statement*> statements;
  for (;;) {
    SkipSeparators();
    if (EndsBlock()) return statements;
    if (Statement* statement = ParseStatement(); statement != nullptr) statements.push_back(statement);
    RequireEndOfStatement();
  }
}

Block StatementParser::ParseBlock(BlockKind kind) {
  const Enclosed enclosed(*this, kind);
  return m_script.Keep(ParseStatements());
}

void StatementParser::ExpectEnd(TokenKind word, CompileErrorNumber otherwise) {
  Expect(TokenKind::End, CompileErrorNumber::ExpectedEnd);
  Expect(word, otherwise);
}

Statement* StatementParser::ParseStatement() {
  const bool isFirst = !std::exchange(m_hasStatements, true);
  const Offset offset = Current().offset;
  switch (Current().kind) {
    case TokenKind::Option: return ParseOptionExplicit(isFirst);
    case TokenKind::Dim: Advance(); return ParseDim(Visibility::Public, offset);
    case TokenKind::Const: return ParseConst(Visibility::Public, offset);
    case TokenKind::Public:
    case TokenKind::Private: return ParsePublicOrPrivate();
    case TokenKind::Sub:
    case TokenKind::Function: return ParseGlobalProcedure(Visibility::Public);
    case TokenKind::Class: return ParseClass();
    case TokenKind::If: return ParseIf();
    case TokenKind::Select: return ParseSelect();
    case TokenKind::For: return ParseFor();
    case TokenKind::Do: return ParseDo();
    case TokenKind::While: return ParseWhile();
    case TokenKind::With: return ParseWith();
    case TokenKind::Exit: return ParseExit();
    case TokenKind::On: return ParseOnError();
    case TokenKind::Set: return ParseSet();
    case TokenKind::Call: return ParseCall();
    case TokenKind::ReDim: return ParseReDim();
    case TokenKind::Stop: Advance(); return MakeStatement<Statement>(StatementKind::Stop, offset);
    case TokenKind::Erase:
      if (Peek().kind != TokenKind::Equal) return ParseErase();
      break;
    case TokenKind::Property:
      if (IsAtPropertyDeclaration()) Fail(CompileErrorNumber::MustBeDefinedInsideClass);
      break;
    case TokenKind::Me:
    case TokenKind::Dot: break;
    default:
      if (!IsAtName()) Fail(CompileErrorNumber::ExpectedStatement);
  }
  return ParseAssignmentOrCall();
}

// ---- If

Statement* StatementParser::ParseIf() {
  auto* statement = MakeStatement<If>(StatementKind::If, Current().offset);
  std::vector<If::Branch> branches{ParseIfHead()};
  // Nothing but separators behind Then: a block. Behind a colon, a statement still makes it a single line.
  while (IsAt(TokenKind::Colon)) Advance();
  if (IsAt(TokenKind::EndOfLine) || IsAt(TokenKind::EndOfSource)) {
    ParseIfBlock(branches, statement->otherwise);
  } else {
    ParseSingleLine(branches, statement->otherwise);
  }
  statement->branches = m_script.Keep(branches);
  return statement;
}

// If or ElseIf, condition and Then.
If::Branch StatementParser::ParseIfHead() {
  If::Branch branch{Current().offset, nullptr, {}};
  Advance();
  branch.condition = ParseExpression();
  Expect(TokenKind::Then, CompileErrorNumber::ExpectedThen);
  return branch;
}

void StatementParser::ParseSingleLine(std::vector<If::Branch>& branches, Block& otherwise) {
  branches.back().body = ParseSingleLineBlock();
  while (IsAt(TokenKind::ElseIf)) {
    branches.push_back(ParseIfHead());
    branches.back().body = ParseSingleLineBlock();
  }
  if (Accept(TokenKind::Else)) otherwise = ParseSingleLineBlock();
  if (IsAt(TokenKind::End) && Peek().kind == TokenKind::If) {
    Advance();
    Advance();
  }
}

// Statements up to the end of the line, or to what ends them on it.
Block StatementParser::ParseSingleLineBlock() {
  const Enclosed enclosed(*this, BlockKind::If);
  ++m_around.singleLines;
  std::vector<Statement*> statements;
  for (;;) {
    while (IsAt(TokenKind::Colon)) Advance();
    if (IsAt(TokenKind::EndOfLine) || EndsBlock()) break;
    if (Statement* statement = ParseStatement(); statement != nullptr) statements.push_back(statement);
    RequireEndOfStatement();
  }
  --m_around.singleLines;
  return m_script.Keep(statements);
}

void StatementParser::ParseIfBlock(std::vector<If::Branch>& branches, Block& otherwise) {
  branches.back().body = ParseBlock(BlockKind::If);
  while (IsAt(TokenKind::ElseIf)) {
    branches.push_back(ParseIfHead());
    branches.back().body = ParseBlock(BlockKind::If);
  }
  if (Accept(TokenKind::Else)) otherwise = ParseBlock(BlockKind::If);
  ExpectEnd(TokenKind::If, CompileErrorNumber::ExpectedIf);
}

// ---- Select Case

Statement* StatementParser::ParseSelect() {
  auto* statement = MakeStatement<Select>(StatementKind::Select, Current().offset);
  Advance();
  Expect(TokenKind::Case, CompileErrorNumber::ExpectedCase);
  statement->selector = ParseExpression();
  RequireEndOfStatement();
  SkipSeparators();
  std::vector<Select::Case> cases;
  bool hasElse = false;
  while (!hasElse && IsAt(TokenKind::Case)) {
    Select::Case oneCase = ParseCaseValues();
    oneCase.body = ParseBlock(BlockKind::Select);
    hasElse = oneCase.values.empty();
    if (hasElse) {
      statement->otherwise = oneCase.body;
    } else {
      cases.push_back(oneCase);
    }
  }
  if (cases.empty() && !hasElse && !IsAt(TokenKind::End)) Fail(CompileErrorNumber::ExpectedCase);
  ExpectEnd(TokenKind::Select, CompileErrorNumber::ExpectedSelect);
  statement->cases = m_script.Keep(cases);
  return statement;
}

// Case with its values; none for Case Else. A statement may follow on the same line.
Select::Case StatementParser::ParseCaseValues() {
  Select::Case oneCase{Current().offset, {}, {}};
  Advance();
  if (Accept(TokenKind::Else)) return oneCase;
  std::vector<Expression*> values;
  do {
    values.push_back(ParseExpression());
  } while (Accept(TokenKind::Comma));
  oneCase.values = m_script.Keep(values);
  return oneCase;
}

// ---- Loops

Statement* StatementParser::ParseFor() {
  const Offset offset = Current().offset;
  Advance();
  if (Accept(TokenKind::Each)) return ParseForEach(offset);
  auto* statement = MakeStatement<For>(StatementKind::For, offset);
  statement->variable = ParseForVariable();
  Expect(TokenKind::Equal, CompileErrorNumber::ExpectedEqual);
  statement->start = ParseExpression();
  Expect(TokenKind::To, CompileErrorNumber::ExpectedTo);
  statement->end = ParseExpression();
  if (Accept(TokenKind::Step)) statement->step = ParseExpression();
  RequireEndOfStatement();
  statement->body = ParseForBody(statement->variable, statement->nextOffset);
  return statement;
}

Statement* StatementParser::ParseForEach(Offset offset) {
  auto* statement = MakeStatement<ForEach>(StatementKind::ForEach, offset);
  statement->variable = ParseForVariable();
  Expect(TokenKind::In, CompileErrorNumber::ExpectedIn);
  statement->group = ParseExpression();
  RequireEndOfStatement();
  statement->body = ParseForBody(statement->variable, statement->nextOffset);
  return statement;
}

// A plain variable that no loop around this one counts with.
Expression* StatementParser::ParseForVariable() {
  if (!IsAtName()) Fail(CompileErrorNumber::ExpectedIdentifier);
  Expression* variable = ParseReference();
  if (variable->kind != ExpressionKind::Name) {
    FailAt(CompileErrorNumber::InvalidForLoopControlVariable, variable->offset);
  }
  const auto& used = m_around.forVariables;
  if (std::find(used.begin(), used.end(), static_cast<Name*>(variable)->symbol) != used.end()) {
    FailAt(CompileErrorNumber::InvalidForLoopControlVariable, variable->offset);
  }
  return variable;
}

Block StatementParser::ParseForBody(Expression* variable, Offset& nextOffset) {
  m_around.forVariables.push_back(static_cast<Name*>(variable)->symbol);
  const Block body = ParseBlock(BlockKind::For);
  m_around.forVariables.pop_back();
  nextOffset = Current().offset;
  Expect(TokenKind::Next, CompileErrorNumber::ExpectedNext);
  return body;
}

Statement* StatementParser::ParseDo() {
  auto* statement = MakeStatement<Loop>(StatementKind::Loop, Current().offset);
  Advance();
  statement->test = ParseLoopTest(statement->condition);
  statement->isTestedFirst = statement->test != Loop::Test::None;
  RequireEndOfStatement();
  statement->body = ParseBlock(BlockKind::Do);
  statement->endOffset = Current().offset;
  Expect(TokenKind::Loop, CompileErrorNumber::ExpectedLoop);
  if (!statement->isTestedFirst) statement->test = ParseLoopTest(statement->condition);
  return statement;
}

Loop::Test StatementParser::ParseLoopTest(Expression*& condition) {
  Loop::Test test = Loop::Test::None;
  if (Accept(TokenKind::While)) {
    test = Loop::Test::While;
  } else if (Accept(TokenKind::Until)) {
    test = Loop::Test::Until;
  } else if (IsAtEndOfStatement() || m_around.singleLines > 0) {
    return test;
  } else {
    Fail(CompileErrorNumber::ExpectedWhileUntilOrEndOfStatement);
  }
  condition = ParseExpression();
  return test;
}

Statement* StatementParser::ParseWhile() {
  auto* statement = MakeStatement<Loop>(StatementKind::Loop, Current().offset);
  Advance();
  statement->test = Loop::Test::While;
  statement->isTestedFirst = true;
  statement->isWend = true;
  statement->condition = ParseExpression();
  RequireEndOfStatement();
  statement->body = ParseBlock(BlockKind::While);
  statement->endOffset = Current().offset;
  Expect(TokenKind::Wend, CompileErrorNumber::ExpectedWend);
  return statement;
}

// ---- Other statements with a keyword

Statement* StatementParser::ParseWith() {
  auto* statement = MakeStatement<With>(StatementKind::With, Current().offset);
  Advance();
  statement->object = ParseExpression();
  RequireEndOfStatement();
  ++m_withNesting;
  statement->body = ParseBlock(BlockKind::With);
  --m_withNesting;
  ExpectEnd(TokenKind::With, CompileErrorNumber::ExpectedWith);
  return statement;
}

Statement* StatementParser::ParseExit() {
  auto* statement = MakeStatement<Exit>(StatementKind::Exit, Current().offset);
  Advance();
  const auto isIn = [this](ProcedureKind first, ProcedureKind last) {
    return m_around.isInProcedure && m_around.procedure >= first && m_around.procedure <= last;
  };
  bool isValid = false;
  switch (Current().kind) {
    case TokenKind::Do:
      statement->exit = ExitKind::Do;
      isValid = m_around.doLoops > 0;
      break;
    case TokenKind::For:
      statement->exit = ExitKind::For;
      isValid = m_around.forLoops > 0;
      break;
    case TokenKind::Sub:
      statement->exit = ExitKind::Sub;
      isValid = isIn(ProcedureKind::Sub, ProcedureKind::Sub);
      break;
    case TokenKind::Function:
      statement->exit = ExitKind::Function;
      isValid = isIn(ProcedureKind::Function, ProcedureKind::Function);
      break;
    case TokenKind::Property:
      statement->exit = ExitKind::Property;
      isValid = isIn(ProcedureKind::PropertyGet, ProcedureKind::PropertySet);
      break;
    default: break;
  }
  if (!isValid) Fail(CompileErrorNumber::InvalidExit);
  Advance();
  return statement;
}

Statement* StatementParser::ParseOnError() {
  auto* statement = MakeStatement<OnError>(StatementKind::OnError, Current().offset);
  Advance();
  Expect(TokenKind::Error, CompileErrorNumber::SyntaxError);
  if (Accept(TokenKind::Resume)) {
    Expect(TokenKind::Next, CompileErrorNumber::ExpectedNext);
    statement->isResumeNext = true;
    return statement;
  }
  Expect(TokenKind::GoTo, CompileErrorNumber::SyntaxError);
  const Token& label = Current();
  if (label.kind != TokenKind::Number || label.type == automation::VariantType::Double || label.whole != 0) {
    Fail(CompileErrorNumber::SyntaxError);
  }
  Advance();
  return statement;
}

// ---- Assignments and calls

// A statement that begins with a reference shows only behind it what it is. The parentheses that stand last
// hold the index of what is assigned to, or one argument that goes by value, or the beginning of the first
// argument: `f (1) = 2`, `f (1)`, `f (1) + 2, 3`.
Statement* StatementParser::ParseAssignmentOrCall() {
  const Offset offset = Current().offset;
  Expression* reference = ParseReferenceHead();
  for (;;) {
    if (IsAt(TokenKind::Dot) && !IsAtWithDot()) {
      reference = ParseMember(reference);
    } else if (IsAt(TokenKind::LeftParenthesis)) {
      const Offset opening = Current().offset;
      const int height = m_height;
      const std::span<Expression*> arguments = ParseArguments();
      const bool goesOn = IsAt(TokenKind::Dot) || IsAt(TokenKind::LeftParenthesis);
      if (!goesOn && !IsAt(TokenKind::Equal)) {
        return ParseBehindParentheses(reference, arguments, opening, offset);
      }
      m_height = std::max(height, m_height);
      reference = MakeCall(reference, arguments);
    } else {
      break;
    }
  }
  if (IsAt(TokenKind::Equal)) return ParseAssignment(reference, offset);
  if (reference->kind == ExpressionKind::Me) Fail(CompileErrorNumber::InvalidUseOfMe);
  if (!CanStartExpression() && !IsAt(TokenKind::Comma)) return MakeCallStatement(reference, offset);
  return MakeCallStatement(reference, ParseBareArguments({}), offset);
}

Statement* StatementParser::ParseBehindParentheses(Expression* callee, std::span<Expression*> arguments,
                                                   Offset opening, Offset offset) {
  if (arguments.empty()) {
    return MakeCallStatement(callee, arguments, offset);
  }
  if (arguments.size() > 1 || arguments.front()->kind == ExpressionKind::Omitted) {
    Fail(CompileErrorNumber::CannotUseParenthesesWhenCallingSub);
  }
  Expression* first = ParseOperatorsBehind(MakeParenthesized(arguments.front(), opening));
  return MakeCallStatement(callee, ParseBareArguments({first}), offset);
}

Statement* StatementParser::MakeCallStatement(Expression* callee, std::span<Expression*> arguments,
                                              Offset offset) {
  return MakeCallStatement(MakeCall(callee, arguments), offset);
}

Statement* StatementParser::MakeCallStatement(Expression* call, Offset offset) {
  auto* statement = MakeStatement<CallStatement>(StatementKind::Call, offset);
  statement->call = call;
  return statement;
}

// = value, for Set too.
Statement* StatementParser::ParseAssignment(Expression* target, Offset offset) {
  if (target->kind == ExpressionKind::Me) FailAt(CompileErrorNumber::InvalidUseOfMe, target->offset);
  auto* statement = MakeStatement<Assign>(StatementKind::Assign, offset);
  Expect(TokenKind::Equal, CompileErrorNumber::ExpectedEqual);
  statement->target = target;
  statement->value = ParseExpression();
  return statement;
}

Statement* StatementParser::ParseSet() {
  const Offset offset = Current().offset;
  Advance();
  if (!IsAtName() && !IsAt(TokenKind::Dot) && !IsAt(TokenKind::Me)) {
    Fail(CompileErrorNumber::ExpectedIdentifier);
  }
  Statement* statement = ParseAssignment(ParseReference(), offset);
  statement->kind = StatementKind::Set;
  return statement;
}

Statement* StatementParser::ParseCall() {
  const Offset offset = Current().offset;
  Advance();
  if (!IsAtName() && !IsAt(TokenKind::Dot) && !IsAt(TokenKind::Me)) {
    Fail(CompileErrorNumber::ExpectedIdentifier);
  }
  Expression* call = ParseReference();
  if (call->kind == ExpressionKind::Me) FailAt(CompileErrorNumber::InvalidUseOfMe, call->offset);
  return MakeCallStatement(call, offset);
}

Statement* StatementParser::ParseReDim() {
  auto* statement = MakeStatement<ReDim>(StatementKind::ReDim, Current().offset);
  Advance();
  statement->isPreserving = Accept(TokenKind::Preserve);
  std::vector<ReDim::Target> targets;
  do {
    if (!IsAtName() && !IsAt(TokenKind::Dot) && !IsAt(TokenKind::Me)) {
      Fail(CompileErrorNumber::ExpectedIdentifier);
    }
    const Expression* array = ParseReference();
    if (array->kind != ExpressionKind::Call) Fail(CompileErrorNumber::ExpectedLeftParenthesis);
    const auto* call = static_cast<const Call*>(array);
    if (call->callee->kind == ExpressionKind::Call) Fail(CompileErrorNumber::ExpectedEndOfStatement);
    const auto isOmitted = [](const Expression* bound) { return bound->kind == ExpressionKind::Omitted; };
    if (call->arguments.empty() || std::any_of(call->arguments.begin(), call->arguments.end(), isOmitted)) {
      Fail(CompileErrorNumber::ExpectedExpression);
    }
    targets.push_back({call->callee, call->arguments});
  } while (Accept(TokenKind::Comma));
  statement->targets = m_script.Keep(targets);
  return statement;
}

Statement* StatementParser::ParseErase() {
  auto* statement = MakeStatement<Erase>(StatementKind::Erase, Current().offset);
  Advance();
  std::vector<Expression*> arrays;
  do {
    if (!IsAtName() && !IsAt(TokenKind::Dot) && !IsAt(TokenKind::Me)) {
      Fail(CompileErrorNumber::ExpectedIdentifier);
    }
    arrays.push_back(ParseReference());
  } while (Accept(TokenKind::Comma));
  statement->arrays = m_script.Keep(arrays);
  return statement;
}

}  // namespace hearthmake::vbscript
