#include <vector>

#include "vbscript/machine/Compiler.hpp"
#include "vbscript/machine/Machine.hpp"
#include "vbscript/machine/ProcedureReference.hpp"
#include "vbscript/machine/ScriptObject.hpp"
#include "vbscript/machine/Values.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using automation::InvokeKind;
using automation::Object;
using automation::Ref;
using automation::Variant;
using automation::VariantType;

namespace {

// The object as one of a class of the scripts; null for one of the host. The cast is slow for what is none,
// so that a place of the program which has met objects of this interface is believed.
ScriptObject* OwnObject(Object& object, const MemberSite& site) {
  const bool isKnownForeign = site.knownInterface == &object.Declaration() && site.classMember == nullptr;
  return isKnownForeign ? nullptr : dynamic_cast<ScriptObject*>(&object);
}

// The window's temporaries are used up: what is left in them goes, the last one first.
void ClearWindow(Variant* window, std::size_t count) {
  for (std::size_t i = count; i-- > 0;) window[i] = Variant();
}

void Finish(Variant* window, std::size_t count, Variant&& result, bool isWanted) {
  ClearWindow(window, count);
  if (isWanted) window[0].OverwriteWith(result);
}

void Dereference(Variant* arguments, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (arguments[i].Type() != VariantType::ByReference) continue;
    Variant value = CopyOf(arguments[i]);
    arguments[i].OverwriteWith(value);
  }
}

Function* Getter(const ClassMember& member) { return member.method != nullptr ? member.method : member.get; }

}  // namespace

// "object.member", as far as the source names it.
std::string Machine::Describe(const Expression* node) const {
  if (node == nullptr) return {};
  switch (node->kind) {
    case ExpressionKind::Name: return m_globals.Names().Utf8(static_cast<const Name&>(*node).symbol);
    case ExpressionKind::Member: {
      const auto& member = static_cast<const Member&>(*node);
      const std::string object = Describe(member.object);
      const std::string& name = m_globals.Names().Utf8(member.member);
      return object.empty() ? name : object + "." + name;
    }
    case ExpressionKind::WithMember: return m_globals.Names().Utf8(static_cast<const Member&>(*node).member);
    case ExpressionKind::Call: return Describe(static_cast<const Call&>(*node).callee);
    case ExpressionKind::Parenthesized: return Describe(static_cast<const Parenthesized&>(*node).inner);
    case ExpressionKind::Me: return "Me";
    default: return {};
  }
}

Object& Machine::ObjectOf(const Variant& value, const MemberSite& site) {
  const Variant& target = value.Target();
  if (target.IsObject() && target.AsObject() != nullptr) return *target.AsObject();
  const Expression* object = site.node;
  if (object != nullptr && object->kind == ExpressionKind::Member)
    object = static_cast<const Member&>(*object).object;
  RaiseRuntime(target.IsObject() ? number::kObjectNotSet : number::kObjectRequired, Describe(object));
}

const ClassMember* Machine::FindClassMember(ScriptObject& object, MemberSite& site) {
  const ClassMember* member = object.Class().Find(site.member);
  const Function* function = m_depth == 0 ? nullptr : Top().code->function;
  // Private members can be reached through Me, but not those of another object of the class.
  const bool isInside = function != nullptr && function->owner == &object.Class() && site.node != nullptr &&
                        site.node->kind == ExpressionKind::Member &&
                        static_cast<const Member&>(*site.node).object->kind == ExpressionKind::Me;
  if (member == nullptr || object.m_machine != this ||
      (member->visibility == Visibility::Private && !isInside))
    RaiseRuntime(number::kMemberNotFound, Describe(site.node));
  site.knownInterface = &object.Declaration();
  site.classMember = member;
  return member;
}

std::int32_t Machine::MemberId(Object& object, MemberSite& site) {
  const automation::Interface* declaration = &object.Declaration();
  if (site.knownInterface == declaration && site.classMember == nullptr) return site.id;
  const auto id = object.FindMember(m_globals.Names().Utf8(site.member));
  if (!id) RaiseRuntime(number::kMemberNotFound, Describe(site.node));
  site.knownInterface = declaration;
  site.classMember = nullptr;
  site.id = *id;
  return *id;
}

Variant Machine::InvokeForeign(Object& object, std::int32_t id, InvokeKind kind,
                               std::span<Variant> arguments) {
  const Ref<Object> keep(&object);
  return object.Invoke(id, kind, arguments);
}

