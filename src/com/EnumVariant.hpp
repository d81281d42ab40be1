#pragma once

#include <memory>
#include <vector>

#include "automation/Object.hpp"
#include "com/Com.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

// A walk over a collection of ours. Walks that were cloned share what they have seen of it.
class EnumVariant final : public IEnumVARIANT {
 public:
  // Begins with one reference.
  explicit EnumVariant(automation::Ref<automation::Enumerator> items);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** clone) override;

 private:
  struct Seen;

  explicit EnumVariant(std::shared_ptr<Seen> seen, std::size_t position);
  ~EnumVariant() = default;

  ULONG m_references = 1;
  std::shared_ptr<Seen> m_seen;
  std::size_t m_position = 0;
  ThreadState::Hold m_hold;
};

}  // namespace hearthmake::com
