#include "vbscript/machine/Compiler.hpp"
#include "vbscript/machine/Machine.hpp"
#include "vbscript/machine/Values.hpp"
#include "vbscript/syntax/Parser.hpp"

// Eval, Execute and ExecuteGlobal.

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

constexpr int kDeepestTexts = 100;

class DepthGuard {
 public:
  explicit DepthGuard(int& depth) : m_depth(depth) {
    if (m_depth == kDeepestTexts) RaiseRuntime(number::kOutOfStackSpace);
    ++m_depth;
  }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;
  ~DepthGuard() { --m_depth; }

 private:
  int& m_depth;
};

}  // namespace

void Machine::ExecuteGlobal(std::u16string_view text) {
  const DepthGuard guard(m_textDepth);
  m_context.budget.Charge(static_cast<std::int64_t>(text.size()));
  const std::shared_ptr<const Script> script = ParseScript(text, m_globals.Names());
  DeclareGlobals(script, m_globals);
  const std::unique_ptr<Code> code = CompileSource(script, false, m_globals);
  RunSource(*code);
}

Variant Machine::EvalGlobal(std::u16string_view text) {
  const DepthGuard guard(m_textDepth);
  m_context.budget.Charge(static_cast<std::int64_t>(text.size()));
  const std::shared_ptr<const Script> script = ParseExpression(text, m_globals.Names());
  const std::unique_ptr<Code> code = CompileSource(script, true, m_globals);
  return RunSource(*code);
}

// In a procedure the text sees the procedure's variables: they come as references. What it makes itself is
// kept by the procedure's frame for texts that follow.
Variant Machine::ExecuteText(std::u16string_view text, bool isExpression) {
  Frame& around = Top();
  if (around.code->function == nullptr) {
    if (isExpression) return EvalGlobal(text);
    ExecuteGlobal(text);
    return {};
  }
  const DepthGuard guard(m_textDepth);
  m_context.budget.Charge(static_cast<std::int64_t>(text.size()));
  const std::shared_ptr<const Script> script =
      isExpression ? ParseExpression(text, m_globals.Names()) : ParseScript(text, m_globals.Names());
  for (const Procedure* procedure : script->procedures)
    throw CompileError(CompileErrorNumber::SyntaxError, procedure->offset);
  for (const Class* node : script->classes) throw CompileError(CompileErrorNumber::SyntaxError, node->offset);
  std::vector<std::uint16_t> captured;
  const std::unique_ptr<Code> code = CompileText(script, isExpression, *around.code, captured, m_globals);
  if (around.dynamicNames == nullptr) {
    around.dynamicNames = new DynamicNames;
    around.ownsDynamicNames = true;
  }
  Variant result;
  Variant* const base = StackTop();
  if (m_stackEnd - base <= code->localCount + 16) RaiseRuntime(number::kOutOfStackSpace);
  for (std::size_t i = 0; i < code->localCount; ++i) base[i].OverwriteEmpty();
  for (std::size_t i = 0; i < captured.size(); ++i)
    base[i].OverwriteReference(&around.base[captured[i]].Target());
  DynamicNames* const names = around.dynamicNames;
  Push(*code, base, &result, around.me);
  Top().dynamicNames = names;
  return RunEntry(result);
}

}  // namespace hearthmake::vbscript
