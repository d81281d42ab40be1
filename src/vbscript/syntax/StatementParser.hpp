#pragma once

#include <memory>
#include <vector>

#include "vbscript/syntax/ExpressionParser.hpp"
#include "vbscript/syntax/Scope.hpp"

namespace hearthmake::vbscript {

// Makes the tree of a whole source: statements, and in DeclarationParser.cpp what declares names.
class StatementParser : private ExpressionParser {
 public:
  StatementParser(Script& script, Symbols& symbols);

  // Everything up to the end of the source goes into the script.
  void ParseSource();
  // One expression and nothing else, as the only statement of the script.
  void ParseSourceAsExpression();

 private:
  // What encloses a statement most closely, as far as its end is concerned.
  enum class BlockKind : std::uint8_t { Body, If, Select, For, Do, While, With };
  // The loops around a statement within its procedure, and the procedure.
  struct Surroundings {
    BlockKind block = BlockKind::Body;
    int doLoops = 0;
    int forLoops = 0;
    // Single-line Ifs that are open: behind a statement, Else and End may stand without a colon.
    int singleLines = 0;
    bool isInProcedure = false;
    ProcedureKind procedure = ProcedureKind::Sub;
    std::vector<Symbol> forVariables;
  };
  class Enclosed;

  // ---- Blocks (StatementParser.cpp)
  void SkipSeparators();
  void RequireEndOfStatement();
  bool EndsBlock();
  std::vector<Statement*> ParseStatements();
  Block ParseBlock(BlockKind kind);
  void ExpectEnd(TokenKind word, CompileErrorNumber otherwise);
  Statement* ParseStatement();

  Statement* ParseIf();
  If::Branch ParseIfHead();
  void ParseSingleLine(std::vector<If::Branch>& branches, Block& otherwise);
  Block ParseSingleLineBlock();
  void ParseIfBlock(std::vector<If::Branch>& branches, Block& otherwise);
  Statement* ParseSelect();
  Select::Case ParseCaseValues();
  Statement* ParseFor();
  Statement* ParseForEach(Offset offset);
  Expression* ParseForVariable();
  Block ParseForBody(Expression* variable, Offset& nextOffset);
  Statement* ParseDo();
  Loop::Test ParseLoopTest(Expression*& condition);
  Statement* ParseWhile();
  Statement* ParseWith();
  Statement* ParseExit();
  Statement* ParseOnError();

  // ---- Assignments and calls
  Statement* ParseAssignmentOrCall();
  Statement* ParseBehindParentheses(Expression* callee, std::span<Expression*> arguments, Offset opening,
                                    Offset offset);
  Statement* ParseAssignment(Expression* target, Offset offset);
  Statement* ParseSet();
  Statement* ParseCall();
  Statement* MakeCallStatement(Expression* callee, std::span<Expression*> arguments, Offset offset);
  Statement* MakeCallStatement(Expression* call, Offset offset);
  Statement* ParseReDim();
  Statement* ParseErase();

  // ---- Declarations (DeclarationParser.cpp)
  Statement* ParseOptionExplicit(bool isFirst);
  Statement* ParseDim(Visibility visibility, Offset offset);
  Declarator ParseDeclarator();
  std::span<const std::int32_t> ParseFixedBounds();
  Const* ParseConst(Visibility visibility, Offset offset);
  Expression* ParseConstantValue();
  Statement* ParsePublicOrPrivate();
  Procedure* ParseProcedure(Visibility visibility, bool isDefault);
  ProcedureKind ParseProcedureKind();
  static bool IsFunctionLike(ProcedureKind kind);
  std::span<ParameterNode> ParseParameters();
  ParameterNode ParseParameter();
  void DeclareProcedure(const Procedure& procedure, Offset nameOffset);
  void DeclareMember(const Procedure& procedure, Offset nameOffset);
  void ParseProcedureBody(Procedure& procedure);
  Statement* ParseGlobalProcedure(Visibility visibility);
  bool IsAtPropertyDeclaration() const;
  bool IsDeclarationBehindDefault() const;
  void RequireGlobalLevel() const;
  Statement* ParseClass();
  struct ClassParts;
  void ParseMemberDeclaration(ClassParts& parts);
  bool IsFieldNamedDefault() const;
  void ParseFields(ClassParts& parts, Visibility visibility);
  bool IsInClass() const { return m_class != nullptr; }
  Scope& CurrentScope() {
    if (m_around.isInProcedure) return m_locals;
    return IsInClass() ? m_class->names : m_globals;
  }

  template <class Node>
  Node* MakeStatement(StatementKind kind, Offset offset) {
    Node* node = m_script.Make<Node>();
    node->kind = kind;
    node->offset = offset;
    return node;
  }

  Surroundings m_around;
  Scope m_globals;
  Scope m_locals;
  ClassScope* m_class = nullptr;
  Symbol m_initialize;
  Symbol m_terminate;
  bool m_hasStatements = false;
};

}  // namespace hearthmake::vbscript
