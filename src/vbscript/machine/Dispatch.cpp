#include <algorithm>
#include <cmath>
#include <new>
#include <stdexcept>

#include "vbscript/machine/Machine.hpp"
#include "vbscript/machine/ScriptObject.hpp"
#include "vbscript/machine/Values.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operators.hpp"

// The loop that runs instructions. The fast paths of numbers stand first; whatever they leave goes to the
// operators of values/, behind functions that are kept out of the loop so that it stays small.

#if defined(__GNUC__)
// Each instruction jumps to the next by itself, which branch predictors like better than one switch.
#define VBS_COMPUTED_GOTO 1
#pragma GCC diagnostic ignored "-Wpedantic"
#define VBS_COLD __attribute__((noinline, cold))
#define VBS_NOINLINE __attribute__((noinline))
#define VBS_INLINE inline __attribute__((always_inline))
#else
#define VBS_COLD
#define VBS_NOINLINE
#define VBS_INLINE inline
#endif

namespace hearthmake::vbscript {

using automation::ArrayBuffer;
using automation::InvokeKind;
using automation::Object;
using automation::Ref;
using automation::VariantType;

namespace {

// ---- Numbers

VBS_INLINE unsigned Tag(const Variant& value) { return static_cast<unsigned>(value.Type()); }

VBS_INLINE bool IsWhole(const Variant& value) { return (Tag(value) ^ 2U) <= 1; }

// Both Integer or Long, whose numbers are 2 and 3.
VBS_INLINE bool AreWhole(const Variant& left, const Variant& right) {
  return ((Tag(left) ^ 2U) | (Tag(right) ^ 2U)) <= 1;
}

VBS_INLINE VariantType Wider(const Variant& left, const Variant& right) {
  return static_cast<VariantType>(Tag(left) | Tag(right));
}

// Integer, Long and Double as a Double.
VBS_INLINE bool ReadNumber(const Variant& value, double& number) {
  if (value.Type() == VariantType::Double) {
    number = value.AsDouble();
    return true;
  }
  number = value.AsLong();
  return IsWhole(value);
}

// A value that is neither counted nor a reference.
VBS_INLINE bool IsPlain(const Variant& value) {
  return value.Type() < VariantType::String || value.Type() == VariantType::Boolean;
}

VBS_NOINLINE void ReleaseOld(Variant& place) { const Variant old(std::move(place)); }

VBS_INLINE void MakePlain(Variant& place) {
  if (place.IsCounted()) [[unlikely]]
    ReleaseOld(place);
}

// The result of whole numbers: of the wider subtype, or of the next one that holds it.
VBS_INLINE void StoreWhole(Variant& to, VariantType type, std::int64_t value) {
  MakePlain(to);
  if (value == static_cast<std::int16_t>(value)) [[likely]] {
    to.OverwriteWhole(type, static_cast<std::int32_t>(value));
  } else if (value == static_cast<std::int32_t>(value)) {
    to.OverwriteWhole(VariantType::Long, static_cast<std::int32_t>(value));
  } else {
    to.OverwriteDouble(static_cast<double>(value));
  }
}

VBS_INLINE bool StoreDouble(Variant& to, double value) {
  if (!std::isfinite(value)) [[unlikely]]
    return false;
  MakePlain(to);
  to.OverwriteDouble(value);
  return true;
}

VBS_INLINE void StoreBoolean(Variant& to, bool value) {
  MakePlain(to);
  to.OverwriteWhole(VariantType::Boolean, value ? -1 : 0);
}

// Each gives false when the operands are not of its kinds.
VBS_INLINE bool FastAdd(Variant& to, const Variant& left, const Variant& right) {
  if (AreWhole(left, right)) [[likely]] {
    StoreWhole(to, Wider(left, right), std::int64_t{left.AsLong()} + right.AsLong());
    return true;
  }
  double a;
  double b;
  return ReadNumber(left, a) && ReadNumber(right, b) && StoreDouble(to, a + b);
}

VBS_INLINE bool FastSubtract(Variant& to, const Variant& left, const Variant& right) {
  if (AreWhole(left, right)) [[likely]] {
    StoreWhole(to, Wider(left, right), std::int64_t{left.AsLong()} - right.AsLong());
    return true;
  }
  double a;
  double b;
  return ReadNumber(left, a) && ReadNumber(right, b) && StoreDouble(to, a - b);
}

VBS_INLINE bool FastMultiply(Variant& to, const Variant& left, const Variant& right) {
  if (AreWhole(left, right)) [[likely]] {
    StoreWhole(to, Wider(left, right), std::int64_t{left.AsLong()} * right.AsLong());
    return true;
  }
  double a;
  double b;
  return ReadNumber(left, a) && ReadNumber(right, b) && StoreDouble(to, a * b);
}

VBS_INLINE bool FastDivide(Variant& to, const Variant& left, const Variant& right) {
  double a;
  double b;
  return ReadNumber(left, a) && ReadNumber(right, b) && b != 0 && StoreDouble(to, a / b);
}

VBS_INLINE bool FastIntegerDivide(Variant& to, const Variant& left, const Variant& right) {
  if (!AreWhole(left, right) || right.AsLong() == 0) return false;
  StoreWhole(to, Wider(left, right), std::int64_t{left.AsLong()} / right.AsLong());
  return true;
}

VBS_INLINE bool FastModulo(Variant& to, const Variant& left, const Variant& right) {
  if (!AreWhole(left, right) || right.AsLong() == 0) return false;
  StoreWhole(to, Wider(left, right), std::int64_t{left.AsLong()} % right.AsLong());
  return true;
}

VBS_INLINE bool FastPower(Variant&, const Variant&, const Variant&) { return false; }
VBS_INLINE bool FastConcatenate(Variant&, const Variant&, const Variant&) { return false; }
VBS_INLINE bool FastEqv(Variant&, const Variant&, const Variant&) { return false; }
VBS_INLINE bool FastImp(Variant&, const Variant&, const Variant&) { return false; }
VBS_INLINE bool FastIs(Variant&, const Variant&, const Variant&) { return false; }

#define VBS_BITWISE(name, sign)                                                             \
  VBS_INLINE bool Fast##name(Variant& to, const Variant& left, const Variant& right) {      \
    const bool areBoolean = Tag(left) == Tag(right) && left.Type() == VariantType::Boolean; \
    if (!areBoolean && !AreWhole(left, right)) return false;                                \
    const VariantType type = areBoolean ? VariantType::Boolean : Wider(left, right);        \
    const std::int32_t value = left.AsLong() sign right.AsLong();                           \
    MakePlain(to);                                                                          \
    to.OverwriteWhole(type, value);                                                         \
    return true;                                                                            \
  }
VBS_BITWISE(And, &)
VBS_BITWISE(Or, |)
VBS_BITWISE(Xor, ^)
#undef VBS_BITWISE

// ---- Comparisons: 1, 0, or -1 for operands of other kinds

// Texts that cost next to nothing to compare; longer ones are charged for.
VBS_INLINE bool AreShort(const Variant& left, const Variant& right) {
  return std::min(left.AsUtf16().size(), right.AsUtf16().size()) < 4096;
}

#define VBS_COMPARE(name, sign)                                                          \
  VBS_INLINE int Quick##name(const Variant& left, const Variant& right) {                \
    if (AreWhole(left, right)) [[likely]]                                                \
      return left.AsLong() sign right.AsLong() ? 1 : 0;                                  \
    if (left.Type() == VariantType::String && right.Type() == VariantType::String)       \
      return AreShort(left, right) ? (left.AsUtf16() sign right.AsUtf16() ? 1 : 0) : -1; \
    double a;                                                                            \
    double b;                                                                            \
    if (!ReadNumber(left, a) || !ReadNumber(right, b)) return -1;                        \
    return a sign b ? 1 : 0;                                                             \
  }                                                                                      \
  VBS_INLINE bool Fast##name(Variant& to, const Variant& left, const Variant& right) {   \
    if (left.Type() == VariantType::String) return false;                                \
    const int holds = Quick##name(left, right);                                          \
    if (holds < 0) return false;                                                         \
    StoreBoolean(to, holds != 0);                                                        \
    return true;                                                                         \
  }
