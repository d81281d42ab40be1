#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <utility>

#include "adapters/win32/ComHeaders.hpp"
#include "adapters/win32/ObjectBorder.hpp"
#include "automation/RefCounted.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::win32 {

// A value that is handed to a late-bound call.
class Argument {
 public:
  Argument(automation::Variant value) : m_value(std::move(value)) {}  // NOLINT(google-explicit-constructor)
  template <std::convertible_to<std::string_view> T>
  Argument(const T& text)  // NOLINT(google-explicit-constructor)
      : m_value(automation::Variant::FromText(text)) {}
  Argument(std::int32_t value)  // NOLINT(google-explicit-constructor)
      : m_value(automation::Variant::FromLong(value)) {}
  template <std::same_as<bool> B>  // a pointer is none
  Argument(B value)                // NOLINT(google-explicit-constructor)
      : m_value(automation::Variant::FromBoolean(value)) {}

  const automation::Variant& Value() const { return m_value; }

 private:
  automation::Variant m_value;
};

// An automation object of the machine's, called by the names of its members. What a call fails with is the
// object's own error: number, source and description. A name that the object doesn't have is error 438.
//
// Used on the thread that has it only; that thread has entered COM.
class LateObject {
 public:
  using Arguments = std::initializer_list<Argument>;

  explicit LateObject(automation::Ref<IDispatch> object) : m_object(std::move(object)) {}
  // Error 429 names the class and says why there is no object of it.
  static LateObject Create(std::string_view progId);

  // Calls a method or reads a property whose result is a value (error 13 for an object).
  automation::Variant Call(std::string_view name, Arguments arguments = {}) const;
  // The same for one whose result is an object. Error 91 when it is Nothing or no object.
  LateObject Object(std::string_view name, Arguments arguments = {}) const;
  // Assigns a property; the value is the last argument.
  void Let(std::string_view name, Arguments argumentsAndValue) const;
  // For calls in which objects of ours take part: arguments may be references.
  automation::Variant Call(std::string_view name, std::span<automation::Variant> arguments,
                           ObjectBorder& border) const;

  IDispatch& Dispatch() const { return *m_object; }

 private:
  DISPID Find(std::string_view name) const;

  automation::Ref<IDispatch> m_object;
};

// The automation object that a value holds. Error 91 when it is Nothing or no object.
LateObject AsLateObject(const VARIANT& value);

}  // namespace hearthmake::win32
