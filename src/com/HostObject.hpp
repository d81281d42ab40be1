#pragma once

#include <unordered_map>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// An object of the host's as one of ours: scripts and members call it late-bound, by IDispatch. Given back to
// the host it is the very object again. One without IDispatch has no members (error 438).
//
// The ids that it gives out stand for names, the same for all objects of hosts: callers keep an id and use it
// for another object of the same declaration. What number the name has with the object itself is its own
// affair.
class HostObject final : public automation::Object {
 public:
  explicit HostObject(automation::Ref<IUnknown> identity);

  const automation::Interface& Declaration() const override;
  std::optional<std::int32_t> FindMember(std::string_view name) const override;
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override;
  automation::Ref<automation::Enumerator> Enumerate() override;

  // A reference for the caller: its IDispatch, or what it has.
  IUnknown* Give() const;
  bool IsAlive() const { return IsReferenced(); }

 protected:
  ~HostObject() override;

 private:
  // The object's own number for an id that was given out.
  std::optional<DISPID> OwnId(std::int32_t id) const;

  automation::Ref<IUnknown> m_identity;
  automation::Ref<IDispatch> m_dispatch;
  mutable const automation::Interface* m_declaration = nullptr;  // found when first asked for
  mutable std::unordered_map<std::int32_t, DISPID> m_ids;  // by the id of the name; those asked for so far
};

}  // namespace hearthmake::com
