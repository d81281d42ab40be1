#include "vbscript/Errors.hpp"
#include "vbscript/machine/Compiler.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

void Compiler::CompileBlock(Block block) {
  for (const Statement* statement : block) CompileStatement(*statement);
}

// Arrays that the body declares are there from its start.
void Compiler::CompileDims(const NameUse& use) {
  for (const Declarator* declarator : use.declared) {
    if (!declarator->isArray && m_mode != Mode::Text) continue;
    const std::size_t base = m_nextTemporary;
    Mark(declarator->offset);
    const Place place = Find(declarator->name);
    Operand variable = place.operand;
    if (place.kind != Place::Kind::Direct) {
      variable = AllocateTemporary();
      Emit(Op::NameReference, variable, BindingIndex(declarator->name), kNoOperand);
    }
    if (declarator->isArray) {
      ArrayShape shape{{}, !declarator->upperBounds.empty()};
      for (const std::int32_t upper : declarator->upperBounds) shape.bounds.push_back({0, upper + 1});
      m_code->shapes.push_back(std::move(shape));
      m_code->hasMarks = true;
      Emit(Op::MakeArray, variable, 0, static_cast<Operand>(m_code->shapes.size() - 1));
    }
    ResumeHere(LastMark());
    m_nextTemporary = base;
  }
}

void Compiler::CompileStatement(const Statement& statement) {
  const std::size_t base = m_nextTemporary;
  const std::size_t hidden = m_nextHidden;
  const auto simple = [&](auto compile) {
    Mark(statement.offset);
    const std::size_t mark = LastMark();
    compile();
    ResumeHere(mark);
  };
  switch (statement.kind) {
    case StatementKind::ReDim: simple([&] { CompileReDim(static_cast<const ReDim&>(statement)); }); break;
    case StatementKind::Erase:
      simple([&] {
        for (const Expression* array : static_cast<const Erase&>(statement).arrays) {
          const Operand variable = DirectVariable(*array);
          Emit(Op::Erase, variable != kNoOperand ? variable : CompileVariable(*array, kNoOperand));
          m_nextTemporary = base;
        }
      });
      break;
    case StatementKind::Assign:
      simple([&] { CompileAssign(static_cast<const Assign&>(statement), false); });
      break;
    case StatementKind::Set:
      simple([&] { CompileAssign(static_cast<const Assign&>(statement), true); });
      break;
    case StatementKind::Call:
      simple([&] {
        const Expression& call = *static_cast<const CallStatement&>(statement).call;
        if (call.kind == ExpressionKind::Call) {
          const auto& node = static_cast<const Call&>(call);
          CompileCall(*node.callee, node.arguments, call, false);
        } else {
          CompileCall(call, {}, call, false);
        }
      });
      break;
    case StatementKind::If: CompileIf(static_cast<const If&>(statement)); break;
    case StatementKind::Select: CompileSelect(static_cast<const Select&>(statement)); break;
    case StatementKind::For: CompileFor(static_cast<const For&>(statement)); break;
    case StatementKind::ForEach: CompileForEach(static_cast<const ForEach&>(statement)); break;
    case StatementKind::Loop: CompileLoop(static_cast<const Loop&>(statement)); break;
    case StatementKind::With: CompileWith(static_cast<const With&>(statement)); break;
    case StatementKind::Exit: CompileExit(static_cast<const Exit&>(statement)); break;
    case StatementKind::OnError:
      simple([&] { Emit(Op::OnError, static_cast<const OnError&>(statement).isResumeNext ? 1 : 0); });
      break;
    default: break;  // known before the first statement runs, or nothing to do
  }
  m_nextTemporary = base;
  m_nextHidden = hidden;
}

// ---- Assignments

// A variable that instructions can work on in its place.
Operand Compiler::DirectVariable(const Expression& expression) {
  if (expression.kind != ExpressionKind::Name) return kNoOperand;
  const Place place = Find(static_cast<const Name&>(expression).symbol);
  return place.kind == Place::Kind::Direct ? place.operand : kNoOperand;
}

Operand Compiler::ValueOrReady(const Expression* value, Operand ready, bool inTemporary) {
  if (value == nullptr) {
    if (!inTemporary || ready == m_nextTemporary) return ready;
    const Operand temporary = AllocateTemporary();
    Emit(Op::Copy, temporary, ready);
    return temporary;
  }
  return inTemporary ? CompileToTemporary(*value) : Compile(*value);
}