VBS_COMPARE(Equal, ==)
VBS_COMPARE(NotEqual, !=)
VBS_COMPARE(Less, <)
VBS_COMPARE(Greater, >)
VBS_COMPARE(LessOrEqual, <=)
VBS_COMPARE(GreaterOrEqual, >=)
#undef VBS_COMPARE

// ---- The rest of the operators

// Which operands stand in the source as literals.
VBS_INLINE Literals LiteralsOf(Operand left, Operand right) {
  constexpr Operand kFirst = MakeOperand(Bank::Constants, 0);
  return static_cast<Literals>((left >= kFirst ? 1 : 0) | (right >= kFirst ? 2 : 0));
}

Variant Apply(Op op, const Variant& left, const Variant& right, Literals literals) {
  switch (op) {
#define V(name) \
  case Op::name: return name(left, right, literals);
    VBS_COMPARISONS(V)
#undef V
    case Op::Add: return Add(left, right);
    case Op::Subtract: return Subtract(left, right);
    case Op::Multiply: return Multiply(left, right);
    case Op::Divide: return Divide(left, right);
    case Op::IntegerDivide: return IntegerDivide(left, right);
    case Op::Modulo: return Modulo(left, right);
    case Op::Power: return Power(left, right);
    case Op::Concatenate: return Concatenate(left, right);
    case Op::And: return And(left, right);
    case Op::Or: return Or(left, right);
    case Op::Xor: return Xor(left, right);
    case Op::Eqv: return Eqv(left, right);
    case Op::Imp: return Imp(left, right);
    default: return Is(left, right);
  }
}

// Follows references; false when there are none.
VBS_INLINE bool Follow(const Variant*& left, const Variant*& right) {
  if (left->Type() != VariantType::ByReference && right->Type() != VariantType::ByReference) return false;
  left = &left->Target();
  right = &right->Target();
  return true;
}

VBS_NOINLINE void StoreResult(Variant& to, Variant&& result) {
  const Variant old(std::move(to));
  to.OverwriteWith(result);
}

constexpr std::size_t kLongChain = 4096;

VBS_NOINLINE void SlowBinary(Op op, Variant& to, Variant& left, Variant& right, Literals literals,
                             bool isLeftTemporary, bool isRightTemporary) {
  Variant result;
  if (op == Op::Concatenate && isLeftTemporary && left.Type() == VariantType::String &&
      left.AsUtf16().size() >= kLongChain) {
    // A chain a & b & c … grows one text, or its cost would be quadratic.
    AppendText(left, right);
    result = std::move(left);
  } else {
    result = Apply(op, left, right, literals);
  }
  if (isRightTemporary && &right != &to) right = Variant();
  if (isLeftTemporary && &left != &to) left = Variant();
  StoreResult(to, std::move(result));
}

VBS_NOINLINE void SlowAddNumber(Variant& to, Variant& left, std::int16_t number, bool isLeftTemporary) {
  Variant right = Variant::FromInteger(number);
  SlowBinary(Op::Add, to, left, right, Literals::Right, isLeftTemporary, false);
}

VBS_NOINLINE bool SlowCompare(Op op, Variant& left, Variant& right, Literals literals, bool isLeftTemporary,
                              bool isRightTemporary) {
  const bool holds = IsTrue(Apply(op, left, right, literals));
  if (isRightTemporary) right = Variant();
  if (isLeftTemporary) left = Variant();
  return holds;
}

VBS_NOINLINE void SlowUnary(Variant (*function)(const Variant&), Variant& to, Variant& operand,
                            bool isTemporary) {
  Variant result = function(operand);
  if (isTemporary && &operand != &to) operand = Variant();
  StoreResult(to, std::move(result));
}

VBS_NOINLINE bool SlowTruth(Variant& condition, bool isTemporary) {
  const bool holds = IsTrue(condition.Target());
  if (isTemporary) condition = Variant();
  return holds;
}

// ---- Elements

