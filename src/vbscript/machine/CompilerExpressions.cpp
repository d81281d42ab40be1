#include "vbscript/Errors.hpp"
#include "vbscript/machine/Compiler.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

constexpr Op kBinaryOps[] = {
    Op::Power,       Op::Multiply,
    Op::Divide,      Op::IntegerDivide,
    Op::Modulo,      Op::Add,
    Op::Subtract,    Op::Concatenate,
    Op::Equal,       Op::NotEqual,
    Op::Less,        Op::Greater,
    Op::LessOrEqual, Op::GreaterOrEqual,
    Op::Is,          Op::And,
    Op::Or,          Op::Xor,
    Op::Eqv,         Op::Imp,
};

bool IsComparison(BinaryOperator op) {
  return op >= BinaryOperator::Equal && op <= BinaryOperator::GreaterOrEqual;
}

}  // namespace

// Whether the expression ends in an instruction that can write its result to any variable.
bool Compiler::IsComputed(const Expression& expression) {
  return expression.kind == ExpressionKind::Binary || expression.kind == ExpressionKind::Unary;
}

Operand Compiler::Compile(const Expression& expression) {
  switch (expression.kind) {
    case ExpressionKind::Literal:
      return ConstantOperand(LiteralValue(static_cast<const Literal&>(expression)));
    case ExpressionKind::Name: return CompileName(static_cast<const Name&>(expression));
    case ExpressionKind::Member: {
      const auto& member = static_cast<const Member&>(expression);
      return CompileMember(expression, member.object, member.member);
    }
    case ExpressionKind::WithMember:
      return CompileMember(expression, nullptr, static_cast<const Member&>(expression).member);
    case ExpressionKind::Call: {
      const auto& call = static_cast<const Call&>(expression);
      return CompileCall(*call.callee, call.arguments, expression, true);
    }
    case ExpressionKind::Me: {
      const Operand temporary = AllocateTemporary();
      Emit(Op::LoadMe, temporary);
      return temporary;
    }
    case ExpressionKind::New: {
      const Operand temporary = AllocateTemporary();
      Emit(Op::New, temporary, 0, BindingIndex(static_cast<const New&>(expression).className));
      return temporary;
    }
    case ExpressionKind::Unary: return CompileUnary(static_cast<const Unary&>(expression), kNoOperand);
    case ExpressionKind::Binary: return CompileBinary(static_cast<const Binary&>(expression), kNoOperand);
    case ExpressionKind::Parenthesized: return Compile(*static_cast<const Parenthesized&>(expression).inner);
    case ExpressionKind::Omitted: return ConstantOperand(Variant::Missing());
  }
  return kNoOperand;
}

Operand Compiler::CompileToTemporary(const Expression& expression) {
  const std::size_t wanted = m_nextTemporary;
  const Operand value = Compile(expression);
  if (value == wanted) {
    m_nextTemporary = wanted + 1;
    return value;
  }
  m_nextTemporary = wanted;
  const Operand temporary = AllocateTemporary();
  Emit(Op::Copy, temporary, value);
  return temporary;
}

void Compiler::CompileInto(const Expression& expression, Operand variable) {
  const Expression* inner = &expression;
  while (inner->kind == ExpressionKind::Parenthesized)
    inner = static_cast<const Parenthesized&>(*inner).inner;
  if (inner->kind == ExpressionKind::Binary) {
    CompileBinary(static_cast<const Binary&>(*inner), variable);
  } else if (inner->kind == ExpressionKind::Unary) {
    CompileUnary(static_cast<const Unary&>(*inner), variable);
  } else {
    const Operand value = Compile(*inner);
    if (value != variable) Emit(Op::Let, variable, value);
  }
}

Operand Compiler::CompileName(const Name& name) {
  const Place place = Find(name.symbol);
  switch (place.kind) {
    case Place::Kind::Direct: return place.operand;
    case Place::Kind::Constant: return ConstantOperand(*place.constant);
    case Place::Kind::Member: return CompileCall(name, {}, name, true);
    case Place::Kind::Named: break;
  }
  switch (place.binding->kind) {
    case Binding::Kind::Function:
    case Binding::Kind::Intrinsic:
    case Binding::Kind::Machine:
    case Binding::Kind::GlobalMember: return CompileCall(name, {}, name, true);
    default: break;
  }
  const Operand temporary = AllocateTemporary();
  Emit(Op::LoadName, temporary, BindingIndex(name.symbol), place.operand);
  return temporary;
}