Function* Machine::GetMember(Variant* window, Variant& from, MemberSite& site) {
  Object& object = ObjectOf(from, site);
  const Ref<Object> keep(&object);
  if (auto* own = OwnObject(object, site)) {
    const ClassMember* member = FindClassMember(*own, site);
    if (!member->isField && !member->isConstant && Getter(*member) == nullptr)
      RaiseRuntime(number::kMemberNotFound, Describe(site.node));
    if (Function* function = Getter(*member)) {
      if (&from != window) {
        Variant copy(from.Target());
        window->OverwriteWith(copy);
      }
      return function;
    }
    Variant value = own->InvokeMember(*member, InvokeKind::Get, {});
    if (&from == window) *window = Variant();
    window->OverwriteWith(value);
    return nullptr;
  }
  Variant value = object.Invoke(MemberId(object, site), InvokeKind::Get, {});
  ChargeForValue(value);
  if (&from == window) *window = Variant();
  window->OverwriteWith(value);
  return nullptr;
}

Function* Machine::CallMember(Variant* window, std::size_t count, MemberSite& site, bool isWanted) {
  Object& object = ObjectOf(window[0], site);
  if (auto* own = OwnObject(object, site)) {
    const ClassMember* member = FindClassMember(*own, site);
    if (Function* function = Getter(*member)) {
      // A property without parameters, of which an element is meant.
      const bool isElement = member->method == nullptr && function->parameters.empty() && count != 0;
      if (!isElement) return function;
      Variant value = m_depth == 0 ? Variant() : CallFunction(*function, own, {});
      *window = Variant();
      window->OverwriteWith(value);
      CallValue(window, count, site, isWanted);
      return nullptr;
    }
    Dereference(window + 1, count);
    Variant result = own->InvokeMember(*member, InvokeKind::Get, {window + 1, count});
    Finish(window, count + 1, std::move(result), isWanted);
    return nullptr;
  }
  const std::int32_t id = MemberId(object, site);
  for (std::size_t i = 0; i <= count; ++i) ChargeForValue(window[i]);
  Variant result = object.Invoke(id, isWanted ? InvokeKind::Get : InvokeKind::Call, {window + 1, count});
  ChargeForValue(result);
  Finish(window, count + 1, std::move(result), isWanted);
  return nullptr;
}

// object.member = value. Gives the procedure to be called with the value.
Function* Machine::LetMember(Variant& from, Variant& value, MemberSite& site, bool isSet) {
  Object& object = ObjectOf(from, site);
  const Ref<Object> keep(&object);
  if (isSet && !value.Target().IsObject()) RaiseRuntime(number::kObjectRequired, Describe(site.node));
  if (auto* own = OwnObject(object, site)) {
    const ClassMember* member = FindClassMember(*own, site);
    if (member->isField) {
      Variant& field = own->Fields()[member->slot];
      if (isSet) {
        SetVariable(field, value);
      } else {
        LetVariable(field, value, false);
      }
      return nullptr;
    }
    Function* function = isSet ? member->set : member->let;
    if (function == nullptr && !isSet && member->set != nullptr && value.Target().IsObject())
      function = member->set;
    if (function == nullptr && isSet) function = member->let;
    if (function == nullptr) RaiseRuntime(number::kMemberNotFound, Describe(site.node));
    return function;
  }
  Variant argument = CopyOf(value);
  object.Invoke(MemberId(object, site), isSet ? InvokeKind::Set : InvokeKind::Let, {&argument, 1});
  return nullptr;
}

Function* Machine::PutMember(Variant* window, std::size_t count, MemberSite& site, bool isSet) {
  Object& object = ObjectOf(window[0], site);
  const InvokeKind kind = isSet ? InvokeKind::Set : InvokeKind::Let;
  if (isSet && !window[count].Target().IsObject()) RaiseRuntime(number::kObjectRequired, Describe(site.node));
  if (auto* own = OwnObject(object, site)) {
    const ClassMember* member = FindClassMember(*own, site);
    Function* function = isSet ? member->set : member->let;
    if (function != nullptr) return function;
    if (member->isField) {
      own->InvokeMember(*member, kind, {window + 1, count});
    } else if (member->get != nullptr && member->get->parameters.empty()) {
      // The property gives an object or array of which an element is set.
      Variant value = CallFunction(*member->get, own, {});
      if (!value.IsObject() || value.AsObject() == nullptr)
        RaiseRuntime(number::kMemberNotFound, Describe(site.node));
      value.AsObject()->Invoke(automation::kDefaultMember, kind, {window + 1, count});
    } else {
      RaiseRuntime(number::kMemberNotFound, Describe(site.node));
    }
  } else {
    for (std::size_t i = 1; i <= count; ++i) ChargeForValue(window[i]);
    object.Invoke(MemberId(object, site), kind, {window + 1, count});
  }
  ClearWindow(window, count + 1);
  return nullptr;
}

