#include "vbscript/Errors.hpp"
#include "vbscript/machine/Compiler.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

Function* Callable(const ClassMember& member) {
  return member.method != nullptr ? member.method : member.get;
}

}  // namespace

// Whether an argument is an element of something in a variable, which can be passed by reference.
bool Compiler::IsElementOfVariable(const Expression& expression) {
  const Expression* node = &expression;
  if (node->kind != ExpressionKind::Call) return false;
  while (node->kind == ExpressionKind::Call) {
    const auto& call = static_cast<const Call&>(*node);
    if (call.arguments.empty()) return false;
    for (const Expression* argument : call.arguments) {
      if (argument->kind == ExpressionKind::Omitted) return false;
    }
    node = call.callee;
  }
  if (node->kind != ExpressionKind::Name) return false;
  const Place place = Find(static_cast<const Name&>(*node).symbol);
  return place.kind == Place::Kind::Direct && !place.isResult;
}

std::size_t Compiler::CountElements(std::span<Expression* const> arguments) {
  std::size_t count = 0;
  for (const Expression* argument : arguments) count += IsElementOfVariable(*argument) ? 1 : 0;
  return count;
}

Operand Compiler::CompileVariable(const Expression& expression, Operand lock) {
  const std::size_t base = m_nextTemporary;
  if (expression.kind == ExpressionKind::Name) {
    const auto& name = static_cast<const Name&>(expression);
    const Place place = Find(name.symbol);
    if (place.kind == Place::Kind::Direct) {
      const Operand temporary = AllocateTemporary();
      Emit(Op::Reference, temporary, place.operand);
      return temporary;
    }
    if (place.kind == Place::Kind::Named &&
        (place.binding->kind == Binding::Kind::None || place.binding->kind == Binding::Kind::Variable)) {
      const Operand temporary = AllocateTemporary();
      Emit(Op::NameReference, temporary, BindingIndex(name.symbol), place.operand);
      return temporary;
    }
    return CompileToTemporary(expression);
  }
  if (!IsElementOfVariable(expression)) return CompileToTemporary(expression);
  const auto& call = static_cast<const Call&>(expression);
  const Operand result = AllocateTemporary();
  Operand array = DirectVariable(*call.callee);
  if (array == kNoOperand) array = CompileVariable(*call.callee, kNoOperand);
  const auto first = static_cast<Operand>(m_nextTemporary);
  CompileValues(call.arguments);
  Emit(Op::ElementReference, result, array, first);
  EmitWord(static_cast<Operand>(call.arguments.size()), lock);
  m_nextTemporary = base + 1;
  return result;
}

void Compiler::CompileArgument(const Expression& argument, Operand& lock, std::unordered_set<Symbol>& passed,
                               bool& isTwice) {
  if (argument.kind == ExpressionKind::Name) {
    const Symbol symbol = static_cast<const Name&>(argument).symbol;
    if (!passed.insert(symbol).second) isTwice = true;
    CompileVariable(argument, kNoOperand);
  } else if (IsElementOfVariable(argument)) {
    CompileVariable(argument, lock++);
  } else {
    CompileToTemporary(argument);
  }
}

// Puts the arguments into the next temporaries; gives what a call instruction wants to know of them.
std::uint16_t Compiler::CompileArguments(std::span<Expression* const> arguments, Operand locks) {
  std::unordered_set<Symbol> passed;
  bool isTwice = false;
  for (const Expression* argument : arguments) CompileArgument(*argument, locks, passed, isTwice);
  return static_cast<std::uint16_t>(Limit(arguments.size()) | (isTwice ? kVariablePassedTwice : 0));
}

void Compiler::ReleaseLocks(Operand locks, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) Emit(Op::Unlock, static_cast<Operand>(locks + i));
}