void Compiler::CompileAssign(const Assign& assign, bool isSet) {
  const Expression& target = *assign.target;
  switch (target.kind) {
    case ExpressionKind::Name:
      AssignName(static_cast<const Name&>(target), assign.value, kNoOperand, isSet);
      break;
    case ExpressionKind::Member:
    case ExpressionKind::WithMember: {
      const auto& member = static_cast<const Member&>(target);
      AssignMember(target, member.object, member.member, {}, assign.value, kNoOperand, isSet);
      break;
    }
    case ExpressionKind::Call:
      AssignElement(static_cast<const Call&>(target), assign.value, kNoOperand, isSet);
      break;
    default: EmitRaise(number::kIllegalAssignment, Symbol::None);
  }
}

void Compiler::Store(const Expression& target, Operand value, bool isSet) {
  switch (target.kind) {
    case ExpressionKind::Name: AssignName(static_cast<const Name&>(target), nullptr, value, isSet); break;
    case ExpressionKind::Member:
    case ExpressionKind::WithMember: {
      const auto& member = static_cast<const Member&>(target);
      AssignMember(target, member.object, member.member, {}, nullptr, value, isSet);
      break;
    }
    case ExpressionKind::Call: AssignElement(static_cast<const Call&>(target), nullptr, value, isSet); break;
    default: break;
  }
}

// target = target & …, which grows the text in its place. Joining is associative, so that all that is
// joined to the target comes first, and the target at one blow.
bool Compiler::CompileAppend(const Name& target, const Expression& value) {
  const Expression* node = &value;
  std::vector<const Expression*> joined;
  while (node->kind == ExpressionKind::Binary &&
         static_cast<const Binary&>(*node).op == BinaryOperator::Concatenate) {
    joined.push_back(static_cast<const Binary&>(*node).right);
    node = static_cast<const Binary&>(*node).left;
  }
  if (joined.empty() || node->kind != ExpressionKind::Name ||
      static_cast<const Name&>(*node).symbol != target.symbol)
    return false;
  const Place place = Find(target.symbol);
  for (const Expression* one : joined) {
    if (MayRunCode(*one, place.isLocal && !m_runsText ? target.symbol : Symbol::None)) return false;
  }
  const std::size_t base = m_nextTemporary;
  Operand text = Compile(*joined.back());
  for (std::size_t i = joined.size() - 1; i-- > 0;) {
    const Operand right = Compile(*joined[i]);
    m_nextTemporary = base;
    const Operand result = AllocateTemporary();
    Emit(Op::Concatenate, result, text, right);
    text = result;
  }
  Emit(Op::Append, place.operand, 0, text);
  return true;
}

void Compiler::AssignName(const Name& name, const Expression* value, Operand ready, bool isSet) {
  const Place place = Find(name.symbol);
  switch (place.kind) {
    case Place::Kind::Direct: {
      if (place.isArray) {
        ValueOrReady(value, ready, false);
        EmitRaise(number::kTypeMismatch, name.symbol);
        return;
      }
      if (isSet) {
        Emit(Op::Set, place.operand, ValueOrReady(value, ready, false));
        return;
      }
      if (value != nullptr && CompileAppend(name, *value)) return;
      // What may hold a reference can't be the target of an operator itself.
      const bool mayBeReference = place.operand < kBankSize && !place.isLocal;
      if (value != nullptr && !mayBeReference) {
        CompileInto(*value, place.operand);
      } else {
        Emit(Op::Let, place.operand, ValueOrReady(value, ready, false));
      }
      return;
    }
    case Place::Kind::Constant:
      ValueOrReady(value, ready, false);
      EmitRaise(number::kIllegalAssignment, name.symbol);
      return;
    case Place::Kind::Member: {
      const auto window = static_cast<Operand>(m_nextTemporary);
      ValueOrReady(value, ready, true);
      AllocateTemporary();
      Function* function = isSet ? place.member->set : place.member->let;
      if (function == nullptr) function = isSet ? nullptr : place.member->set;
      if (function == nullptr) {
        EmitRaise(place.member->method != nullptr ? number::kIllegalAssignment : number::kMemberNotFound,
                  name.symbol);
      } else {
        Emit(Op::PutOwn, window, 1, FunctionIndex(function));
      }
      return;
    }
    case Place::Kind::Named: {
      const Operand operand = ValueOrReady(value, ready, true);
      Emit(isSet ? Op::SetName : Op::LetName, operand, BindingIndex(name.symbol), place.operand);
      return;
    }
  }
}

