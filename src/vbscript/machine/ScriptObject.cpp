#include "vbscript/machine/ScriptObject.hpp"

#include <vector>

#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/machine/Machine.hpp"
#include "vbscript/machine/Values.hpp"

namespace hearthmake::vbscript {

using automation::InvokeKind;
using automation::Variant;
using automation::VariantType;

ScriptObject::ScriptObject(Machine& machine, ScriptClass& scriptClass)
    : m_class(scriptClass.shared_from_this()),
      m_fields(std::make_unique<Variant[]>(scriptClass.fieldCount)),
      m_machine(&machine),
      m_next(machine.m_objects) {
  for (const ClassMember* field : scriptClass.arrayFields)
    MakeArray(m_fields[field->slot], field->shape.bounds, field->shape.isFixed);
  if (m_next != nullptr) m_next->m_previous = this;
  machine.m_objects = this;
}

ScriptObject::~ScriptObject() {
  if (m_machine != nullptr) {
    if (m_next != nullptr) m_next->m_previous = m_previous;
    (m_previous != nullptr ? m_previous->m_next : m_machine->m_objects) = m_next;
  }
}

void ScriptObject::Detach() {
  if (m_next != nullptr) m_next->m_previous = m_previous;
  (m_previous != nullptr ? m_previous->m_next : m_machine->m_objects) = m_next;
  m_previous = m_next = nullptr;
  m_machine = nullptr;
  m_isTerminated = true;
  const std::unique_ptr<Variant[]> fields =
      std::exchange(m_fields, std::make_unique<Variant[]>(m_class->fieldCount));
}

void ScriptObject::Terminate() noexcept {
  if (std::exchange(m_isTerminated, true) || m_machine == nullptr || m_class->terminate == nullptr) return;
  // It may run while an error is on its way out, whose place must not be lost.
  Machine& machine = *m_machine;
  const ErrorPlace place = machine.m_place;
  const bool isPlaced = machine.m_isPlaced;
  const std::int32_t placedNumber = machine.m_placedNumber;
  try {
    machine.CallFunction(*m_class->terminate, this, {});
  } catch (...) {
    // Nobody is there to hear of it; a script out of time stops at its next look.
  }
  machine.m_place = place;
  machine.m_isPlaced = isPlaced;
  machine.m_placedNumber = placedNumber;
}

void ScriptObject::LastReferenceGone() noexcept {
  if (!m_isTerminated && m_machine != nullptr && m_class->terminate != nullptr) {
    AddRef();
    Terminate();
    DropReference();
    if (IsReferenced()) {
      LiveOn();
      return;
    }
  }
  delete this;
}

std::optional<std::int32_t> ScriptObject::FindMember(std::string_view name) const {
  if (m_machine == nullptr) return std::nullopt;
  const Symbol symbol = m_machine->Names().Names().Find(automation::Utf8ToUtf16(name));
  const ClassMember* member = symbol == Symbol::None ? nullptr : m_class->Find(symbol);
  if (member == nullptr || member->visibility == Visibility::Private) return std::nullopt;
  if (member == m_class->defaultMember) return automation::kDefaultMember;
  return member->id;
}

Variant ScriptObject::Invoke(std::int32_t member, InvokeKind kind, std::span<Variant> arguments) {
  const ClassMember* found = nullptr;
  if (m_machine != nullptr) {
    if (member == automation::kDefaultMember) {
      found = m_class->defaultMember;
    } else if (member > 0 && static_cast<std::size_t>(member) <= m_class->Members().size()) {
      found = &m_class->Members()[static_cast<std::size_t>(member) - 1];
    }
  }
  if (found == nullptr) RaiseRuntime(number::kMemberNotFound);
  const automation::Ref<Object> self(this);
  return InvokeMember(*found, kind, arguments);
}

Variant ScriptObject::InvokeMember(const ClassMember& member, InvokeKind kind, std::span<Variant> arguments) {
  const bool isPut = kind == InvokeKind::Let || kind == InvokeKind::Set;
  if (member.isField || member.isConstant) {
    if (member.isConstant) {
      if (isPut) RaiseRuntime(number::kIllegalAssignment);
      return member.value;
    }
    Variant& field = m_fields[member.slot];
    const std::size_t indices = arguments.size() - (isPut && !arguments.empty() ? 1 : 0);
    if (isPut && arguments.empty()) RaiseRuntime(number::kWrongNumberOfArguments);
    Variant* place = &field;
    if (indices != 0) {
      if (field.Type() == VariantType::Array) ResolveIndices(arguments.first(indices));
      if (field.Type() == VariantType::Array) {
        place = &Element(isPut ? OwnArray(field) : *field.AsArray(), arguments.first(indices));
      } else if (field.IsObject() && field.AsObject() != nullptr) {
        const Variant keep(field);
        return keep.AsObject()->Invoke(automation::kDefaultMember, kind, arguments);
      } else {
        RaiseRuntime(number::kWrongNumberOfArguments);
      }
    }
    if (!isPut) return CopyOf(*place);
    if (kind == InvokeKind::Set) {
      SetVariable(*place, arguments.back());
    } else {
      LetVariable(*place, arguments.back(), false);
    }
    return {};
  }
  Function* function = nullptr;
  switch (kind) {
    case InvokeKind::Let: function = member.let != nullptr ? member.let : member.set; break;
    case InvokeKind::Set: function = member.set != nullptr ? member.set : member.let; break;
    default: function = member.method != nullptr ? member.method : member.get;
  }
  if (function == nullptr) RaiseRuntime(number::kMemberNotFound);
  if (kind == InvokeKind::Let && member.let == nullptr && !arguments.back().Target().IsObject())
    RaiseRuntime(number::kObjectRequired);
  return m_machine->CallFunction(*function, this, arguments);
}

}  // namespace hearthmake::vbscript
