#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <type_traits>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/OleDate.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::automation {

// How each C++ type of a declared member travels in a variant. This is the one place where the core's
// own types meet automation's.
template <class T>
struct Convert;

template <>
struct Convert<std::int16_t> {
  static constexpr ValueType Type() { return {ValueKind::Integer}; }
  static std::int16_t From(const Variant& value) { return ToInteger(value); }
  static Variant To(std::int16_t value) { return Variant::FromInteger(value); }
};

template <>
struct Convert<std::int32_t> {
  static constexpr ValueType Type() { return {ValueKind::Long}; }
  static std::int32_t From(const Variant& value) { return ToLong(value); }
  static Variant To(std::int32_t value) { return Variant::FromLong(value); }
};

template <>
struct Convert<bool> {
  static constexpr ValueType Type() { return {ValueKind::Boolean}; }
  static bool From(const Variant& value) { return ToBoolean(value); }
  static Variant To(bool value) { return Variant::FromBoolean(value); }
};

template <>
struct Convert<double> {
  static constexpr ValueType Type() { return {ValueKind::Double}; }
  static double From(const Variant& value) { return ToDouble(value); }
  static Variant To(double value) { return Variant::FromDouble(value); }
};

template <>
struct Convert<Date> {
  static constexpr ValueType Type() { return {ValueKind::Date}; }
  static Date From(const Variant& value) { return {ToDate(value)}; }
  static Variant To(Date value) { return Variant::FromDate(value.value); }
};

template <>
struct Convert<std::string> {
  static constexpr ValueType Type() { return {ValueKind::String}; }
  static std::string From(const Variant& value) { return ToText(value); }
  static Variant To(const std::string& value) { return Variant::FromText(value); }
};

template <>
struct Convert<Variant> {
  static constexpr ValueType Type() { return {ValueKind::Variant}; }
  static Variant From(const Variant& value) { return value.Target(); }
  static Variant To(const Variant& value) { return value; }
};

// A public enumeration has a function DescribeEnumeration(E) beside it.
template <class E>
requires std::is_enum_v<E>
struct Convert<E> {
  static const Enumeration& Describe() { return DescribeEnumeration(E{}); }
  static constexpr ValueType Type() { return {ValueKind::Enum, &Describe}; }
  static E From(const Variant& value) { return static_cast<E>(ToLong(value)); }
  static Variant To(E value) { return Variant::FromLong(static_cast<std::int32_t>(value)); }
};

template <class T>
concept PublicClass = std::derived_from<T, Object>;

// Any object, or one of a declared class (which then has a static Describe).
template <PublicClass T>
struct Convert<Ref<T>> {
  static constexpr ValueType Type() {
    if constexpr (requires { T::Describe(); }) return {ValueKind::Object, nullptr, &T::Describe};
    return {ValueKind::Object};
  }
  static Ref<T> From(const Variant& value) {
    Object* object = ToObject(value);
    T* typed = dynamic_cast<T*>(object);
    if (object != nullptr && typed == nullptr) Raise(RuntimeError::TypeMismatch, "");
    return Ref<T>(typed);
  }
  static Variant To(const Ref<T>& value) { return Variant::FromObject(value); }
};

}  // namespace hearthmake::automation
