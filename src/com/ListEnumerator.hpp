#pragma once

#include <vector>

#include "automation/RefCounted.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// One of COM's small enumerators over a list of its own. Traits say what an item is kept as and how a caller
// gets a copy.
template <class Traits>
class ListEnumerator final : public Traits::Interface {
 public:
  using Items = std::vector<typename Traits::Kept>;

  // Begins with one reference.
  explicit ListEnumerator(Items items, std::size_t position = 0)
      : m_items(std::move(items)), m_position(position) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != Traits::Id()) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<typename Traits::Interface*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, typename Traits::Given* items, ULONG* fetched) override {
    if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG given = 0;
    while (given < count && m_position < m_items.size()) items[given++] = Traits::Give(m_items[m_position++]);
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = m_items.size() - m_position;
    m_position += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    m_position = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(typename Traits::Interface** clone) override {
    if (clone == nullptr) return E_POINTER;
    *clone = new ListEnumerator(m_items, m_position);
    return S_OK;
  }

 private:
  ~ListEnumerator() = default;

  Items m_items;
  std::size_t m_position;
  ULONG m_references = 1;
};

struct ConnectionPointTraits {
  using Interface = IEnumConnectionPoints;
  using Kept = automation::Ref<IConnectionPoint>;
  using Given = IConnectionPoint*;
  static const IID& Id() { return IID_IEnumConnectionPoints; }
  static Given Give(const Kept& point) { return Kept(point).Detach(); }
};
using ConnectionPointEnumerator = ListEnumerator<ConnectionPointTraits>;

struct Connection {
  automation::Ref<IUnknown> sink;
  DWORD number;
};

struct ConnectionTraits {
  using Interface = IEnumConnections;
  using Kept = Connection;
  using Given = CONNECTDATA;
  static const IID& Id() { return IID_IEnumConnections; }
  static Given Give(const Kept& connection) {
    return {automation::Ref<IUnknown>(connection.sink).Detach(), connection.number};
  }
};
using ConnectionEnumerator = ListEnumerator<ConnectionTraits>;

}  // namespace hearthmake::com