VBS_NOINLINE void GetElementSlowly(Variant& to, const Variant& from, std::span<Variant> indices) {
  const Variant& array = from.Target();
  Variant result;
  if (array.Type() == VariantType::Array) ResolveIndices(indices);
  if (array.Type() == VariantType::Array) {
    result = CopyOf(Element(*array.AsArray(), indices));
  } else if (array.IsObject()) {
    if (array.AsObject() == nullptr) RaiseRuntime(number::kObjectNotSet);
    const Variant keep(array);
    for (Variant& index : indices) index = CopyOf(index);
    result = keep.AsObject()->Invoke(automation::kDefaultMember, InvokeKind::Get, indices);
  } else {
    RaiseRuntime(number::kTypeMismatch);
  }
  for (Variant& index : indices) index = Variant();
  to.OverwriteWith(result);
}

VBS_NOINLINE void SetElementSlowly(Variant& to, std::span<Variant> indices, const Variant& value,
                                   bool isSet) {
  const Variant& source = value.Target();
  if (isSet && !source.IsObject()) RaiseRuntime(number::kObjectRequired);
  if (to.Type() == VariantType::Array) {
    // First the value and the indices: getting them may run code that changes the array.
    Variant stored = source.IsObject() && !isSet ? CopyOf(ValueOf(source)) : CopyOf(source);
    ResolveIndices(indices);
    if (to.Type() != VariantType::Array) RaiseRuntime(number::kTypeMismatch);
    Variant& element = Element(OwnArray(to), indices);
    const Variant old(std::move(element));
    element.OverwriteWith(stored);
  } else if (to.IsObject()) {
    if (to.AsObject() == nullptr) RaiseRuntime(number::kObjectNotSet);
    std::vector<Variant> arguments;
    for (const Variant& index : indices) arguments.push_back(CopyOf(index));
    arguments.push_back(CopyOf(source));
    const Variant keep(to);
    keep.AsObject()->Invoke(automation::kDefaultMember, isSet ? InvokeKind::Set : InvokeKind::Let, arguments);
  } else {
    RaiseRuntime(number::kTypeMismatch);
  }
}

VBS_NOINLINE void SetElementOne(Variant& to, Variant& index, Variant& value, bool isIndexTemporary,
                                bool isValueTemporary) {
  Variant indices[] = {CopyOf(index)};
  SetElementSlowly(to, indices, value, false);
  if (isValueTemporary) value = Variant();
  if (isIndexTemporary) index = Variant();
}

// The place of an element of two dimensions; null for what the slow way has to look at.
VBS_INLINE Variant* Element2(ArrayBuffer& array, const Variant& first, const Variant& second) {
  const auto bounds = array.Bounds();
  if (bounds.size() != 2 || !AreWhole(first, second)) return nullptr;
  const std::int64_t i = std::int64_t{first.AsLong()} - bounds[0].lower;
  const std::int64_t j = std::int64_t{second.AsLong()} - bounds[1].lower;
  if (i < 0 || i >= bounds[0].count || j < 0 || j >= bounds[1].count) return nullptr;
  return &array.Elements()[static_cast<std::size_t>(i + j * bounds[0].count)];
}

VBS_INLINE bool IsLockedArray(const Variant& value) {
  return value.Type() == VariantType::Array && value.AsArray()->IsLocked();
}

VBS_INLINE void CopyTo(Variant& to, const Variant& value) {
  if (IsLockedArray(value)) [[unlikely]] {
    Variant copy = CopyOf(value);
    to.OverwriteWith(copy);
  } else {
    to.OverwriteWithCopy(value);
  }
}

// Refers to an element of the array in from; of what is no variable, the element itself is taken.
VBS_NOINLINE void ReferToElement(Variant& to, Variant& from, bool isTemporary, std::span<Variant> indices,
                                 Variant* lock) {
  Variant& array = from.Target();
  if (array.Type() == VariantType::Array) ResolveIndices(indices);
  if (array.Type() != VariantType::Array || (isTemporary && &array == &from)) {
    GetElementSlowly(to, array, indices);
    if (isTemporary) MakePlain(from);
    return;
  }
  ArrayBuffer& own = OwnArray(array);
  Variant& element = Element(own, indices);
  for (Variant& index : indices) index = Variant();
  to.OverwriteReference(&element);
  if (lock == nullptr) return;
  // The lock is the one reference that the slot holds.
  lock->OverwriteWithCopy(array);
  own.Lock();
  own.Release();
  lock->SetMark(kHoldsLock);
}

VBS_NOINLINE void Unlock(Variant& slot) {
  ArrayBuffer* const array = slot.AsArray();
  slot.SetMark(0);
  slot.OverwriteEmpty();
  array->Unlock();
}

// ---- Loops

bool GoesOn(const Variant& counter, const Variant& end, const Variant& step) {
  const bool isUp = IsTrue(GreaterOrEqual(step, Variant::FromInteger(0)));
  return IsTrue(isUp ? LessOrEqual(counter, end) : GreaterOrEqual(counter, end));
}

void MakeNumber(Variant& value) {
  if (value.IsNull()) RaiseRuntime(number::kInvalidUseOfNull);
  if (value.Type() == VariantType::String) StoreResult(value, Variant::FromDouble(ToDouble64(value)));
}

VBS_NOINLINE bool TestFor(Variant& counter, Variant& end, Variant& step) {
  if (step.IsEmpty()) RaiseRuntime(number::kForLoopNotInitialized);
  MakeNumber(counter);
  MakeNumber(end);
  MakeNumber(step);
  return GoesOn(counter, end, step);
}

VBS_NOINLINE bool NextFor(Variant& counter, Variant& end, Variant& step) {
  if (step.IsEmpty()) RaiseRuntime(number::kForLoopNotInitialized);
  StoreResult(counter, Add(counter, step));
  return GoesOn(counter, end, step);
}

VBS_NOINLINE void BeginForEach(Variant* state, const Variant& group) {
  const Variant& source = group.Target();
  Variant items;
  if (source.Type() == VariantType::Array) {
    if (source.AsArray()->Bounds().empty()) RaiseRuntime(number::kForLoopNotInitialized);
    items = CopyOf(source);
  } else if (source.IsObject()) {
    if (source.AsObject() == nullptr) RaiseRuntime(number::kObjectNotSet);
    const Variant keep(source);
    const Ref<automation::Enumerator> enumerator = keep.AsObject()->Enumerate();
    if (!enumerator) RaiseRuntime(number::kMemberNotFound);
    items = Variant::FromObject(enumerator);
  } else {
    RaiseRuntime(number::kNotACollection);
  }
  StoreResult(state[0], std::move(items));
  StoreResult(state[1], Variant::FromLong(0));
}

