#include "com/DualFace.hpp"

#include <map>
#include <mutex>

#include "com/ComObject.hpp"
#include "com/Dispatch.hpp"
#include "com/Failure.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

// The entries that every dual interface begins with: IUnknown and IDispatch.
class DualFace {
 public:
  using Face = ComObject::Face;

  static HRESULT STDMETHODCALLTYPE QueryInterface(Face* self, REFIID iid, void** object) {
    return self->owner->QueryInterface(iid, object);
  }
  static ULONG STDMETHODCALLTYPE AddRef(Face* self) { return self->owner->AddRef(); }
  static ULONG STDMETHODCALLTYPE Release(Face* self) { return self->owner->Release(); }

  static HRESULT STDMETHODCALLTYPE GetTypeInfoCount(Face* self, UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = self->iid == GUID_NULL ? 0 : 1;
    return S_OK;
  }
  static HRESULT STDMETHODCALLTYPE GetTypeInfo(Face* self, UINT index, LCID /*locale*/, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0 || self->iid == GUID_NULL) return DISP_E_BADINDEX;
    return self->owner->State().Types().Find(self->iid, info);
  }
  static HRESULT STDMETHODCALLTYPE GetIDsOfNames(Face* self, REFIID /*reserved*/, LPOLESTR* names, UINT count,
                                                 LCID /*locale*/, DISPID* ids) {
    if (names == nullptr || ids == nullptr) return E_POINTER;
    if (!self->owner->IsOfThisThread()) return RPC_E_WRONG_THREAD;
    const ThreadState::Call call;
    return Guarded(self->iid,
                   [&] { return FindNames(self->owner->Object(), Further(*self), names, count, ids); });
  }
  static HRESULT STDMETHODCALLTYPE Invoke(Face* self, DISPID member, REFIID /*reserved*/, LCID /*locale*/,
                                          WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                          EXCEPINFO* failure, UINT* /*wrongArgument*/) {
    if (parameters == nullptr) return E_POINTER;
    if (!self->owner->IsOfThisThread()) return RPC_E_WRONG_THREAD;
    const ThreadState::Call call;
    // The host may drop the object while it works.
    const automation::Ref<automation::Object> object(&self->owner->Object());
    return InvokeMember(*object, Further(*self), member, flags, *parameters, result, failure);
  }

 private:
  static const automation::Interface* Further(const Face& self) {
    return self.declared == &self.owner->Declared() ? nullptr : self.declared;
  }
};

namespace {

template <class F>
void* Entry(F* function) {
  return reinterpret_cast<void*>(function);
}

std::vector<void*> MakeVtable(const automation::Interface& declared) {
  std::vector<void*> vtable = {Entry(&DualFace::QueryInterface), Entry(&DualFace::AddRef),
                               Entry(&DualFace::Release),        Entry(&DualFace::GetTypeInfoCount),
                               Entry(&DualFace::GetTypeInfo),    Entry(&DualFace::GetIDsOfNames),
                               Entry(&DualFace::Invoke)};
  for (const automation::Member& member : declared.Members()) vtable.push_back(Entry(member.vtableEntry));
  return vtable;
}

}  // namespace

const std::vector<void*>& VtableOf(const automation::Interface& declared) {
  static std::mutex mutex;
  static std::map<const automation::Interface*, std::vector<void*>> vtables;
  const std::lock_guard lock(mutex);
  const auto known = vtables.find(&declared);
  if (known != vtables.end()) return known->second;
  return vtables.emplace(&declared, MakeVtable(declared)).first->second;
}

}  // namespace hearthmake::com
