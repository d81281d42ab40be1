#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "vbscript/machine/Bytecode.hpp"
#include "vbscript/machine/Globals.hpp"
#include "vbscript/machine/NameUse.hpp"

namespace hearthmake::vbscript {

// Makes known what a source declares outside of procedures: procedures, classes, constants, variables.
void DeclareGlobals(const std::shared_ptr<const Script>& script, Globals& globals);

// Code of the statements outside of procedures, to be run once. Of an expression, its value is the result.
std::unique_ptr<Code> CompileSource(const std::shared_ptr<const Script>& script, bool isExpression,
                                    Globals& globals);
// The code of a procedure.
std::unique_ptr<Code> CompileFunction(Function& function, Globals& globals);
// Code of a text that Execute or Eval runs in a procedure. The names of the procedure's locals that the text
// uses become parameters by reference of the result; captured gets the slots that they stand for.
std::unique_ptr<Code> CompileText(const std::shared_ptr<const Script>& script, bool isExpression,
                                  const Code& around, std::vector<std::uint16_t>& captured, Globals& globals);

// Makes the code of one body; what the functions above work with.
//
// Expressions are compiled to operands: a variable or constant stands for itself, anything else is computed
// into a temporary. Temporaries are a stack; a statement begins and ends with none in use.
class Compiler {
 public:
  enum class Mode : std::uint8_t { Source, Procedure, Text };
  Compiler(Globals& globals, std::shared_ptr<const Script> script, ScriptClass* owner, Mode mode,
           bool hasLongJumps);

  std::unique_ptr<Code> Source(bool isExpression);
  std::unique_ptr<Code> Body(Function& function);
  std::unique_ptr<Code> Text(bool isExpression, const Code& around, std::vector<std::uint16_t>& captured);

  // A comparison jumps too far for its sixteen bits: once more with long jumps.
  struct JumpTooLong {};

 private:
  // What a name stands for where it is used.
  struct Place {
    enum class Kind : std::uint8_t { Direct, Constant, Member, Named };
    Kind kind = Kind::Named;
    Operand operand = kNoOperand;  // Direct; of Named the local that it is when nothing global is there
    bool isResult = false;         // the result variable of the function itself
    bool isLocal = false;          // Direct, and nothing outside of the procedure can reach it
    bool isArray = false;
    const ClassMember* member = nullptr;
    const automation::Variant* constant = nullptr;
    Binding* binding = nullptr;
  };
  struct Label {
    std::vector<std::size_t> uses;
    std::size_t position = kUnbound;
    static constexpr std::size_t kUnbound = static_cast<std::size_t>(-1);
  };
  struct Local {
    std::uint16_t slot = 0;
    bool isResult = false;
    bool isReference = false;  // may hold a reference: a parameter
    bool isWeak = false;       // used but never assigned: may turn out to be global
    bool isArray = false;
  };
  struct Target {
    Label* exitDo = nullptr;
    Label* exitFor = nullptr;
  };

  // Compiler.cpp: frames, names, emission
  void StartCode();
  void FinishCode(Op last);
  std::size_t Emit(Op op, Operand a = 0, Operand b = 0, Operand c = 0);
  std::size_t EmitWide(Op op, Operand a, std::size_t wide);
  void EmitWord(Operand a = 0, Operand b = 0, Operand c = 0) { Emit(Op::Jump, a, b, c); }
  void EmitJump(Op op, Operand a, Label& label);
  void EmitWordJump(Operand a, Label& label);
  void EmitCompareJump(BinaryOperator op, bool ifTrue, Operand left, Operand right, Label& label);
  void Bind(Label& label);
  Operand AllocateTemporary(std::size_t count = 1);
  Operand Hide(std::size_t count);
  bool IsTemporary(Operand operand) const { return operand >= m_code->localCount && operand < kBankSize; }
  void Mark(Offset offset);
  void ResumeHere(std::size_t mark);
  std::size_t LastMark() const { return m_code->marks.size() - 1; }
  std::uint16_t AddLocal(Symbol symbol, Local local);
  void SetUpLocals(const NameUse& use);
  std::uint16_t Limit(std::size_t index) const;
  Place Find(Symbol symbol);
  Operand ConstantOperand(const automation::Variant& value, Operand into = kNoOperand);
  std::size_t ConstantIndex(const automation::Variant& value);
  std::uint16_t BindingIndex(Symbol symbol);
  std::uint16_t SiteIndex(Symbol member, const Expression* node);
  std::uint16_t FunctionIndex(Function* function);
  automation::Variant LiteralValue(const Literal& literal) const;
  automation::Variant ConstantValue(const Expression& expression);
  void EmitRaise(std::int32_t number, Symbol about);

