#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Object.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/machine/Bytecode.hpp"
#include "vbscript/machine/Globals.hpp"

namespace hearthmake::vbscript {

class ScriptObject;
class ErrObject;

// What the Err object shows.
struct ErrorState {
  std::int32_t number = 0;
  std::string source;
  std::string description;
  std::string helpFile;
  std::int32_t helpContext = 0;
};

// Where an error happened: of the innermost statement that was running.
struct ErrorPlace {
  std::shared_ptr<const Script> script;
  Offset offset = 0;
};

// Variables that a text run by Execute has made in a procedure.
using DynamicNames = std::map<Symbol, automation::Variant>;

// One activation of a procedure. Plain data, so that the many that are never entered cost nothing.
struct Frame {
  const Code* code;
  const Instruction* pc;  // the last word of the instruction that calls, while it waits
  automation::Variant* base;
  automation::Variant* result;  // where the caller wants the result
  ScriptObject* me;
  DynamicNames* dynamicNames;
  bool ownsDynamicNames;
  bool isEntry;  // entered from C++
  bool resumesNext;
  bool discardsResult;
};

// Runs code. Every activation has a window of variants in one stack that never moves, so that references
// into it stay valid; parameters come first, then the result, locals, hidden ones (the state of loops) and
// temporaries. A caller computes arguments straight into the window of the callee. Nothing above the window
// of the innermost activation is counted, so that windows need not be cleared before they are used.
//
// Script procedures call each other without recursion in C++; only calls that come through C++ (a default
// member in an operator, Class_Initialize, a host's call of a script object) nest, and are limited.
class Machine {
 public:
  Machine(Globals& globals, Context& context);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  ~Machine();

  // Runs the statements of a source, or gives the value of an expression.
  automation::Variant RunSource(const Code& code);
  // Calls a procedure; arguments that are references receive what it leaves in parameters by reference.
  // With a missing result (Let, Set) Empty.
  automation::Variant CallFunction(Function& function, ScriptObject* me,
                                   std::span<automation::Variant> arguments);

  Globals& Names() { return m_globals; }
  Context& SharedContext() { return m_context; }
  ErrorState& Err() { return m_err; }
  // What the next error that is caught brings with it beside its text.
  void KeepHelp(std::string file, std::int32_t context) {
    m_helpFile = std::move(file);
    m_helpContext = context;
  }
  // Ends with the machine; for objects that may outlive it.
  std::weak_ptr<Machine*> Life() const { return m_life; }
  // The error that is on its way out, see Engine::LastError.
  const ErrorPlace& PlaceOfError() const { return m_place; }
  void ForgetPlace() { m_isPlaced = false; }
  bool IsRunning() const { return m_depth != 0; }

  // Parses, declares and runs a text at the global level.
  void ExecuteGlobal(std::u16string_view text);
  automation::Variant EvalGlobal(std::u16string_view text);
  automation::Ref<automation::Object> MakeObject(ScriptClass& scriptClass);
  // The objects of script classes lose their machine and their values; what lives on can't be called.
  void ReleaseObjects();

 private:
  friend class ScriptObject;

  static constexpr std::size_t kStackSlots = std::size_t{1} << 20;
  static constexpr std::size_t kDeepestCalls = 50'000;
  static constexpr std::size_t kNativeStackShare = 1 << 20;

  // Dispatch.cpp
  void Execute();

  // Frames.cpp
  automation::Variant* StackTop() const;
  const Code* Prepare(Function& function);
  void Enter(Function& function, automation::Variant* base, std::size_t count, automation::Variant* result,
             ScriptObject* me, std::uint16_t flags);
  void Push(const Code& code, automation::Variant* base, automation::Variant* result, ScriptObject* me);
  void ReleaseFrame(Frame& frame);
  void PassArguments(Function& function, automation::Variant* base, std::size_t count, std::uint16_t flags);
  automation::Variant RunEntry(automation::Variant& result);
  bool Unwind(const automation::Error& error, std::size_t entry, const Instruction*& pc);
  void UnwindAll(std::size_t entry);
  void ClearTemporaries(Frame& frame, std::size_t first);
  void KeepError(const automation::Error& error);
  automation::Error Worded(const automation::Error& error, const Instruction& instruction) const;
  std::string NameOf(const Code& code, Operand operand) const;
  Frame& Top() { return m_frames[m_depth - 1]; }

  // Members.cpp. Those that may end in a procedure of a script give it, to be entered; null when done.
  Function* GetMember(automation::Variant* window, automation::Variant& from, MemberSite& site);
  Function* CallMember(automation::Variant* window, std::size_t count, MemberSite& site, bool isWanted);
  Function* LetMember(automation::Variant& object, automation::Variant& value, MemberSite& site, bool isSet);
  Function* PutMember(automation::Variant* window, std::size_t count, MemberSite& site, bool isSet);
  Function* CallBinding(Binding& binding, automation::Variant* window, std::size_t count, bool isWanted);
  void CallValue(automation::Variant* window, std::size_t count, MemberSite& site, bool isWanted);
  void CallMachine(MachineFunction function, automation::Variant* window, std::size_t count);
  const ClassMember* FindClassMember(ScriptObject& object, MemberSite& site);
  automation::Object& ObjectOf(const automation::Variant& value, const MemberSite& site);
  std::int32_t MemberId(automation::Object& object, MemberSite& site);
  std::string Describe(const Expression* node) const;
  automation::Variant New(Binding& binding);
  void LoadName(automation::Variant& to, Binding& binding, Operand local);
  automation::Variant* FindVariable(Binding& binding, Operand local, bool mayMake);
  void StoreName(automation::Variant& value, Binding& binding, Operand local, bool isSet);
  automation::Variant InvokeForeign(automation::Object& object, std::int32_t id, automation::InvokeKind kind,
                                    std::span<automation::Variant> arguments);

  // What a value costs that is copied, compared or made whole: a loop of few instructions may do much.
  void ChargeForValue(const automation::Variant& value) {
    const automation::Variant& target = value.Target();
    if (target.Type() == automation::VariantType::String) {
      m_context.budget.Charge(static_cast<std::int64_t>(target.AsUtf16().size() / 16));
    } else if (target.Type() == automation::VariantType::Array) {
      m_context.budget.Charge(static_cast<std::int64_t>(target.AsArray()->Elements().size() / 4));
    }
  }
  // An array that is written and must be copied first.
  void ChargeForOwnCopy(const automation::Variant& array) {
    if (array.Type() == automation::VariantType::Array && array.AsArray()->IsShared()) ChargeForValue(array);
  }
  // A function may look at all of its argument or at one unit; those that walk it charge more themselves.
  void ChargeForArgument(const automation::Variant& value) {
    if (value.Type() == automation::VariantType::String)
      m_context.budget.Charge(static_cast<std::int64_t>(value.AsUtf16().size() / 16'384));
  }

  // Text.cpp
  automation::Variant ExecuteText(std::u16string_view text, bool isExpression);

  Globals& m_globals;
  Context& m_context;
  automation::Variant* m_stack;
  automation::Variant* m_stackEnd;
  Frame* m_frames;
  std::size_t m_depth = 0;
  const char* m_nativeBase = nullptr;
  int m_textDepth = 0;
  ErrorState m_err;
  std::string m_helpFile;
  std::int32_t m_helpContext = 0;
  std::shared_ptr<Machine*> m_life = std::make_shared<Machine*>(this);
  ErrorPlace m_place;
  bool m_isPlaced = false;
  std::int32_t m_placedNumber = 0;
  ScriptObject* m_objects = nullptr;  // all that are alive
};

}  // namespace hearthmake::vbscript
