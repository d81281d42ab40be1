#pragma once

#include <memory>
#include <optional>
#include <span>

#include "automation/Object.hpp"
#include "vbscript/machine/Program.hpp"

namespace hearthmake::vbscript {

class Machine;

// An object of a script class. It may outlive its engine in a host's hands: it is empty then, and every
// call is error 438.
class ScriptObject final : public automation::Object {
 public:
  ScriptObject(Machine& machine, ScriptClass& scriptClass);

  const automation::Interface& Declaration() const override { return m_class->Declaration(); }
  std::optional<std::int32_t> FindMember(std::string_view name) const override;
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override;

  const ScriptClass& Class() const { return *m_class; }
  automation::Variant* Fields() { return m_fields.get(); }
  // As Invoke, for a member that is known.
  automation::Variant InvokeMember(const ClassMember& member, automation::InvokeKind kind,
                                   std::span<automation::Variant> arguments);
  // Runs Class_Terminate if it has not run yet.
  void Terminate() noexcept;
  // Takes it out of its machine; the values go.
  void Detach();

 protected:
  void LastReferenceGone() noexcept override;

 private:
  friend class Machine;
  ~ScriptObject() override;

  std::shared_ptr<ScriptClass> m_class;
  std::unique_ptr<automation::Variant[]> m_fields;
  Machine* m_machine;
  ScriptObject* m_previous = nullptr;  // in the machine's list
  ScriptObject* m_next = nullptr;
  bool m_isTerminated = false;
};

}  // namespace hearthmake::vbscript
