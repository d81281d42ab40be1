#include "vbscript/machine/Globals.hpp"

#include <cstdlib>
#include <new>

#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

using automation::Object;
using automation::Ref;
using automation::Variant;

Globals::Globals(Symbols& symbols)
    : m_symbols(symbols),
      // Zeroed memory is Empty, and costs nothing until it is used.
      m_variables(static_cast<Variant*>(std::calloc(kMostVariables, sizeof(Variant)))) {
  if (m_variables == nullptr) throw std::bad_alloc();
  AddIntrinsics();
}

Globals::~Globals() {
  Clear();
  std::free(m_variables);
}

void Globals::AddIntrinsics() {
  const auto at = [&](const char* name) -> Binding& {
    return At(m_symbols.Intern(automation::Utf8ToUtf16(name)));
  };
  const auto add = [&](std::span<const Intrinsic> list) {
    for (const Intrinsic& intrinsic : list) {
      Binding& binding = at(intrinsic.name);
      binding.kind = Binding::Kind::Intrinsic;
      binding.intrinsic = &intrinsic;
    }
  };
  add(ConversionIntrinsics());
  add(MathIntrinsics());
  add(TextIntrinsics());
  add(ArrayIntrinsics());
  add(DateIntrinsics());
  add(FormatIntrinsics());
  add(HostIntrinsics());
  for (const IntrinsicConstant& constant : IntrinsicConstants()) {
    Binding& binding = at(constant.name);
    binding.kind = Binding::Kind::Constant;
    binding.value = constant.value;
  }
  constexpr std::pair<const char*, MachineFunction> kMachineFunctions[] = {
      {"Eval", MachineFunction::Eval},
      {"Execute", MachineFunction::Execute},
      {"ExecuteGlobal", MachineFunction::ExecuteGlobal},
      {"GetRef", MachineFunction::GetRef},
  };
  for (const auto& [name, function] : kMachineFunctions) {
    Binding& binding = at(name);
    binding.kind = Binding::Kind::Machine;
    binding.machine = function;
  }
}

Binding& Globals::At(Symbol symbol) {
  const auto index = static_cast<std::size_t>(symbol);
  while (m_bindings.size() <= index) {
    const std::size_t next = m_bindings.size();
    m_bindings.emplace_back().symbol = static_cast<Symbol>(next);
  }
  return m_bindings[index];
}

Binding& Globals::Resolve(Symbol symbol) {
  Binding& binding = At(symbol);
  if (binding.isScripts || binding.kind == Binding::Kind::Object ||
      binding.kind == Binding::Kind::GlobalMember)
    return binding;
  for (const Ref<Object>& object : m_globalObjects) {
    const auto member = object->FindMember(m_symbols.Utf8(symbol));
    if (!member) continue;
    binding.kind = Binding::Kind::GlobalMember;
    binding.value = Variant::FromObject(object);
    binding.member = *member;
    break;
  }
  return binding;
}

// A script's definition of a name. Procedures that took the name for a local one are compiled again.
Binding& Globals::Take(Symbol symbol, Binding::Kind kind) {
  Binding& binding = At(symbol);
  binding.kind = kind;
  binding.isScripts = true;
  binding.isArray = false;
  for (Function* function : binding.dependents) {
    if (function->code) function->outdated.push_back(std::move(function->code));
  }
  binding.dependents.clear();
  return binding;
}

Binding& Globals::DefineVariable(Symbol symbol) {
  Binding& known = At(symbol);
  if (known.kind == Binding::Kind::Variable) return known;
  if (m_variableCount == kMostVariables) RaiseRuntime(number::kOutOfMemory);
  Binding& binding = Take(symbol, Binding::Kind::Variable);
  binding.slot = m_variableCount++;
  m_variableNames.push_back(symbol);
  return binding;
}

void Globals::DefineConstant(Symbol symbol, const Variant& value) {
  Take(symbol, Binding::Kind::Constant).value = value;
}

Function& Globals::KeepFunction(std::unique_ptr<Function> function) {
  return *m_functions.emplace_back(std::move(function));
}

Function& Globals::DefineFunction(std::unique_ptr<Function> function) {
  Function& kept = KeepFunction(std::move(function));
  Take(kept.name, Binding::Kind::Function).function = &kept;
  return kept;
}

ScriptClass& Globals::DefineClass(std::shared_ptr<ScriptClass> scriptClass) {
  ScriptClass& kept = *m_classes.emplace_back(std::move(scriptClass));
  Take(kept.Name(), Binding::Kind::Class).scriptClass = &kept;
  return kept;
}

bool Globals::AddObject(std::string_view name, const Ref<Object>& object, bool hasGlobals) {
  if (name.empty()) return false;
  Binding& binding = At(m_symbols.Intern(automation::Utf8ToUtf16(name)));
  if (binding.isScripts || binding.kind == Binding::Kind::Object) return false;
  binding.kind = Binding::Kind::Object;
  binding.value = Variant::FromObject(object);
  if (hasGlobals && object) m_globalObjects.push_back(object);
  return true;
}

void Globals::ClearVariables() {
  // What ends may run code that sets variables again; those behind it are still to come.
  for (std::uint32_t i = 0; i < m_variableCount; ++i) m_variables[i] = Variant();
}

void Globals::Clear() {
  ClearVariables();
  for (Binding& binding : m_bindings) {
    if (binding.kind == Binding::Kind::Object || binding.kind == Binding::Kind::GlobalMember) {
      binding.value = Variant();
      binding.kind = Binding::Kind::None;
    }
  }
  m_globalObjects.clear();
}

}  // namespace hearthmake::vbscript