// Whether computing the expression can run code that changes a variable; of the symbol only by passing it
// on, of anything (None) by any call.
bool Compiler::MayRunCode(const Expression& root, Symbol changing) {
  const Expression* expression = &root;
  while (expression != nullptr) {
    switch (expression->kind) {
      case ExpressionKind::Name: {
        const Place place = Find(static_cast<const Name&>(*expression).symbol);
        if (place.kind == Place::Kind::Member) return changing == Symbol::None;
        return place.kind == Place::Kind::Named && place.binding->kind != Binding::Kind::Intrinsic &&
               changing == Symbol::None;
      }
      case ExpressionKind::Member:
      case ExpressionKind::WithMember:
      case ExpressionKind::New:
        if (changing == Symbol::None) return true;
        expression = expression->kind == ExpressionKind::Member
                         ? static_cast<const Member&>(*expression).object
                         : nullptr;
        break;
      case ExpressionKind::Call: {
        const auto& call = static_cast<const Call&>(*expression);
        bool isHarmless = false;
        if (call.callee->kind == ExpressionKind::Name) {
          const Place place = Find(static_cast<const Name&>(*call.callee).symbol);
          isHarmless = place.kind == Place::Kind::Named
                           ? place.binding->kind == Binding::Kind::Intrinsic
                           : place.kind == Place::Kind::Direct && !place.isResult;
        }
        if (!isHarmless && changing == Symbol::None) return true;
        for (const Expression* argument : call.arguments) {
          if (!isHarmless && argument->kind == ExpressionKind::Name &&
              static_cast<const Name&>(*argument).symbol == changing)
            return true;
          if (MayRunCode(*argument, changing)) return true;
        }
        expression = isHarmless ? nullptr : call.callee;
        break;
      }
      case ExpressionKind::Unary: expression = static_cast<const Unary&>(*expression).operand; break;
      case ExpressionKind::Parenthesized:
        expression = static_cast<const Parenthesized&>(*expression).inner;
        break;
      case ExpressionKind::Binary: {
        const auto& binary = static_cast<const Binary&>(*expression);
        if (MayRunCode(*binary.right, changing)) return true;
        expression = binary.left;
        break;
      }
      default: return false;
    }
  }
  return false;
}

Operand Compiler::Protect(Operand left, const Expression& leftNode, const Expression& right) {
  if (left >= MakeOperand(Bank::Constants, 0) || IsTemporary(left)) return left;
  if (right.kind == ExpressionKind::Literal || right.kind == ExpressionKind::Name) {
    if (right.kind == ExpressionKind::Literal) return left;
    if (Find(static_cast<const Name&>(right).symbol).kind == Place::Kind::Direct) return left;
  }
  const Expression* inner = &leftNode;
  while (inner->kind == ExpressionKind::Parenthesized)
    inner = static_cast<const Parenthesized&>(*inner).inner;
  Symbol changing = Symbol::None;
  if (inner->kind == ExpressionKind::Name && !m_runsText) {
    const Symbol symbol = static_cast<const Name&>(*inner).symbol;
    if (Find(symbol).isLocal) changing = symbol;
  }
  if (!MayRunCode(right, changing)) return left;
  const Operand temporary = AllocateTemporary();
  Emit(Op::Copy, temporary, left);
  return temporary;
}

Operand Compiler::CompileBinary(const Binary& root, Operand target) {
  // Down the left side, then up again with the operators.
  std::vector<const Binary*> chain;
  const Expression* leftmost = &root;
  while (leftmost->kind == ExpressionKind::Binary) {
    chain.push_back(static_cast<const Binary*>(leftmost));
    leftmost = chain.back()->left;
  }
  const std::size_t base = m_nextTemporary;
  Operand left = Compile(*leftmost);
  const Expression* leftNode = leftmost;
  while (!chain.empty()) {
    const Binary& binary = *chain.back();
    chain.pop_back();
    left = Protect(left, *leftNode, *binary.right);
    leftNode = &binary;
    const Operand right = Compile(*binary.right);
    m_nextTemporary = base;
    const Operand result = chain.empty() && target != kNoOperand ? target : AllocateTemporary();
    const Variant* constant = right >= MakeOperand(Bank::Constants, 0) && right != kNoOperand
                                  ? &m_code->constants[right & (kBankSize - 1)]
                                  : nullptr;
    const bool isSmall =
        constant != nullptr && constant->Type() == VariantType::Integer && constant->AsLong() > -32768;
    if (isSmall && binary.op == BinaryOperator::Add) {
      Emit(Op::AddImmediate, result, left, static_cast<Operand>(constant->AsLong()));
    } else if (isSmall && binary.op == BinaryOperator::Subtract) {
      Emit(Op::AddImmediate, result, left, static_cast<Operand>(-constant->AsLong()));
    } else {
      Emit(kBinaryOps[static_cast<std::size_t>(binary.op)], result, left, right);
    }
    left = result;
  }
  return left;
}

