#include "com/ConnectionPoint.hpp"

#include <memory>
#include <vector>

#include "com/EventConnection.hpp"
#include "com/Failure.hpp"
#include "com/ListEnumerator.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

using automation::Ref;

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IConnectionPoint*>(this);
  return S_OK;
}

ULONG ConnectionPoint::Release() {
  const ULONG left = --m_references;
  if (left == 0) delete this;
  return left;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
  if (iid == nullptr) return E_POINTER;
  *iid = ParseGuid(m_events.InterfaceId());
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  return m_container->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container));
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* number) {
  if (sink == nullptr || number == nullptr) return E_POINTER;
  *number = 0;
  void* found = nullptr;
  // A sink answers to the id of the events; that of a script only to IDispatch.
  if (FAILED(sink->QueryInterface(ParseGuid(m_events.InterfaceId()), &found)) &&
      FAILED(sink->QueryInterface(IID_IDispatch, &found))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  const auto dispatch = Ref<IDispatch>::Adopt(static_cast<IDispatch*>(found));
  const ThreadState::Call call;
  return Guarded(IID_IConnectionPoint, [&] {
    const auto connection = std::make_shared<EventConnection>(m_events, dispatch);
    *number = m_source.Advise(connection);
    connection->SetKey({&m_container->Object(), *number});
    return S_OK;
  });
}

HRESULT ConnectionPoint::Unadvise(DWORD number) {
  const ThreadState::Call call;
  const auto& connections = m_container->State().Connections();
  if (!connections.contains({&m_container->Object(), number})) return CONNECT_E_NOCONNECTION;
  return Guarded(IID_IConnectionPoint, [&] {
    m_source.Unadvise(number);
    return S_OK;
  });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections == nullptr) return E_POINTER;
  *connections = nullptr;
  std::vector<Connection> list;
  for (const auto& [key, connection] : m_container->State().Connections()) {
    if (key.first == &m_container->Object()) {
      list.push_back({Ref<IUnknown>(connection->Sink().Get()), key.second});
    }
  }
  *connections = new ConnectionEnumerator(std::move(list));
  return S_OK;
}

}  // namespace hearthmake::com
