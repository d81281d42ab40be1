#pragma once

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "vbscript/Errors.hpp"
#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript {

// The names that one scope of a source declares.
class Scope {
 public:
  // Error 1041 "Name redefined" at the offset when the scope has the name.
  void Declare(Symbol name, Offset offset) {
    if (!m_names.insert(name).second) throw CompileError(CompileErrorNumber::NameRedefined, offset);
  }
  // As Declare, but of procedures of one name the last one counts.
  void DeclareProcedure(Symbol name, Offset offset) {
    if (m_procedures.insert(name).second) Declare(name, offset);
  }
  void Clear() {
    m_names.clear();
    m_procedures.clear();
  }

 private:
  std::unordered_set<Symbol> m_names;
  std::unordered_set<Symbol> m_procedures;
};

// What a class has declared so far.
struct ClassScope {
  // The procedures of one property; each may stand once.
  struct Property {
    bool hasGet = false;
    bool hasLet = false;
    bool hasSet = false;
    std::size_t indexes = 0;  // arguments without the value of Let and Set
  };

  Scope names;  // of everything, a property once
  std::unordered_map<Symbol, Property> properties;
  bool hasDefault = false;
};

}  // namespace hearthmake::vbscript
