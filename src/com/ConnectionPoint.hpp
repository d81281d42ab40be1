#pragma once

#include "automation/Events.hpp"
#include "automation/Interface.hpp"
#include "com/ComObject.hpp"

namespace hearthmake::com {

// Where hosts connect their sinks to the events of an object. Any number of them.
class ConnectionPoint final : public IConnectionPoint {
 public:
  // Begins with one reference. Keeps the object.
  ConnectionPoint(automation::Ref<ComObject> container, automation::EventSource& source,
                  const automation::Interface& events)
      : m_container(std::move(container)), m_source(source), m_events(events) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* number) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD number) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

 private:
  ~ConnectionPoint() = default;

  automation::Ref<ComObject> m_container;
  automation::EventSource& m_source;
  const automation::Interface& m_events;
  ULONG m_references = 1;
};

}  // namespace hearthmake::com