void Compiler::AssignElement(const Call& target, const Expression* value, Operand ready, bool isSet) {
  const Expression& callee = *target.callee;
  const auto& arguments = target.arguments;
  if (callee.kind == ExpressionKind::Member || callee.kind == ExpressionKind::WithMember) {
    const auto& member = static_cast<const Member&>(callee);
    AssignMember(callee, member.object, member.member, arguments, value, ready, isSet);
    return;
  }
  Operand array = DirectVariable(callee);
  if (array == kNoOperand && callee.kind == ExpressionKind::Name) {
    const auto& name = static_cast<const Name&>(callee);
    const Place place = Find(name.symbol);
    if (place.kind == Place::Kind::Member) {
      const auto window = static_cast<Operand>(m_nextTemporary);
      CompileValues(arguments);
      ValueOrReady(value, ready, true);
      AllocateTemporary();
      Function* function = isSet ? place.member->set : place.member->let;
      if (function != nullptr) {
        Emit(Op::PutOwn, window, static_cast<Operand>(Limit(arguments.size() + 1)), FunctionIndex(function));
        return;
      }
      if (place.member->get == nullptr) {
        EmitRaise(number::kTypeMismatch, name.symbol);
        return;
      }
      m_nextTemporary = window;
    } else if (place.kind == Place::Kind::Constant ||
               (place.kind == Place::Kind::Named && (place.binding->kind == Binding::Kind::Intrinsic ||
                                                     place.binding->kind == Binding::Kind::Function ||
                                                     place.binding->kind == Binding::Kind::Machine))) {
      CompileValues(arguments);
      ValueOrReady(value, ready, true);
      EmitRaise(number::kIllegalAssignment, name.symbol);
      return;
    }
    array = CompileVariable(callee, kNoOperand);
  } else if (array == kNoOperand) {
    array = CompileVariable(callee, kNoOperand);
  }
  if (!isSet && arguments.size() == 1) {
    Operand index = Compile(*arguments[0]);
    if (value != nullptr) index = Protect(index, *arguments[0], *value);
    Emit(Op::SetElement, array, index, ValueOrReady(value, ready, false));
    return;
  }
  if (!isSet && arguments.size() == 2) {
    Operand first = Protect(Compile(*arguments[0]), *arguments[0], *arguments[1]);
    if (value != nullptr) first = Protect(first, *arguments[0], *value);
    Operand second = Compile(*arguments[1]);
    if (value != nullptr) second = Protect(second, *arguments[1], *value);
    const Operand stored = ValueOrReady(value, ready, false);
    Emit(Op::SetElement2, array, first, second);
    EmitWord(stored);
    return;
  }
  const auto first = static_cast<Operand>(m_nextTemporary);
  CompileValues(arguments);
  const Operand stored = ValueOrReady(value, ready, false);
  Emit(Op::SetElements, array, first, stored);
  EmitWord(static_cast<Operand>(arguments.size()), isSet ? 1 : 0, SiteIndex(Symbol::None, &target));
}

void Compiler::AssignMember(const Expression& node, const Expression* object, Symbol member,
                            std::span<Expression* const> arguments, const Expression* value, Operand ready,
                            bool isSet) {
  if (object == nullptr && m_with.empty()) {
    EmitRaise(505, member);
    return;
  }
  if (arguments.empty()) {
    Operand from = object == nullptr ? m_with.back() : Compile(*object);
    if (object != nullptr && value != nullptr) from = Protect(from, *object, *value);
    const Operand stored = ValueOrReady(value, ready, false);
    // The value comes into the callee's window.
    const Operand window = AllocateTemporary(3);
    Emit(isSet ? Op::SetMember : Op::LetMember, from, stored, SiteIndex(member, &node));
    EmitWord(window);
    return;
  }
  const auto window = static_cast<Operand>(m_nextTemporary);
  if (object == nullptr) {
    AllocateTemporary();
    Emit(Op::Copy, window, m_with.back());
  } else {
    CompileToTemporary(*object);
  }
  CompileValues(arguments);
  ValueOrReady(value, ready, true);
  AllocateTemporary();
  Emit(Op::PutMember, window, static_cast<Operand>(Limit(arguments.size() + 1)), SiteIndex(member, &node));
  EmitWord(isSet ? 1 : 0);
}