// value(arguments), where the value stands in the window: an element or the default member.
void Machine::CallValue(Variant* window, std::size_t count, MemberSite& site, bool isWanted) {
  Variant& callee = window[0].Target();
  Variant result;
  if (callee.Type() == VariantType::Array) ResolveIndices({window + 1, count});
  if (callee.Type() == VariantType::Array) {
    result = CopyOf(Element(*callee.AsArray(), {window + 1, count}));
  } else if (callee.IsObject()) {
    if (callee.AsObject() == nullptr) RaiseRuntime(number::kObjectNotSet, Describe(site.node));
    const Variant keep(callee);
    result = keep.AsObject()->Invoke(automation::kDefaultMember,
                                     isWanted ? InvokeKind::Get : InvokeKind::Call, {window + 1, count});
  } else {
    RaiseRuntime(number::kTypeMismatch, Describe(site.node));
  }
  Finish(window, count + 1, std::move(result), isWanted);
}

// A call of a global name that is no procedure of a script, or was none when the call was compiled.
Function* Machine::CallBinding(Binding& known, Variant* window, std::size_t count, bool isWanted) {
  Binding& binding = m_globals.Resolve(known.symbol);
  const std::string& name = m_globals.Names().Utf8(known.symbol);
  Variant result;
  switch (binding.kind) {
    case Binding::Kind::Function: return binding.function;
    case Binding::Kind::Intrinsic: {
      const Intrinsic& intrinsic = *binding.intrinsic;
      if (count < intrinsic.minimumArguments ||
          (count > intrinsic.maximumArguments && intrinsic.maximumArguments != kAnyNumberOfArguments))
        RaiseRuntime(number::kWrongNumberOfArguments, name);
      Dereference(window, count);
      result = intrinsic.call(m_context, {window, count});
      break;
    }
    case Binding::Kind::GlobalMember:
      result = binding.value.AsObject()->Invoke(binding.member, isWanted ? InvokeKind::Get : InvokeKind::Call,
                                                {window, count});
      break;
    case Binding::Kind::Machine:
      Dereference(window, count);
      CallMachine(binding.machine, window, count);
      return nullptr;
    case Binding::Kind::Class:
    case Binding::Kind::Constant: RaiseRuntime(number::kTypeMismatch, name);
    default: {
      Variant* variable = nullptr;
      const Variant keep = binding.kind == Binding::Kind::Object ? binding.value : Variant();
      if (binding.kind != Binding::Kind::Object) {
        variable = FindVariable(binding, kNoOperand, false);
        const bool isExplicit = m_depth != 0 && Top().code->script->hasOptionExplicit;
        if (variable == nullptr)
          RaiseRuntime(isExplicit ? number::kVariableUndefined : number::kTypeMismatch, name);
      }
      const Variant callee = variable != nullptr ? CopyOf(*variable) : keep;
      Dereference(window, count);
      if (callee.Type() == VariantType::Array) {
        result = CopyOf(Element(*callee.AsArray(), {window, count}));
      } else if (callee.IsObject() && callee.AsObject() != nullptr) {
        result = callee.AsObject()->Invoke(automation::kDefaultMember,
                                           isWanted ? InvokeKind::Get : InvokeKind::Call, {window, count});
      } else {
        RaiseRuntime(number::kTypeMismatch, name);
      }
    }
  }
  Finish(window, count, std::move(result), isWanted);
  return nullptr;
}

void Machine::CallMachine(MachineFunction function, Variant* window, std::size_t count) {
  if (count != 1 && !(function == MachineFunction::GetRef && count == 1))
    RaiseRuntime(number::kWrongNumberOfArguments);
  Variant result;
  const Variant argument = std::move(window[0]);
  if (function == MachineFunction::GetRef) {
    const Symbol symbol = m_globals.Names().Find(ToText16(argument));
    const Binding* binding = symbol == Symbol::None ? nullptr : &m_globals.At(symbol);
    if (binding == nullptr || binding->kind != Binding::Kind::Function)
      RaiseRuntime(number::kInvalidProcedureCall);
    result = Variant::FromObject(Ref<Object>(new ProcedureReference(*this, *binding->function)));
  } else if (function == MachineFunction::Eval && argument.Type() != VariantType::String) {
    result = CopyOf(argument);  // only texts are expressions
  } else {
    const std::u16string text = ToText16(argument);
    if (function == MachineFunction::ExecuteGlobal) {
      ExecuteGlobal(text);
    } else {
      result = ExecuteText(text, function == MachineFunction::Eval);
    }
  }
  window[0].OverwriteWith(result);
}

