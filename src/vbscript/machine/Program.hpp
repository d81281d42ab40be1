#pragma once

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "automation/Interface.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/machine/Bytecode.hpp"

namespace hearthmake::vbscript {

struct FunctionParameter {
  Symbol name;
  bool isByValue;
  // Never written in the procedure, nor passed on by reference: whether it gets the caller's variable or
  // its value can't be seen then.
  bool isOnlyRead;
};

// A procedure of a script. Its code is made when it is called first, when the globals are known that it may
// refer to, and again when a name that it took for its own becomes global.
struct Function {
  Symbol name = Symbol::None;
  ProcedureKind kind = ProcedureKind::Sub;
  Visibility visibility = Visibility::Public;
  const Procedure* node = nullptr;
  std::shared_ptr<const Script> script;
  ScriptClass* owner = nullptr;
  std::vector<FunctionParameter> parameters;
  std::unique_ptr<Code> code;
  std::vector<std::unique_ptr<Code>> outdated;  // may still run
};

// What a global name stands for.
struct Binding {
  enum class Kind : std::uint8_t {
    None,
    Variable,
    Constant,
    Function,
    Class,
    Object,        // a named object
    GlobalMember,  // member of a named object
    Intrinsic,
    Machine,
  };
  Kind kind = Kind::None;
  bool isScripts = false;  // made by a script: nothing else may take its place
  bool isArray = false;    // a variable that was declared with parentheses
  MachineFunction machine = MachineFunction::Eval;
  Symbol symbol = Symbol::None;
  std::uint32_t slot = 0;   // of a variable
  std::int32_t member = 0;  // of a GlobalMember
  Function* function = nullptr;
  ScriptClass* scriptClass = nullptr;
  const Intrinsic* intrinsic = nullptr;
  automation::Variant value;          // Constant, Object, and the object of a GlobalMember
  std::vector<Function*> dependents;  // procedures that took the name for their own
};

// A member of a script class: one name with all that stands behind it.
struct ClassMember {
  Symbol name = Symbol::None;
  std::int32_t id = 0;  // for late-bound calls from outside, from 1
  bool isField = false;
  bool isConstant = false;
  bool isArray = false;
  Visibility visibility = Visibility::Public;
  std::uint16_t slot = 0;      // of a field
  automation::Variant value;   // of a constant
  ArrayShape shape;            // of an array
  Function* method = nullptr;  // Sub or Function
  Function* get = nullptr;
  Function* let = nullptr;
  Function* set = nullptr;
};

// A class of a script. Its interface gives objects their type name and is what member sites know it by.
class ScriptClass : public std::enable_shared_from_this<ScriptClass> {
 public:
  ScriptClass(Symbol symbol, const std::string& name) : m_symbol(symbol), m_interface(name, name, "", "") {}

  Symbol Name() const { return m_symbol; }
  const automation::Interface& Declaration() const { return m_interface; }

  ClassMember& Add(Symbol name) {
    const auto [entry, isNew] = m_byName.try_emplace(name, m_members.size());
    if (isNew) {
      ClassMember& member = m_members.emplace_back();
      member.name = name;
      member.id = static_cast<std::int32_t>(m_members.size());
    }
    return m_members[entry->second];
  }
  const ClassMember* Find(Symbol name) const {
    const auto entry = m_byName.find(name);
    return entry == m_byName.end() ? nullptr : &m_members[entry->second];
  }
  std::deque<ClassMember>& Members() { return m_members; }
  const std::deque<ClassMember>& Members() const { return m_members; }

  std::uint16_t fieldCount = 0;
  std::vector<const ClassMember*> arrayFields;
  const ClassMember* defaultMember = nullptr;
  Function* initialize = nullptr;
  Function* terminate = nullptr;

 private:
  Symbol m_symbol;
  automation::Interface m_interface;
  std::deque<ClassMember> m_members;
  std::unordered_map<Symbol, std::size_t> m_byName;
};

}  // namespace hearthmake::vbscript