VBS_NOINLINE bool NextForEach(Variant* state, Variant& item) {
  if (state[0].Type() == VariantType::Array) {
    const auto elements = state[0].AsArray()->Elements();
    const auto index = static_cast<std::size_t>(state[1].AsLong());
    if (index >= elements.size()) return false;
    state[1].OverwriteWhole(VariantType::Long, static_cast<std::int32_t>(index + 1));
    CopyTo(item, elements[index]);
    return true;
  }
  if (!state[0].IsObject()) RaiseRuntime(number::kForLoopNotInitialized);
  Variant next;
  const Variant keep(state[0]);
  if (!static_cast<automation::Enumerator*>(keep.AsObject())->Next(next)) return false;
  item.OverwriteWith(next);
  return true;
}

}  // namespace

// The operand's place, and whether it is a temporary (which is used up).
#define X(operand) (bank[(operand) >> 14] + ((operand) & (kBankSize - 1)))
#define IS_TEMPORARY(operand) ((operand) >= code->localCount && (operand) < kBankSize)

#define LOAD_FRAME()                                                \
  do {                                                              \
    Frame& loaded = m_frames[m_depth - 1];                          \
    code = loaded.code;                                             \
    base = loaded.base;                                             \
    bank[0] = base;                                                 \
    bank[1] = loaded.me != nullptr ? loaded.me->Fields() : nullptr; \
    bank[3] = const_cast<Variant*>(code->constants.data());         \
  } while (false)

#define ENTER(function, window, count, result, me, flags) \
  do {                                                    \
    m_context.budget.Charge(4);                           \
    Enter(function, window, count, result, me, flags);    \
    LOAD_FRAME();                                         \
    pc = code->instructions.data();                       \
  } while (false)

#if defined(VBS_COMPUTED_GOTO)
#define CASE(name) L_##name:
#define DISPATCH() goto* labels[static_cast<std::size_t>(pc->op)]
#else
#define CASE(name) case Op::name:
#define DISPATCH() goto dispatch
#endif
#define NEXT()  \
  do {          \
    ++pc;       \
    DISPATCH(); \
  } while (false)
// Behind an instruction with a word.
#define NEXT2() \
  do {          \
    pc += 2;    \
    DISPATCH(); \
  } while (false)
#define JUMP(target)                           \
  do {                                         \
    pc = code->instructions.data() + (target); \
    DISPATCH();                                \
  } while (false)

