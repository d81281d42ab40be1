#include "com/EnumVariant.hpp"

#include "com/Failure.hpp"
#include "com/ThreadState.hpp"
#include "com/VariantConversion.hpp"

namespace hearthmake::com {

struct EnumVariant::Seen {
  // Whether there is an item at a position; it is in the list then.
  bool Reaches(std::size_t position) {
    automation::Variant item;
    while (position >= list.size()) {
      if (!source->Next(item)) return false;
      list.push_back(item);
    }
    return true;
  }

  automation::Ref<automation::Enumerator> source;
  std::vector<automation::Variant> list;
};

EnumVariant::EnumVariant(automation::Ref<automation::Enumerator> items) : m_seen(std::make_shared<Seen>()) {
  m_seen->source = std::move(items);
}

EnumVariant::EnumVariant(std::shared_ptr<Seen> seen, std::size_t position)
    : m_seen(std::move(seen)), m_position(position) {}

HRESULT EnumVariant::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IEnumVARIANT) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IEnumVARIANT*>(this);
  return S_OK;
}

ULONG EnumVariant::Release() {
  const ULONG left = --m_references;
  if (left != 0) return left;
  const ThreadState::Call call;
  delete this;
  return 0;
}

HRESULT EnumVariant::Next(ULONG count, VARIANT* items, ULONG* fetched) {
  if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
  const ThreadState::Call call;
  ULONG given = 0;
  const HRESULT result = Guarded(IID_IEnumVARIANT, [&] {
    while (given < count && m_seen->Reaches(m_position)) {
      items[given] = ToVariant(m_seen->list[m_position]);
      ++m_position;
      ++given;
    }
    return given == count ? S_OK : S_FALSE;
  });
  if (fetched != nullptr) *fetched = given;
  return result;
}

HRESULT EnumVariant::Skip(ULONG count) {
  const ThreadState::Call call;
  return Guarded(IID_IEnumVARIANT, [&] {
    for (ULONG skipped = 0; skipped < count; ++skipped, ++m_position) {
      if (!m_seen->Reaches(m_position)) return S_FALSE;
    }
    return S_OK;
  });
}

HRESULT EnumVariant::Reset() {
  m_position = 0;
  return S_OK;
}

HRESULT EnumVariant::Clone(IEnumVARIANT** clone) {
  if (clone == nullptr) return E_POINTER;
  *clone = new EnumVariant(m_seen, m_position);
  return S_OK;
}

}  // namespace hearthmake::com
