#include <algorithm>
#include <cstdlib>
#include <new>

#include "vbscript/machine/Compiler.hpp"
#include "vbscript/machine/Machine.hpp"
#include "vbscript/machine/ScriptObject.hpp"
#include "vbscript/machine/Values.hpp"

namespace hearthmake::vbscript {

using automation::Error;
using automation::Variant;
using automation::VariantType;

Machine::Machine(Globals& globals, Context& context)
    : m_globals(globals),
      m_context(context),
      // Zeroed memory is Empty, and costs nothing until it is used.
      m_stack(static_cast<Variant*>(std::calloc(kStackSlots, sizeof(Variant)))),
      m_frames(static_cast<Frame*>(std::calloc(kDeepestCalls, sizeof(Frame)))) {
  if (m_stack == nullptr || m_frames == nullptr) throw std::bad_alloc();
  m_stackEnd = m_stack + kStackSlots;
}

Machine::~Machine() {
  ReleaseObjects();
  std::free(m_stack);
  std::free(m_frames);
}

Variant* Machine::StackTop() const {
  if (m_depth == 0) return m_stack;
  const Frame& top = m_frames[m_depth - 1];
  return top.base + top.code->frameSize;
}

const Code* Machine::Prepare(Function& function) {
  if (!function.code) {
    if (m_depth == 0) function.outdated.clear();
    function.code = CompileFunction(function, m_globals);
  }
  return function.code.get();
}

// A variable that is passed by reference may be passed as its value when nobody can see the difference: the
// procedure only reads the parameter, and nobody else can change the variable meanwhile. That is so for a
// variable in the caller's own window which is not passed a second time in this call.
void Machine::PassArguments(Function& function, Variant* base, std::size_t count, std::uint16_t flags) {
  const Variant* callerBase = m_depth == 0 ? nullptr : m_frames[m_depth - 1].base;
  for (std::size_t i = 0; i < count; ++i) {
    Variant& argument = base[i];
    if (argument.Type() != VariantType::ByReference) continue;
    Variant* target = argument.AsReference();
    const FunctionParameter& parameter = function.parameters[i];
    const bool isValueEnough =
        parameter.isByValue || (parameter.isOnlyRead && (flags & kVariablePassedTwice) == 0 &&
                                target >= callerBase && target < base && callerBase != nullptr);
    if (!isValueEnough) continue;
    if (target->Type() == VariantType::Array && target->AsArray()->IsLocked()) {
      Variant copy = CopyOf(*target);
      argument.OverwriteWith(copy);
    } else {
      argument.OverwriteWithCopy(*target);
    }
  }
}

void Machine::Enter(Function& function, Variant* base, std::size_t count, Variant* result, ScriptObject* me,
                    std::uint16_t flags) {
  const Code* code = function.code.get();
  if (code == nullptr) [[unlikely]]
    code = Prepare(function);
  if (count != function.parameters.size()) [[unlikely]]
    RaiseRuntime(number::kWrongNumberOfArguments, m_globals.Names().Utf8(function.name));
  PassArguments(function, base, count, flags);
  for (Variant* slot = base + count; slot < base + code->localCount; ++slot) slot->OverwriteEmpty();
  Push(*code, base, result, me);
  Top().discardsResult = (flags & kNoResultWanted) != 0;
}

void Machine::Push(const Code& code, Variant* base, Variant* result, ScriptObject* me) {
  if (m_depth == kDeepestCalls || m_stackEnd - base <= code.frameSize + 16) [[unlikely]]
    RaiseRuntime(number::kOutOfStackSpace);
  Frame& frame = m_frames[m_depth++];
  frame.code = &code;
  frame.pc = code.instructions.data() - 1;
  frame.base = base;
  frame.result = result;
  frame.me = me;
  frame.dynamicNames = nullptr;
  frame.ownsDynamicNames = false;
  frame.isEntry = false;
  frame.resumesNext = false;
  frame.discardsResult = false;
}

// Gives up what the locals hold; the frame stands while that may run code.
void Machine::ReleaseFrame(Frame& frame) {
  Variant* const end = frame.base + frame.code->localCount;
  for (Variant* slot = frame.base; slot < end; ++slot) {
    if (slot->IsCounted()) {
      const Variant old(std::move(*slot));
    }
  }
  if (frame.code->hasMarks || frame.code->hasDynamicNames) {
    for (Variant* slot = frame.base; slot < end; ++slot) slot->SetMark(0);
  }
  if (frame.ownsDynamicNames) {
    const std::unique_ptr<DynamicNames> names(std::exchange(frame.dynamicNames, nullptr));
    frame.ownsDynamicNames = false;
  }
}

void Machine::ClearTemporaries(Frame& frame, std::size_t first) {
  for (Variant* slot = frame.base + first; slot < frame.base + frame.code->frameSize; ++slot) {
    if (slot->Mark() == kHoldsLock) {
      slot->SetMark(0);
      automation::ArrayBuffer* const array = slot->AsArray();
      slot->OverwriteEmpty();
      array->Unlock();
    } else if (slot->IsCounted()) {
      const Variant old(std::move(*slot));
    }
  }
}

// The name of the variable that an operand is; empty for a temporary.
std::string Machine::NameOf(const Code& code, Operand operand) const {
  const std::size_t place = operand & (kBankSize - 1);
  switch (static_cast<Bank>(operand >> 14)) {
    case Bank::Frame:
      return place < code.localNames.size() ? m_globals.Names().Utf8(code.localNames[place]) : std::string();
    case Bank::Fields:
      if (code.function == nullptr || code.function->owner == nullptr) return {};
      for (const ClassMember& member : code.function->owner->Members()) {
        if (member.isField && member.slot == place) return m_globals.Names().Utf8(member.name);
      }
      return {};
    case Bank::Globals: return m_globals.NameOfVariable(place);
    case Bank::Constants: break;
  }
  return {};
}

// The error as the original words it: with the name of what it is about, which only the instruction knows.
Error Machine::Worded(const Error& error, const Instruction& instruction) const {
  const bool isPlaced = m_isPlaced && m_placedNumber == error.Number();
  const bool isOurs = error.Source().empty() || error.Source() == kRuntimeErrorSource;
  if (isPlaced || !isOurs) return error;
  const bool isPlain = error.Description().empty() || error.Description() == ErrorText(error.Number());
  std::string about;
  const Code& code = *m_frames[m_depth - 1].code;
  switch (instruction.op) {
    case Op::CallIntrinsic: {
      const Binding& binding = *code.bindings[instruction.c];
      const bool isMismatch = error.Number() == number::kTypeMismatch;
      if (binding.kind == Binding::Kind::Intrinsic && (isPlain || isMismatch))
        about = binding.intrinsic->name;
      break;
    }
    case Op::GetElement:
    case Op::GetElement2:
    case Op::GetElements:
      if (isPlain && error.Number() == number::kTypeMismatch) about = NameOf(code, instruction.b);
      break;
    case Op::SetElement:
    case Op::SetElement2:
    case Op::SetElements:
    case Op::ReDim:
    case Op::Erase:
      if (isPlain && error.Number() == number::kTypeMismatch) about = NameOf(code, instruction.a);
      break;
    default: break;
  }
  if (about.empty()) return error;
  return {error.Number(), kRuntimeErrorSource,
          std::string(ErrorText(error.Number())).append(": '").append(about).append("'")};
}

void Machine::KeepError(const Error& error) {
  m_err.number = NumberOfResultCode(error.Number());
  m_err.source = error.Source().empty() ? kRuntimeErrorSource : error.Source();
  m_err.description = error.Description().empty() ? ErrorText(m_err.number) : error.Description();
  m_err.helpFile = std::exchange(m_helpFile, {});
  m_err.helpContext = std::exchange(m_helpContext, 0);
}

namespace {

const StatementMark* FindMark(const Frame& frame) {
  const auto& marks = frame.code->marks;
  const auto pc = static_cast<std::uint32_t>(frame.pc - frame.code->instructions.data());
  const auto next = std::upper_bound(marks.begin(), marks.end(), pc,
                                     [](std::uint32_t at, const StatementMark& m) { return at < m.begin; });
  return next == marks.begin() ? nullptr : &*(next - 1);
}

}  // namespace

// Goes up to the nearest activation that resumes; false when there is none up to the entry, whose frame is
// gone then too.
bool Machine::Unwind(const Error& error, std::size_t entry, const Instruction*& pc) {
  if (!m_isPlaced || m_placedNumber != error.Number()) {
    const StatementMark* mark = FindMark(Top());
    m_place = {Top().code->script, mark != nullptr ? mark->offset : 0};
    m_isPlaced = true;
    m_placedNumber = error.Number();
  }
  while (m_depth >= entry) {
    Frame& frame = Top();
    if (frame.resumesNext) {
      const StatementMark* mark = FindMark(frame);
      ClearTemporaries(frame, mark != nullptr ? mark->firstTemporary : frame.code->localCount);
      KeepError(error);
      m_isPlaced = false;
      pc = frame.code->instructions.data() + (mark != nullptr ? mark->resume : 0);
      return true;
    }
    ClearTemporaries(frame, frame.code->localCount);
    ReleaseFrame(frame);
    --m_depth;
  }
  return false;
}

void Machine::UnwindAll(std::size_t entry) {
  while (m_depth >= entry) {
    ClearTemporaries(Top(), Top().code->localCount);
    ReleaseFrame(Top());
    --m_depth;
  }
}

// Runs the frame on top, which has just been pushed.
Variant Machine::RunEntry(Variant& result) {
  const char here = 0;
  const bool isOutermost = m_nativeBase == nullptr;
  if (isOutermost) m_nativeBase = &here;
  Top().isEntry = true;
  const auto distance = m_nativeBase > &here ? m_nativeBase - &here : &here - m_nativeBase;
  try {
    if (static_cast<std::size_t>(distance) > kNativeStackShare) {
      UnwindAll(m_depth);
      RaiseRuntime(number::kOutOfStackSpace);
    }
    Execute();
  } catch (...) {
    if (isOutermost) m_nativeBase = nullptr;
    throw;
  }
  if (isOutermost) m_nativeBase = nullptr;
  return std::move(result);
}

Variant Machine::RunSource(const Code& code) {
  Variant result;
  Variant* const base = StackTop();
  if (m_stackEnd - base <= code.localCount + 16) RaiseRuntime(number::kOutOfStackSpace);
  for (Variant* slot = base; slot < base + code.localCount; ++slot) slot->OverwriteEmpty();
  Push(code, base, &result, nullptr);
  return RunEntry(result);
}

Variant Machine::CallFunction(Function& function, ScriptObject* me, std::span<Variant> arguments) {
  // As in a call from code: objects whose end makes the next one come here without a loop.
  m_context.budget.Charge(4);
  Variant result;
  Variant* const base = StackTop();
  if (static_cast<std::size_t>(m_stackEnd - base) <= arguments.size() + 16)
    RaiseRuntime(number::kOutOfStackSpace);
  for (std::size_t i = 0; i < arguments.size(); ++i) base[i].OverwriteWithCopy(arguments[i]);
  try {
    Enter(function, base, arguments.size(), &result, me, 0);
  } catch (...) {
    for (std::size_t i = 0; i < arguments.size(); ++i) base[i] = Variant();
    throw;
  }
  return RunEntry(result);
}

void Machine::ReleaseObjects() {
  // What is still alive refers to itself in a circle, or a host holds it. It ends as if its last reference
  // had gone; each takes itself out of the list, and may take others with it. An end may make the next
  // object: after as many ends as there were objects, what is left ends silently.
  std::size_t ends = 0;
  for (const ScriptObject* object = m_objects; object != nullptr; object = object->m_next) ++ends;
  while (m_objects != nullptr) {
    const automation::Ref<ScriptObject> keep(m_objects);
    if (ends != 0) {
      --ends;
      keep->Terminate();
    }
    if (keep->m_machine != nullptr) keep->Detach();
  }
}

}  // namespace hearthmake::vbscript