// Objects with destructors must be in blocks of their own that end before the jump to the next instruction:
// such a jump runs no destructor.
void Machine::Execute() {
#if defined(VBS_COMPUTED_GOTO)
  static const void* const labels[] = {
#define V(name) &&L_##name,
      VBS_BINARY_OPERATIONS(V)
#undef V
#define V(name) &&L_JumpUnless##name,
          VBS_COMPARISONS(V)
#undef V
#define V(name) &&L_JumpIf##name,
              VBS_COMPARISONS(V)
#undef V
#define V(name) &&L_JumpUnless##name##Immediate,
                  VBS_COMPARISONS(V)
#undef V
#define V(name) &&L_JumpIf##name##Immediate,
                      VBS_COMPARISONS(V)
#undef V
#define V(name) &&L_##name,
                          VBS_OTHER_OPERATIONS(V)
#undef V
  };
#endif

  const std::size_t entry = m_depth;
  const Code* code = nullptr;
  Variant* base = nullptr;
  Variant* bank[4] = {nullptr, nullptr, m_globals.Variables(), nullptr};
  LOAD_FRAME();
  const Instruction* pc = code->instructions.data();

  for (;;) {
    try {
#if defined(VBS_COMPUTED_GOTO)
      DISPATCH();
#else
    dispatch:
      switch (pc->op) {
#endif

      // ---- Operators

#define V(name)                                                                                   \
  CASE(name) {                                                                                    \
    Variant& to = *X(pc->a);                                                                      \
    const Variant* left = X(pc->b);                                                               \
    const Variant* right = X(pc->c);                                                              \
    if (Fast##name(to, *left, *right)) NEXT();                                                    \
    if (Follow(left, right) && Fast##name(to, *left, *right)) NEXT();                             \
    ChargeForValue(*X(pc->b));                                                                    \
    ChargeForValue(*X(pc->c));                                                                    \
    SlowBinary(Op::name, to, *X(pc->b), *X(pc->c), LiteralsOf(pc->b, pc->c), IS_TEMPORARY(pc->b), \
               IS_TEMPORARY(pc->c));                                                              \
    NEXT();                                                                                       \
  }
      VBS_BINARY_OPERATIONS(V)
#undef V

      CASE(AddImmediate) {
        Variant& to = *X(pc->a);
        const Variant& left = X(pc->b)->Target();
        const auto number = static_cast<std::int16_t>(pc->c);
        if (IsWhole(left)) [[likely]] {
          StoreWhole(to, left.Type(), std::int64_t{left.AsLong()} + number);
          NEXT();
        }
        if (left.Type() == VariantType::Double && StoreDouble(to, left.AsDouble() + number)) NEXT();
        SlowAddNumber(to, *X(pc->b), number, IS_TEMPORARY(pc->b));
        NEXT();
      }
      CASE(Negate) {
        SlowUnary(&Negate, *X(pc->a), *X(pc->b), IS_TEMPORARY(pc->b));
        NEXT();
      }
      CASE(Plus) {
        SlowUnary(&Plus, *X(pc->a), *X(pc->b), IS_TEMPORARY(pc->b));
        NEXT();
      }
      CASE(Not) {
        const Variant& operand = *X(pc->b);
        if (operand.Type() == VariantType::Boolean) {
          StoreBoolean(*X(pc->a), operand.AsLong() == 0);
        } else {
          SlowUnary(&Not, *X(pc->a), *X(pc->b), IS_TEMPORARY(pc->b));
        }
        NEXT();
      }
      CASE(Append) {
        Variant& to = X(pc->a)->Target();
        const Variant& text = *X(pc->c);
        if (!(to.Type() == VariantType::String && text.Type() == VariantType::String &&
              !to.AsStringBuffer()->IsShared() && to.AsStringBuffer()->Append(text.AsUtf16()))) {
          ChargeForValue(to);
          ChargeForValue(text);
          AppendText(to, text);
        }
        if (IS_TEMPORARY(pc->c)) MakePlain(*X(pc->c));
        NEXT();
      }

      // ---- Jumps

      CASE(Jump) { JUMP(pc->Wide()); }
      CASE(Loop) {
        m_context.budget.Charge(2);
        JUMP(pc->Wide());
      }
      CASE(JumpIfFalse) {
        Variant& condition = *X(pc->a);
        const bool holds = condition.Type() == VariantType::Boolean
                               ? condition.AsLong() != 0
                               : SlowTruth(condition, IS_TEMPORARY(pc->a));
        if (!holds) JUMP(pc->Wide());
        NEXT();
      }
      CASE(JumpIfTrue) {
        Variant& condition = *X(pc->a);
        const bool holds = condition.Type() == VariantType::Boolean
                               ? condition.AsLong() != 0
                               : SlowTruth(condition, IS_TEMPORARY(pc->a));
        if (holds) JUMP(pc->Wide());
        NEXT();
      }

      // A text that is a temporary must be released: texts go the slow way then.
#define COMPARE_JUMP(name, label, jumpIf)                                                                \
  CASE(label) {                                                                                          \
    const Variant* left = X(pc->a);                                                                      \
    const Variant* right = X(pc->b);                                                                     \
    int holds = Quick##name(*left, *right);                                                              \
    if (holds < 0 && Follow(left, right)) holds = Quick##name(*left, *right);                            \
    if (holds < 0) {                                                                                     \
      ChargeForValue(*X(pc->a));                                                                         \
      holds = SlowCompare(Op::name, *X(pc->a), *X(pc->b), LiteralsOf(pc->a, pc->b), IS_TEMPORARY(pc->a), \
                          IS_TEMPORARY(pc->b));                                                          \
    } else if (left->Type() == VariantType::String) {                                                    \
      if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));                                                     \
      if (IS_TEMPORARY(pc->b)) MakePlain(*X(pc->b));                                                     \
    }                                                                                                    \
    pc += (holds != 0) == (jumpIf) ? static_cast<std::ptrdiff_t>(pc->c) : 1;                             \
    DISPATCH();                                                                                          \
  }
#define COMPARE_IMMEDIATE(name, sign, label, jumpIf)                                                \
  CASE(label) {                                                                                     \
    const Variant& left = X(pc->a)->Target();                                                       \
    const auto number = static_cast<std::int16_t>(pc->b);                                           \
    bool holds;                                                                                     \
    if (IsWhole(left)) [[likely]] {                                                                 \
      holds = left.AsLong() sign number;                                                            \
    } else if (left.Type() == VariantType::Double) {                                                \
      holds = left.AsDouble() sign static_cast<double>(number);                                     \
    } else {                                                                                        \
      Variant right = Variant::FromInteger(number);                                                 \
      holds = SlowCompare(Op::name, *X(pc->a), right, Literals::Right, IS_TEMPORARY(pc->a), false); \
    }                                                                                               \
    pc += holds == (jumpIf) ? static_cast<std::ptrdiff_t>(pc->c) : 1;                               \
    DISPATCH();                                                                                     \
  }
#define COMPARISON(name, sign)                                      \
  COMPARE_JUMP(name, JumpUnless##name, false)                       \
  COMPARE_JUMP(name, JumpIf##name, true)                            \
  COMPARE_IMMEDIATE(name, sign, JumpUnless##name##Immediate, false) \
  COMPARE_IMMEDIATE(name, sign, JumpIf##name##Immediate, true)
      COMPARISON(Equal, ==)
      COMPARISON(NotEqual, !=)
      COMPARISON(Less, <)
      COMPARISON(Greater, >)
      COMPARISON(LessOrEqual, <=)
      COMPARISON(GreaterOrEqual, >=)
#undef COMPARISON
#undef COMPARE_IMMEDIATE
#undef COMPARE_JUMP

      // ---- Loops

      CASE(ForTest) {
        if (!TestFor(X(pc->a)->Target(), base[pc->b], base[pc->b + 1])) JUMP(pc[1].Wide());
        NEXT2();
      }
      CASE(ForNext) {
        m_context.budget.Charge(2);
        Variant& counter = X(pc->a)->Target();
        Variant& end = base[pc->b];
        Variant& step = base[pc->b + 1];
        bool goesOn;
        if (((Tag(counter) ^ 2U) | (Tag(end) ^ 2U) | (Tag(step) ^ 2U)) <= 1) [[likely]] {
          const std::int64_t value = std::int64_t{counter.AsLong()} + step.AsLong();
          StoreWhole(counter, Wider(counter, step), value);
          goesOn = step.AsLong() >= 0 ? value <= end.AsLong() : value >= end.AsLong();
        } else {
          goesOn = NextFor(counter, end, step);
        }
        if (goesOn) JUMP(pc[1].Wide());
        NEXT2();
      }
      CASE(ForStep) {
        if (X(pc->c)->IsEmpty()) RaiseRuntime(number::kForLoopNotInitialized);
        SlowBinary(Op::Add, *X(pc->a), *X(pc->b), *X(pc->c), Literals::None, false, false);
        NEXT();
      }
      CASE(ForEachBegin) {
        BeginForEach(base + pc->a, *X(pc->b));
        if (IS_TEMPORARY(pc->b)) MakePlain(*X(pc->b));
        NEXT();
      }
      CASE(ForEachNext) {
        if (!NextForEach(base + pc->a, base[pc->b])) JUMP(pc[1].Wide());
        NEXT2();
      }

      // ---- Variables

      CASE(Copy) {
        Variant& to = *X(pc->a);
        Variant& from = *X(pc->b);
        if (IS_TEMPORARY(pc->a)) {
          if (IS_TEMPORARY(pc->b)) {
            to.OverwriteWith(from);
          } else {
            CopyTo(to, from.Target());
          }
        } else {
          Variant value = CopyOf(from);
          if (IS_TEMPORARY(pc->b)) MakePlain(from);
          StoreResult(to.Target(), std::move(value));
        }
        NEXT();
      }
      CASE(Let) {
        Variant& to = X(pc->a)->Target();
        Variant& from = *X(pc->b);
        if (IsPlain(to) && IsPlain(from)) {
          to.OverwriteWithCopy(from);
        } else {
          LetVariable(to, from, IS_TEMPORARY(pc->b));
        }
        NEXT();
      }
      CASE(Set) {
        SetVariable(X(pc->a)->Target(), *X(pc->b));
        if (IS_TEMPORARY(pc->b)) MakePlain(*X(pc->b));
        NEXT();
      }
      CASE(LoadConstant) {
        base[pc->a].OverwriteWithCopy(code->constants[pc->Wide()]);
        NEXT();
      }
      CASE(LoadName) {
        LoadName(base[pc->a], *code->bindings[pc->b], pc->c);
        NEXT();
      }
      CASE(LetName) {
        StoreName(base[pc->a], *code->bindings[pc->b], pc->c, false);
        MakePlain(base[pc->a]);
        NEXT();
      }
      CASE(SetName) {
        StoreName(base[pc->a], *code->bindings[pc->b], pc->c, true);
        MakePlain(base[pc->a]);
        NEXT();
      }
      CASE(NameReference) {
        Binding& binding = m_globals.Resolve(code->bindings[pc->b]->symbol);
        Variant* variable = FindVariable(binding, pc->c, !code->script->hasOptionExplicit);
        if (variable != nullptr) {
          base[pc->a].OverwriteReference(variable);
        } else {
          LoadName(base[pc->a], binding, pc->c);
        }
        NEXT();
      }
      CASE(Reference) {
        base[pc->a].OverwriteReference(&X(pc->b)->Target());
        NEXT();
      }
      CASE(ElementReference) {
        Variant* const lock = pc[1].b == kNoOperand ? nullptr : base + pc[1].b;
        ChargeForOwnCopy(X(pc->b)->Target());
        ReferToElement(base[pc->a], *X(pc->b), IS_TEMPORARY(pc->b), {base + pc->c, pc[1].a}, lock);
        NEXT2();
      }
      CASE(Unlock) {
        if (base[pc->a].Mark() == kHoldsLock) Unlock(base[pc->a]);
        NEXT();
      }
      CASE(Clear) {
        MakePlain(base[pc->a]);
        base[pc->a].OverwriteEmpty();
        NEXT();
      }
      CASE(MakeArray) {
        const ArrayShape& shape = code->shapes[pc->c];
        MakeArray(X(pc->a)->Target(), shape.bounds, shape.isFixed);
        NEXT();
      }
      CASE(ReDim) {
        const std::size_t count = pc->c & kArgumentCountMask;
        ReDimArray(X(pc->a)->Target(), {base + pc->b, count}, (pc->c & kPreserve) != 0);
        ChargeForValue(*X(pc->a));
        for (std::size_t i = 0; i < count; ++i) MakePlain(base[pc->b + i]);
        NEXT();
      }
      CASE(Erase) {
        EraseArray(X(pc->a)->Target());
        NEXT();
      }

      // ---- Elements

      CASE(GetElement) {
        const Variant& array = X(pc->b)->Target();
        Variant& index = *X(pc->c);
        if (array.Type() == VariantType::Array) [[likely]] {
          const Variant& place = index.Target();
          if (IsWhole(place)) [[likely]] {
            if (const Variant* element = array.AsArray()->VectorElement(place.AsLong())) [[likely]] {
              CopyTo(base[pc->a], *element);
              NEXT();
            }
          }
        }
        {
          Variant indices[] = {CopyOf(index)};
          if (IS_TEMPORARY(pc->c)) MakePlain(index);
          GetElementSlowly(base[pc->a], array, indices);
        }
        NEXT();
      }
      CASE(GetElement2) {
        const Variant& array = X(pc->b)->Target();
        Variant& first = *X(pc->c);
        Variant& second = *X(pc[1].a);
        if (array.Type() == VariantType::Array) [[likely]] {
          if (const Variant* element = Element2(*array.AsArray(), first.Target(), second.Target()))
              [[likely]] {
            CopyTo(base[pc->a], *element);
            NEXT2();
          }
        }
        {
          Variant indices[] = {CopyOf(first), CopyOf(second)};
          if (IS_TEMPORARY(pc->c)) MakePlain(first);
          if (IS_TEMPORARY(pc[1].a)) MakePlain(second);
          GetElementSlowly(base[pc->a], array, indices);
        }
        NEXT2();
      }
      CASE(GetElements) {
        GetElementSlowly(base[pc->a], X(pc->b)->Target(), {base + pc->c, pc[1].a});
        NEXT2();
      }
      CASE(SetElement) {
        Variant& array = X(pc->a)->Target();
        Variant& value = *X(pc->c);
        if (array.Type() == VariantType::Array && !array.AsArray()->IsShared()) [[likely]] {
          const Variant& place = X(pc->b)->Target();
          if (IsWhole(place)) [[likely]] {
            Variant* element = array.AsArray()->VectorElement(place.AsLong());
            if (element != nullptr && IsPlain(value)) [[likely]] {
              if (IsPlain(*element)) [[likely]] {
                element->OverwriteWithCopy(value);
                if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));
                NEXT();
              }
            } else if (element != nullptr && value.Type() == VariantType::String) {
              LetVariable(*element, value, IS_TEMPORARY(pc->c));
              if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));
              NEXT();
            }
          }
        }
        ChargeForOwnCopy(array);
        SetElementOne(array, *X(pc->b), value, IS_TEMPORARY(pc->b), IS_TEMPORARY(pc->c));
        if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));
        NEXT();
      }
      CASE(SetElement2) {
        Variant& array = X(pc->a)->Target();
        Variant& value = *X(pc[1].a);
        Variant& first = *X(pc->b);
        Variant& second = *X(pc->c);
        if (array.Type() == VariantType::Array && !array.AsArray()->IsShared()) [[likely]] {
          Variant* element = Element2(*array.AsArray(), first.Target(), second.Target());
          if (element != nullptr && IsPlain(*element) && IsPlain(value)) [[likely]] {
            element->OverwriteWithCopy(value);
            if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));
            NEXT2();
          }
        }
        {
          ChargeForOwnCopy(array);
          Variant indices[] = {CopyOf(first), CopyOf(second)};
          SetElementSlowly(array, indices, value, false);
        }
        if (IS_TEMPORARY(pc[1].a)) MakePlain(value);
        if (IS_TEMPORARY(pc->c)) MakePlain(second);
        if (IS_TEMPORARY(pc->b)) MakePlain(first);
        if (IS_TEMPORARY(pc->a)) MakePlain(*X(pc->a));
        NEXT2();
      }
      CASE(SetElements) {
        const std::size_t count = pc[1].a;
        ChargeForOwnCopy(X(pc->a)->Target());
        SetElementSlowly(X(pc->a)->Target(), {base + pc->b, count}, *X(pc->c), pc[1].b != 0);
        if (IS_TEMPORARY(pc->c)) MakePlain(*X(pc->c));
        for (std::size_t i = 0; i < count; ++i) MakePlain(base[pc->b + i]);
        if (IS_TEMPORARY(pc->a)) MakePlain(base[pc->a]);
        NEXT2();
      }

      // ---- Calls

      CASE(Call) {
        Binding& binding = *code->bindings[pc->c];
        Variant* const window = base + pc->a;
        const std::uint16_t flags = pc->b;
        Top().pc = pc;
        Function* function = binding.function;
        if (binding.kind != Binding::Kind::Function) [[unlikely]] {
          function = CallBinding(binding, window, flags & kArgumentCountMask, (flags & kNoResultWanted) == 0);
          if (function == nullptr) NEXT();
        }
        ENTER(*function, window, flags & kArgumentCountMask, window, nullptr, flags);
        DISPATCH();
      }
      CASE(CallOwn) {
        Variant* const window = base + pc->a;
        const std::uint16_t flags = pc->b;
        Frame& frame = Top();
        frame.pc = pc;
        ENTER(*code->functions[pc->c], window, flags & kArgumentCountMask, window, frame.me, flags);
        DISPATCH();
      }
      CASE(CallIntrinsic) {
        const Binding& binding = *code->bindings[pc->c];
        Variant* const window = base + pc->a;
        const std::size_t count = pc->b & kArgumentCountMask;
        if (binding.kind != Binding::Kind::Intrinsic || count < binding.intrinsic->minimumArguments ||
            count > binding.intrinsic->maximumArguments) [[unlikely]] {
          Top().pc = pc;
          const bool isWanted = (pc->b & kNoResultWanted) == 0;
          Function* function = CallBinding(*code->bindings[pc->c], window, count, isWanted);
          if (function == nullptr) NEXT();
          ENTER(*function, window, count, window, nullptr, static_cast<std::uint16_t>(pc->b));
          DISPATCH();
        }
        {
          for (std::size_t i = 0; i < count; ++i) ChargeForArgument(window[i]);
          Variant result = binding.intrinsic->call(m_context, {window, count});
          ChargeForValue(result);
          for (std::size_t i = 0; i < count; ++i) MakePlain(window[i]);
          if ((pc->b & kNoResultWanted) == 0) window[0].OverwriteWith(result);
        }
        NEXT();
      }
      CASE(CallMember) {
        Variant* const window = base + pc->a;
        const std::uint16_t flags = pc->b;
        MemberSite& site = const_cast<Code*>(code)->sites[pc->c];
        Top().pc = pc;
        Function* function = nullptr;
        if (site.classMember != nullptr && window->IsObject() && window->AsObject() != nullptr &&
            &window->AsObject()->Declaration() == site.knownInterface)
          function = static_cast<const ClassMember*>(site.classMember)->method;
        if (function == nullptr) {
          function = CallMember(window, flags & kArgumentCountMask, site, (flags & kNoResultWanted) == 0);
          if (function == nullptr) NEXT();
        }
        ENTER(*function, window + 1, flags & kArgumentCountMask, window,
              static_cast<ScriptObject*>(window->AsObject()), flags);
        DISPATCH();
      }
      CASE(CallValue) {
        Top().pc = pc;
        CallValue(base + pc->a, pc->b & kArgumentCountMask, const_cast<Code*>(code)->sites[pc->c],
                  (pc->b & kNoResultWanted) == 0);
        NEXT();
      }
      CASE(CallMachine) {
        Top().pc = pc;
        CallMachine(static_cast<MachineFunction>(pc->c), base + pc->a, pc->b & kArgumentCountMask);
        if ((pc->b & kNoResultWanted) != 0) MakePlain(base[pc->a]);
        NEXT();
      }

      // ---- Members

      CASE(GetMember) {
        Variant* const window = base + pc->a;
        Variant& from = *X(pc->b);
        MemberSite& site = const_cast<Code*>(code)->sites[pc->c];
        const Variant& target = from.Target();
        Top().pc = pc;
        Function* function = nullptr;
        if (site.classMember != nullptr && target.IsObject() && target.AsObject() != nullptr &&
            &target.AsObject()->Declaration() == site.knownInterface) {
          const auto& member = *static_cast<const ClassMember*>(site.classMember);
          if (member.isField) {
            {
              Variant value;
              CopyTo(value, static_cast<ScriptObject*>(target.AsObject())->Fields()[member.slot]);
              if (IS_TEMPORARY(pc->b)) MakePlain(from);
              window->OverwriteWith(value);
            }
            NEXT();
          }
          function = member.get;
          if (function != nullptr && &from != window) window->OverwriteWithCopy(target);
        }
        if (function == nullptr) {
          function = GetMember(window, from, site);
          if (function == nullptr) NEXT();
        }
        ENTER(*function, window + 1, 0, window, static_cast<ScriptObject*>(window->AsObject()), 0);
        DISPATCH();
      }
      CASE(LetMember)
      CASE(SetMember) {
        const bool isSet = pc->op == Op::SetMember;
        Variant& from = *X(pc->a);
        Variant& value = *X(pc->b);
        MemberSite& site = const_cast<Code*>(code)->sites[pc->c];
        Variant& target = from.Target();
        Top().pc = pc + 1;
        Function* function = nullptr;
        if (site.classMember != nullptr && !isSet && target.IsObject() && target.AsObject() != nullptr &&
            &target.AsObject()->Declaration() == site.knownInterface) {
          const auto& member = *static_cast<const ClassMember*>(site.classMember);
          if (member.isField) {
            {
              Variant& field = static_cast<ScriptObject*>(target.AsObject())->Fields()[member.slot];
              const Ref<Object> keep(target.AsObject());
              LetVariable(field, value, IS_TEMPORARY(pc->b));
            }
            if (IS_TEMPORARY(pc->b)) MakePlain(value);
            if (IS_TEMPORARY(pc->a)) MakePlain(from);
            NEXT2();
          }
          function = member.let;
        }
        if (function == nullptr) function = LetMember(from, value, site, isSet);
        if (function == nullptr) {
          if (IS_TEMPORARY(pc->b)) MakePlain(value);
          if (IS_TEMPORARY(pc->a)) MakePlain(from);
          NEXT2();
        }
        Variant* const window = base + pc[1].a;
        window[0].OverwriteWithCopy(target);
        CopyTo(window[1], value.Target());
        if (IS_TEMPORARY(pc->b)) MakePlain(value);
        if (IS_TEMPORARY(pc->a)) MakePlain(from);
        ENTER(*function, window + 1, 1, window, static_cast<ScriptObject*>(window->AsObject()),
              kNoResultWanted);
        DISPATCH();
      }
      CASE(PutMember) {
        Variant* const window = base + pc->a;
        const std::size_t count = pc->b;
        Top().pc = pc + 1;
        Function* function = PutMember(window, count, const_cast<Code*>(code)->sites[pc->c], pc[1].a != 0);
        if (function == nullptr) NEXT2();
        ENTER(*function, window + 1, count, window, static_cast<ScriptObject*>(window->AsObject()),
              kNoResultWanted);
        DISPATCH();
      }
      CASE(PutOwn) {
        Variant* const window = base + pc->a;
        Frame& frame = Top();
        frame.pc = pc;
        ENTER(*code->functions[pc->c], window, pc->b, window, frame.me, kNoResultWanted);
        DISPATCH();
      }
      CASE(LoadMe) {
        {
          Variant me = Variant::FromObject(Ref<Object>(Top().me));
          base[pc->a].OverwriteWith(me);
        }
        NEXT();
      }
      CASE(New) {
        Top().pc = pc;
        {
          Variant made = New(*code->bindings[pc->c]);
          base[pc->a].OverwriteWith(made);
        }
        NEXT();
      }
      CASE(WithObject) {
        Variant& object = *X(pc->b);
        if (!object.Target().IsObject())
          RaiseRuntime(number::kObjectRequired, Describe(code->sites[pc->c].node));
        StoreResult(base[pc->a], Variant(object.Target()));
        if (IS_TEMPORARY(pc->b)) MakePlain(object);
        NEXT();
      }

      // ---- Errors, ends

      CASE(OnError) {
        Top().resumesNext = pc->a != 0;
        m_err = {};
        NEXT();
      }
      CASE(ClearError) {
        if (m_err.number != 0) m_err = {};
        NEXT();
      }
      CASE(RaiseError) { RaiseRuntime(pc->a, m_globals.Names().Utf8(static_cast<Symbol>(pc->Wide()))); }
      CASE(EndSegment) {
        Top().code = code->next.get();
        LOAD_FRAME();
        JUMP(0);
      }
      CASE(Return) {
        {
          Frame& frame = Top();
          frame.pc = pc;
          Variant result;
          if (code->hasResult) result.OverwriteWith(base[code->resultSlot]);
          const Variant* const end = base + code->localCount;
          bool isPlain = !code->hasMarks && !code->hasDynamicNames;
          for (const Variant* slot = base; slot < end; ++slot) isPlain = isPlain && !slot->IsCounted();
          if (!isPlain) ReleaseFrame(frame);
          Variant* const to = frame.result;
          const bool isDiscarded = frame.discardsResult;
          --m_depth;
          if (frame.isEntry) {
            *to = std::move(result);
            return;
          }
          LOAD_FRAME();
          pc = Top().pc + 1;
          // The object of a method stands where the result goes.
          MakePlain(*to);
          if (!isDiscarded) to->OverwriteWith(result);
        }
        DISPATCH();
      }
