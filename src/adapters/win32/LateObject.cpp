#include "adapters/win32/LateObject.hpp"

#include <objbase.h>

#include <string>
#include <vector>

#include "adapters/win32/AutomationFailure.hpp"
#include "adapters/win32/DispatchCall.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

namespace {

using automation::InvokeKind;
using automation::Ref;
using automation::RuntimeError;
using automation::Variant;

std::vector<Variant> ValuesOf(LateObject::Arguments arguments) {
  std::vector<Variant> values;
  for (const Argument& argument : arguments) values.push_back(argument.Value());
  return values;
}

}  // namespace

LateObject LateObject::Create(std::string_view progId) {
  CLSID id = {};
  void* made = nullptr;
  HRESULT outcome = CLSIDFromProgID(ToWide(progId).c_str(), &id);
  if (SUCCEEDED(outcome)) outcome = CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, &made);
  if (FAILED(outcome)) {
    automation::Raise(RuntimeError::CantCreateObject, "Hearthmake",
                      std::string(progId) + " (" + SystemText(outcome) + ")");
  }
  return LateObject(Ref<IDispatch>::Adopt(static_cast<IDispatch*>(made)));
}

DISPID LateObject::Find(std::string_view name) const {
  const auto id = FindMember(*m_object, name);
  if (!id) automation::Raise(RuntimeError::MemberNotFound, "", std::string(name));
  return *id;
}

Variant LateObject::Call(std::string_view name, Arguments arguments) const {
  std::vector<Variant> values = ValuesOf(arguments);
  return Call(name, values, NoObjects());
}

Variant LateObject::Call(std::string_view name, std::span<Variant> arguments, ObjectBorder& border) const {
  OwnedVariant result;
  CallMember(*m_object, Find(name), InvokeKind::Call, arguments, border, result);
  return FromVariant(result, border);
}

LateObject LateObject::Object(std::string_view name, Arguments arguments) const {
  std::vector<Variant> values = ValuesOf(arguments);
  OwnedVariant result;
  CallMember(*m_object, Find(name), InvokeKind::Call, values, NoObjects(), result);
  return AsLateObject(result);
}

void LateObject::Let(std::string_view name, Arguments argumentsAndValue) const {
  std::vector<Variant> values = ValuesOf(argumentsAndValue);
  OwnedVariant none;
  CallMember(*m_object, Find(name), InvokeKind::Let, values, NoObjects(), none);
}

LateObject AsLateObject(const VARIANT& value) {
  const bool isObject = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
  void* found = nullptr;
  if (!isObject || value.punkVal == nullptr || FAILED(value.punkVal->QueryInterface(IID_IDispatch, &found))) {
    automation::Raise(RuntimeError::ObjectNotSet, "");
  }
  return LateObject(Ref<IDispatch>::Adopt(static_cast<IDispatch*>(found)));
}

}  // namespace hearthmake::win32
