#pragma once

#include <memory>
#include <vector>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "automation/Vtable.hpp"
#include "com/Com.hpp"
#include "com/Module.hpp"

namespace hearthmake::com {

class ThreadState;

// What a host holds of an object of ours: its COM identity. There is one for each object as long as a host
// has references to it, and all of them together are one outside reference of the object.
//
// The dual interfaces are faces: a pointer to a vtable made from the declaration. The first is that of the
// object's class and its identity; further ones come when they are asked for.
class ComObject final : public automation::VtableReceiver,
                        public IProvideClassInfo2,
                        public ISupportErrorInfo,
                        public IConnectionPointContainer {
 public:
  // Begins with one reference.
  ComObject(ThreadState& state, automation::Object& object);
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  // The object of ours behind an interface pointer; null when it is none of this thread.
  static automation::Ref<automation::Object> Behind(IUnknown* pointer, const ThreadState& state);

  automation::Object& Object() const { return *m_object; }
  IUnknown* Identity();
  ThreadState& State() const { return m_state; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override;
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  std::int32_t CallThroughVtable(const automation::VtableCall& call, void* const* places) noexcept override;

 private:
  friend class DualFace;

  struct Face : automation::VtableFace {
    ComObject* owner = nullptr;
    const automation::Interface* declared = nullptr;
    GUID iid = {};
  };

  ~ComObject() = default;
  bool IsOfThisThread() const;
  const automation::Interface& Declared() const { return m_object->Declaration(); }
  void AddFace(const automation::Interface& declared);
  Face* FindFace(REFIID iid);

  ThreadState& m_state;
  automation::Ref<automation::Object> m_object;
  std::vector<std::unique_ptr<Face>> m_faces;  // the first is the identity
  ULONG m_references = 1;
  ModuleLock m_lock;
};

}  // namespace hearthmake::com