#if !defined(VBS_COMPUTED_GOTO)
      default: RaiseRuntime(number::kInternalError);
    }
#endif
  }
  catch (const automation::Error& raised) {
    Top().pc = pc;
    const Instruction* next = nullptr;
    // A compile error keeps its own type.
    if (dynamic_cast<const CompileError*>(&raised) != nullptr) {
      if (!Unwind(raised, entry, next)) throw;
      pc = next;
      LOAD_FRAME();
      continue;
    }
    const automation::Error error = Worded(raised, *pc);
    if (!Unwind(error, entry, next)) throw error;
    pc = next;
  }
  catch (const std::bad_alloc&) {
    Top().pc = pc;
    const Instruction* next = nullptr;
    const automation::Error error(number::kOutOfMemory, kRuntimeErrorSource, ErrorText(number::kOutOfMemory));
    if (!Unwind(error, entry, next)) throw error;
    pc = next;
  }
  catch (const std::length_error&) {
    Top().pc = pc;
    const Instruction* next = nullptr;
    const automation::Error error(number::kOutOfMemory, kRuntimeErrorSource, ErrorText(number::kOutOfMemory));
    if (!Unwind(error, entry, next)) throw error;
    pc = next;
  }
  catch (...) {
    UnwindAll(entry);
    throw;
  }
  LOAD_FRAME();
}
}

}  // namespace hearthmake::vbscript