void Compiler::CompileReDim(const ReDim& statement) {
  for (const ReDim::Target& target : statement.targets) {
    const std::size_t base = m_nextTemporary;
    Operand array = DirectVariable(*target.array);
    const bool isMember = target.array->kind != ExpressionKind::Name;
    if (isMember) {
      // A member is taken, changed and put back.
      array = CompileToTemporary(*target.array);
    } else if (array == kNoOperand) {
      array = AllocateTemporary();
      const auto& name = static_cast<const Name&>(*target.array);
      Emit(Op::NameReference, array, BindingIndex(name.symbol), Find(name.symbol).operand);
    }
    const auto first = static_cast<Operand>(m_nextTemporary);
    CompileValues(target.upperBounds);
    Emit(Op::ReDim, array, first,
         static_cast<Operand>(Limit(target.upperBounds.size()) | (statement.isPreserving ? kPreserve : 0)));
    m_nextTemporary = base + (isMember ? 1 : 0);
    if (isMember) Store(*target.array, array, false);
    m_nextTemporary = base;
  }
}

// ---- Choices

// An error in a condition goes on in the block behind it, as in the original.
void Compiler::CompileIf(const If& statement) {
  Label end;
  for (const If::Branch& branch : statement.branches) {
    Label next;
    Mark(branch.offset);
    const std::size_t mark = LastMark();
    CompileCondition(*branch.condition, false, next);
    ResumeHere(mark);
    CompileBlock(branch.body);
    const bool isLast = &branch == &statement.branches.back() && statement.otherwise.empty();
    if (!isLast) EmitJump(Op::Jump, 0, end);
    Bind(next);
  }
  CompileBlock(statement.otherwise);
  Bind(end);
}

void Compiler::CompileSelect(const Select& statement) {
  Mark(statement.offset);
  const std::size_t mark = LastMark();
  const Operand selector = Hide(1);
  // What may change while the cases are tried is kept aside.
  Operand value = DirectVariable(*statement.selector);
  bool isCopied = value == kNoOperand;
  for (const Select::Case& one : statement.cases) {
    for (const Expression* each : one.values) isCopied = isCopied || MayRunCode(*each, Symbol::None);
  }
  if (isCopied) {
    const std::size_t base = m_nextTemporary;
    Emit(Op::Let, selector, Compile(*statement.selector));
    m_nextTemporary = base;
    value = selector;
  }
  std::vector<Label> bodies(statement.cases.size());
  Label otherwise;
  Label end;
  for (std::size_t i = 0; i < statement.cases.size(); ++i) {
    const Select::Case& one = statement.cases[i];
    Mark(one.offset);
    const std::size_t caseMark = LastMark();
    Label next;
    for (const Expression* each : one.values) {
      const std::size_t base = m_nextTemporary;
      const Operand compared = Compile(*each);
      const bool isLast = each == one.values.back();
      EmitCompareJump(BinaryOperator::Equal, !isLast, value, compared, isLast ? next : bodies[i]);
      m_nextTemporary = base;
    }
    if (i == 0) ResumeHere(mark);
    Bind(bodies[i]);
    ResumeHere(caseMark);
    if (isCopied) Emit(Op::Clear, selector);
    CompileBlock(one.body);
    EmitJump(Op::Jump, 0, end);
    Bind(next);
  }
  if (isCopied) Emit(Op::Clear, selector);
  if (statement.cases.empty()) ResumeHere(mark);
  CompileBlock(statement.otherwise);
  Bind(otherwise);
  Bind(end);
}

// ---- Loops

// An error in the head goes on in the body; Next finds the loop not initialised then.
void Compiler::CompileFor(const For& statement) {
  const std::size_t base = m_nextTemporary;
  Mark(statement.offset);
  const std::size_t mark = LastMark();
  const Operand state = Hide(2);
  const auto step = static_cast<Operand>(state + 1);
  Emit(Op::Clear, step);
  const Operand variable = DirectVariable(*statement.variable);
  const Operand start = CompileToTemporary(*statement.start);
  CompileInto(*statement.end, state);
  if (statement.step != nullptr) {
    CompileInto(*statement.step, step);
  } else {
    Emit(Op::Let, step, ConstantOperand(Variant::FromInteger(1)));
  }
  Label body;
  Label exit;
  Operand counter = variable;
  if (variable != kNoOperand) {
    Emit(Op::Let, variable, start);
  } else {
    Store(*statement.variable, start, false);
    m_nextTemporary = base;
    counter = CompileToTemporary(*statement.variable);
  }
  m_nextTemporary = base;
  Emit(Op::ForTest, counter, state);
  EmitWordJump(0, exit);
  Bind(body);
  ResumeHere(mark);

  Label* const outer = std::exchange(m_exitFor, &exit);
  CompileBlock(statement.body);
  m_exitFor = outer;

  Mark(statement.nextOffset);
  const std::size_t nextMark = LastMark();
  if (variable != kNoOperand) {
    Emit(Op::ForNext, variable, state);
    EmitWordJump(0, body);
  } else {
    const Operand current = CompileToTemporary(*statement.variable);
    Emit(Op::ForStep, current, current, step);
    Store(*statement.variable, current, false);
    m_nextTemporary = base;
    const Operand again = CompileToTemporary(*statement.variable);
    Emit(Op::ForTest, again, state);
    EmitWordJump(0, exit);
    m_nextTemporary = base;
    EmitJump(Op::Loop, 0, body);
  }
  ResumeHere(nextMark);
  Bind(exit);
  Emit(Op::Clear, state);
  Emit(Op::Clear, step);
}

