#pragma once

#include "adapters/win32/VariantConversion.hpp"
#include "com/Com.hpp"
#include "com/ThreadBorder.hpp"

namespace hearthmake::com {

// The conversions of adapters/win32 over the border of the thread. Everything that crosses goes through here:
// arguments of both kinds of calls, results, and the arguments of events.

using win32::OwnedVariant;
using win32::TypeOf;

inline automation::Variant FromPlace(VARTYPE type, const void* place) {
  return win32::FromPlace(type, place, ThreadBorder());
}
inline automation::Variant FromVariant(const VARIANT& value) {
  return win32::FromVariant(value, ThreadBorder());
}
inline void ToPlace(VARTYPE type, void* place, const automation::Variant& value,
                    const automation::Interface* object = nullptr) {
  win32::ToPlace(type, place, value, ThreadBorder(), object);
}
inline VARIANT ToVariant(const automation::Variant& value) { return win32::ToVariant(value, ThreadBorder()); }

}  // namespace hearthmake::com
