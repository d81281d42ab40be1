#include "vbscript/machine/Compiler.hpp"

#include <bit>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

// A part of a source is closed when one of its tables gets near to what sixteen bits can count.
constexpr std::size_t kPartFull = 30'000;

[[noreturn]] void RaiseTooBig() {
  automation::Raise(number::kOutOfMemory, kRuntimeErrorSource,
                    "Out of memory: a procedure or statement is too large");
}

std::unique_ptr<Function> MakeFunction(const Procedure& node, const std::shared_ptr<const Script>& script,
                                       ScriptClass* owner, Globals& globals) {
  auto function = std::make_unique<Function>();
  function->name = node.name;
  function->kind = node.procedure;
  function->visibility = node.visibility;
  function->node = &node;
  function->script = script;
  function->owner = owner;
  const NameUse use(node.body, globals.Names().Intern(u"Execute"), globals.Names().Intern(u"Eval"));
  for (const ParameterNode& parameter : node.parameters) {
    const bool isOnlyRead =
        !use.runsText && !use.assigned.contains(parameter.name) && !use.passed.contains(parameter.name);
    function->parameters.push_back({parameter.name, parameter.isByValue, isOnlyRead});
  }
  return function;
}

Variant ValueOfLiteral(const Literal& literal) {
  switch (literal.type) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Integer: return Variant::FromInteger(static_cast<std::int16_t>(literal.whole));
    case VariantType::Long: return Variant::FromLong(literal.whole);
    case VariantType::Boolean: return Variant::FromBoolean(literal.whole != 0);
    case VariantType::Double: return Variant::FromDouble(literal.number);
    case VariantType::Date: return Variant::FromDate(literal.number);
    case VariantType::String: return Variant::FromUtf16(literal.text);
    case VariantType::Object: return Variant::FromObject(nullptr);
    default: return {};
  }
}

// The value of a constant expression; lookUp gives the constant of a name, or null.
template <class LookUp>
Variant EvaluateConstant(const Expression& expression, LookUp lookUp) {
  switch (expression.kind) {
    case ExpressionKind::Literal: return ValueOfLiteral(static_cast<const Literal&>(expression));
    case ExpressionKind::Parenthesized:
      return EvaluateConstant(*static_cast<const Parenthesized&>(expression).inner, lookUp);
    case ExpressionKind::Unary: {
      const auto& unary = static_cast<const Unary&>(expression);
      const Variant operand = EvaluateConstant(*unary.operand, lookUp);
      if (unary.op == UnaryOperator::Negate) return Negate(operand);
      return unary.op == UnaryOperator::Not ? Not(operand) : Plus(operand);
    }
    case ExpressionKind::Name: {
      const Variant* value = lookUp(static_cast<const Name&>(expression).symbol);
      if (value != nullptr) return *value;
      break;
    }
    default: break;
  }
  throw CompileError(CompileErrorNumber::ExpectedLiteralConstant, expression.offset);
}

ArrayShape ShapeOf(const Declarator& declarator) {
  ArrayShape shape{{}, !declarator.upperBounds.empty()};
  for (const std::int32_t upper : declarator.upperBounds) shape.bounds.push_back({0, upper + 1});
  return shape;
}