void Compiler::CompileForEach(const ForEach& statement) {
  const std::size_t base = m_nextTemporary;
  Mark(statement.offset);
  const std::size_t mark = LastMark();
  const Operand state = Hide(2);
  Emit(Op::ForEachBegin, state, Compile(*statement.group));
  m_nextTemporary = base;
  Label next;
  Label exit;
  Label top;
  EmitJump(Op::Jump, 0, next);
  Bind(top);
  ResumeHere(mark);
  Label* const outer = std::exchange(m_exitFor, &exit);
  CompileBlock(statement.body);
  m_exitFor = outer;
  Mark(statement.nextOffset);
  const std::size_t nextMark = LastMark();
  Bind(next);
  const Operand item = AllocateTemporary();
  Emit(Op::ForEachNext, state, item);
  Label done;
  EmitWordJump(0, done);
  // Items are put into the variable as they are, objects too.
  const Operand variable = DirectVariable(*statement.variable);
  if (variable != kNoOperand) {
    Emit(Op::Copy, variable, item);
  } else {
    Store(*statement.variable, item, false);
  }
  m_nextTemporary = base;
  EmitJump(Op::Loop, 0, top);
  // A loop that comes to its end leaves its variable empty.
  Bind(done);
  if (variable != kNoOperand) {
    Emit(Op::Let, variable, ConstantOperand(Variant()));
  } else {
    Store(*statement.variable, ConstantOperand(Variant()), false);
  }
  m_nextTemporary = base;
  ResumeHere(nextMark);
  Bind(exit);
  Emit(Op::Clear, state);
  Emit(Op::Clear, static_cast<Operand>(state + 1));
}

void Compiler::CompileLoop(const Loop& statement) {
  Label top;
  Label exit;
  const bool exitsOn = statement.test == Loop::Test::Until;
  Bind(top);
  if (statement.isTestedFirst && statement.test != Loop::Test::None) {
    Mark(statement.offset);
    const std::size_t mark = LastMark();
    CompileCondition(*statement.condition, exitsOn, exit);
    ResumeHere(mark);
  }
  Label* const outer = m_exitDo;
  if (!statement.isWend) m_exitDo = &exit;
  CompileBlock(statement.body);
  m_exitDo = outer;
  Mark(statement.endOffset);
  const std::size_t mark = LastMark();
  if (!statement.isTestedFirst && statement.test != Loop::Test::None)
    CompileCondition(*statement.condition, exitsOn, exit);
  EmitJump(Op::Loop, 0, top);
  ResumeHere(mark);
  Bind(exit);
}

void Compiler::CompileWith(const With& statement) {
  const std::size_t base = m_nextTemporary;
  Mark(statement.offset);
  const std::size_t mark = LastMark();
  const Operand hidden = Hide(1);
  Emit(Op::WithObject, hidden, Compile(*statement.object), SiteIndex(Symbol::None, statement.object));
  m_nextTemporary = base;
  ResumeHere(mark);
  m_with.push_back(hidden);
  CompileBlock(statement.body);
  m_with.pop_back();
  Emit(Op::Clear, hidden);
}

void Compiler::CompileExit(const Exit& statement) {
  Mark(statement.offset);
  const std::size_t mark = LastMark();
  switch (statement.exit) {
    case ExitKind::Do:
      if (m_exitDo != nullptr) EmitJump(Op::Jump, 0, *m_exitDo);
      break;
    case ExitKind::For:
      if (m_exitFor != nullptr) EmitJump(Op::Jump, 0, *m_exitFor);
      break;
    default:
      Emit(Op::ClearError);
      if (m_exitProcedure != nullptr) EmitJump(Op::Jump, 0, *m_exitProcedure);
  }
  ResumeHere(mark);
}

}  // namespace hearthmake::vbscript