Operand Compiler::CompileUnary(const Unary& unary, Operand target) {
  if (unary.op != UnaryOperator::Not && unary.operand->kind == ExpressionKind::Literal &&
      target == kNoOperand) {
    const Variant value = LiteralValue(static_cast<const Literal&>(*unary.operand));
    if (value.Type() == VariantType::Integer || value.Type() == VariantType::Long ||
        value.Type() == VariantType::Double)
      return ConstantOperand(unary.op == UnaryOperator::Negate ? Negate(value) : value);
  }
  const std::size_t base = m_nextTemporary;
  const Operand operand = Compile(*unary.operand);
  m_nextTemporary = base;
  const Operand result = target != kNoOperand ? target : AllocateTemporary();
  constexpr Op kOps[] = {Op::Negate, Op::Plus, Op::Not};
  Emit(kOps[static_cast<std::size_t>(unary.op)], result, operand);
  return result;
}

Operand Compiler::CompileMember(const Expression& node, const Expression* object, Symbol member) {
  const std::size_t base = m_nextTemporary;
  Operand from = kNoOperand;
  if (object == nullptr) {
    if (m_with.empty()) {
      EmitRaise(505, member);
      return AllocateTemporary();
    }
    from = m_with.back();
  } else {
    from = Compile(*object);
  }
  m_nextTemporary = base;
  // One more for the callee's window behind the object.
  const Operand window = AllocateTemporary(2);
  m_nextTemporary = base + 1;
  Emit(Op::GetMember, window, from, SiteIndex(member, &node));
  return window;
}

// array(…) where the array is a variable: its element, or the default member of an object in it.
Operand Compiler::CompileElement(Operand array, const Call& call) {
  const std::size_t base = m_nextTemporary;
  const auto& arguments = call.arguments;
  if (arguments.size() == 1 && arguments[0]->kind != ExpressionKind::Omitted) {
    const Operand index = Compile(*arguments[0]);
    m_nextTemporary = base;
    const Operand result = AllocateTemporary();
    Emit(Op::GetElement, result, array, index);
    return result;
  }
  if (arguments.size() == 2 && arguments[0]->kind != ExpressionKind::Omitted &&
      arguments[1]->kind != ExpressionKind::Omitted) {
    const Operand first = Protect(Compile(*arguments[0]), *arguments[0], *arguments[1]);
    const Operand second = Compile(*arguments[1]);
    m_nextTemporary = base;
    const Operand result = AllocateTemporary();
    Emit(Op::GetElement2, result, array, first);
    EmitWord(second);
    return result;
  }
  const Operand window = AllocateTemporary();
  const auto first = static_cast<Operand>(m_nextTemporary);
  CompileValues(arguments);
  m_nextTemporary = base + 1;
  Emit(Op::GetElements, window, array, first);
  EmitWord(static_cast<Operand>(arguments.size()), SiteIndex(Symbol::None, &call));
  return window;
}

void Compiler::CompileValues(std::span<Expression* const> arguments) {
  for (const Expression* argument : arguments) CompileToTemporary(*argument);
}

void Compiler::CompileCondition(const Expression& condition, bool jumpIf, Label& label) {
  const std::size_t base = m_nextTemporary;
  const Expression* inner = &condition;
  while (inner->kind == ExpressionKind::Parenthesized)
    inner = static_cast<const Parenthesized&>(*inner).inner;
  if (inner->kind == ExpressionKind::Binary && IsComparison(static_cast<const Binary&>(*inner).op)) {
    const auto& binary = static_cast<const Binary&>(*inner);
    const Operand left = Protect(Compile(*binary.left), *binary.left, *binary.right);
    const Operand right = Compile(*binary.right);
    EmitCompareJump(binary.op, jumpIf, left, right, label);
  } else {
    EmitJump(jumpIf ? Op::JumpIfTrue : Op::JumpIfFalse, Compile(*inner), label);
  }
  m_nextTemporary = base;
}

}  // namespace hearthmake::vbscript