void DeclareClass(const Class& node, const std::shared_ptr<const Script>& script, Globals& globals) {
  auto made = std::make_shared<ScriptClass>(node.name, globals.Names().Utf8(node.name));
  for (const Class::Field& field : node.fields) {
    ClassMember& member = made->Add(field.declarator.name);
    member.isField = true;
    member.visibility = field.visibility;
    if (made->fieldCount == kBankSize) RaiseTooBig();
    member.slot = made->fieldCount++;
    if (field.declarator.isArray) {
      member.isArray = true;
      member.shape = ShapeOf(field.declarator);
      made->arrayFields.push_back(&member);
    }
  }
  for (const Const* constants : node.constants) {
    for (const Const::Constant& constant : constants->constants) {
      ClassMember& member = made->Add(constant.name);
      member.isConstant = true;
      member.visibility = constants->visibility;
      member.value = EvaluateConstant(*constant.value, [&](Symbol symbol) -> const Variant* {
        const ClassMember* own = made->Find(symbol);
        if (own != nullptr && own->isConstant) return &own->value;
        const Binding& binding = globals.Resolve(symbol);
        return binding.kind == Binding::Kind::Constant ? &binding.value : nullptr;
      });
    }
  }
  const Symbol initialize = globals.Names().Intern(u"Class_Initialize");
  const Symbol terminate = globals.Names().Intern(u"Class_Terminate");
  for (const Procedure* procedure : node.procedures) {
    Function& function = globals.KeepFunction(MakeFunction(*procedure, script, made.get(), globals));
    ClassMember& member = made->Add(procedure->name);
    switch (procedure->procedure) {
      case ProcedureKind::PropertyGet: member.get = &function; break;
      case ProcedureKind::PropertyLet: member.let = &function; break;
      case ProcedureKind::PropertySet: member.set = &function; break;
      default: member.method = &function;
    }
    member.visibility = procedure->visibility;
    if (procedure->isDefault) made->defaultMember = &member;
    if (procedure->name == initialize) made->initialize = &function;
    if (procedure->name == terminate) made->terminate = &function;
  }
  globals.DefineClass(std::move(made));
}

template <class Make>
std::unique_ptr<Code> WithShortOrLongJumps(Make make) {
  try {
    return make(false);
  } catch (const Compiler::JumpTooLong&) {
    return make(true);
  }
}

}  // namespace

void DeclareGlobals(const std::shared_ptr<const Script>& script, Globals& globals) {
  for (const Procedure* procedure : script->procedures)
    globals.DefineFunction(MakeFunction(*procedure, script, nullptr, globals));
  const NameUse use(script->body, Symbol::None, Symbol::None);
  for (const Const* constants : use.constants) {
    for (const Const::Constant& constant : constants->constants) {
      globals.DefineConstant(constant.name,
                             EvaluateConstant(*constant.value, [&](Symbol symbol) -> const Variant* {
                               const Binding& binding = globals.Resolve(symbol);
                               return binding.kind == Binding::Kind::Constant ? &binding.value : nullptr;
                             }));
    }
  }
  for (const Class* node : script->classes) DeclareClass(*node, script, globals);
  for (const Declarator* declarator : use.declared)
    globals.DefineVariable(declarator->name).isArray = !declarator->upperBounds.empty();
  for (const Symbol symbol : use.redimmed) {
    if (globals.Resolve(symbol).kind != Binding::Kind::Variable) globals.DefineVariable(symbol);
  }
  if (script->hasOptionExplicit) return;
  for (const Symbol symbol : use.assigned) {
    if (globals.Resolve(symbol).kind == Binding::Kind::None) globals.DefineVariable(symbol);
  }
}

std::unique_ptr<Code> CompileSource(const std::shared_ptr<const Script>& script, bool isExpression,
                                    Globals& globals) {
  return WithShortOrLongJumps([&](bool isLong) {
    return Compiler(globals, script, nullptr, Compiler::Mode::Source, isLong).Source(isExpression);
  });
}

std::unique_ptr<Code> CompileFunction(Function& function, Globals& globals) {
  return WithShortOrLongJumps([&](bool isLong) {
    return Compiler(globals, function.script, function.owner, Compiler::Mode::Procedure, isLong)
        .Body(function);
  });
}

std::unique_ptr<Code> CompileText(const std::shared_ptr<const Script>& script, bool isExpression,
                                  const Code& around, std::vector<std::uint16_t>& captured,
                                  Globals& globals) {
  ScriptClass* owner = around.function != nullptr ? around.function->owner : nullptr;
  return WithShortOrLongJumps([&](bool isLong) {
    captured.clear();
    return Compiler(globals, script, owner, Compiler::Mode::Text, isLong)
        .Text(isExpression, around, captured);
  });
}

// ---- Frames

