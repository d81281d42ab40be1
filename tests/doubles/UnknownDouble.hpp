#pragma once

#include "adapters/win32/ComHeaders.hpp"

namespace hearthmake::doubles {

// What the objects of tests all have: references, and one interface of COM's beside IUnknown.
template <class Interface>
class UnknownDouble : public Interface {
 public:
  UnknownDouble(const UnknownDouble&) = delete;
  UnknownDouble& operator=(const UnknownDouble&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid != IID_IUnknown && iid != m_iid && !AnswersTo(iid)) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }
  ULONG References() const { return m_references; }

 protected:
  // With the id of the interface, and how many references whoever makes the object has.
  UnknownDouble(REFIID iid, ULONG references) : m_iid(iid), m_references(references) {}
  virtual ~UnknownDouble() = default;

  // Whether it is asked for by a further id.
  virtual bool AnswersTo(REFIID /*iid*/) const { return false; }

 private:
  const IID m_iid;
  ULONG m_references;
};

// An automation object without type information.
class TypelessDispatch : public UnknownDouble<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

 protected:
  explicit TypelessDispatch(ULONG references) : UnknownDouble(IID_IDispatch, references) {}
};

}  // namespace hearthmake::doubles
