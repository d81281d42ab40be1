#include "com/ComObject.hpp"

#include <array>

#include "automation/Error.hpp"
#include "automation/Events.hpp"
#include "com/ConnectionPoint.hpp"
#include "com/DualFace.hpp"
#include "com/Failure.hpp"
#include "com/ListEnumerator.hpp"
#include "com/ThreadState.hpp"
#include "com/VariantConversion.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::com {

namespace {

using automation::Interface;
using automation::Ref;
using automation::ValueKind;
using automation::Variant;
using automation::VtableCall;
using automation::VtableSlot;

// Asking for this gives the ComObject itself. No proxy has it.
constexpr GUID kOwnObject = {0x6f0ad1c9, 0x3b52, 0x4d6c, {0x9a, 0x57, 0x1c, 0x2f, 0x5e, 0x8b, 0x30, 0xd4}};

constexpr std::size_t kUsualArguments = 6;

// The arguments of one call through a vtable. Those that are in/out go by reference to a variant of ours.
class CallArguments {
 public:
  CallArguments(std::span<const VtableSlot> slots, void* const* places) : m_slots(slots), m_places(places) {
    if (slots.size() > kUsualArguments) m_more.resize(slots.size() * 2);
    for (std::size_t i = 0; i < slots.size(); ++i) {
      Variant value = FromPlace(TypeOf(slots[i].type), places[i]);
      if (slots[i].isInOut) {
        Values()[slots.size() + i] = std::move(value);
        value = Variant::ByReference(&Values()[slots.size() + i]);
      }
      Values()[i] = std::move(value);
    }
  }
  std::span<Variant> All() { return {Values(), m_slots.size()}; }

  void WriteBack() {
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
      if (!m_slots[i].isInOut) continue;
      ToPlace(TypeOf(m_slots[i].type), m_places[i], Values()[i].Target(), Declared(m_slots[i].type));
    }
  }

  static const Interface* Declared(const automation::ValueType& type) {
    return type.kind == ValueKind::Object && type.object != nullptr ? &type.object() : nullptr;
  }

 private:
  Variant* Values() { return m_more.empty() ? m_few.data() : m_more.data(); }

  std::span<const VtableSlot> m_slots;
  void* const* m_places;
  std::array<Variant, kUsualArguments * 2> m_few;
  std::vector<Variant> m_more;
};

// A result's place holds nothing of worth when the call begins.
void ClearPlace(VARTYPE type, void* place) {
  switch (type) {
    case VT_BSTR:
    case VT_DISPATCH: *static_cast<void**>(place) = nullptr; return;
    case VT_VARIANT: VariantInit(static_cast<VARIANT*>(place)); return;
    default: return;
  }
}

bool AreAllGiven(const VtableCall& call, void* const* places) {
  for (std::size_t i = 0; i < call.slotCount; ++i) {
    if (places[i] == nullptr) return false;
  }
  return call.result.kind == ValueKind::Void || places[call.slotCount] != nullptr;
}

}  // namespace

ComObject::ComObject(ThreadState& state, automation::Object& object) : m_state(state), m_object(&object) {
  AddFace(Declared());
}

Ref<automation::Object> ComObject::Behind(IUnknown* pointer, const ThreadState& state) {
  void* found = nullptr;
  if (FAILED(pointer->QueryInterface(kOwnObject, &found))) return nullptr;
  auto* own = static_cast<ComObject*>(found);
  const Ref<automation::Object> object =
      &own->m_state == &state ? own->m_object : Ref<automation::Object>(nullptr);
  own->Release();
  return object;
}

bool ComObject::IsOfThisThread() const { return ThreadState::CurrentOrNull() == &m_state; }

void ComObject::AddFace(const Interface& declared) {
  auto face = std::make_unique<Face>();
  face->vtable = VtableOf(declared).data();
  face->receiver = this;
  face->owner = this;
  face->declared = &declared;
  face->iid = ParseGuid(declared.InterfaceId());
  m_faces.push_back(std::move(face));
}