Compiler::Compiler(Globals& globals, std::shared_ptr<const Script> script, ScriptClass* owner, Mode mode,
                   bool hasLongJumps)
    : m_globals(globals),
      m_script(std::move(script)),
      m_owner(owner),
      m_mode(mode),
      m_hasLongJumps(hasLongJumps) {}

void Compiler::StartCode() {
  m_code = std::make_unique<Code>();
  m_code->script = m_script;
  m_code->function = m_function;
  m_bindingIndexes.clear();
  m_numberIndexes.clear();
  m_textIndexes.clear();
}

void Compiler::FinishCode(Op last) {
  Mark(static_cast<Offset>(m_script->text.size()));
  Emit(last);
  ResumeHere(LastMark());
  Emit(last);
  m_code->hasDynamicNames = m_runsText || m_mode == Mode::Text;
}

std::unique_ptr<Code> Compiler::Source(bool isExpression) {
  const NameUse use(m_script->body, m_globals.Names().Intern(u"Execute"), m_globals.Names().Intern(u"Eval"));
  m_runsText = use.runsText;
  std::unique_ptr<Code> first;
  std::unique_ptr<Code>* tail = &first;
  // All parts share one frame, so that they need the same layout.
  const auto start = [&] {
    StartCode();
    m_code->hasResult = isExpression;
    m_hiddenBegin = m_nextHidden = isExpression ? 1 : 0;
    m_code->localCount = Limit(m_hiddenBegin + use.hiddenSlots);
    m_nextTemporary = m_code->localCount;
    m_code->frameSize = m_code->localCount;
  };
  Label exit;
  m_exitProcedure = &exit;
  start();
  if (isExpression) {
    const auto& statement = static_cast<const CallStatement&>(*m_script->body.front());
    Mark(statement.offset);
    const Operand value = Compile(*statement.call);
    Emit(Op::Copy, 0, value);
    Bind(exit);
    FinishCode(Op::Return);
    return std::move(m_code);
  }
  CompileDims(use);
  for (const Statement* statement : m_script->body) {
    if (m_code->sites.size() > kPartFull || m_code->bindings.size() > kPartFull ||
        m_code->functions.size() > kPartFull || m_code->shapes.size() > kPartFull ||
        m_code->constants.size() > kBankSize) {
      FinishCode(Op::EndSegment);
      *tail = std::move(m_code);
      tail = &(*tail)->next;
      start();
    }
    CompileStatement(*statement);
  }
  Bind(exit);
  FinishCode(Op::Return);
  *tail = std::move(m_code);
  // The frame is made for the largest part.
  std::uint16_t size = 0;
  for (Code* part = first.get(); part != nullptr; part = part->next.get())
    size = std::max(size, part->frameSize);
  for (Code* part = first.get(); part != nullptr; part = part->next.get()) part->frameSize = size;
  return first;
}

std::uint16_t Compiler::AddLocal(Symbol symbol, Local local) {
  const auto [entry, isNew] = m_locals.try_emplace(symbol, local);
  if (!isNew) return entry->second.slot;
  entry->second.slot = Limit(m_hiddenBegin++);
  m_code->localNames.push_back(symbol);
  return entry->second.slot;
}

std::unique_ptr<Code> Compiler::Body(Function& function) {
  m_function = &function;
  StartCode();
  const NameUse use(function.node->body, m_globals.Names().Intern(u"Execute"),
                    m_globals.Names().Intern(u"Eval"));
  m_runsText = use.runsText;
  for (const FunctionParameter& parameter : function.parameters) {
    const bool isTaken = m_locals.contains(parameter.name);
    if (isTaken) ++m_hiddenBegin;
    if (isTaken) m_code->localNames.push_back(Symbol::None);
    if (!isTaken) AddLocal(parameter.name, {.isReference = !parameter.isByValue});
  }
  if (function.kind == ProcedureKind::Function || function.kind == ProcedureKind::PropertyGet) {
    m_code->hasResult = true;
    m_code->resultSlot = AddLocal(function.name, {.isResult = true});
    m_locals[function.name].isResult = true;
  }
  for (const Const* constants : use.constants) {
    for (const Const::Constant& constant : constants->constants)
      m_localConstants[constant.name] = ConstantValue(*constant.value);
  }
  for (const Declarator* declarator : use.declared)
    AddLocal(declarator->name, {.isArray = !declarator->upperBounds.empty()});
  SetUpLocals(use);
  Label exit;
  m_exitProcedure = &exit;
  CompileDims(use);
  CompileBlock(function.node->body);
  Bind(exit);
  FinishCode(Op::Return);
  return std::move(m_code);
}

