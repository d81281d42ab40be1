#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "automation/Variant.hpp"
#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript {

struct Binding;
struct Function;
class ScriptClass;

// ---- Operands
//
// An operand is sixteen bits: the bank in the upper two, the place in it in the others. So every instruction
// works on locals, fields of Me, globals and constants alike, without a load before it.

using Operand = std::uint16_t;

enum class Bank : std::uint8_t { Frame, Fields, Globals, Constants };
inline constexpr std::size_t kBankSize = 1 << 14;
inline constexpr Operand kNoOperand = 0xFFFF;  // the last constant is never used

constexpr Operand MakeOperand(Bank bank, std::size_t place) {
  return static_cast<Operand>((static_cast<std::size_t>(bank) << 14) | place);
}

// ---- Instructions
//
// a, b and c are operands unless said otherwise. T is a temporary, which holds nothing counted before it is
// written; an operand that is a temporary is used up. W is a window: temporaries one after the other, the
// first takes the result. An instruction marked with + is followed by a word with further operands.

#define VBS_BINARY_OPERATIONS(V)                                                                           \
  V(Add)                                                                                                   \
  V(Subtract) V(Multiply) V(Divide) V(IntegerDivide) V(Modulo) V(Power) V(Concatenate) V(And) V(Or) V(Xor) \
      V(Eqv) V(Imp) V(Is) V(Equal) V(NotEqual) V(Less) V(Greater) V(LessOrEqual) V(GreaterOrEqual)

#define VBS_COMPARISONS(V) V(Equal) V(NotEqual) V(Less) V(Greater) V(LessOrEqual) V(GreaterOrEqual)

#define VBS_JUMP_UNLESS(name) V(JumpUnless##name)

#define VBS_OTHER_OPERATIONS(V)                                                                         \
  V(Copy)         /* T a = b, objects as they are */                                                    \
  V(Let)          /* variable a = b, of an object its default member */                                 \
  V(Set)          /* Set variable a = b */                                                              \
  V(LoadConstant) /* T a = constant bc */                                                               \
  V(LoadName)     /* T a = what binding b stands for now, else local c */                               \
  V(LetName)      /* binding b (else local c) = a */                                                    \
  V(SetName)                                                                                            \
  V(NameReference)    /* T a = reference to what binding b stands for, else to local c */               \
  V(Reference)        /* T a = reference to variable b */                                               \
  V(ElementReference) /* + T a = reference to the element of array b; indices from T c on; a: how many, \
                           b: T that keeps the lock, or none */                                         \
  V(Unlock)           /* lock T a */                                                                    \
  V(Clear)            /* a = nothing */                                                                 \
  V(AddImmediate)     /* a = b + number c */                                                            \
  V(Negate)                                                                                             \
  V(Plus)                                                                                               \
  V(Not)                                                                                                \
  V(Append)      /* variable a = a & c */                                                               \
  V(Jump)        /* to bc */                                                                            \
  V(Loop)        /* the same, backwards: charges the budget */                                          \
  V(JumpIfFalse) /* a to bc */                                                                          \
  V(JumpIfTrue)                                                                                         \
  V(ForTest)      /* + variable a, end and step in b and b + 1: ends the loop by a jump to bc */        \
  V(ForNext)      /* + adds the step; goes on by a jump to bc */                                        \
  V(ForStep)      /* T a = b + step c, which must have been set */                                      \
  V(ForEachBegin) /* state a and a + 1 for the items of b */                                            \
  V(ForEachNext)  /* + T b = next item of state a, or a jump to bc */                                   \
  V(GetElement)   /* a = b(c) */                                                                        \
  V(GetElement2)  /* + a = b(c, a) */                                                                   \
  V(GetElements)  /* + W a = b(a indices from T c on); b: site */                                       \
  V(SetElement)   /* a(b) = c */                                                                        \
  V(SetElement2)  /* + a(b, c) = a */                                                                   \
  V(SetElements)  /* + a(a indices from T b on) = c; b: 1 for Set; c: site */                           \
  V(Call)         /* W a; b: arguments and flags; binding c */                                          \
  V(CallIntrinsic)                                                                                      \
  V(CallOwn)    /* W a; b: arguments and flags; function c of the code */                               \
  V(CallValue)  /* W a with the callee in it; b: arguments and flags; site c */                         \
  V(GetMember)  /* W a = member of b; site c */                                                         \
  V(CallMember) /* W a with the object in it; b: arguments and flags; site c */                         \
  V(LetMember)  /* + member of a = b; site c; W a */                                                    \
  V(SetMember)                                                                                          \
  V(PutMember)  /* + W a with object, arguments and value; b: how many; site c; a: 1 for Set */         \
  V(PutOwn)     /* W a with arguments and value; b: how many; function c */                             \
  V(LoadMe)     /* T a */                                                                               \
  V(New)        /* T a of class binding c */                                                            \
  V(WithObject) /* hidden a = b, which must be an object */                                             \
  V(MakeArray)  /* variable a; shape c */                                                               \
  V(ReDim)      /* variable a; bounds from T b on; c: how many, flag for Preserve */                    \
  V(Erase)                                                                                              \
  V(OnError) /* a: 1 for Resume Next */                                                                 \
  V(ClearError)                                                                                         \
  V(RaiseError)  /* number a about the name with symbol bc */                                           \
  V(CallMachine) /* W a; b: arguments; c: MachineFunction */                                            \
  V(EndSegment)  /* goes on with the next part of a source */                                           \
  V(Return)

