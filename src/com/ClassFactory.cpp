#include "com/ClassFactory.hpp"

#include "com/Failure.hpp"

namespace hearthmake::com {

using automation::Ref;

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IClassFactory*>(this);
  return S_OK;
}

ULONG ClassFactory::Release() {
  const LONG left = InterlockedDecrement(&m_references);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return Guarded(IID_IClassFactory, [&] {
    const ThreadState::Call call(m_composer);
    const Ref<automation::Object> made = m_class.create();
    const auto given = Ref<IUnknown>::Adopt(ThreadState::Current().Give(made.Get()));
    return given->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock != FALSE) {
    ModuleLock::Add();
  } else {
    ModuleLock::Remove();
  }
  return S_OK;
}

}  // namespace hearthmake::com