// Names that the body uses without declaring them are its own when nothing else answers to them.
void Compiler::SetUpLocals(const NameUse& use) {
  for (const Symbol symbol : use.used) {
    if (m_locals.contains(symbol) || m_localConstants.contains(symbol)) continue;
    if (m_owner != nullptr && m_owner->Find(symbol) != nullptr) continue;
    if (m_mode == Mode::Text) continue;
    Binding& binding = m_globals.Resolve(symbol);
    if (binding.kind != Binding::Kind::None) continue;
    const bool isDeclared = use.redimmed.contains(symbol);
    if (m_script->hasOptionExplicit && !isDeclared) continue;
    if (!isDeclared) binding.dependents.push_back(m_function);
    AddLocal(symbol, {.isWeak = !use.assigned.contains(symbol) && !use.passed.contains(symbol)});
  }
  m_nextHidden = m_hiddenBegin;
  m_code->localCount = Limit(m_hiddenBegin + use.hiddenSlots);
  m_nextTemporary = m_code->localCount;
  m_code->frameSize = m_code->localCount;
}

std::unique_ptr<Code> Compiler::Text(bool isExpression, const Code& around,
                                     std::vector<std::uint16_t>& captured) {
  m_function = const_cast<Function*>(around.function);
  StartCode();
  const NameUse use(m_script->body, m_globals.Names().Intern(u"Execute"), m_globals.Names().Intern(u"Eval"));
  m_runsText = true;
  for (const Symbol symbol : use.used) {
    for (std::size_t slot = 0; slot < around.localNames.size(); ++slot) {
      if (around.localNames[slot] != symbol) continue;
      captured.push_back(static_cast<std::uint16_t>(slot));
      const bool isResult = around.hasResult && slot == around.resultSlot;
      AddLocal(symbol, {.isResult = isResult, .isReference = true});
      break;
    }
  }
  if (isExpression) {
    m_code->hasResult = true;
    m_code->resultSlot = Limit(m_hiddenBegin++);
    m_code->localNames.push_back(Symbol::None);
  }
  for (const Const* constants : use.constants) {
    for (const Const::Constant& constant : constants->constants)
      m_localConstants[constant.name] = ConstantValue(*constant.value);
  }
  SetUpLocals(use);
  Label exit;
  m_exitProcedure = &exit;
  if (isExpression) {
    const auto& statement = static_cast<const CallStatement&>(*m_script->body.front());
    Mark(statement.offset);
    Emit(Op::Copy, m_code->resultSlot, Compile(*statement.call));
  } else {
    CompileDims(use);
    CompileBlock(m_script->body);
  }
  Bind(exit);
  FinishCode(Op::Return);
  return std::move(m_code);
}

std::uint16_t Compiler::Limit(std::size_t index) const {
  if (index >= kBankSize - 1) RaiseTooBig();
  return static_cast<std::uint16_t>(index);
}

// ---- Names