Operand Compiler::CompileCall(const Expression& callee, std::span<Expression* const> arguments,
                              const Expression& node, bool isWanted) {
  const std::size_t base = m_nextTemporary;
  if (callee.kind == ExpressionKind::Name) {
    const auto& name = static_cast<const Name&>(callee);
    const Place place = Find(name.symbol);
    if (place.kind != Place::Kind::Direct || place.isResult || !isWanted)
      return CompileNamedCall(name, arguments, isWanted);
    if (arguments.empty()) {
      // x() of a variable is error 13 as long as it holds no object with a default member.
      const Operand window = CompileToTemporary(callee);
      Emit(Op::CallValue, window, 0, SiteIndex(name.symbol, &node));
      return window;
    }
    return CompileElement(place.operand, static_cast<const Call&>(node));
  }
  const std::size_t lockCount = CountElements(arguments);
  const Operand locks = lockCount == 0 ? kNoOperand : AllocateTemporary(lockCount);
  Operand window = 0;
  Op op = Op::CallValue;
  std::uint16_t site = 0;
  if (callee.kind == ExpressionKind::Member || callee.kind == ExpressionKind::WithMember) {
    const auto& member = static_cast<const Member&>(callee);
    if (callee.kind == ExpressionKind::Member) {
      window = CompileToTemporary(*member.object);
    } else if (m_with.empty()) {
      EmitRaise(505, member.member);
      window = AllocateTemporary();
    } else {
      window = AllocateTemporary();
      Emit(Op::Copy, window, m_with.back());
    }
    op = Op::CallMember;
    site = SiteIndex(member.member, &callee);
  } else {
    window = CompileToTemporary(callee);
    site = SiteIndex(Symbol::None, &node);
  }
  std::uint16_t count = CompileArguments(arguments, locks);
  AllocateTemporary();  // so that a callee's window never lies outside of the frame
  if (!isWanted) count |= kNoResultWanted;
  Emit(op, window, count, site);
  ReleaseLocks(locks, lockCount);
  m_nextTemporary = base;
  if (lockCount != 0 && isWanted) {
    const Operand result = AllocateTemporary();
    Emit(Op::Copy, result, window);
    return result;
  }
  m_nextTemporary = base + 1;
  return window;
}

Operand Compiler::CompileNamedCall(const Name& name, std::span<Expression* const> arguments, bool isWanted) {
  const std::size_t base = m_nextTemporary;
  const Place place = Find(name.symbol);
  const bool isOwn = place.isResult && m_function != nullptr;
  if (place.kind == Place::Kind::Constant) {
    EmitRaise(number::kTypeMismatch, name.symbol);
    return AllocateTemporary();
  }
  if (place.kind == Place::Kind::Direct && !isOwn) {
    // A variable called as a procedure: the default member of an object.
    const Operand window = AllocateTemporary();
    Emit(Op::Copy, window, place.operand);
    const std::size_t lockCount = CountElements(arguments);
    const Operand locks = lockCount == 0 ? kNoOperand : AllocateTemporary(lockCount);
    const Operand callee = AllocateTemporary();
    Emit(Op::Copy, callee, window);
    const std::uint16_t count = CompileArguments(arguments, locks);
    Emit(Op::CallValue, callee, static_cast<Operand>(count | kNoResultWanted), SiteIndex(name.symbol, &name));
    ReleaseLocks(locks, lockCount);
    m_nextTemporary = base + 1;
    return window;
  }
  const Binding* binding = isOwn && m_owner == nullptr ? &m_globals.At(name.symbol) : place.binding;
  const Binding::Kind kind = binding != nullptr ? binding->kind : Binding::Kind::None;
  if (binding != nullptr && kind == Binding::Kind::Intrinsic) {
    const Operand window = AllocateTemporary(1);
    m_nextTemporary = base;
    CompileValues(arguments);
    Emit(Op::CallIntrinsic, window,
         static_cast<Operand>(Limit(arguments.size()) | (isWanted ? 0 : kNoResultWanted)),
         BindingIndex(name.symbol));
    m_nextTemporary = base + 1;
    return window;
  }
  if (binding != nullptr && kind == Binding::Kind::Machine) {
    const Operand window = AllocateTemporary(1);
    m_nextTemporary = base;
    CompileValues(arguments);
    AllocateTemporary();
    Emit(Op::CallMachine, window,
         static_cast<Operand>(Limit(arguments.size()) | (isWanted ? 0 : kNoResultWanted)),
         static_cast<Operand>(binding->machine));
    m_nextTemporary = base + 1;
    return window;
  }
  const std::size_t lockCount = CountElements(arguments);
  const Operand locks = lockCount == 0 ? kNoOperand : AllocateTemporary(lockCount);
  const auto window = static_cast<Operand>(m_nextTemporary);
  std::uint16_t count = CompileArguments(arguments, locks);
  AllocateTemporary();
  if (!isWanted) count |= kNoResultWanted;
  const ClassMember* member = isOwn && m_owner != nullptr ? m_owner->Find(name.symbol) : place.member;
  if (member != nullptr) {
    Function* function = Callable(*member);
    if (function == nullptr) {
      EmitRaise(number::kMemberNotFound, name.symbol);
    } else {
      Emit(Op::CallOwn, window, count, FunctionIndex(function));
    }
  } else {
    Emit(Op::Call, window, count, BindingIndex(name.symbol));
  }
  ReleaseLocks(locks, lockCount);
  m_nextTemporary = base;
  const Operand result = AllocateTemporary();
  if (lockCount != 0 && isWanted) Emit(Op::Copy, result, window);
  return lockCount != 0 ? result : window;
}

}  // namespace hearthmake::vbscript
