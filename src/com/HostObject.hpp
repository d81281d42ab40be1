#pragma once

#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// An object of the host's as one of ours: scripts and members call it late-bound, by IDispatch. Given back to
// the host it is the very object again. One without IDispatch has no members (error 438).
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
  automation::Ref<IUnknown> m_identity;
  automation::Ref<IDispatch> m_dispatch;
};

}  // namespace hearthmake::com