enum class Op : std::uint16_t {
#define V(name) name,
  VBS_BINARY_OPERATIONS(V)
#undef V
#define V(name) JumpUnless##name,  // a compared with b; c: distance
      VBS_COMPARISONS(V)
#undef V
#define V(name) JumpIf##name,
          VBS_COMPARISONS(V)
#undef V
#define V(name) JumpUnless##name##Immediate,  // b is a number
              VBS_COMPARISONS(V)
#undef V
#define V(name) JumpIf##name##Immediate,
                  VBS_COMPARISONS(V)
#undef V
#define V(name) name,
                      VBS_OTHER_OPERATIONS(V)
#undef V
                          Count
};

struct Instruction {
  Op op;
  std::uint16_t a;
  std::uint16_t b;
  std::uint16_t c;

  std::uint32_t Wide() const { return b | (static_cast<std::uint32_t>(c) << 16); }
};
static_assert(sizeof(Instruction) == 8);

// Flags of b in calls, above the number of arguments.
inline constexpr std::uint16_t kNoResultWanted = 0x8000;
// A variable is passed twice: see Machine::PassArguments.
inline constexpr std::uint16_t kVariablePassedTwice = 0x4000;
inline constexpr std::uint16_t kArgumentCountMask = 0x3FFF;
inline constexpr std::uint16_t kPreserve = 0x8000;

// What works on the running program itself.
enum class MachineFunction : std::uint16_t { Eval, Execute, ExecuteGlobal, GetRef };

// ---- What belongs to instructions

// A member that is reached late-bound, with what was found there last.
struct MemberSite {
  Symbol member = Symbol::None;
  const Expression* node = nullptr;  // for the words of an error
  const void* knownInterface = nullptr;
  const void* classMember = nullptr;  // ClassMember of a script class
  std::int32_t id = 0;                // of any other object
};

// Where a statement begins in the code, for errors in it.
struct StatementMark {
  std::uint32_t begin;
  std::uint32_t resume;  // where On Error Resume Next goes on
  Offset offset;
  std::uint16_t firstTemporary;  // what lies above is given up
};

struct ArrayShape {
  std::vector<automation::ArrayBuffer::Bound> bounds;
  bool isFixed;
};

// The code of one procedure or of one part of a source.
struct Code {
  std::shared_ptr<const Script> script;
  const Function* function = nullptr;
  std::vector<Instruction> instructions;
  std::vector<automation::Variant> constants;
  std::vector<Binding*> bindings;
  std::vector<MemberSite> sites;
  std::vector<Function*> functions;
  std::vector<ArrayShape> shapes;
  std::vector<StatementMark> marks;
  std::vector<Symbol> localNames;  // by slot; kept where Execute and Eval may ask
  std::uint16_t resultSlot = 0;
  std::uint16_t localCount = 0;  // parameters, result, locals, hidden ones; temporaries follow
  std::uint16_t frameSize = 0;
  bool hasResult = false;
  bool hasMarks = false;         // locals that are fixed arrays
  bool hasDynamicNames = false;  // see Machine::ExecuteText
  std::unique_ptr<Code> next;    // the next part of a source
};

}  // namespace hearthmake::vbscript
