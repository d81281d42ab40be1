#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/Object.hpp"
#include "vbscript/machine/Program.hpp"
#include "vbscript/syntax/Symbols.hpp"

namespace hearthmake::vbscript {

// The global names of an engine: what scripts define, named objects with their members, intrinsics and
// constants, in that order of precedence. A name keeps its binding for ever, so that code may hold on to it
// and sees what the name stands for later.
class Globals {
 public:
  static constexpr std::size_t kMostVariables = std::size_t{1} << 20;

  explicit Globals(Symbols& symbols);
  Globals(const Globals&) = delete;
  Globals& operator=(const Globals&) = delete;
  ~Globals();

  // The binding as it is.
  Binding& At(Symbol symbol);
  // The same, after the members of named objects have been asked for a name that no script has defined.
  Binding& Resolve(Symbol symbol);

  // Makes the name a global variable if it is none yet; the value stays.
  Binding& DefineVariable(Symbol symbol);
  void DefineConstant(Symbol symbol, const automation::Variant& value);
  Function& DefineFunction(std::unique_ptr<Function> function);
  ScriptClass& DefineClass(std::shared_ptr<ScriptClass> scriptClass);
  Function& KeepFunction(std::unique_ptr<Function> function);

  bool AddObject(std::string_view name, const automation::Ref<automation::Object>& object, bool hasGlobals);

  // Of the variable in a slot.
  const std::string& NameOfVariable(std::size_t slot) const { return m_symbols.Utf8(m_variableNames[slot]); }
  automation::Variant* Variables() { return m_variables; }
  Symbols& Names() { return m_symbols; }
  // Gives up every value; see Engine::Reset.
  void ClearVariables();
  void Clear();

 private:
  Binding& Take(Symbol symbol, Binding::Kind kind);
  void AddIntrinsics();

  Symbols& m_symbols;
  std::deque<Binding> m_bindings;  // by symbol
  automation::Variant* m_variables;
  std::uint32_t m_variableCount = 0;
  std::vector<Symbol> m_variableNames;  // by slot
  std::vector<std::unique_ptr<Function>> m_functions;
  std::vector<std::shared_ptr<ScriptClass>> m_classes;
  std::vector<automation::Ref<automation::Object>> m_globalObjects;
};

}  // namespace hearthmake::vbscript
