#pragma once

#include <unordered_set>
#include <vector>

#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript {

// How a procedure, or the statements of a source outside of procedures, use names. The compiler goes
// through a body once for this before it makes code, since a name's place depends on all of its uses.
struct NameUse {
  std::vector<const Declarator*> declared;  // by Dim
  std::vector<const Const*> constants;
  std::unordered_set<Symbol> assigned;  // targets of assignments and loops, and their elements
  std::unordered_set<Symbol> redimmed;  // which declares them
  std::unordered_set<Symbol> passed;    // to something that might change them
  std::vector<Symbol> used;             // every name, once
  std::unordered_set<Symbol> usedSet;
  bool runsText = false;        // calls Execute or Eval
  std::size_t hiddenSlots = 0;  // that nested loops and the like need at the same time

  // execute and eval are the symbols of those names.
  NameUse(Block body, Symbol execute, Symbol eval);

 private:
  void Use(Symbol symbol);
  void Walk(Block block, std::size_t depth);
  void WalkStatement(const Statement& statement, std::size_t depth);
  void WalkExpression(const Expression* expression);
  void WalkTarget(const Expression* target);
  void Hide(std::size_t depth) { hiddenSlots = depth > hiddenSlots ? depth : hiddenSlots; }

  Symbol m_execute;
  Symbol m_eval;
};

}  // namespace hearthmake::vbscript