Compiler::Place Compiler::Find(Symbol symbol) {
  Place place;
  if (const auto local = m_locals.find(symbol); local != m_locals.end()) {
    place.operand = MakeOperand(Bank::Frame, local->second.slot);
    if (!local->second.isWeak) {
      place.kind = Place::Kind::Direct;
      place.isResult = local->second.isResult;
      place.isLocal = !local->second.isReference;
      place.isArray = local->second.isArray;
      return place;
    }
  } else if (const auto constant = m_localConstants.find(symbol); constant != m_localConstants.end()) {
    place.kind = Place::Kind::Constant;
    place.constant = &constant->second;
    return place;
  } else if (m_owner != nullptr) {
    if (const ClassMember* member = m_owner->Find(symbol)) {
      place.member = member;
      place.kind = Place::Kind::Member;
      if (member->isField) {
        place.kind = Place::Kind::Direct;
        place.operand = MakeOperand(Bank::Fields, member->slot);
        place.isArray = member->isArray && member->shape.isFixed;
      } else if (member->isConstant) {
        place.kind = Place::Kind::Constant;
        place.constant = &member->value;
      }
      return place;
    }
  }
  Binding& binding = m_globals.Resolve(symbol);
  place.binding = &binding;
  if (binding.kind == Binding::Kind::Variable && binding.slot < kBankSize) {
    place.kind = Place::Kind::Direct;
    place.operand = MakeOperand(Bank::Globals, binding.slot);
    place.isArray = binding.isArray;
  } else if (binding.kind == Binding::Kind::Constant) {
    place.kind = Place::Kind::Constant;
    place.constant = &binding.value;
  }
  return place;
}

Variant Compiler::LiteralValue(const Literal& literal) const { return ValueOfLiteral(literal); }

Variant Compiler::ConstantValue(const Expression& expression) {
  return EvaluateConstant(expression, [&](Symbol symbol) -> const Variant* {
    const Place place = Find(symbol);
    return place.kind == Place::Kind::Constant ? place.constant : nullptr;
  });
}

std::size_t Compiler::ConstantIndex(const Variant& value) {
  auto& constants = m_code->constants;
  const auto add = [&] {
    constants.push_back(value);
    return constants.size() - 1;
  };
  switch (value.Type()) {
    case VariantType::String: {
      const auto [entry, isNew] =
          m_textIndexes.try_emplace(std::u16string(value.AsUtf16()), constants.size());
      return isNew ? add() : entry->second;
    }
    case VariantType::Single:
    case VariantType::Currency: return add();
    default: {
      std::int64_t bits = 0;
      if (value.Type() == VariantType::Double || value.Type() == VariantType::Date)
        bits = std::bit_cast<std::int64_t>(value.AsDouble());
      else if (value.Type() != VariantType::Object && value.Type() != VariantType::Array)
        bits = value.IsEmpty() || value.IsNull() ? 0 : value.AsLong();
      else
        bits = reinterpret_cast<std::intptr_t>(value.AsObject());
      const auto [entry, isNew] =
          m_numberIndexes.try_emplace({static_cast<int>(value.Type()), bits}, constants.size());
      return isNew ? add() : entry->second;
    }
  }
}

Operand Compiler::ConstantOperand(const Variant& value, Operand into) {
  const std::size_t index = ConstantIndex(value);
  if (index < kBankSize - 1 && into == kNoOperand) return MakeOperand(Bank::Constants, index);
  const Operand temporary = into == kNoOperand ? AllocateTemporary() : into;
  EmitWide(Op::LoadConstant, temporary, index);
  return temporary;
}

std::uint16_t Compiler::BindingIndex(Symbol symbol) {
  Binding* binding = &m_globals.At(symbol);
  const auto [entry, isNew] =
      m_bindingIndexes.try_emplace(binding, static_cast<std::uint16_t>(m_code->bindings.size()));
  if (isNew) {
    if (m_code->bindings.size() > 0xFFFF) RaiseTooBig();
    m_code->bindings.push_back(binding);
  }
  return entry->second;
}

std::uint16_t Compiler::SiteIndex(Symbol member, const Expression* node) {
  if (m_code->sites.size() > 0xFFFF) RaiseTooBig();
  m_code->sites.push_back({member, node, nullptr, nullptr, 0});
  return static_cast<std::uint16_t>(m_code->sites.size() - 1);
}

