#pragma once

#include <optional>
#include <span>

#include "automation/Object.hpp"
#include "vbscript/machine/Program.hpp"

namespace hearthmake::vbscript {

class Machine;

// What GetRef gives: an object whose default member calls a procedure. Must not be called when the engine
// has ended; the machine takes care that its procedures can't be then.
class ProcedureReference final : public automation::Object {
 public:
  ProcedureReference(Machine& machine, Function& function);

  const automation::Interface& Declaration() const override;
  std::optional<std::int32_t> FindMember(std::string_view name) const override;
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override;

 private:
  std::weak_ptr<Machine*> m_machine;
  Function& m_function;
};

}  // namespace hearthmake::vbscript
