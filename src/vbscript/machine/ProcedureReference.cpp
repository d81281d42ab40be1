#include "vbscript/machine/ProcedureReference.hpp"

#include "vbscript/Errors.hpp"
#include "vbscript/machine/Machine.hpp"

namespace hearthmake::vbscript {

ProcedureReference::ProcedureReference(Machine& machine, Function& function)
    : m_machine(machine.Life()), m_function(function) {}

const automation::Interface& ProcedureReference::Declaration() const {
  static const automation::Interface declaration("Object", "_Procedure", "", "");
  return declaration;
}

std::optional<std::int32_t> ProcedureReference::FindMember(std::string_view name) const {
  return name.empty() ? std::optional(automation::kDefaultMember) : std::nullopt;
}

automation::Variant ProcedureReference::Invoke(std::int32_t member, automation::InvokeKind kind,
                                               std::span<automation::Variant> arguments) {
  const std::shared_ptr<Machine*> machine = m_machine.lock();
  if (!machine || member != automation::kDefaultMember || kind == automation::InvokeKind::Let ||
      kind == automation::InvokeKind::Set)
    RaiseRuntime(number::kMemberNotFound);
  const automation::Ref<automation::Object> self(this);
  return (*machine)->CallFunction(m_function, nullptr, arguments);
}

}  // namespace hearthmake::vbscript