std::uint16_t Compiler::FunctionIndex(Function* function) {
  auto& functions = m_code->functions;
  for (std::size_t i = functions.size(); i-- > 0 && functions.size() - i < 16;) {
    if (functions[i] == function) return static_cast<std::uint16_t>(i);
  }
  if (functions.size() > 0xFFFF) RaiseTooBig();
  functions.push_back(function);
  return static_cast<std::uint16_t>(functions.size() - 1);
}

// ---- Emission

std::size_t Compiler::Emit(Op op, Operand a, Operand b, Operand c) {
  m_code->instructions.push_back({op, a, b, c});
  return m_code->instructions.size() - 1;
}

std::size_t Compiler::EmitWide(Op op, Operand a, std::size_t wide) {
  return Emit(op, a, static_cast<Operand>(wide & 0xFFFF), static_cast<Operand>(wide >> 16));
}

void Compiler::EmitJump(Op op, Operand a, Label& label) {
  const bool isBound = label.position != Label::kUnbound;
  const std::size_t at = EmitWide(op, a, isBound ? label.position : 0);
  if (!isBound) label.uses.push_back(at);
}

void Compiler::EmitWordJump(Operand a, Label& label) { EmitJump(Op::Jump, a, label); }

void Compiler::EmitCompareJump(BinaryOperator op, bool ifTrue, Operand left, Operand right, Label& label) {
  const int comparison = static_cast<int>(op) - static_cast<int>(BinaryOperator::Equal);
  bool isImmediate = false;
  if (right >= MakeOperand(Bank::Constants, 0) && right != kNoOperand) {
    const Variant& value = m_code->constants[right & (kBankSize - 1)];
    if (value.Type() == VariantType::Integer) {
      isImmediate = true;
      right = static_cast<Operand>(value.AsLong());
    }
  }
  const auto opcode = [&](bool onTrue) {
    const Op base = isImmediate ? (onTrue ? Op::JumpIfEqualImmediate : Op::JumpUnlessEqualImmediate)
                                : (onTrue ? Op::JumpIfEqual : Op::JumpUnlessEqual);
    return static_cast<Op>(static_cast<int>(base) + comparison);
  };
  if (m_hasLongJumps) {
    Emit(opcode(!ifTrue), left, right, 2);
    EmitJump(Op::Jump, 0, label);
  } else {
    label.uses.push_back(Emit(opcode(ifTrue), left, right));
  }
}

void Compiler::Bind(Label& label) {
  label.position = m_code->instructions.size();
  for (const std::size_t use : label.uses) {
    Instruction& instruction = m_code->instructions[use];
    if (instruction.op < Op::Copy) {
      const auto distance = static_cast<std::ptrdiff_t>(label.position - use);
      if (distance > 32767) throw JumpTooLong{};
      instruction.c = static_cast<std::uint16_t>(distance);
    } else {
      instruction.b = static_cast<std::uint16_t>(label.position & 0xFFFF);
      instruction.c = static_cast<std::uint16_t>(label.position >> 16);
    }
  }
  label.uses.clear();
}

Operand Compiler::AllocateTemporary(std::size_t count) {
  const std::size_t first = m_nextTemporary;
  m_nextTemporary += count;
  const std::uint16_t end = Limit(m_nextTemporary);
  if (end > m_code->frameSize) m_code->frameSize = end;
  return static_cast<Operand>(first);
}

Operand Compiler::Hide(std::size_t count) {
  const std::size_t first = m_nextHidden;
  m_nextHidden += count;
  return static_cast<Operand>(first);
}

void Compiler::Mark(Offset offset) {
  const auto begin = static_cast<std::uint32_t>(m_code->instructions.size());
  m_code->marks.push_back({begin, begin, offset, static_cast<std::uint16_t>(m_nextTemporary)});
}

void Compiler::ResumeHere(std::size_t mark) {
  m_code->marks[mark].resume = static_cast<std::uint32_t>(m_code->instructions.size());
}

void Compiler::EmitRaise(std::int32_t number, Symbol about) {
  EmitWide(Op::RaiseError, static_cast<Operand>(number), static_cast<std::size_t>(about));
}

}  // namespace hearthmake::vbscript