  // CompilerExpressions.cpp
  Operand Compile(const Expression& expression);
  // The value in the next temporary.
  Operand CompileToTemporary(const Expression& expression);
  void CompileInto(const Expression& expression, Operand variable);
  Operand CompileName(const Name& name);
  Operand CompileBinary(const Binary& binary, Operand target);
  Operand CompileUnary(const Unary& unary, Operand target);
  Operand CompileMember(const Expression& node, const Expression* object, Symbol member);
  Operand CompileElement(Operand array, const Call& call);
  void CompileCondition(const Expression& condition, bool jumpIf, Label& label);
  // A left operand must not change while the right one is computed.
  Operand Protect(Operand left, const Expression& leftNode, const Expression& right);
  bool MayRunCode(const Expression& expression, Symbol changing);
  static bool IsComputed(const Expression& expression);

  // CompilerCalls.cpp
  Operand CompileCall(const Expression& callee, std::span<Expression* const> arguments,
                      const Expression& node, bool isWanted);
  Operand CompileNamedCall(const Name& name, std::span<Expression* const> arguments, bool isWanted);
  std::uint16_t CompileArguments(std::span<Expression* const> arguments, Operand locks);
  void CompileArgument(const Expression& argument, Operand& lock, std::unordered_set<Symbol>& passed,
                       bool& isTwice);
  void CompileValues(std::span<Expression* const> arguments);
  bool IsElementOfVariable(const Expression& expression);
  // A temporary that refers to the variable or element, as far as it is one.
  Operand CompileVariable(const Expression& expression, Operand lock);
  std::size_t CountElements(std::span<Expression* const> arguments);
  void ReleaseLocks(Operand locks, std::size_t count);

  // CompilerStatements.cpp
  void CompileBlock(Block block);
  void CompileStatement(const Statement& statement);
  void CompileAssign(const Assign& assign, bool isSet);
  void AssignName(const Name& name, const Expression* value, Operand ready, bool isSet);
  void AssignElement(const Call& target, const Expression* value, Operand ready, bool isSet);
  void AssignMember(const Expression& node, const Expression* object, Symbol member,
                    std::span<Expression* const> arguments, const Expression* value, Operand ready,
                    bool isSet);
  // Stores what is in an operand already.
  void Store(const Expression& target, Operand value, bool isSet);
  bool CompileAppend(const Name& target, const Expression& value);
  Operand ValueOrReady(const Expression* value, Operand ready, bool inTemporary);
  void CompileIf(const If& statement);
  void CompileSelect(const Select& statement);
  void CompileFor(const For& statement);
  void CompileForEach(const ForEach& statement);
  void CompileLoop(const Loop& statement);
  void CompileWith(const With& statement);
  void CompileReDim(const ReDim& statement);
  void CompileExit(const Exit& statement);
  void CompileDims(const NameUse& use);
  Operand DirectVariable(const Expression& expression);

  Globals& m_globals;
  std::shared_ptr<const Script> m_script;
  ScriptClass* m_owner;
  Mode m_mode;
  bool m_hasLongJumps;
  bool m_runsText = false;
  Function* m_function = nullptr;

  std::unique_ptr<Code> m_first;  // the first part, when the source has several
  std::unique_ptr<Code>* m_tail = nullptr;
  std::unique_ptr<Code> m_code;
  std::unordered_map<Symbol, Local> m_locals;
  std::unordered_map<Symbol, automation::Variant> m_localConstants;
  std::size_t m_nextTemporary = 0;
  std::size_t m_nextHidden = 0;
  std::size_t m_hiddenBegin = 0;
  std::unordered_map<Binding*, std::uint16_t> m_bindingIndexes;
  std::map<std::pair<int, std::int64_t>, std::size_t> m_numberIndexes;
  std::unordered_map<std::u16string, std::size_t> m_textIndexes;
  std::vector<Operand> m_with;
  Label* m_exitDo = nullptr;
  Label* m_exitFor = nullptr;
  Label* m_exitProcedure = nullptr;
};

}  // namespace hearthmake::vbscript