Variant Machine::New(Binding& binding) {
  if (binding.kind == Binding::Kind::Class) return Variant::FromObject(MakeObject(*binding.scriptClass));
  if (m_globals.Names().Find(u"RegExp") == binding.symbol)
    return Variant::FromObject(CreateRegExp(m_context));
  RaiseRuntime(number::kClassNotDefined, m_globals.Names().Utf8(binding.symbol));
}

Ref<Object> Machine::MakeObject(ScriptClass& scriptClass) {
  const Ref<ScriptObject> object(new ScriptObject(*this, scriptClass));
  if (scriptClass.initialize != nullptr) CallFunction(*scriptClass.initialize, object.Get(), {});
  return object;
}

// ---- Names that only the running program can resolve

Variant* Machine::FindVariable(Binding& binding, Operand local, bool mayMake) {
  if (m_depth != 0) {
    Frame& frame = Top();
    if (frame.code->hasDynamicNames) {
      const auto& names = frame.code->localNames;
      for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == binding.symbol) return &frame.base[i].Target();
      }
      if (frame.dynamicNames != nullptr) {
        const auto found = frame.dynamicNames->find(binding.symbol);
        if (found != frame.dynamicNames->end()) return &found->second;
      }
    }
    if (binding.kind == Binding::Kind::Variable) return m_globals.Variables() + binding.slot;
    if (local != kNoOperand) return &frame.base[local].Target();
    if (!mayMake || binding.kind != Binding::Kind::None) return nullptr;
    if (frame.code->hasDynamicNames && frame.dynamicNames != nullptr)
      return &(*frame.dynamicNames)[binding.symbol];
  }
  if (binding.kind == Binding::Kind::Variable) return m_globals.Variables() + binding.slot;
  if (!mayMake || binding.kind != Binding::Kind::None) return nullptr;
  return m_globals.Variables() + m_globals.DefineVariable(binding.symbol).slot;
}

void Machine::LoadName(Variant& to, Binding& known, Operand local) {
  Binding& binding = m_globals.Resolve(known.symbol);
  const bool isExplicit = Top().code->script->hasOptionExplicit;
  Variant value;
  switch (binding.kind) {
    case Binding::Kind::Variable:
    case Binding::Kind::None: {
      const Variant* variable = FindVariable(binding, local, !isExplicit);
      if (variable == nullptr)
        RaiseRuntime(number::kVariableUndefined, m_globals.Names().Utf8(binding.symbol));
      value = CopyOf(*variable);
      break;
    }
    case Binding::Kind::Constant:
    case Binding::Kind::Object: value = binding.value; break;
    case Binding::Kind::Function: value = CallFunction(*binding.function, nullptr, {}); break;
    case Binding::Kind::Class: RaiseRuntime(number::kTypeMismatch, m_globals.Names().Utf8(binding.symbol));
    default: {
      // As a call without arguments; the window is the place itself.
      CallBinding(binding, &to, 0, true);
      return;
    }
  }
  to.OverwriteWith(value);
}

void Machine::StoreName(Variant& value, Binding& known, Operand local, bool isSet) {
  Binding& binding = m_globals.Resolve(known.symbol);
  const std::string& name = m_globals.Names().Utf8(binding.symbol);
  if (binding.kind == Binding::Kind::GlobalMember) {
    Variant argument = CopyOf(value);
    binding.value.AsObject()->Invoke(binding.member, isSet ? InvokeKind::Set : InvokeKind::Let,
                                     {&argument, 1});
    return;
  }
  const bool isExplicit = Top().code->script->hasOptionExplicit;
  Variant* variable = FindVariable(binding, local, !isExplicit);
  if (variable == nullptr && binding.kind == Binding::Kind::Object && !isSet &&
      binding.value.AsObject() != nullptr) {
    Variant argument = CopyOf(value);
    binding.value.AsObject()->Invoke(automation::kDefaultMember, InvokeKind::Let, {&argument, 1});
    return;
  }
  if (variable == nullptr)
    RaiseRuntime(
        binding.kind == Binding::Kind::None ? number::kVariableUndefined : number::kIllegalAssignment, name);
  if (isSet) {
    SetVariable(*variable, value);
  } else {
    LetVariable(*variable, value, false);
  }
}

}  // namespace hearthmake::vbscript
