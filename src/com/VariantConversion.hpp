#pragma once

#include "adapters/win32/VariantConversion.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// The conversions of adapters/win32 with the border of this thread: an object of our own that comes back is
// itself, one of the host's is wrapped. Everything that crosses goes through here: arguments of both kinds of
// calls, results, and the arguments of events.

using win32::OwnedVariant;
using win32::TypeOf;

// Where the objects of this thread cross.
win32::ObjectBorder& Border();

automation::Variant FromPlace(VARTYPE type, const void* place);
automation::Variant FromVariant(const VARIANT& value);
void ToPlace(VARTYPE type, void* place, const automation::Variant& value,
             const automation::Interface* object = nullptr);
VARIANT ToVariant(const automation::Variant& value);

}  // namespace hearthmake::com
