#pragma once

#include "com/Com.hpp"
#include "com/ThreadState.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::com {

// Makes the objects of one public class for hosts. The first one on a thread makes its apartment.
class ClassFactory final : public IClassFactory {
 public:
  // Begins with one reference.
  ClassFactory(const PublicClass& entry, ThreadState::Composer composer)
      : m_class(entry), m_composer(composer) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&m_references));
  }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ~ClassFactory() = default;

  const PublicClass& m_class;
  ThreadState::Composer m_composer;
  LONG m_references = 1;
  ModuleLock m_lock;
};

}  // namespace hearthmake::com
