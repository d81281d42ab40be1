#pragma once

#include "automation/Interface.hpp"
#include "automation/Variant.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// How the library's variants become those of COM, and back. Everything that crosses the border goes through
// here: arguments of both kinds of calls, results, and the arguments of events.

// A VARIANT that frees what it holds.
class OwnedVariant : public VARIANT {
 public:
  OwnedVariant() { VariantInit(this); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { VariantClear(this); }
};

// The type that a declared value has in COM. Objects are VT_DISPATCH.
VARTYPE TypeOf(const automation::ValueType& type);

// The value of a type that lies at a place; FromVariant follows a reference. An object of our own that comes
// back is itself; one of the host's is wrapped. Error 13 for a type that automation does not know.
automation::Variant FromPlace(VARTYPE type, const void* place);
automation::Variant FromVariant(const VARIANT& value);

// Stores a value, converted to the type, in place of what is there. Error 13 where it can't be converted.
// An object stands there as the interface that was declared, or as IDispatch.
void ToPlace(VARTYPE type, void* place, const automation::Variant& value,
             const automation::Interface* object = nullptr);
// Gives a new VARIANT to the caller, who owns it.
VARIANT ToVariant(const automation::Variant& value);

}  // namespace hearthmake::com