IUnknown* ComObject::Identity() { return reinterpret_cast<IUnknown*>(m_faces.front().get()); }

ComObject::Face* ComObject::FindFace(REFIID iid) {
  if (iid == IID_IUnknown || iid == IID_IDispatch) return m_faces.front().get();
  for (const auto& face : m_faces) {
    if (face->iid == iid && iid != GUID_NULL) return face.get();
  }
  for (const auto further : Declared().Implemented()) {
    if (ParseGuid(further().InterfaceId()) != iid) continue;
    AddFace(further());
    return m_faces.back().get();
  }
  return nullptr;
}

HRESULT ComObject::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid == kOwnObject) {
    *object = this;
  } else if (iid == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2) {
    *object = static_cast<IProvideClassInfo2*>(this);
  } else if (iid == IID_IConnectionPointContainer && Declared().Source() != nullptr) {
    *object = static_cast<IConnectionPointContainer*>(this);
  } else {
    *object = FindFace(iid);
  }
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG ComObject::Release() {
  const ULONG left = --m_references;
  if (left != 0) return left;
  // The end of the object may call the host, and is the last thing that this thread does when it was the
  // last object.
  const ThreadState::Call call;
  m_state.Forget(*m_object);
  delete this;
  return 0;
}

HRESULT ComObject::GetClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (Declared().InterfaceId().empty()) return E_NOTIMPL;
  return m_state.Types().Find(ParseGuid(CoclassId(Declared())), info);
}

HRESULT ComObject::GetGUID(DWORD kind, GUID* guid) {
  if (guid == nullptr) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  const Interface* source = Declared().Source();
  if (source == nullptr) return E_UNEXPECTED;
  *guid = ParseGuid(source->InterfaceId());
  return S_OK;
}

HRESULT ComObject::InterfaceSupportsErrorInfo(REFIID iid) {
  return iid != IID_IUnknown && FindFace(iid) != nullptr ? S_OK : S_FALSE;
}

HRESULT ComObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points == nullptr) return E_POINTER;
  *points = nullptr;
  IConnectionPoint* point = nullptr;
  const HRESULT result = FindConnectionPoint(ParseGuid(Declared().Source()->InterfaceId()), &point);
  if (FAILED(result)) return result;
  *points = new ConnectionPointEnumerator({Ref<IConnectionPoint>::Adopt(point)});
  return S_OK;
}

HRESULT ComObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  const Interface* source = Declared().Source();
  if (source == nullptr || iid != ParseGuid(source->InterfaceId())) return CONNECT_E_NOCONNECTION;
  auto* events = dynamic_cast<automation::EventSource*>(m_object.Get());
  if (events == nullptr) return CONNECT_E_NOCONNECTION;
  *point = new ConnectionPoint(Ref<ComObject>(this), *events, *source);
  return S_OK;
}

std::int32_t ComObject::CallThroughVtable(const VtableCall& call, void* const* places) noexcept {
  if (!IsOfThisThread()) return RPC_E_WRONG_THREAD;
  if (!AreAllGiven(call, places)) return E_POINTER;
  const ThreadState::Call running;
  // The host may drop the object while it works, and this with it.
  const Ref<automation::Object> object = m_object;
  const GUID iid = m_faces.front()->iid;
  const bool hasResult = call.result.kind != ValueKind::Void;
  void* const result = places[call.slotCount];
  const VARTYPE resultType = TypeOf(call.result);
  if (hasResult) ClearPlace(resultType, result);
  return Guarded(iid, [&] {
    CallArguments arguments(call.Slots(), places);
    const Variant value = call.invoke(*object, arguments.All());
    arguments.WriteBack();
    if (hasResult) ToPlace(resultType, result, value, CallArguments::Declared(call.result));
    return S_OK;
  });
}

}  // namespace hearthmake::com
