#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/win32/AutomationFailure.hpp"
#include "adapters/win32/DispatchCall.hpp"
#include "adapters/win32/ObjectBorder.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "doubles/UnknownDouble.hpp"

namespace hearthmake::doubles {

// Objects across the border as simply as it goes: no object gets its identity back, references are not
// written back.

// An object of COM's as one of ours.
class ForeignObject final : public automation::Object {
 public:
  explicit ForeignObject(automation::Ref<IDispatch> object) : m_object(std::move(object)) {}

  const automation::Interface& Declaration() const override {
    static const automation::Interface kInterface("Object", "", "", "");
    return kInterface;
  }
  std::optional<std::int32_t> FindMember(std::string_view name) const override {
    return win32::FindMember(*m_object, name);
  }
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override {
    win32::OwnedVariant result;
    win32::CallMember(*m_object, member, kind, arguments, win32::NoObjects(), result);
    return win32::FromVariant(result, win32::NoObjects());
  }
  IDispatch& Foreign() const { return *m_object; }

 private:
  automation::Ref<IDispatch> m_object;
};

// An object of ours as COM sees it.
class ObjectFace final : public TypelessDispatch {
 public:
  // Begins with one reference.
  ObjectFace(automation::Ref<automation::Object> object, win32::ObjectBorder& border)
      : TypelessDispatch(1), m_object(std::move(object)), m_border(border) {}

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const auto id = m_object->FindMember(win32::ToUtf8(names[0]));
    *ids = id.value_or(DISPID_UNKNOWN);
    return id ? S_OK : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    try {
      std::vector<automation::Variant> arguments;
      for (UINT i = parameters->cArgs; i-- > 0;)
        arguments.push_back(win32::FromVariant(parameters->rgvarg[i], m_border));
      const bool isLet = (flags & DISPATCH_PROPERTYPUT) != 0;
      const auto value =
          m_object->Invoke(id, isLet ? automation::InvokeKind::Let : automation::InvokeKind::Call, arguments);
      if (result != nullptr) *result = win32::ToVariant(value, m_border);
      return S_OK;
    } catch (const automation::Error& error) {
      return win32::ToResult(error.Number());
    }
  }

 private:
  ~ObjectFace() override = default;

  automation::Ref<automation::Object> m_object;
  win32::ObjectBorder& m_border;
};

class BorderDouble final : public win32::ObjectBorder {
 public:
  IUnknown* Give(automation::Object& object, const automation::Interface* /*declared*/) override {
    if (const auto* foreign = dynamic_cast<ForeignObject*>(&object)) {
      foreign->Foreign().AddRef();
      return &foreign->Foreign();
    }
    return static_cast<IDispatch*>(new ObjectFace(automation::Ref<automation::Object>(&object), *this));
  }
  automation::Ref<automation::Object> Take(IUnknown& pointer) override {
    void* found = nullptr;
    if (FAILED(pointer.QueryInterface(IID_IDispatch, &found)))
      automation::Raise(automation::RuntimeError::TypeMismatch, "");
    return automation::Make<ForeignObject>(automation::Ref<IDispatch>::Adopt(static_cast<IDispatch*>(found)));
  }
};

}  // namespace hearthmake::doubles
